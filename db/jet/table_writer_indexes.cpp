// SPDX-License-Identifier: MIT
//
// What an edit of a row does to the table's indexes.

#include <string>

#include "db/jet/index_cursor.h"
#include "db/jet/index_writer.h"
#include "db/jet/key_codec.h"
#include "db/jet/table_writer.h"

namespace jet {

std::string TableWriter::IndexName(const RealIndex& index) const {
  const auto real = static_cast<std::uint32_t>(&index - def_.realIndexes.data());
  for (const LogicalIndex& logical : def_.logicalIndexes) {
    if (logical.real == real) return logical.name;
  }
  return {};
}

Status TableWriter::PlanIndexes(bool hasOld, RowPointer row) {
  for (const RealIndex& index : def_.realIndexes) {
    bool isTouched = !hasOld;
    for (const IndexColumn& part : index.columns) {
      isTouched = isTouched || changes_[part.column] != nullptr;
    }
    if (!isTouched) continue;
    edits_.emplace_back();
    Status status = PlanIndex(index, hasOld, row, &edits_.back());
    if (!status.ok()) return status;
  }
  return {};
}

Status TableWriter::PlanIndex(const RealIndex& index, bool hasOld, RowPointer row,
                              IndexEdit* edit) {
  Status status;
  if (hasOld) {
    status = PlanRemoval(index, row, edit);
    if (!status.ok()) return status;
  }
  edit->index = &index;
  bool hasNull = false;
  status = NewKey(index, hasOld, &edit->newEntry, &edit->adds, &hasNull);
  if (!status.ok()) return status;
  if (hasNull && index.IsRequired()) {
    return Status(ErrorNumber::NullKey,
                  "Index \"" + IndexName(index) + "\" needs a value in each of its fields");
  }
  if (edit->newEntry.size() + kEntryPointer > IndexWriter::MaxEntry(format_)) {
    return Status(ErrorNumber::RecordTooLarge,
                  "The fields of index \"" + IndexName(index) + "\" are too long together");
  }
  if (edit->removes && edit->adds &&
      CompareBytes(ByteView(edit->oldEntry).first(edit->oldEntry.size() - kEntryPointer),
                   edit->newEntry) == 0) {
    edit->removes = edit->adds = false;  // the values differ, their keys do not
    return {};
  }
  if (!edit->adds) return {};
  bool has = false;
  status = HasKey(index, edit->newEntry, row, &has);
  if (!status.ok()) return status;
  edit->isNewKey = !has;
  if (has && index.IsUnique() && !hasNull) {
    return Status(ErrorNumber::DuplicateKey,
                  "Another record has the same value in index \"" + IndexName(index) + "\"");
  }
  return {};
}

Status TableWriter::PlanRemoval(const RealIndex& index, RowPointer row, IndexEdit* edit) {
  edit->index = &index;
  KeyInfo info;
  Status status = table_.AppendRowKey(index, old_, &edit->oldEntry, &info);
  edit->removes = info.entered;
  if (!status.ok() || !edit->removes) return status;
  if (info.known) {
    AppendRowPointer(&edit->oldEntry, row);
    return {};
  }
  return FindEntryOf(index, row, &edit->oldEntry, &edit->removes);
}

Status TableWriter::NewKey(const RealIndex& index, bool hasOld, Bytes* key, bool* entered,
                           bool* hasNull) {
  bool allNull = true;
  for (const IndexColumn& part : index.columns) {
    const Column& column = def_.columns[part.column];
    const FieldChange* change = changes_[part.column];
    bool present = false;
    ByteView content;
    if (change != nullptr) {
      present = !change->isNull;
      content = change->content;
    } else if (hasOld) {
      Status status = table_.ReadContent(old_, part.column, &scratch_, &present, &content);
      if (!status.ok()) return status;
    }
    if (!present && !column.IsBoolean()) {
      *hasNull = true;
    } else {
      allNull = false;
    }
    if (AppendKey(format_, column, part.ascending, present ? &content : nullptr, key)) continue;
    return Status(ErrorNumber::Unsupported,
                  HasKnownKeys(column)
                      ? "Field \"" + column.name + "\" has a character that cannot be indexed"
                      : "Field \"" + column.name + "\" is in an index of an unsupported kind");
  }
  *entered = !(allNull && index.IgnoresNulls());
  return {};
}

// By its row pointer, for a row whose key this engine cannot make.
Status TableWriter::FindEntryOf(const RealIndex& index, RowPointer row, Bytes* entry, bool* found) {
  *found = false;
  IndexCursor cursor(pager_, def_.page, index.root);
  Status status = cursor.SeekFirst();
  while (status.ok() && !cursor.AtEnd()) {
    if (cursor.Row() == row) {
      *entry = cursor.Entry();
      *found = true;
      return {};
    }
    status = cursor.Next();
  }
  return status;
}

// Whether a row other than `except` has an entry of that key.
Status TableWriter::HasKey(const RealIndex& index, ByteView key, RowPointer except, bool* has) {
  *has = false;
  IndexCursor cursor(pager_, def_.page, index.root);
  Status status = cursor.Seek(key);
  while (status.ok() && !cursor.AtEnd() && cursor.Entry().size() == key.size() + kEntryPointer &&
         StartsWith(cursor.Entry(), key)) {
    if (cursor.Row() != except) {
      *has = true;
      return {};
    }
    status = cursor.Next();
  }
  return status;
}

Status TableWriter::ApplyIndexes(RowPointer row) {
  for (IndexEdit& edit : edits_) {
    const RealIndex& index = *edit.index;
    IndexWriter writer(pager_, allocator_, def_.page, index);
    int newKeys = 0;
    if (edit.removes) {
      const ByteView oldEntry = edit.oldEntry;
      Status status = writer.Remove(oldEntry);
      if (!status.ok()) return status;
      bool has = false;
      status = HasKey(index, oldEntry.first(oldEntry.size() - kEntryPointer), {}, &has);
      if (!status.ok()) return status;
      if (!has) --newKeys;
    }
    if (edit.adds) {
      AppendRowPointer(&edit.newEntry, row);
      Status status = writer.Insert(edit.newEntry);
      if (!status.ok()) return status;
      if (edit.isNewKey) ++newKeys;
    }
    Status status = AddToDistinctKeys(index, newKeys);
    if (!status.ok()) return status;
  }
  return {};
}

Status TableWriter::AddToDistinctKeys(const RealIndex& index, int difference) {
  if (difference == 0 || index.distinctKeysAt + 4 > format_.pageSize) return {};
  const std::uint8_t* bytes = nullptr;
  Status status = pager_.Read(def_.page, &bytes);
  if (!status.ok()) return status;
  const std::uint32_t count = GetU32(bytes + index.distinctKeysAt);
  if (difference < 0 && count == 0) return {};  // it was stale
  return PutDistinctKeys(pager_, def_.page, index, count + static_cast<std::uint32_t>(difference));
}

}  // namespace jet
