// SPDX-License-Identifier: MIT
//
// The bytes of a row: fixed area, variable data, offset table, null mask.

#ifndef DB_JET_ROW_CODEC_H_
#define DB_JET_ROW_CODEC_H_

#include <cstdint>
#include <span>

#include "db/jet/bytes.h"
#include "db/jet/format.h"
#include "db/jet/status.h"
#include "db/jet/table_def.h"

namespace jet {

// A row's bytes, taken apart field by field on demand.  Refers to the bytes it was given.
class RowView {
 public:
  enum class Field {
    Null,
    Present,
    Bad,  // the row's tables contradict themselves there
  };

  // False when the row is too short for its own tables.
  bool Parse(const Format& format, const TableDef& def, ByteView row);

  // The page that the row stands on, for those who report what is wrong with it.
  std::uint32_t Page() const { return page_; }
  void SetPage(std::uint32_t page) { page_ = page; }

  // The raw bytes of a column.  Columns that were added after the row was written are null.
  // For a Boolean Present means true and Null false.
  Field Get(const Column& column, ByteView* bytes) const;

  // Whether the row is in itself as `def` has its rows built: its variable columns follow each
  // other from behind its fixed ones to its own tables, only columns that there are
  // have a value, and null ones no bytes.  Rows from before a column was added have fewer.
  bool AgreesWithItself(const TableDef& def) const;
  // The same, and it has all columns that a new row has.
  bool IsOfToday(const TableDef& def) const;

  ByteView Bytes() const { return row_; }

 private:
  std::uint32_t VariableOffset(std::uint32_t index) const;

  ByteView row_;
  std::uint32_t page_ = kNoPage;
  bool isJet4_ = true;
  std::uint32_t columnCount_ = 0;
  std::uint32_t variableCount_ = 0;
  std::uint32_t maskAt_ = 0;
  std::uint32_t offsetsAt_ = 0;  // of variable column 0; the others stand before it
  std::uint32_t jumpCount_ = 0;
  std::uint32_t dataEnd_ = 0;  // where fixed area and variable data must end
};

// A field of a row to be built, in the order of TableDef::columns.
struct RawField {
  bool present = false;
  ByteView bytes;
};

// Builds a row in the present shape of the table.  False when it would be larger than a row
// may be.
bool BuildRow(const Format& format, const TableDef& def, std::span<const RawField> fields,
              Bytes* row);

}  // namespace jet

#endif  // DB_JET_ROW_CODEC_H_
