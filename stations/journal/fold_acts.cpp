// SPDX-License-Identifier: MIT

#include "stations/journal/fold_acts.h"

#include <algorithm>
#include <utility>

#include "stations/fold.h"
#include "stations/journal/unsaved_run.h"

namespace stations {
namespace {

// From where these changes lead to where the others do, which begin at the same place.
std::vector<Change> Between(std::vector<Change> from, const std::vector<Change>& to) {
  for (Change& change : from) {
    for (FieldChange& field : change.fields) std::swap(field.before, field.after);
  }
  from.insert(from.end(), to.begin(), to.end());
  return Fold(from);
}

// The changes as one act, in the words of the last one that was received, or was not.
Act ActOf(std::vector<Change> changes, bool isReceived, const std::vector<Act>& acts) {
  const auto last = std::find_if(acts.rbegin(), acts.rend(), [isReceived](const Act& act) {
    return IsReceived(act) == isReceived;
  });
  return {.title = last->title,
          .time = last->time,
          .origin = last->origin,
          .changes = std::move(changes)};
}

}  // namespace

std::vector<Act> FoldActs(std::vector<Act> acts) {
  UnsavedRun run;
  run.acts = std::move(acts);
  std::vector<Change> edits = ChangesOf(run, Share::Edits);
  std::vector<Change> received = Between(edits, ChangesOf(run, Share::All));
  const bool hasReceived = run.HasReceived() && (!received.empty() || !run.HasEdits());
  const bool hasEdits = run.HasEdits() && (!edits.empty() || !hasReceived);
  std::vector<Act> folded;
  if (hasEdits) folded.push_back(ActOf(std::move(edits), false, run.acts));
  if (hasReceived) folded.push_back(ActOf(std::move(received), true, run.acts));
  return folded;
}

}  // namespace stations
