// SPDX-License-Identifier: MIT

#include "db/jet/data_page.h"

#include <string>

namespace jet {

Status CountSlots(const Format& format, const std::uint8_t* bytes, std::uint32_t page,
                  std::uint32_t* count) {
  *count = 0;
  if (bytes[0] != kDataPage) {
    return Status(ErrorNumber::Damaged,
                  "A data page is expected but the page has type " + std::to_string(bytes[0]),
                  page);
  }
  const std::uint32_t slots = GetU16(bytes + format.slotCountAt);
  if (slots > kMaxSlots || format.slotsAt + 2 * slots > format.pageSize) {
    return Status(ErrorNumber::Damaged, "The page cannot have " + std::to_string(slots) + " rows",
                  page);
  }
  *count = slots;
  return {};
}

Status FindRow(Pager& pager, RowPointer at, Slot* slot, const std::uint8_t** pageBytes) {
  Status status = pager.Read(at.page, pageBytes);
  if (!status.ok()) return status;
  std::uint32_t count = 0;
  status = CountSlots(pager.GetFormat(), *pageBytes, at.page, &count);
  if (!status.ok()) return status;
  if (at.slot >= count || !ReadSlot(pager.GetFormat(), *pageBytes, count, at.slot, slot)) {
    return Status(ErrorNumber::Damaged, "Row " + std::to_string(at.slot) + " is not on the page",
                  at.page);
  }
  return {};
}

Status DataPage::Open(Pager& pager, std::uint32_t page, DataPage* dataPage) {
  Status status = pager.Edit(page, &dataPage->editor_);
  if (!status.ok()) return status;
  const jet::Format& format = pager.GetFormat();
  dataPage->format_ = &format;
  const std::uint8_t* bytes = dataPage->editor_.Data();
  status = CountSlots(format, bytes, page, &dataPage->count_);
  if (!status.ok()) return status;
  // As ReadSlot checks them, one after the other.
  const std::uint32_t least = format.slotsAt + 2 * dataPage->count_;
  std::uint32_t lowest = format.pageSize;
  for (std::uint32_t at = format.slotsAt; at < least; at += 2) {
    const std::uint32_t begin = GetU16(bytes + at) & kSlotOffset;
    if (begin < least || begin > lowest) {
      const std::uint32_t row = (at - format.slotsAt) / 2;
      return Status(ErrorNumber::Damaged,
                    "The offset of row " + std::to_string(row) + " is impossible", page);
    }
    lowest = begin;
  }
  dataPage->lowest_ = lowest;
  return {};
}

Status DataPage::Format(Pager& pager, std::uint32_t page, std::uint32_t owner, DataPage* dataPage) {
  PageEditor& editor = dataPage->editor_;
  Status status = pager.Edit(page, &editor);
  if (!status.ok()) return status;
  dataPage->format_ = &pager.GetFormat();
  dataPage->count_ = 0;
  dataPage->lowest_ = dataPage->format_->pageSize;
  editor.PutU16(0, kDataPage | 0x100);
  editor.PutU32(4, owner);
  dataPage->PutFree();
  return {};
}

Slot DataPage::GetSlot(std::uint8_t index) const {
  Slot slot;
  (void)ReadSlot(*format_, editor_.Data(), count_, index, &slot);  // checked when opened
  return slot;
}

bool DataPage::HasLiveRows() const {
  for (std::uint32_t i = 0; i < count_; ++i) {
    if (!GetSlot(static_cast<std::uint8_t>(i)).IsDead()) return true;
  }
  return false;
}

void DataPage::PutFree() { editor_.PutU16(2, FreeBytes()); }

bool DataPage::Fits(std::uint32_t length) const {
  if (count_ < kMaxSlots) return length + 2 <= FreeBytes();
  // All row numbers are given: a dead one may be given again.
  if (length > FreeBytes()) return false;
  for (std::uint32_t i = 0; i < kMaxSlots; ++i) {
    if (GetSlot(static_cast<std::uint8_t>(i)).IsDead()) return true;
  }
  return false;
}

std::uint8_t DataPage::Insert(ByteView row, std::uint16_t flags) {
  std::uint32_t index = count_;
  const auto length = static_cast<std::uint32_t>(row.size());
  if (count_ < kMaxSlots) {
    lowest_ -= length;
    ++count_;
    editor_.PutU16(format_->slotsAt + 2 * index, lowest_ | flags);
    editor_.PutU16(format_->slotCountAt, count_);
    PutFree();
    editor_.Put(lowest_, row);
    return static_cast<std::uint8_t>(index);
  }
  for (index = 0; !GetSlot(static_cast<std::uint8_t>(index)).IsDead();) ++index;
  Resize(static_cast<std::uint8_t>(index), length);
  const auto slot = static_cast<std::uint8_t>(index);
  SetFlags(slot, flags);
  Write(slot, row);
  return slot;
}

void DataPage::Resize(std::uint8_t index, std::uint32_t length) {
  const Slot slot = GetSlot(index);
  if (length == slot.Length()) return;
  const std::uint32_t grow = length - slot.Length();  // wraps around when it shrinks
  editor_.Move(lowest_ - grow, lowest_, slot.begin - lowest_);
  for (std::uint32_t i = index; i < count_; ++i) {
    const std::uint32_t at = format_->slotsAt + 2 * i;
    const std::uint16_t raw = GetU16(editor_.Data() + at);
    editor_.PutU16(at, (raw & ~kSlotOffset) | ((raw & kSlotOffset) - grow));
  }
  lowest_ -= grow;
  PutFree();
}

void DataPage::Write(std::uint8_t index, ByteView bytes) {
  editor_.Put(GetSlot(index).begin, bytes);
}

void DataPage::SetFlags(std::uint8_t index, std::uint16_t flags) {
  const Slot slot = GetSlot(index);
  if (slot.flags == flags) return;
  editor_.PutU16(format_->slotsAt + 2 * std::uint32_t{index}, slot.begin | flags);
}

void DataPage::Delete(std::uint8_t index) {
  Resize(index, 0);
  SetFlags(index, kSlotDeleted | kSlotOverflow);
  while (count_ > 0) {
    const Slot last = GetSlot(static_cast<std::uint8_t>(count_ - 1));
    if (!last.IsDead() || last.Length() != 0) break;
    --count_;
  }
  editor_.PutU16(format_->slotCountAt, count_);
  PutFree();
}

}  // namespace jet
