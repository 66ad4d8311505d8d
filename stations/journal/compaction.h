// SPDX-License-Identifier: MIT

#ifndef STATIONS_JOURNAL_COMPACTION_H_
#define STATIONS_JOURNAL_COMPACTION_H_

#include <cstddef>
#include <cstdint>
#include <span>
#include <string>
#include <vector>

#include "stations/change.h"
#include "stations/journal/act.h"
#include "stations/journal/contents.h"

namespace stations {

// The acts of a run, in their order.  One that cannot be read is passed over and counted in
// *unreadable.
std::vector<Act> ActsOf(const JournalRun& run, std::size_t* unreadable);

// What the acts come to, as Fold() says.
std::vector<Change> ChangesOf(std::span<const Act> acts);

// A text for the journal's file with less history: of the runs that ended, the newest lines of
// together at most `history` bytes; each run that broke off whole, but acts of the same origin that
// follow each other made one.  The numbers of lines and runs stay what they are.
std::string Compact(const JournalContents& contents, std::uint64_t history);

}  // namespace stations

#endif  // STATIONS_JOURNAL_COMPACTION_H_
