// SPDX-License-Identifier: MIT
//
// A data page: rows stacked from its end, a table of slots from its beginning.

#ifndef DB_JET_DATA_PAGE_H_
#define DB_JET_DATA_PAGE_H_

#include <cstdint>

#include "db/jet/bytes.h"
#include "db/jet/format.h"
#include "db/jet/pager.h"
#include "db/jet/status.h"

namespace jet {

// Where the row of a slot stands on its page.
struct Slot {
  std::uint32_t begin = 0;
  std::uint32_t end = 0;
  std::uint16_t flags = 0;

  std::uint32_t Length() const { return end - begin; }
  // A row that a scan of the table finds.
  bool IsLive() const { return (flags & kSlotDeleted) == 0; }
  bool IsOverflow() const { return flags == kSlotOverflow; }
  bool IsDead() const { return flags == (kSlotDeleted | kSlotOverflow); }
};

// The number of slots of a data page, checked against its size; 0 with an error.
Status CountSlots(const Format& format, const std::uint8_t* bytes, std::uint32_t page,
                  std::uint32_t* count);

// The slot `index` of a data page whose slot table is known to reach that far.  False when
// its offsets are impossible.
inline bool ReadSlot(const Format& format, const std::uint8_t* bytes, std::uint32_t count,
                     std::uint32_t index, Slot* slot) {
  const std::uint8_t* entry = bytes + format.slotsAt + 2 * index;
  const std::uint16_t raw = GetU16(entry);
  slot->begin = raw & kSlotOffset;
  slot->flags = raw & static_cast<std::uint16_t>(kSlotDeleted | kSlotOverflow);
  slot->end = index == 0 ? format.pageSize : GetU16(entry - 2) & kSlotOffset;
  return slot->begin >= format.slotsAt + 2 * count && slot->begin <= slot->end &&
         slot->end <= format.pageSize;
}

// The bytes of the row at `at`, dead or alive; Damaged when there is no such row.
Status FindRow(Pager& pager, RowPointer at, Slot* slot, const std::uint8_t** pageBytes);

// The owner field of a page's head: definition page, kLongValueOwner or 0.
inline std::uint32_t PageOwner(const std::uint8_t* bytes) { return GetU32(bytes + 4); }

// A data page to be changed.  Its whole slot table has been checked.
class DataPage {
 public:
  static Status Open(Pager& pager, std::uint32_t page, DataPage* dataPage);
  // Makes an appended or freed page an empty data page.
  static Status Format(Pager& pager, std::uint32_t page, std::uint32_t owner, DataPage* dataPage);

  std::uint32_t Owner() const { return PageOwner(editor_.Data()); }
  std::uint32_t FreeBytes() const { return lowest_ - format_->slotsAt - 2 * count_; }
  Slot GetSlot(std::uint8_t index) const;
  bool HasLiveRows() const;  // or targets of overflow pointers

  bool Fits(std::uint32_t length) const;
  // Adds a row with the slot's `flags`.  REQUIRES: Fits(row.size()).
  std::uint8_t Insert(ByteView row, std::uint16_t flags = 0);
  // Makes the row `length` bytes long; its content is then undefined.
  // REQUIRES: length <= its length + FreeBytes().
  void Resize(std::uint8_t index, std::uint32_t length);
  // Overwrites the beginning of a row.
  void Write(std::uint8_t index, ByteView bytes);
  void SetFlags(std::uint8_t index, std::uint16_t flags);
  // Leaves a dead slot, or none when it was the last.
  void Delete(std::uint8_t index);

 private:
  void PutFree();

  PageEditor editor_;
  const jet::Format* format_ = nullptr;
  std::uint32_t count_ = 0;
  std::uint32_t lowest_ = 0;
};

}  // namespace jet

#endif  // DB_JET_DATA_PAGE_H_
