// SPDX-License-Identifier: MIT
//
// A text field of many stations at once: labels, inhibits.  The caller holds a db::KeepPosition:
// the record where it began is not returned to.

#ifndef STATIONS_TEXTS_H_
#define STATIONS_TEXTS_H_

#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "db/jet/record_set.h"
#include "model/status.h"

namespace stations {

// Reads the text field `field` of the first `count` records, in the set's order; a null field
// gives an empty optional.  Fewer records are a failure.  *texts holds what was read before it.
model::Status ReadTexts(jet::RecordSet& stations, std::string_view field, int count,
                        std::vector<std::optional<std::string>>* texts);

// The same for a table that may have fewer records: a small system is no damaged one, and the
// texts that it does not have are empty optionals.
model::Status ReadAvailableTexts(jet::RecordSet& stations, std::string_view field, int count,
                                 std::vector<std::optional<std::string>>* texts);

}  // namespace stations

#endif  // STATIONS_TEXTS_H_
