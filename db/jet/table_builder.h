// SPDX-License-Identifier: MIT
//
// Making the pages of a new table or a new index.

#ifndef DB_JET_TABLE_BUILDER_H_
#define DB_JET_TABLE_BUILDER_H_

#include <cstdint>
#include <string>
#include <vector>

#include "db/jet/bytes.h"
#include "db/jet/field_type.h"
#include "db/jet/format.h"
#include "db/jet/page_allocator.h"
#include "db/jet/pager.h"
#include "db/jet/status.h"
#include "db/jet/table_def.h"

namespace jet {

struct ColumnPlan {
  std::string name;
  FieldType type = FieldType::Integer;
  std::uint8_t flags = 0;
  std::uint8_t extraFlags = 0;
  std::uint16_t length = 0;  // in bytes
};

struct IndexPlan {
  std::string name;
  std::vector<int> columns;  // into TablePlan::columns, ascending order each
  std::uint8_t flags = 0;    // of the real index, without kIndexJet4
  bool primary = false;
};

struct TablePlan {
  std::vector<ColumnPlan> columns;  // in the order of their numbers
  std::vector<IndexPlan> indexes;
  // System tables have another kind, in Jet 4 their columns in alphabetical order, no
  // ordinals, and the maps of long values before those of indexes.
  bool isSystem = false;
};

// Hands out map rows, on pages that hold nothing else.
class MapRows {
 public:
  // Begins with a page that has map rows already, or with none.
  MapRows(Pager& pager, PageAllocator& allocator, std::uint32_t page = 0)
      : pager_(pager), allocator_(allocator), page_(page) {}

  // An empty map.
  Status Take(RowPointer* row);

 private:
  Pager& pager_;
  PageAllocator& allocator_;
  std::uint32_t page_;
};

// Writes the definition of an empty table to `page` and the pages that it needs besides: maps,
// a root for each index.
// REQUIRES: a Change is open; `page` is zeroed and in use; names and sizes were checked.
Status BuildTable(Pager& pager, PageAllocator& allocator, MapRows& maps, const TablePlan& plan,
                  std::uint32_t page);

// Adds an empty index to the definition that begins at `page`.  `plan.columns` are into
// `def.columns`.
Status BuildIndex(Pager& pager, PageAllocator& allocator, const TableDef& def,
                  const IndexPlan& plan);

}  // namespace jet

#endif  // DB_JET_TABLE_BUILDER_H_
