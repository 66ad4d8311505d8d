// SPDX-License-Identifier: MIT
//
// A place among the rows of a table, and moves in one of its orders.

#ifndef DB_JET_RECORD_CURSOR_H_
#define DB_JET_RECORD_CURSOR_H_

#include <cstdint>
#include <memory>
#include <optional>
#include <vector>

#include "db/jet/bookmark.h"
#include "db/jet/index_cursor.h"
#include "db/jet/row_codec.h"
#include "db/jet/status.h"
#include "db/jet/store.h"
#include "db/jet/table.h"
#include "db/jet/value.h"

namespace jet {

class RecordCursor {
 public:
  static constexpr int kStorageOrder = -1;

  // Moves in storage order.
  RecordCursor(std::shared_ptr<Store> store, std::shared_ptr<Table> table);
  // Moves over `rows`, in their order; those deleted since are passed over.
  RecordCursor(std::shared_ptr<Store> store, std::shared_ptr<Table> table,
               std::vector<RowPointer> rows);

  Table& GetTable() const { return *table_; }
  Store& GetStore() const { return *store_; }
  const std::shared_ptr<Store>& ShareStore() const { return store_; }
  bool IsSortedQuery() const { return rows_.has_value(); }

  // As the operations of RecordSet of these names.
  Status MoveFirst();
  Status MoveLast();
  Status MoveNext();
  Status MovePrevious();
  bool Bof() const;
  bool Eof() const;

  // Whether there is a current row, and which.
  bool HasRow() const;
  RowPointer Row() const { return RowPointer::Unpack(at_.row_); }
  // The bytes of the current row; valid until a page changes.
  Status ReadRow(const RowView** view) const;

  // The real index whose order the moves take, or kStorageOrder.
  Status SetOrder(int order);
  int Order() const { return order_; }

  // To the first row whose key in the order's index begins with that of the value.
  // REQUIRES: an index order.  Without a match there is no current row.
  Status Seek(const Value& value, bool* found);
  // To the first row, in the order, whose field equals the value.
  Status Find(int column, const Value& value, bool* found);

  const Bookmark& Save() const { return at_; }
  Status Restore(const Bookmark& bookmark);

  // Makes a row the current one, after it was added or its key was changed.
  Status Land(RowPointer row);
  // The current row was deleted: there is no current row, and moves go to its neighbours.
  void Forget();

 private:
  using Place = Bookmark::Place;

  static Status NoRecord();
  Status Step(bool forward);
  Status StepStorage(bool forward);
  Status StepIndex(bool forward);
  Status StepRows(bool forward);
  Status MoveToEnd(bool first);
  Status LandOnIndexEntry(bool forward);
  Status Leave(bool forward);
  void PutRow(RowPointer row);
  void StandNowhere();
  bool IsThere(RowPointer row, std::uint64_t tenant) const;
  Status Refresh() const;

  // The index of the order.  REQUIRES: Refresh() was a success.
  const RealIndex& Index() const { return table_->Def().realIndexes[order_]; }
  bool OrderIsThere() const;
  // Brings at_.key_ up to date with the row, if there is one.
  Status RefreshKey();
  Status KeepKey();
  std::size_t FindInRows() const;
  Status SeekByValue(int column, const Value& value, bool* found);

  const std::shared_ptr<Store> store_;
  const std::shared_ptr<Table> table_;
  Pager& pager_;

  int order_ = kStorageOrder;
  RealIndex orderIndex_;  // as it was when the order was set
  std::optional<std::vector<RowPointer>> rows_;
  std::size_t rowsAt_ = 0;
  std::vector<std::uint64_t> rowsTenants_;  // of rows_

  Bookmark at_;
  std::uint64_t keyVersion_ = 0;  // of the pager when at_.key_ was the row's key

  std::unique_ptr<IndexCursor> index_;
  std::uint64_t indexVersion_ = 0;  // of the pager when index_ stood on at_'s entry; 0: it does not

  mutable std::uint64_t viewVersion_ = 0;
  mutable RowView view_;
  mutable std::uint64_t thereVersion_ = 0;
  mutable bool isThere_ = false;
};

}  // namespace jet

#endif  // DB_JET_RECORD_CURSOR_H_
