// SPDX-License-Identifier: MIT

#include "db/jet/free_space.h"

#include "db/jet/bytes.h"
#include "db/jet/usage_map.h"

namespace jet {

Status FreeSpace::Try(std::uint32_t number, std::uint32_t length, DataPage* page, bool* fits) {
  *fits = false;
  const std::uint8_t* bytes = nullptr;
  Status status = pager_.Read(number, &bytes);
  if (!status.ok()) return status;
  if (bytes[0] != kDataPage || PageOwner(bytes) != owner_) return {};
  const std::uint32_t room = GetU16(bytes + 2);
  const bool isFull = room < pager_.GetFormat().pageSize / 16;
  if (room < length && !isFull) return {};

  UsageMap owned;
  status = UsageMap::Open(pager_, ownedMap_, &owned);
  bool isOurs = false;
  if (status.ok()) status = owned.Contains(number, &isOurs);
  if (!status.ok() || !isOurs) return status;
  *fits = room >= length && DataPage::Open(pager_, number, page).ok() && page->Fits(length);
  if (*fits || !isFull) return {};
  UsageMap free;
  status = UsageMap::Open(pager_, freeMap_, &free);
  return status.ok() ? free.Remove(number) : status;
}

Status FreeSpace::FindRoom(std::uint32_t length, DataPage* page, std::uint32_t* number) {
  UsageMap free;
  Status status = UsageMap::Open(pager_, freeMap_, &free);
  // Records that are added one after the other go to the page added last; pages before it
  // often all have some room left, but too little for another record.
  if (status.ok()) status = free.Previous(kNoPage, number);
  bool fits = false;
  const std::uint32_t last = *number;
  if (status.ok() && last != kNoPage) status = Try(last, length, page, &fits);
  if (!status.ok() || fits) return status;

  // A page that is passed over here may never be filled again, so all of them are looked at.
  if (last != kNoPage) {
    for (*number = 0;; ++*number) {
      status = free.Next(*number, number);
      if (!status.ok()) return status;
      if (*number >= last) break;
      status = Try(*number, length, page, &fits);
      if (!status.ok() || fits) return status;
    }
  }
  status = NewPage(page, number);
  if (!status.ok() || !freeMap_) return status;
  status = UsageMap::Open(pager_, freeMap_, &free);
  return status.ok() ? free.Add(*number, allocator_) : status;
}

Status FreeSpace::NewPage(DataPage* page, std::uint32_t* number) {
  Status status = allocator_.Allocate(number);
  if (status.ok()) status = DataPage::Format(pager_, *number, owner_, page);
  UsageMap owned;
  if (status.ok()) status = UsageMap::Open(pager_, ownedMap_, &owned);
  return status.ok() ? owned.Add(*number, allocator_) : status;
}

}  // namespace jet
