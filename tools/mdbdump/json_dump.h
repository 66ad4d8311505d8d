// SPDX-License-Identifier: MIT
//
// A whole database as JSON.

#ifndef TOOLS_MDBDUMP_JSON_DUMP_H_
#define TOOLS_MDBDUMP_JSON_DUMP_H_

#include <string>
#include <vector>

#include "db/jet/database.h"
#include "db/jet/status.h"

namespace mdbdump {

// Appends the user tables of the database to *json: their columns in order of their numbers,
// their rows in storage order, each with its place "page:row", and their indexes with the
// places of the rows in index order.
//
//   text, whole numbers, true, false, null   as they are
//   Double, Single, Date/Time                {"double"}, {"float"}, {"date"}: the bits in hex
//   Currency, Numeric                        {"dec"}: decimal text
//   Binary, OLE                              {"hex"}
//
// A value that cannot be read is "?"; *problems says why.  An error only when the catalogue
// cannot be read.
jet::Status AppendJson(const jet::Database& database, std::string* json,
                       std::vector<std::string>* problems);

}  // namespace mdbdump

#endif  // TOOLS_MDBDUMP_JSON_DUMP_H_
