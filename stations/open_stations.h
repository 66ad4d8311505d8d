// SPDX-License-Identifier: MIT

#ifndef STATIONS_OPEN_STATIONS_H_
#define STATIONS_OPEN_STATIONS_H_

#include <memory>

#include "db/jet/database.h"
#include "db/jet/record_set.h"
#include "model/status.h"

namespace stations {

// Opens the stations in the order of their numbers, on the first of them.  It is a record set
// of its own: the shared one stays where it stands, and a change begun in it stays begun.
model::Status OpenStations(jet::Database& database, std::unique_ptr<jet::RecordSet>* stations);

// The same on the record of station `number`; a null *stations when there is none.
model::Status OpenStation(jet::Database& database, int number,
                          std::unique_ptr<jet::RecordSet>* stations);

}  // namespace stations

#endif  // STATIONS_OPEN_STATIONS_H_
