// SPDX-License-Identifier: MIT
//
// A run of the program that broke off, as whoever restores it sees it.

#ifndef STATIONS_JOURNAL_UNSAVED_RUN_H_
#define STATIONS_JOURNAL_UNSAVED_RUN_H_

#include <cstddef>
#include <cstdint>
#include <span>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "db/jet/database.h"
#include "model/status.h"
#include "stations/change.h"
#include "stations/journal/act.h"
#include "stations/journal/contents.h"

namespace stations {

// The object of a run's first line: the digest of the database that it began with.
std::string WriteBeginning(std::string_view database);

// The acts of a run, in their order.  One that cannot be read is passed over and counted in
// *unreadable.
std::vector<Act> ActsOf(const JournalRun& run, std::size_t* unreadable);

// What the acts come to, as Fold() says.
std::vector<Change> ChangesOf(std::span<const Act> acts);

// Whether an act came from the switcher.
bool IsReceived(const Act& act);

struct UnsavedRun {
  std::int64_t id = 0;
  std::string database;        // the digest that it began with; empty when that is lost
  std::vector<Act> acts;       // in their order; those that cannot be read left out
  std::size_t unreadable = 0;  // how many these are

  // Of its last act, as Act has it; empty without one.
  std::string Time() const { return acts.empty() ? std::string() : acts.back().time; }
  // Whether any of its acts came from the switcher, and whether any did not.
  bool HasReceived() const;
  bool HasEdits() const;
};

UnsavedRun ReadUnsavedRun(const JournalRun& run);

// Reads a run act by act, for those who have other things to do in between.  It keeps the text of
// the run: the journal may be replaced meanwhile.
class UnsavedRunReader {
 public:
  explicit UnsavedRunReader(const JournalRun& run);

  bool IsDone() const { return at_ == lines_.size(); }
  // The length of the next act in the journal.
  // REQUIRES: !IsDone()
  std::size_t NextBytes() const { return lines_[at_].size(); }
  // Reads the next act, which is valid until the next one is read; null when it cannot be read.
  // REQUIRES: !IsDone()
  const Act* ReadNext();

  // The run, as far as it was read.  The reader is of no use any more.
  UnsavedRun Take() { return std::move(run_); }

 private:
  std::vector<std::string> lines_;
  std::size_t at_ = 0;
  UnsavedRun run_;
};

// What of a run is meant.
enum class Share : std::uint8_t {
  All,
  Edits,  // without what came from the switcher
};

// What the run's acts come to, from what it found to what it left.
std::vector<Change> ChangesOf(const UnsavedRun& run, Share share);

// Whether the stations hold everything that these changes led to.
model::Status AreInPlace(jet::Database& database, std::vector<Change> changes, bool* inPlace);

}  // namespace stations

#endif  // STATIONS_JOURNAL_UNSAVED_RUN_H_
