// SPDX-License-Identifier: MIT

#include "db/jet/record_set.h"

#include <algorithm>

#include "db/jet/record_cursor.h"
#include "db/jet/record_order.h"
#include "db/jet/store.h"
#include "db/jet/table.h"
#include "db/jet/value_codec.h"

namespace jet {
namespace {

FieldInfo DescribeField(const Format& format, const Column& column) {
  FieldInfo info;
  info.name = column.name;
  info.type = column.type;
  info.allowZeroLength = column.allowZeroLength;
  info.required = column.required;
  if (column.type == FieldType::Text) {
    info.size = static_cast<int>(column.length / format.CharSize());
  } else if (!column.IsLongValue()) {
    info.size = column.IsBoolean() ? 1 : static_cast<int>(column.FixedSize());
  }
  return info;
}

}  // namespace

RecordSet::RecordSet(std::unique_ptr<RecordCursor> cursor) : cursor_(std::move(cursor)) {
  const Table& table = cursor_->GetTable();
  for (const Column& column : table.Def().columns) {
    fields_.push_back(DescribeField(table.GetFormat(), column));
  }
  pending_.resize(fields_.size());
}

RecordSet::~RecordSet() = default;

Status RecordSet::MoveFirst() {
  CancelUpdate();
  return cursor_->MoveFirst();
}

Status RecordSet::MoveLast() {
  CancelUpdate();
  return cursor_->MoveLast();
}

Status RecordSet::MoveNext() {
  CancelUpdate();
  return cursor_->MoveNext();
}

Status RecordSet::MovePrevious() {
  CancelUpdate();
  return cursor_->MovePrevious();
}

bool RecordSet::Bof() const { return cursor_->Bof(); }
bool RecordSet::Eof() const { return cursor_->Eof(); }
bool RecordSet::HasRecord() const { return cursor_->HasRow(); }

int RecordSet::RecordCount() const {
  std::uint32_t count = 0;
  return cursor_->GetTable().CountRows(&count).ok() ? static_cast<int>(count) : -1;
}

Status RecordSet::SetIndex(std::string_view indexName) {
  CancelUpdate();
  int order = RecordCursor::kStorageOrder;
  if (!indexName.empty()) {
    Status status = cursor_->GetTable().Refresh();
    if (!status.ok()) return status;
    const LogicalIndex* index = cursor_->GetTable().Def().FindIndex(indexName);
    if (index == nullptr) {
      return Status(ErrorNumber::NoSuchItem, "Table \"" + cursor_->GetTable().Name() +
                                                 "\" has no index \"" + std::string(indexName) +
                                                 "\"");
    }
    order = static_cast<int>(index->real);
  }
  Status status = cursor_->SetOrder(order);
  if (status.ok()) indexName_ = indexName;
  return status;
}

Status RecordSet::Seek(const Value& key) {
  CancelUpdate();
  if (cursor_->Order() == RecordCursor::kStorageOrder) {
    return Status(ErrorNumber::Unsupported, "No index is set to seek in");
  }
  bool found = false;
  Status status = cursor_->Seek(key, &found);
  noMatch_ = !found;
  return status;
}

Status RecordSet::FindFirst(std::string_view field, const Value& value) {
  CancelUpdate();
  const int column = FieldIndex(field);
  if (column < 0) return NoSuchField(field);
  bool found = false;
  Status status = cursor_->Find(column, value, &found);
  noMatch_ = !found;
  return status;
}

Bookmark RecordSet::Mark() const { return cursor_->Save(); }

Status RecordSet::GoTo(const Bookmark& mark) {
  CancelUpdate();
  return cursor_->Restore(mark);
}

int RecordSet::FieldCount() const { return static_cast<int>(fields_.size()); }

int RecordSet::FieldIndex(std::string_view field) const {
  return cursor_->GetTable().FindColumn(field);
}

const FieldInfo& RecordSet::Field(int index) const { return fields_[index]; }

std::vector<std::string> RecordSet::FieldNames() const {
  std::vector<std::string> names;
  for (const FieldInfo& field : fields_) names.push_back(field.name);
  return names;
}

Status RecordSet::NoSuchField(std::string_view field) const {
  return Status(ErrorNumber::NoSuchItem, "Table \"" + cursor_->GetTable().Name() +
                                             "\" has no field \"" + std::string(field) + "\"");
}

Status RecordSet::Get(std::string_view field, Value* value) const {
  const int index = FieldIndex(field);
  return index < 0 ? NoSuchField(field) : Get(index, value);
}

Status RecordSet::Get(int index, Value* value) const {
  if (index < 0 || index >= FieldCount()) return NoSuchField(std::to_string(index));
  Table& table = cursor_->GetTable();
  const Column& column = table.Def().columns[index];
  const Pending& pending = pending_[index];
  const bool isNew = change_ == Change::Add;
  if (pending.isSet || isNew) {
    if (pending.isSet && !pending.isNull) {
      DecodeContent(table.GetFormat(), column,
                    ByteView(contents_).subspan(pending.begin, pending.length), value);
    } else if (column.IsBoolean()) {
      value->SetNumber(Value::Kind::Bool, 0);
    } else {
      value->SetNull();
    }
    return {};
  }
  const RowView* row = nullptr;
  Status status = cursor_->ReadRow(&row);
  return status.ok() ? table.ReadValue(*row, index, value) : status;
}

Status RecordSet::OrderKey(std::string_view field, std::string* key) const {
  key->clear();
  const int index = FieldIndex(field);
  if (index < 0) return NoSuchField(field);
  const RowView* row = nullptr;
  Status status = cursor_->ReadRow(&row);
  if (!status.ok()) return status;
  Table& table = cursor_->GetTable();
  Bytes scratch;
  bool present = false;
  ByteView content;
  status = table.ReadContent(*row, index, &scratch, &present, &content);
  if (!status.ok()) return status;
  Bytes bytes;
  AppendOrder(table.GetFormat(), table.Def().columns[index], present ? &content : nullptr, &bytes);
  key->assign(bytes.begin(), bytes.end());
  return {};
}

Status RecordSet::CheckChangeable() const {
  if (cursor_->IsSortedQuery()) {
    return Status(ErrorNumber::ReadOnly, "A sorted query can only be read");
  }
  if (cursor_->GetTable().Def().IsSystem()) {
    return Status(ErrorNumber::ReadOnly, "The tables of the system cannot be changed");
  }
  return cursor_->GetStore().CheckWritable();
}

Status RecordSet::AddNew() {
  CancelUpdate();
  Status status = CheckChangeable();
  if (status.ok()) change_ = Change::Add;
  return status;
}

Status RecordSet::Edit() {
  CancelUpdate();
  Status status = CheckChangeable();
  const RowView* row = nullptr;
  if (status.ok()) status = cursor_->ReadRow(&row);
  if (status.ok()) change_ = Change::Edit;
  return status;
}

Status RecordSet::Set(std::string_view field, const Value& value) {
  const int index = FieldIndex(field);
  return index < 0 ? NoSuchField(field) : Set(index, value);
}

Status RecordSet::Set(int index, const Value& value) {
  if (index < 0 || index >= FieldCount()) return NoSuchField(std::to_string(index));
  if (change_ == Change::No) {
    return Status(ErrorNumber::UpdateWithoutEdit, "AddNew or Edit must come before Set");
  }
  const Table& table = cursor_->GetTable();
  const Column& column = table.Def().columns[index];
  if (value.IsNull()) {
    if (column.required && !column.IsAutoNumber()) {
      return Status(ErrorNumber::RequiredField, "Field \"" + column.name + "\" needs a value");
    }
    pending_[index] = {true, true, 0, 0};
    return {};
  }
  if (column.IsText() && !column.allowZeroLength && value.GetKind() == Value::Kind::Text &&
      value.Text().empty()) {
    return Status(ErrorNumber::ZeroLength,
                  "Field \"" + column.name + "\" cannot be a text without characters");
  }
  const std::size_t begin = contents_.size();
  bool isTrue = true;
  Status status = EncodeContent(table.GetFormat(), column, value, &contents_, &isTrue);
  if (!status.ok()) {
    contents_.resize(begin);
    return status;
  }
  pending_[index] = {true, !isTrue, begin, contents_.size() - begin};
  return {};
}

Status RecordSet::Update() {
  if (change_ == Change::No) {
    return Status(ErrorNumber::UpdateWithoutEdit, "AddNew or Edit must come before Update");
  }
  std::vector<FieldChange> changes;
  changes.reserve(pending_.size());
  for (std::size_t i = 0; i < pending_.size(); ++i) {
    const Pending& pending = pending_[i];
    if (!pending.isSet) continue;
    changes.push_back({static_cast<int>(i), pending.isNull,
                       ByteView(contents_).subspan(pending.begin, pending.length)});
  }
  Table& table = cursor_->GetTable();
  RowPointer row = cursor_->Row();
  Status status;
  if (change_ == Change::Add) {
    status = table.Insert(changes, &row);
  } else if (!cursor_->HasRow()) {
    status = Status(ErrorNumber::NoCurrentRecord, "The record has been deleted");
  } else {
    status = table.Update(row, changes);
  }
  if (!status.ok()) return status;
  CancelUpdate();
  return cursor_->Land(row);
}

void RecordSet::CancelUpdate() {
  if (change_ == Change::No) return;
  change_ = Change::No;
  std::fill(pending_.begin(), pending_.end(), Pending());
  contents_.clear();
}

Status RecordSet::Delete() {
  CancelUpdate();
  Status status = CheckChangeable();
  const RowView* row = nullptr;
  if (status.ok()) status = cursor_->ReadRow(&row);
  if (status.ok()) status = cursor_->GetTable().Delete(cursor_->Row());
  if (status.ok()) cursor_->Forget();
  return status;
}

}  // namespace jet
