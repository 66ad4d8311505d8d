// SPDX-License-Identifier: MIT
//
// Values too long for their row: Memo and OLE fields.  The row holds a head of 12 bytes; the
// value follows it, or stands in a row of a long-value page, or in a chain of such rows.

#ifndef DB_JET_LONG_VALUE_H_
#define DB_JET_LONG_VALUE_H_

#include <cstdint>

#include "db/jet/bytes.h"
#include "db/jet/format.h"
#include "db/jet/free_space.h"
#include "db/jet/page_allocator.h"
#include "db/jet/pager.h"
#include "db/jet/status.h"
#include "db/jet/table_def.h"

namespace jet {

inline constexpr std::uint32_t kLongValueHead = 12;

struct LongValueHead {
  enum Kind : std::uint8_t { kChain = 0, kSingle = 1, kInline = 2 };

  std::uint32_t length = 0;
  std::uint8_t kind = kInline;
  RowPointer row;  // first row of the value; null when inline
};

// Takes the head of a field apart.  Damaged when the field is too short for it.
Status ReadLongValueHead(ByteView field, LongValueHead* head);

// The value whose field in the row is `field`.  *value refers to the field, to a page or to
// *scratch, which collects a chain, and holds until one of them changes.
Status ReadLongValue(Pager& pager, ByteView field, Bytes* scratch, ByteView* value);

// Walks over the rows of a value that is not inline.
class LongValueRows {
 public:
  LongValueRows(Pager& pager, const LongValueHead& head)
      : pager_(pager), head_(head), next_(head.row), rest_(head.length) {}

  // The next row and the part of the value in it; *done instead after the last one.  Damaged
  // for a row that is not there or too short, a chain that ends early or is a circle.
  Status Next(RowPointer* row, ByteView* part, bool* done);

 private:
  Pager& pager_;
  const LongValueHead& head_;
  RowPointer next_;
  std::uint32_t rest_;
  // A circle is found when the walk meets a row that it remembered; it remembers another one
  // after each doubling of its steps.
  RowPointer remembered_;
  std::uint32_t steps_ = 0;
  std::uint32_t rememberAt_ = 8;
};

// Writes the values of one column.  REQUIRES: a Change is open.
class LongValueWriter {
 public:
  LongValueWriter(Pager& pager, PageAllocator& allocator, const Column& column)
      : pager_(pager), allocator_(allocator), column_(column) {}

  // Stores `content` and appends its field for the row to *field.
  Status Store(ByteView content, Bytes* field);
  // Puts `content` in the place of the value of `oldField` where that is one row of its own
  // and has the room; *field is then its field for the row, otherwise empty.
  Status Overwrite(ByteView oldField, ByteView content, Bytes* field);
  // Gives the rows of the value back.  What of a damaged value cannot be found stays lost.
  Status Release(ByteView field);

 private:
  FreeSpace Space() const {
    return {pager_, allocator_, column_.ownedMap, column_.freeMap, kLongValueOwner};
  }
  Status StoreRow(ByteView content, RowPointer* row);
  Status StoreChain(ByteView content, RowPointer* first);
  Status ReleaseRow(RowPointer row);

  Pager& pager_;
  PageAllocator& allocator_;
  const Column& column_;
};

}  // namespace jet

#endif  // DB_JET_LONG_VALUE_H_
