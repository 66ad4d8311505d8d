// SPDX-License-Identifier: MIT

#include "stations/journal/unsaved_run.h"

#include <algorithm>
#include <map>
#include <nlohmann/json.hpp>
#include <utility>

#include "stations/carry_out.h"
#include "stations/fold.h"

namespace stations {
namespace {

constexpr char kDatabase[] = "database";

// The digest in the object of a first line; empty when there is none.
std::string DatabaseOf(std::string_view beginning) {
  const nlohmann::json json = nlohmann::json::parse(beginning, nullptr, false);
  if (!json.is_object()) return {};
  const auto database = json.find(kDatabase);
  return database != json.end() && database->is_string() ? database->get<std::string>()
                                                         : std::string();
}

// What every field held when the run began that changed it.
using Found = std::map<std::pair<int, std::string>, jet::Value>;

Found ValuesFoundBy(const UnsavedRun& run) {
  Found found;
  for (const Act& act : run.acts) {
    for (const Change& change : act.changes) {
      for (const FieldChange& field : change.fields) {
        found.try_emplace({change.station, field.field}, field.before);
      }
    }
  }
  return found;
}

}  // namespace

std::string WriteBeginning(std::string_view database) {
  return nlohmann::json{{kDatabase, database}}.dump();
}

std::vector<Act> ActsOf(const JournalRun& run, std::size_t* unreadable) {
  UnsavedRun read = ReadUnsavedRun(run);
  *unreadable = read.unreadable;
  return std::move(read.acts);
}

std::vector<Change> ChangesOf(std::span<const Act> acts) {
  std::vector<Change> all;
  for (const Act& act : acts) all.insert(all.end(), act.changes.begin(), act.changes.end());
  return Fold(all);
}

bool IsReceived(const Act& act) { return act.origin == Origin::Switcher; }

bool UnsavedRun::HasReceived() const { return std::ranges::any_of(acts, IsReceived); }

bool UnsavedRun::HasEdits() const { return !std::ranges::all_of(acts, IsReceived); }

UnsavedRun ReadUnsavedRun(const JournalRun& run) {
  UnsavedRunReader reader(run);
  while (!reader.IsDone()) reader.ReadNext();
  return reader.Take();
}

UnsavedRunReader::UnsavedRunReader(const JournalRun& run) {
  run_.id = run.id;
  run_.database = DatabaseOf(run.beginning);
  lines_.reserve(run.acts.size());
  for (const JournalLine* const line : run.acts) lines_.emplace_back(line->content);
}

const Act* UnsavedRunReader::ReadNext() {
  Act act;
  if (!ReadAct(lines_[at_++], &act)) {
    ++run_.unreadable;
    return nullptr;
  }
  return &run_.acts.emplace_back(std::move(act));
}

std::vector<Change> ChangesOf(const UnsavedRun& run, Share share) {
  if (share == Share::All) return ChangesOf(run.acts);
  std::vector<Act> edits;
  std::ranges::remove_copy_if(run.acts, std::back_inserter(edits), IsReceived);
  std::vector<Change> changes = ChangesOf(edits);
  // An edit of what came from the switcher leads on from what was there before that, too.
  Found found = ValuesFoundBy(run);
  for (Change& change : changes) {
    for (FieldChange& field : change.fields) {
      field.before = found.at({change.station, field.field});
    }
  }
  return changes;
}

model::Status AreInPlace(jet::Database& database, std::vector<Change> changes, bool* inPlace) {
  for (Change& change : changes) {
    for (FieldChange& field : change.fields) field.before = field.after;
  }
  std::vector<Conflict> missing;
  model::Status status = FindConflicts(database, changes, Direction::Again, &missing);
  *inPlace = status.ok() && missing.empty();
  return status;
}

}  // namespace stations
