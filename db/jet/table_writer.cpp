// SPDX-License-Identifier: MIT

#include "db/jet/table_writer.h"

#include <algorithm>
#include <string>

#include "db/jet/free_space.h"
#include "db/jet/index_cursor.h"
#include "db/jet/index_writer.h"
#include "db/jet/key_codec.h"
#include "db/jet/long_value.h"
#include "db/jet/usage_map.h"

namespace jet {
namespace {

constexpr std::uint32_t kPointerBytes = 4;

}  // namespace

TableWriter::TableWriter(Table& table)
    : table_(table),
      store_(table.GetStore()),
      pager_(store_.GetPager()),
      allocator_(store_.Allocator()),
      format_(store_.GetFormat()),
      def_(table.Def()) {}

Status Table::Insert(std::span<const FieldChange> fields, RowPointer* row) {
  return TableWriter(*this).Insert(fields, row);
}

Status Table::Update(RowPointer row, std::span<const FieldChange> fields) {
  return TableWriter(*this).Update(row, fields);
}

Status Table::Delete(RowPointer row) { return TableWriter(*this).Delete(row); }

Status TableWriter::Insert(std::span<const FieldChange> fields, RowPointer* row) {
  Status status = Prepare();
  if (!status.ok()) return status;
  given_.assign(fields.begin(), fields.end());
  status = AssignAutoNumber();
  if (!status.ok()) return status;
  TakeChanges(given_);
  status = CheckFields(true);
  if (status.ok()) status = PlanIndexes(false, {});
  std::uint32_t count = 0;
  if (status.ok()) status = table_.CountRows(&count);
  if (!status.ok()) return status;

  Change change(pager_);
  RowPointer place;
  status = BuildNewRow(false);
  if (status.ok()) status = PlaceNew(0, &place);
  if (status.ok()) status = ApplyIndexes(place);
  if (status.ok()) status = SetRowCount(count + 1);
  if (status.ok()) status = PutAutoNumber();
  if (status.ok()) table_.NoteNewTenant(place);
  if (status.ok()) status = change.Commit();
  if (!status.ok()) return status;
  table_.rowCount_ = count + 1;
  *row = place;
  return {};
}

Status TableWriter::Update(RowPointer row, std::span<const FieldChange> fields) {
  Status status = Prepare();
  if (status.ok()) status = LoadOldRow(row);
  if (status.ok()) status = KeepRealChanges(fields);
  if (!status.ok() || given_.empty()) return status;
  status = CheckFields(false);
  if (status.ok()) status = PlanIndexes(true, row);
  if (!status.ok()) return status;

  Change change(pager_);
  status = BuildNewRow(true);
  if (status.ok()) status = PlaceUpdated(row);
  if (status.ok()) status = ApplyIndexes(row);
  if (status.ok()) status = ReleaseOldValues();
  return status.ok() ? change.Commit() : status;
}

Status TableWriter::Delete(RowPointer row) {
  Status status = Prepare();
  if (status.ok()) status = LoadOldRow(row);
  std::uint32_t count = 0;
  if (status.ok()) status = table_.CountRows(&count);
  if (!status.ok()) return status;
  for (const RealIndex& index : def_.realIndexes) {
    edits_.emplace_back();
    status = PlanRemoval(index, row, &edits_.back());
    if (!status.ok()) return status;
  }
  for (std::size_t i = 0; i < def_.columns.size(); ++i) {
    if (def_.columns[i].IsLongValue()) oldValues_.push_back(static_cast<int>(i));
  }

  Change change(pager_);
  status = ApplyIndexes(row);
  if (status.ok()) status = ReleaseOldValues();
  if (!status.ok()) return status;
  DataPage page;
  if (oldPlace_ != row) {
    status = DataPage::Open(pager_, oldPlace_.page, &page);
    if (!status.ok()) return status;
    page.Delete(oldPlace_.slot);
    status = MarkRoom(oldPlace_.page);
    if (!status.ok()) return status;
  }
  status = DataPage::Open(pager_, row.page, &page);
  if (!status.ok()) return status;
  page.Delete(row.slot);
  status = MarkRoom(row.page);
  if (status.ok()) status = SetRowCount(count - 1);
  if (status.ok()) status = change.Commit();
  if (!status.ok()) return status;
  table_.rowCount_ = count - 1;
  return {};
}

Status TableWriter::Prepare() {
  Status status = store_.PrepareWrite();
  return status.ok() ? table_.EnsureIndexesChecked() : status;
}

void TableWriter::TakeChanges(std::span<const FieldChange> fields) {
  changes_.assign(def_.columns.size(), nullptr);
  for (const FieldChange& field : fields) changes_[field.column] = &field;
}

// A copy, so that nothing that is written can change it.
Status TableWriter::LoadOldRow(RowPointer row) {
  RowView view;
  Status status = table_.ReadRow(row, &view, &oldPlace_);
  if (!status.ok()) return status;
  oldRow_.assign(view.Bytes().begin(), view.Bytes().end());
  (void)old_.Parse(format_, def_, oldRow_);  // parsed before
  old_.SetPage(oldPlace_.page);
  return {};
}

// Leaves in given_ the changes that do change something.
Status TableWriter::KeepRealChanges(std::span<const FieldChange> fields) {
  for (const FieldChange& field : fields) {
    bool present = false;
    ByteView content;
    const Status status = table_.ReadContent(old_, field.column, &scratch_, &present, &content);
    // A value that is too damaged to be read may still be replaced.
    const bool same = status.ok() && present == !field.isNull &&
                      (field.isNull || CompareBytes(content, field.content) == 0);
    if (!same) given_.push_back(field);
  }
  TakeChanges(given_);
  return {};
}

Status TableWriter::CheckFields(bool isNew) const {
  for (std::size_t i = 0; i < def_.columns.size(); ++i) {
    const Column& column = def_.columns[i];
    const FieldChange* change = changes_[i];
    const bool isNull = change == nullptr ? isNew : change->isNull;
    if (!isNull || column.IsBoolean()) continue;
    if (column.required) {
      return Status(ErrorNumber::RequiredField, "Field \"" + column.name + "\" needs a value");
    }
    if (isNew && column.type == FieldType::Guid && (column.flags & kColumnAutoGuid) != 0) {
      return Status(ErrorNumber::Unsupported,
                    "Field \"" + column.name + "\" is numbered with ids made at random");
    }
  }
  return {};
}

// Gives the autonumber column, unless a value is given, the number after the last one.
Status TableWriter::AssignAutoNumber() {
  for (std::size_t i = 0; i < def_.columns.size(); ++i) {
    const Column& column = def_.columns[i];
    if (!column.IsAutoNumber() || column.type != FieldType::Long) continue;
    const int number = static_cast<int>(i);
    const auto given = std::find_if(given_.begin(), given_.end(), [&](const FieldChange& field) {
      return field.column == number && !field.isNull;
    });
    if (given != given_.end()) {
      autoNumber_ = static_cast<std::int32_t>(GetU32(given->content.data()));
      return {};
    }
    const std::uint8_t* bytes = nullptr;
    Status status = pager_.Read(def_.page, &bytes);
    if (!status.ok()) return status;
    const std::uint32_t next = GetU32(bytes + format_.autoNumberAt) + 1;
    autoNumber_ = static_cast<std::int32_t>(next);
    AppendU32(&autoNumberContent_, next);
    given_.push_back({number, false, autoNumberContent_});
    return {};
  }
  return {};
}

Status TableWriter::PutAutoNumber() {
  if (autoNumber_ == 0) return {};
  PageEditor editor;
  Status status = pager_.Edit(def_.page, &editor);
  if (!status.ok()) return status;
  const auto last = static_cast<std::int32_t>(GetU32(editor.Data() + format_.autoNumberAt));
  if (autoNumber_ > last) {
    editor.PutU32(format_.autoNumberAt, static_cast<std::uint32_t>(autoNumber_));
  }
  return {};
}

Status TableWriter::BuildNewRow(bool hasOld) {
  fields_.assign(def_.columns.size(), {});
  for (std::size_t i = 0; i < def_.columns.size(); ++i) {
    RawField& field = fields_[i];
    if (changes_[i] != nullptr) {
      field = {!changes_[i]->isNull, changes_[i]->content};
    } else if (hasOld) {
      const RowView::Field old = old_.Get(def_.columns[i], &field.bytes);
      if (old == RowView::Field::Bad) {
        return Status(ErrorNumber::Damaged,
                      "The row cannot be written again: the place of field \"" +
                          def_.columns[i].name + "\" is impossible",
                      oldPlace_.page);
      }
      field.present = old == RowView::Field::Present;
    }
  }
  Status status = StoreLongValues(hasOld);
  if (!status.ok()) return status;
  if (!BuildRow(format_, def_, fields_, &row_)) {
    return Status(ErrorNumber::RecordTooLarge, "The record would be larger than " +
                                                   std::to_string(format_.maxRowSize) + " bytes");
  }
  return {};
}

// Stores the long values that change and puts their heads into the fields.
Status TableWriter::StoreLongValues(bool hasOld) {
  std::size_t changed = 0;
  for (const FieldChange* change : changes_) {
    if (change != nullptr && def_.columns[change->column].IsLongValue()) ++changed;
  }
  // The fields refer into it, so it must not move.
  longValueFields_.reserve(changed * (kLongValueHead + format_.inlineLimit));
  for (const FieldChange* change : changes_) {
    if (change == nullptr || !def_.columns[change->column].IsLongValue()) continue;
    const Column& column = def_.columns[change->column];
    ByteView oldField;
    const bool wasPresent = hasOld && old_.Get(column, &oldField) == RowView::Field::Present;
    if (change->isNull) {
      if (wasPresent) oldValues_.push_back(change->column);
      continue;
    }
    LongValueWriter writer(pager_, allocator_, column);
    const std::size_t begin = longValueFields_.size();
    Status status;
    if (wasPresent) status = writer.Overwrite(oldField, change->content, &longValueFields_);
    if (status.ok() && longValueFields_.size() == begin) {
      if (wasPresent) oldValues_.push_back(change->column);
      status = writer.Store(change->content, &longValueFields_);
    }
    if (!status.ok()) return status;
    fields_[change->column].bytes = ByteView(longValueFields_).subspan(begin);
  }
  return {};
}

Status TableWriter::ReleaseOldValues() {
  for (const int column : oldValues_) {
    ByteView field;
    if (old_.Get(def_.columns[column], &field) != RowView::Field::Present) continue;
    Status status = LongValueWriter(pager_, allocator_, def_.columns[column]).Release(field);
    if (!status.ok()) return status;
  }
  return {};
}

Status TableWriter::PlaceNew(std::uint16_t flags, RowPointer* place) {
  DataPage page;
  FreeSpace space(pager_, allocator_, def_.ownedMap, def_.freeMap, def_.page);
  Status status = space.FindRoom(static_cast<std::uint32_t>(row_.size()), &page, &place->page);
  if (status.ok()) place->slot = page.Insert(row_, flags);
  return status;
}

// Home if there is room, else where the row is already, else elsewhere; wherever it is, index
// entries point to its home.
Status TableWriter::PlaceUpdated(RowPointer home) {
  const auto length = static_cast<std::uint32_t>(row_.size());
  const bool wasMoved = oldPlace_ != home;
  DataPage page;
  Status status = DataPage::Open(pager_, home.page, &page);
  if (!status.ok()) return status;
  const Slot slot = page.GetSlot(home.slot);
  if (length <= slot.Length() + page.FreeBytes()) {
    page.Resize(home.slot, length);
    page.SetFlags(home.slot, 0);
    page.Write(home.slot, row_);
    if (length < slot.Length()) status = MarkRoom(home.page);
    if (!status.ok() || !wasMoved) return status;
    status = DataPage::Open(pager_, oldPlace_.page, &page);
    if (!status.ok()) return status;
    page.Delete(oldPlace_.slot);
    return MarkRoom(oldPlace_.page);
  }
  if (wasMoved) {
    DataPage target;
    status = DataPage::Open(pager_, oldPlace_.page, &target);
    if (!status.ok()) return status;
    if (length <= target.GetSlot(oldPlace_.slot).Length() + target.FreeBytes()) {
      target.Resize(oldPlace_.slot, length);
      target.Write(oldPlace_.slot, row_);
      return {};
    }
    target.Delete(oldPlace_.slot);
    status = MarkRoom(oldPlace_.page);
    if (!status.ok()) return status;
  }
  RowPointer place;
  status = PlaceNew(kSlotDeleted, &place);
  if (status.ok()) status = DataPage::Open(pager_, home.page, &page);
  if (!status.ok()) return status;
  if (page.GetSlot(home.slot).Length() + page.FreeBytes() < kPointerBytes) {
    return Status(ErrorNumber::RecordTooLarge, "There is no room for a pointer to the row",
                  home.page);
  }
  std::uint8_t pointer[kPointerBytes];
  PutU32(pointer, place.Packed());
  page.Resize(home.slot, kPointerBytes);
  page.SetFlags(home.slot, kSlotOverflow);
  page.Write(home.slot, pointer);
  return MarkRoom(home.page);
}

Status TableWriter::MarkRoom(std::uint32_t page) {
  if (!def_.freeMap) return {};
  UsageMap free;
  Status status = UsageMap::Open(pager_, def_.freeMap, &free);
  return status.ok() ? free.Add(page, allocator_) : status;
}

Status TableWriter::SetRowCount(std::uint32_t count) {
  PageEditor editor;
  Status status = pager_.Edit(def_.page, &editor);
  if (!status.ok()) return status;
  if (GetU32(editor.Data() + format_.rowCountAt) != count) {
    editor.PutU32(format_.rowCountAt, count);
  }
  return {};
}

}  // namespace jet
