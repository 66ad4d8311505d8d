// SPDX-License-Identifier: MIT

#ifndef STATIONS_JOURNAL_CONTENTS_H_
#define STATIONS_JOURNAL_CONTENTS_H_

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "stations/journal/line.h"

namespace stations {

// One run of the program, as the journal has it.
struct JournalRun {
  enum class End {
    None,  // it broke off: what it changed is nowhere else
    Saved,
    Restored,
    Discarded,
  };

  std::int64_t id = 0;
  std::string_view beginning;  // the JSON object of its first line; empty when that is lost
  std::vector<const JournalLine*> acts;  // in the order of their numbers
  End end = End::None;

  // Whether what it changed is to be had from the journal alone.
  bool IsUnsaved() const { return end == End::None && !acts.empty(); }
};

// The journal as it was read, line by line.
class JournalContents {
 public:
  JournalContents() = default;

  // Reads `text`, the whole file.  A line that is not whole is passed over and counted, and the
  // next one read; a last one without its line end may be whole all the same.  What was written
  // twice counts once.  Lines are in the order of their numbers, wherever they stand.
  explicit JournalContents(std::string text);

  JournalContents(const JournalContents&) = delete;
  JournalContents& operator=(const JournalContents&) = delete;

  const std::vector<JournalLine>& Lines() const { return lines_; }
  // In the order in which they began.
  const std::vector<JournalRun>& Runs() const { return runs_; }
  // The run of this id; null when there is none.
  const JournalRun* Run(std::int64_t id) const;

  std::size_t DamagedLines() const { return damaged_; }
  // One more than the highest number of all lines and runs: no line has had it.
  std::int64_t NextNumber() const { return nextNumber_; }

 private:
  JournalRun& RunOf(std::int64_t id);

  std::string text_;
  std::vector<JournalLine> lines_;
  std::vector<JournalRun> runs_;
  std::size_t damaged_ = 0;
  std::int64_t nextNumber_ = 1;
};

}  // namespace stations

#endif  // STATIONS_JOURNAL_CONTENTS_H_
