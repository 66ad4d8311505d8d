// SPDX-License-Identifier: MIT
//
// Rows of a table on pages that may be damaged.

#ifndef DB_JET_SALVAGE_ROWS_H_
#define DB_JET_SALVAGE_ROWS_H_

#include <cstdint>
#include <functional>
#include <vector>

#include "db/jet/bytes.h"
#include "db/jet/database.h"
#include "db/jet/format.h"
#include "db/jet/salvage_pages.h"
#include "db/jet/table_def.h"

namespace jet {

// How a row was found, the most regular way first.
enum class Evidence : std::uint8_t {
  Live,      // in its slot
  Moved,     // in a slot for moved rows
  Carved,    // by its own build, without a slot
  Repaired,  // in its slot, with the counts in it put right
};

struct FoundRow {
  RowPointer place;  // of a carved one, whose slot is not known, slot 0
  Evidence evidence = Evidence::Live;
  const TableDef* layout = nullptr;
  ByteView bytes;
};

// How the columns of a table may stand in its rows: as the definitions in the file say that have
// all of its fields, then as engines place them that make such a table.
std::vector<TableDef> FindLayouts(SalvagePages& pages, const TableSpec& spec);

// Calls `found` for every row of the page that can be one of a table with such layouts.
// `page` are the bytes of a whole page, of which the file has `length`.
void FindRows(const Format& format, const std::vector<TableDef>& layouts, std::uint32_t number,
              ByteView page, std::uint32_t length,
              const std::function<void(const FoundRow&)>& found);

}  // namespace jet

#endif  // DB_JET_SALVAGE_ROWS_H_
