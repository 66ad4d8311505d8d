// SPDX-License-Identifier: MIT
//
// From station to station, and to the station of a number.

#ifndef STATIONS_NAVIGATION_H_
#define STATIONS_NAVIGATION_H_

#include <cstdint>

#include "db/jet/record_set.h"
#include "db/jet/value.h"
#include "model/status.h"

namespace stations {

// The commands of the navigation.
enum class Movement : std::uint8_t { First, Previous, Back10, Next, Forward10, Last };

// Makes another station the current record of `stations`, which is in the order of the station
// numbers.  No command goes from a station up to `stationCount` to one beyond it, whatever
// records there are; where a command leads nowhere, the record stays the current one.
model::Status MoveStation(jet::RecordSet& stations, Movement movement, int stationCount);

// Makes the station of this number the current record; no current record when there is none of
// it, which NoMatch() tells and is no failure.
model::Status FindStation(jet::RecordSet& stations, const jet::Value& stationNum);

}  // namespace stations

#endif  // STATIONS_NAVIGATION_H_
