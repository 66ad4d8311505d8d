// SPDX-License-Identifier: MIT

#ifndef STATIONS_JOURNAL_COMPACTION_H_
#define STATIONS_JOURNAL_COMPACTION_H_

#include <cstdint>
#include <string>

#include "stations/journal/contents.h"

namespace stations {

// A text for the journal's file with less history: of the runs that ended, the newest lines of
// together at most `history` bytes; of each run that broke off what it comes to: one act for what
// came from the switcher and one for the rest, and those that cannot be read as they are.  The
// numbers of lines and runs stay what they are.
std::string Compact(const JournalContents& contents, std::uint64_t history);

}  // namespace stations

#endif  // STATIONS_JOURNAL_COMPACTION_H_
