// SPDX-License-Identifier: MIT

#include "db/jet/record_cursor.h"

#include <algorithm>

#include "db/jet/key_codec.h"
#include "db/jet/record_order.h"

namespace jet {

RecordCursor::RecordCursor(std::shared_ptr<Store> store, std::shared_ptr<Table> table)
    : store_(std::move(store)), table_(std::move(table)), pager_(store_->GetPager()) {
  at_.table_ = table_->Def().page;
}

RecordCursor::RecordCursor(std::shared_ptr<Store> store, std::shared_ptr<Table> table,
                           std::vector<RowPointer> rows)
    : RecordCursor(std::move(store), std::move(table)) {
  rows_ = std::move(rows);
  rowsTenants_.reserve(rows_->size());
  for (const RowPointer row : *rows_) rowsTenants_.push_back(table_->TenantAt(row));
}

Status RecordCursor::NoRecord() {
  return Status(ErrorNumber::NoCurrentRecord, "There is no current record");
}

bool RecordCursor::Bof() const { return at_.place_ == Place::Before || at_.place_ == Place::Empty; }

bool RecordCursor::Eof() const { return at_.place_ == Place::After || at_.place_ == Place::Empty; }

// Whether the record that was found at `row` as its `tenant` still is.
bool RecordCursor::IsThere(RowPointer row, std::uint64_t tenant) const {
  return table_->Refresh().ok() && table_->TenantAt(row) == tenant && table_->HasRow(row);
}

// Whether the index of the order is: its creation may have been dropped.
bool RecordCursor::OrderIsThere() const {
  if (order_ == kStorageOrder) return true;
  const std::vector<RealIndex>& indexes = table_->Def().realIndexes;
  return static_cast<std::size_t>(order_) < indexes.size() && Index() == orderIndex_;
}

Status RecordCursor::Refresh() const {
  Status status = table_->Refresh();
  if (!status.ok() || OrderIsThere()) return status;
  return Status(ErrorNumber::NoSuchItem,
                "The index that orders table \"" + table_->Name() + "\" is not there any more");
}

bool RecordCursor::HasRow() const {
  if (at_.place_ != Place::Record) return false;
  if (thereVersion_ != pager_.Version()) {
    isThere_ = IsThere(Row(), at_.tenant_);
    thereVersion_ = pager_.Version();
  }
  return isThere_;
}

Status RecordCursor::ReadRow(const RowView** view) const {
  if (!HasRow()) return NoRecord();
  if (viewVersion_ != pager_.Version()) {
    Status status = table_->ReadRow(Row(), &view_);
    if (!status.ok()) return status;
    viewVersion_ = pager_.Version();
  }
  *view = &view_;
  return {};
}

void RecordCursor::PutRow(RowPointer row) {
  at_.place_ = Place::Record;
  at_.row_ = row.Packed();
  at_.tenant_ = table_->TenantAt(row);
  at_.order_ = order_;
  viewVersion_ = 0;
  isThere_ = true;
  thereVersion_ = pager_.Version();
}

// No record in the direction of the move.
Status RecordCursor::Leave(bool forward) {
  std::uint32_t count = 0;
  Status status = table_->CountRows(&count);
  if (!status.ok()) return status;
  at_.place_ = count == 0 ? Place::Empty : (forward ? Place::After : Place::Before);
  at_.row_ = 0;
  at_.key_.clear();
  return {};
}

Status RecordCursor::MoveToEnd(bool first) {
  Status status = Refresh();
  if (!status.ok()) return status;
  if (rows_) {
    rowsAt_ = first ? static_cast<std::size_t>(-1) : rows_->size();
    status = StepRows(first);
  } else if (order_ == kStorageOrder) {
    RowPointer row;
    status = first ? table_->FirstRow(&row) : table_->LastRow(&row);
    if (!status.ok()) return status;
    if (row) {
      PutRow(row);
    } else {
      status = Leave(first);
    }
  } else {
    status = first ? index_->SeekFirst() : index_->SeekLast();
    if (status.ok()) status = LandOnIndexEntry(first);
  }
  if (status.ok() && at_.place_ != Place::Record) at_.place_ = Place::Empty;
  return status;
}

Status RecordCursor::MoveFirst() { return MoveToEnd(true); }
Status RecordCursor::MoveLast() { return MoveToEnd(false); }

Status RecordCursor::MoveNext() {
  if (at_.place_ == Place::Before) return MoveFirst();
  return Step(true);
}

Status RecordCursor::MovePrevious() {
  if (at_.place_ == Place::After) return MoveLast();
  return Step(false);
}

Status RecordCursor::Step(bool forward) {
  // From a record, or from where one was.
  if (at_.row_ == 0 || (at_.place_ != Place::Record && at_.place_ != Place::Nowhere)) {
    return NoRecord();
  }
  Status status = Refresh();
  if (!status.ok()) return status;
  if (rows_) {
    if (rowsAt_ >= rows_->size() || (*rows_)[rowsAt_] != Row()) rowsAt_ = FindInRows();
    return StepRows(forward);
  }
  return order_ == kStorageOrder ? StepStorage(forward) : StepIndex(forward);
}

Status RecordCursor::StepStorage(bool forward) {
  RowPointer row;
  Status status = forward ? table_->NextRow(Row(), &row) : table_->PreviousRow(Row(), &row);
  if (!status.ok()) return status;
  if (!row) return Leave(forward);
  PutRow(row);
  return {};
}

std::size_t RecordCursor::FindInRows() const {
  const auto found = std::find(rows_->begin(), rows_->end(), Row());
  return static_cast<std::size_t>(found - rows_->begin());
}

Status RecordCursor::StepRows(bool forward) {
  const std::size_t count = rows_->size();
  do {
    rowsAt_ += forward ? 1 : static_cast<std::size_t>(-1);
    if (rowsAt_ >= count) return Leave(forward);
  } while (!IsThere((*rows_)[rowsAt_], rowsTenants_[rowsAt_]));
  PutRow((*rows_)[rowsAt_]);
  return {};
}

Status RecordCursor::StepIndex(bool forward) {
  Status status;
  if (indexVersion_ == 0 || indexVersion_ != pager_.Version()) {
    status = RefreshKey();
    if (!status.ok()) return status;
    if (at_.key_.empty()) return NoRecord();
    const auto* bytes = reinterpret_cast<const std::uint8_t*>(at_.key_.data());
    const ByteView entry(bytes, at_.key_.size());
    status = index_->Seek(entry);
    if (!status.ok()) return status;
    if (forward) {
      const bool isSame = !index_->AtEnd() && CompareBytes(index_->Entry(), entry) == 0;
      if (isSame) status = index_->Next();
    } else {
      status = index_->AtEnd() ? index_->SeekLast() : index_->Previous();
    }
  } else {
    status = forward ? index_->Next() : index_->Previous();
  }
  return status.ok() ? LandOnIndexEntry(forward) : status;
}

// The index cursor has moved: its row becomes the current one, but for entries of rows that
// are not there.
Status RecordCursor::LandOnIndexEntry(bool forward) {
  indexVersion_ = 0;
  while (!index_->AtEnd()) {
    const RowPointer row = index_->Row();
    if (table_->HasRow(row)) {
      PutRow(row);
      at_.key_.assign(index_->Entry().begin(), index_->Entry().end());
      keyVersion_ = pager_.Version();
      indexVersion_ = pager_.Version();
      return {};
    }
    Status status = forward ? index_->Next() : index_->Previous();
    if (!status.ok()) return status;
  }
  return Leave(forward);
}

Status RecordCursor::RefreshKey() {
  if (keyVersion_ == pager_.Version() && !at_.key_.empty() && at_.order_ == order_) return {};
  if (!HasRow()) {
    // Where the row was can only be told in the order in which it was met.
    if (at_.order_ != order_) at_.key_.clear();
    return {};
  }
  const RowView* view = nullptr;
  Status status = ReadRow(&view);
  if (!status.ok()) return status;
  Bytes key;
  KeyInfo info;
  status = table_->AppendRowKey(Index(), *view, &key, &info);
  if (!status.ok()) return status;
  AppendRowPointer(&key, Row());
  if (!info.known) {
    // The index holds a key that cannot be made here: look for the row itself.
    for (status = index_->SeekFirst(); status.ok() && !index_->AtEnd(); status = index_->Next()) {
      if (index_->Row() != Row()) continue;
      key = index_->Entry();
      break;
    }
    if (!status.ok()) return status;
  }
  at_.key_.assign(key.begin(), key.end());
  at_.order_ = order_;
  keyVersion_ = pager_.Version();
  return {};
}

// For a later move.  Without its index there will be none, and it will say so.
Status RecordCursor::KeepKey() {
  const bool hasKey = order_ != kStorageOrder && Refresh().ok();
  return hasKey ? RefreshKey() : Status();
}

Status RecordCursor::SetOrder(int order) {
  if (rows_) {
    return Status(ErrorNumber::Unsupported, "A sorted query has no other order");
  }
  if (order == kStorageOrder) {
    order_ = order;
    index_.reset();
    indexVersion_ = 0;
    return {};
  }
  Status status = table_->EnsureIndexesChecked();
  if (!status.ok()) return status;
  order_ = order;
  orderIndex_ = Index();
  index_ = std::make_unique<IndexCursor>(pager_, table_->Def().page, Index().root);
  indexVersion_ = 0;
  return RefreshKey();
}

Status RecordCursor::Seek(const Value& value, bool* found) {
  *found = false;
  Status status = Refresh();
  if (!status.ok()) return status;
  const IndexColumn& first = Index().columns.front();
  const Column& column = table_->Def().columns[first.column];
  const SoughtValue sought(store_->GetFormat(), column, value);
  Bytes key;
  if (sought.IsPossible() &&
      !AppendKey(store_->GetFormat(), column, first.ascending, sought.Content(), &key)) {
    return SeekByValue(first.column, value, found);
  }
  indexVersion_ = 0;
  if (sought.IsPossible()) status = index_->Seek(key);
  while (status.ok() && sought.IsPossible() && !index_->AtEnd() &&
         StartsWith(index_->Entry(), key)) {
    if (table_->HasRow(index_->Row())) {
      *found = true;
      return LandOnIndexEntry(true);
    }
    status = index_->Next();
  }
  if (status.ok()) StandNowhere();
  return status;
}

// The definition is read anew before the search, which holds on to the column, not by its first
// move.
Status RecordCursor::Find(int column, const Value& value, bool* found) {
  *found = false;
  if (Status status = Refresh(); !status.ok()) return status;
  return SeekByValue(column, value, found);
}

// Row by row, in the order that is set.
Status RecordCursor::SeekByValue(int column, const Value& value, bool* found) {
  *found = false;
  const SoughtValue sought(store_->GetFormat(), table_->Def().columns[column], value);
  Bytes scratch;
  Status status = MoveFirst();
  while (status.ok() && sought.IsPossible() && at_.place_ == Place::Record) {
    const RowView* view = nullptr;
    status = ReadRow(&view);
    bool present = false;
    ByteView content;
    if (status.ok()) status = table_->ReadContent(*view, column, &scratch, &present, &content);
    if (!status.ok()) return status;
    if (sought.Equals(present ? &content : nullptr)) {
      *found = true;
      return {};
    }
    status = MoveNext();
  }
  if (status.ok()) StandNowhere();
  return status;
}

Status RecordCursor::Restore(const Bookmark& bookmark) {
  if (bookmark.table_ != at_.table_) {
    StandNowhere();
    return Status(ErrorNumber::NoCurrentRecord, "The bookmark is of another table");
  }
  const Bookmark::Place place = bookmark.place_;
  at_ = bookmark;
  keyVersion_ = 0;
  indexVersion_ = 0;
  viewVersion_ = 0;
  thereVersion_ = 0;
  if (place == Place::Record) {
    if (HasRow()) return KeepKey();
    at_.place_ = Place::Nowhere;
    return NoRecord();
  }
  if (place == Place::Nowhere) return {};
  std::uint32_t count = 0;
  Status status = table_->CountRows(&count);
  if (!status.ok()) return status;
  if (count == 0) {
    at_.place_ = Place::Empty;
  } else if (place == Place::Empty) {
    at_.place_ = Place::Before;
  }
  return {};
}

Status RecordCursor::Land(RowPointer row) {
  PutRow(row);
  keyVersion_ = 0;
  indexVersion_ = 0;
  return KeepKey();
}

void RecordCursor::Forget() { at_.place_ = Place::Nowhere; }

void RecordCursor::StandNowhere() {
  at_.place_ = Place::Nowhere;
  at_.row_ = 0;
  at_.key_.clear();
}

}  // namespace jet
