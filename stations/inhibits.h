// SPDX-License-Identifier: MIT
//
// The inhibits in the table of stations.  The caller holds a db::KeepPosition: the record where
// it began is not returned to.

#ifndef STATIONS_INHIBITS_H_
#define STATIONS_INHIBITS_H_

#include <optional>
#include <string>
#include <string_view>

#include "db/jet/record_set.h"
#include "model/status.h"
#include "stations/change.h"

namespace stations {

// The inhibit flags of an output, found by its StationNum; the record is then the current one.
// *flags is empty when there is no such record, which is no failure; a null field reads as "".
model::Status FindInhibits(jet::RecordSet& stations, int output, std::optional<std::string>* flags);

// Stores the inhibit flags into the current record.
model::Status StoreInhibits(jet::RecordSet& stations, std::string_view flags, const Author& author);

}  // namespace stations

#endif  // STATIONS_INHIBITS_H_
