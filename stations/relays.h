// SPDX-License-Identifier: MIT
//
// The relays of a station, in the current record of `stations`.

#ifndef STATIONS_RELAYS_H_
#define STATIONS_RELAYS_H_

#include <string>

#include "db/jet/record_set.h"
#include "model/status.h"
#include "stations/change.h"

namespace stations {

// The relays of the station, as a flag string of "0" and "1" alone.
model::Status ReadRelays(jet::RecordSet& stations, std::string* relays);

// Assigns relay `relay` (from 1) to the station or takes it away.
model::Status StoreRelay(jet::RecordSet& stations, int relay, bool set, int relayCount,
                         const Author& author);

}  // namespace stations

#endif  // STATIONS_RELAYS_H_
