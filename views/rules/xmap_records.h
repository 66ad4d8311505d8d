// SPDX-License-Identifier: MIT
//
// What the crosspoint map reads and writes in the table of stations.  None of these returns to
// the record where it began: the caller holds a db::KeepPosition.

#ifndef VIEWS_RULES_XMAP_RECORDS_H_
#define VIEWS_RULES_XMAP_RECORDS_H_

#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "db/jet/record_set.h"
#include "model/status.h"

namespace rules {

// Reads the text field `field` of the first `count` records, in the set's order; a null field
// gives an empty optional.  Fewer records are a failure.  *texts holds what was read before it.
model::Status ReadTexts(jet::RecordSet& stations, std::string_view field, int count,
                        std::vector<std::optional<std::string>>* texts);

// The same for a table that may have fewer records: a small system is no damaged one, and the
// texts that it does not have are empty optionals.
model::Status ReadTextsThere(jet::RecordSet& stations, std::string_view field, int count,
                             std::vector<std::optional<std::string>>* texts);

// The inhibit flags of an output, found by its StationNum; the record is then the current one.
// *flags is empty when there is no such record, which is no failure; a null field reads as "".
model::Status FindInhibits(jet::RecordSet& stations, int output, std::optional<std::string>* flags);

// Stores the inhibit flags into the current record.
model::Status StoreInhibits(jet::RecordSet& stations, std::string_view flags);

}  // namespace rules

#endif  // VIEWS_RULES_XMAP_RECORDS_H_
