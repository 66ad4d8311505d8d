// SPDX-License-Identifier: MIT

#include "db/jet/long_value.h"

#include <algorithm>
#include <string>
#include <vector>

#include "db/jet/data_page.h"
#include "db/jet/usage_map.h"

namespace jet {
namespace {

constexpr std::uint32_t kLengthMask = 0x3FFFFFFF;
constexpr std::uint32_t kNextBytes = 4;  // row pointer at the head of each part of a chain

void AppendHead(std::uint32_t length, std::uint8_t kind, RowPointer row, Bytes* field) {
  std::uint8_t head[kLongValueHead] = {};
  PutU32(head, length | (std::uint32_t{kind} << 30));
  PutU32(head + 4, row.Packed());
  Append(field, head);
}

Status Damaged(RowPointer row, const std::string& text) {
  return Status(ErrorNumber::Damaged, "Long value: row " + std::to_string(row.slot) + " " + text,
                row.page);
}

}  // namespace

Status ReadLongValueHead(ByteView field, LongValueHead* head) {
  if (field.size() < kLongValueHead) {
    return Status(ErrorNumber::Damaged, "The head of a long value is cut off");
  }
  const std::uint32_t first = GetU32(field.data());
  head->length = first & kLengthMask;
  head->kind = static_cast<std::uint8_t>(first >> 30);
  head->row = RowPointer::Unpack(GetU32(&field[4]));
  if (head->kind > LongValueHead::kInline) {
    return Status(ErrorNumber::Damaged, "A long value is of an unknown kind");
  }
  if (head->kind == LongValueHead::kInline && head->length > field.size() - kLongValueHead) {
    return Status(ErrorNumber::Damaged, "A long value reaches past its row");
  }
  return {};
}

Status LongValueRows::Next(RowPointer* row, ByteView* part, bool* done) {
  const bool isChain = head_.kind == LongValueHead::kChain;
  *done = rest_ == 0 || (!isChain && steps_ > 0);
  if (*done) {
    // A chain that goes on has come by a circle to the parts that it ends with.
    return isChain && next_ ? Damaged(next_, "follows the end of its value") : Status();
  }
  *row = next_;
  if (!*row) return Status(ErrorNumber::Damaged, "A long value ends before its length");
  if (*row == remembered_) return Damaged(*row, "is met twice in its chain");
  if (++steps_ == rememberAt_) {
    remembered_ = *row;
    rememberAt_ *= 2;
  }
  Slot slot;
  const std::uint8_t* page = nullptr;
  Status status = FindRow(pager_, *row, &slot, &page);
  if (!status.ok()) return status;
  if (PageOwner(page) != kLongValueOwner || slot.flags != 0) {
    return Damaged(*row, "does not hold a long value");
  }
  const ByteView bytes(page + slot.begin, slot.Length());
  if (head_.kind == LongValueHead::kSingle) {
    if (bytes.size() < rest_) return Damaged(*row, "is shorter than its value");
    *part = bytes.first(rest_);
    return {};
  }
  if (bytes.size() <= kNextBytes) return Damaged(*row, "is too short for a part of a chain");
  next_ = RowPointer::Unpack(GetU32(bytes.data()));
  *part = bytes.subspan(kNextBytes, std::min<std::size_t>(rest_, bytes.size() - kNextBytes));
  rest_ -= static_cast<std::uint32_t>(part->size());
  return {};
}

Status ReadLongValue(Pager& pager, ByteView field, Bytes* scratch, ByteView* value) {
  LongValueHead head;
  Status status = ReadLongValueHead(field, &head);
  if (!status.ok()) return status;
  if (head.kind == LongValueHead::kInline) {
    *value = field.subspan(kLongValueHead, head.length);
    return {};
  }
  scratch->clear();
  *value = {};
  LongValueRows rows(pager, head);
  while (true) {
    RowPointer row;
    ByteView part;
    bool done = false;
    status = rows.Next(&row, &part, &done);
    if (!status.ok()) return status;
    if (done) break;
    if (head.kind == LongValueHead::kSingle) {
      *value = part;
    } else {
      Append(scratch, part);
    }
  }
  if (head.kind == LongValueHead::kChain) *value = *scratch;
  return {};
}

Status LongValueWriter::StoreRow(ByteView content, RowPointer* row) {
  DataPage page;
  Status status = Space().FindRoom(static_cast<std::uint32_t>(content.size()), &page, &row->page);
  if (!status.ok()) return status;
  row->slot = page.Insert(content);
  return {};
}

// Each part has a page of its own, as in files of other software.
Status LongValueWriter::StoreChain(ByteView content, RowPointer* first) {
  const std::size_t partSize = pager_.GetFormat().chainPart;
  std::vector<std::pair<std::uint32_t, DataPage>> pages((content.size() + partSize - 1) / partSize);
  for (auto& [number, page] : pages) {
    Status status = Space().NewPage(&page, &number);
    if (!status.ok()) return status;
  }
  Bytes row;
  for (std::size_t i = 0; i < pages.size(); ++i) {
    const RowPointer next = {i + 1 < pages.size() ? pages[i + 1].first : 0, 0};
    row.clear();
    AppendU32(&row, next.Packed());
    const std::size_t begin = i * partSize;
    Append(&row, content.subspan(begin, std::min(partSize, content.size() - begin)));
    pages[i].second.Insert(row);
  }
  *first = {pages.front().first, 0};
  return {};
}

Status LongValueWriter::Store(ByteView content, Bytes* field) {
  const Format& format = pager_.GetFormat();
  if (content.size() > kLengthMask) {
    return Status(ErrorNumber::ValueTooLong, "Field \"" + column_.name + "\" takes at most 1 GiB");
  }
  const auto length = static_cast<std::uint32_t>(content.size());
  if (length <= format.inlineLimit) {
    AppendHead(length, LongValueHead::kInline, {}, field);
    Append(field, content);
    return {};
  }
  RowPointer row;
  const bool single = length <= format.singleLimit;
  Status status = single ? StoreRow(content, &row) : StoreChain(content, &row);
  if (!status.ok()) return status;
  AppendHead(length, single ? LongValueHead::kSingle : LongValueHead::kChain, row, field);
  return {};
}

Status LongValueWriter::Overwrite(ByteView oldField, ByteView content, Bytes* field) {
  const Format& format = pager_.GetFormat();
  LongValueHead head;
  if (!ReadLongValueHead(oldField, &head).ok() || head.kind != LongValueHead::kSingle) return {};
  if (content.size() <= format.inlineLimit || content.size() > format.singleLimit) return {};
  Slot slot;
  const std::uint8_t* bytes = nullptr;
  if (!FindRow(pager_, head.row, &slot, &bytes).ok() || PageOwner(bytes) != kLongValueOwner ||
      slot.flags != 0) {
    return {};
  }
  DataPage page;
  if (!DataPage::Open(pager_, head.row.page, &page).ok()) return {};
  const auto length = static_cast<std::uint32_t>(content.size());
  if (length > slot.Length() + page.FreeBytes()) return {};
  page.Resize(head.row.slot, length);
  page.Write(head.row.slot, content);
  AppendHead(length, LongValueHead::kSingle, head.row, field);
  return {};
}

Status LongValueWriter::ReleaseRow(RowPointer row) {
  UsageMap owned;
  Status status = UsageMap::Open(pager_, column_.ownedMap, &owned);
  if (!status.ok()) return status;
  bool isOurs = false;
  status = owned.Contains(row.page, &isOurs);
  if (!status.ok() || !isOurs) return status;
  DataPage page;
  status = DataPage::Open(pager_, row.page, &page);
  if (!status.ok()) return status;
  page.Delete(row.slot);
  const bool isEmpty = !page.HasLiveRows();
  if (isEmpty) {
    status = owned.Remove(row.page);
    if (!status.ok()) return status;
  }
  if (column_.freeMap) {
    UsageMap free;
    status = UsageMap::Open(pager_, column_.freeMap, &free);
    if (!status.ok()) return status;
    status = isEmpty ? free.Remove(row.page) : free.Add(row.page, allocator_);
    if (!status.ok()) return status;
  }
  return isEmpty ? allocator_.Free(row.page) : Status();
}

Status LongValueWriter::Release(ByteView field) {
  LongValueHead head;
  if (!ReadLongValueHead(field, &head).ok() || head.kind == LongValueHead::kInline) return {};
  // The rows are collected first: a part's pointer is gone once its row is.
  std::vector<RowPointer> all;
  LongValueRows rows(pager_, head);
  while (true) {
    RowPointer row;
    ByteView part;
    bool done = false;
    if (!rows.Next(&row, &part, &done).ok()) return {};
    if (done) break;
    all.push_back(row);
  }
  for (const RowPointer row : all) {
    Status status = ReleaseRow(row);
    if (!status.ok()) return status;
  }
  return {};
}

}  // namespace jet
