// SPDX-License-Identifier: MIT
//
// Changes carried out once more, or taken back.

#ifndef STATIONS_CARRY_OUT_H_
#define STATIONS_CARRY_OUT_H_

#include <cstdint>
#include <span>
#include <string>
#include <vector>

#include "db/jet/database.h"
#include "db/jet/record_set.h"
#include "db/jet/value.h"
#include "model/status.h"
#include "stations/change.h"

namespace stations {

enum class Direction : std::uint8_t {
  Again,  // from the values before to those after
  Back,   // from the values after to those before
};

// A field that holds neither the one value of a change nor the other: it was changed since.
struct Conflict {
  int station = 0;
  std::string field;   // empty: the station has no record any more
  jet::Value present;  // null as well where it cannot be read
  jet::Value wanted;

  bool operator==(const Conflict&) const = default;
};

// Looks what stands in the way of these changes, each field of which stands in one of them only
// (Fold).  A field that has the wanted value already is no conflict.  A failure is one of opening
// the stations.
model::Status FindConflicts(jet::Database& database, std::span<const Change> changes,
                            Direction direction, std::vector<Conflict>* conflicts);

// Stores the wanted values of changes as above, all at once or on a failure none, whatever the
// fields hold now; what has them already is not written.  A station without a record is passed
// over.  The shared record set stays where it stands.
model::Status CarryOut(jet::Database& database, std::span<const Change> changes,
                       Direction direction, const Author& author);

// The same in `stations`, which stands where it stood when the observers of the changes are told.
model::Status CarryOut(jet::RecordSet& stations, std::span<const Change> changes,
                       Direction direction, const Author& author);

// The changes without those of fields that are in conflict, and of stations without a record.
std::vector<Change> Without(std::span<const Change> changes, std::span<const Conflict> conflicts);

}  // namespace stations

#endif  // STATIONS_CARRY_OUT_H_
