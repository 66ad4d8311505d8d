// SPDX-License-Identifier: MIT

#include "stations/journal/compaction.h"

#include <algorithm>
#include <map>
#include <set>
#include <utility>

#include "stations/fold.h"
#include "stations/journal/unsaved_run.h"

namespace stations {
namespace {

using Kept = std::map<std::int64_t, std::string>;  // lines by their numbers

// From where these changes lead to where the others do, which begin at the same place.
std::vector<Change> Between(std::vector<Change> from, const std::vector<Change>& to) {
  for (Change& change : from) {
    for (FieldChange& field : change.fields) std::swap(field.before, field.after);
  }
  from.insert(from.end(), to.begin(), to.end());
  return Fold(from);
}

// The changes as one act in the place of `line`, in the words of the last one that was received, or
// was not.
void KeepAs(std::vector<Change> changes, bool isReceived, const UnsavedRun& run,
            const JournalLine& line, Kept* kept) {
  const auto last = std::find_if(run.acts.rbegin(), run.acts.rend(), [isReceived](const Act& act) {
    return IsReceived(act) == isReceived;
  });
  Act act{.title = last->title, .time = last->time, .origin = last->origin, .changes = {}};
  act.changes = std::move(changes);
  const std::string content = WriteAct(act);
  JournalLine folded = line;
  folded.content = content;
  (*kept)[line.number] = WriteLine(folded);
}

// Of a run that broke off: what was edited as one act, and behind it what came from the switcher
// and was not edited again, leading on from there.  So neither takes back the other.
void KeepFolded(const JournalRun& run, Kept* kept) {
  UnsavedRun read;
  std::vector<const JournalLine*> lines;
  for (const JournalLine* const line : run.acts) {
    Act act;
    if (ReadAct(line->content, &act)) {
      lines.push_back(line);
      read.acts.push_back(std::move(act));
    } else {
      (*kept)[line->number] = WriteLine(*line);
    }
  }
  if (lines.size() < 2) {
    for (const JournalLine* const line : lines) (*kept)[line->number] = WriteLine(*line);
    return;
  }
  std::vector<Change> edits = ChangesOf(read, Share::Edits);
  std::vector<Change> received = Between(edits, ChangesOf(read, Share::All));
  const bool hasReceived = read.HasReceived() && (!received.empty() || !read.HasEdits());
  const bool hasEdits = read.HasEdits() && (!edits.empty() || !hasReceived);
  const JournalLine& last = *lines.back();
  const JournalLine& before = hasReceived ? **(lines.end() - 2) : last;
  if (hasEdits) KeepAs(std::move(edits), false, read, before, kept);
  if (hasReceived) KeepAs(std::move(received), true, read, last, kept);
}

}  // namespace

std::string Compact(const JournalContents& contents, std::uint64_t history) {
  Kept kept;
  std::set<std::int64_t> brokenOff;
  for (const JournalRun& run : contents.Runs()) {
    if (!run.IsUnsaved()) continue;
    brokenOff.insert(run.id);
    KeepFolded(run, &kept);
  }
  std::uint64_t bytes = 0;
  for (auto line = contents.Lines().rbegin(); line != contents.Lines().rend(); ++line) {
    if (brokenOff.contains(line->run)) {
      if (line->kind != JournalLine::Kind::Act) kept[line->number] = WriteLine(*line);
      continue;
    }
    if (bytes > history) continue;
    std::string text = WriteLine(*line);
    bytes += text.size();
    if (bytes <= history) kept[line->number] = std::move(text);
  }
  std::string all;
  for (const auto& [number, text] : kept) all += text;
  return all;
}

}  // namespace stations
