// SPDX-License-Identifier: MIT

#ifndef STATIONS_DIFFERENCE_H_
#define STATIONS_DIFFERENCE_H_

#include <vector>

#include "db/jet/database.h"
#include "model/status.h"
#include "stations/change.h"

namespace stations {

// What would have to be changed for the stations of the one database to hold what those of the
// other do: one change for each station that differs, in the order of their numbers, its fields in
// the order of the table.  A field that one of them does not have is passed over; one that cannot
// be read here differs.
//
// Databases of different systems are not compared: when their counts or their stations are not the
// same, that is a failure (3251) whose description says what differs.
model::Status Difference(jet::Database& here, jet::Database& there, std::vector<Change>* changes);

}  // namespace stations

#endif  // STATIONS_DIFFERENCE_H_
