// SPDX-License-Identifier: MIT
//
// Reading an index tree in order.

#ifndef DB_JET_INDEX_CURSOR_H_
#define DB_JET_INDEX_CURSOR_H_

#include <cstdint>

#include "db/jet/index_page.h"
#include "db/jet/pager.h"
#include "db/jet/status.h"

namespace jet {

inline constexpr int kMaxIndexDepth = 20;

// Stands on an entry of the leaf level, or on none.  Its place holds until a page changes;
// then only the Seeks may be called.
//
// Each step must find a greater entry (or, backwards, a smaller one), so a walk through a
// damaged tree ends.
class IndexCursor {
 public:
  IndexCursor(Pager& pager, std::uint32_t table, std::uint32_t root)
      : pager_(pager), table_(table), root_(root) {}

  Status SeekFirst();
  Status SeekLast();
  // To the first entry >= key.
  Status Seek(ByteView key);
  // REQUIRES: !AtEnd().
  Status Next();
  Status Previous();

  // No entry: the tree is empty or the walk has left it.
  bool AtEnd() const { return atEnd_; }
  // REQUIRES: !AtEnd().
  const Bytes& Entry() const { return entry_; }
  RowPointer Row() const { return EntryRow(entry_); }

 private:
  Status Descend(const ByteView* key, bool toLast);
  Status SkipEmptyLeaves(bool forward);
  Status CheckOrder(bool forward);
  Status OutOfOrder() const;

  Pager& pager_;
  const std::uint32_t table_;
  const std::uint32_t root_;
  IndexPage leaf_;
  int position_ = 0;
  bool atEnd_ = true;
  Bytes entry_;
  Bytes previousEntry_;
};

}  // namespace jet

#endif  // DB_JET_INDEX_CURSOR_H_
