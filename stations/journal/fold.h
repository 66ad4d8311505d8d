// SPDX-License-Identifier: MIT
//
// What many acts come to.

#ifndef STATIONS_JOURNAL_FOLD_H_
#define STATIONS_JOURNAL_FOLD_H_

#include <cstdint>
#include <span>
#include <string>
#include <vector>

#include "stations/change.h"
#include "stations/journal/act.h"
#include "stations/journal/contents.h"

namespace stations {

// Every field that the acts leave with another value than they found, with its value before the
// first of them and after the last; in the order of the stations, of each in the order in which its
// fields were changed first.  A change's origin is that of the last act that touched the station.
std::vector<Change> Fold(std::span<const Act> acts);

// The acts of a run, in their order.  One that cannot be read is passed over and counted in
// *unreadable.
std::vector<Act> ActsOf(const JournalRun& run, std::size_t* unreadable);

// A text for the journal's file with less history: of the runs that ended, the newest lines of
// together at most `history` bytes; each run that broke off whole, but acts of the same origin that
// follow each other made one.  The numbers of lines and runs stay what they are.
std::string Compact(const JournalContents& contents, std::uint64_t history);

}  // namespace stations

#endif  // STATIONS_JOURNAL_FOLD_H_
