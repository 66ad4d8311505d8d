// SPDX-License-Identifier: MIT
//
// A set of page numbers, stored as a row: a window of bits, or references to pages of bits.

#ifndef DB_JET_USAGE_MAP_H_
#define DB_JET_USAGE_MAP_H_

#include <cstdint>
#include <vector>

#include "db/jet/data_page.h"
#include "db/jet/pager.h"

namespace jet {

class PageAllocator;

// The map of a table, an index or a long-value column.  A null row pointer is an empty map
// that cannot grow.  The object must not outlive the change in which it was opened; maps of
// foreign files may be moved by any change.
class UsageMap {
 public:
  static Status Open(Pager& pager, RowPointer at, UsageMap* map);

  // The smallest page of the set that is >= `from` and in the file; kNoPage when there is
  // none.
  Status Next(std::uint32_t from, std::uint32_t* page) const;
  // The largest page of the set that is <= `from`; kNoPage when there is none.
  Status Previous(std::uint32_t from, std::uint32_t* page) const;
  Status Contains(std::uint32_t page, bool* contains) const;
  Status AllPages(std::vector<std::uint32_t>* pages) const;

  // The pages of bits, if any.  Where the list goes on for pages that the file does not have, other
  // software leaves what stood there before: what leads to no page is passed over.
  Status BitmapPages(std::vector<std::uint32_t>* pages) const;

  // REQUIRES: a Change is open, and no other map of the same page was changed since Open.
  Status Add(std::uint32_t page, PageAllocator& allocator);
  Status Remove(std::uint32_t page);

 private:
  friend class PageAllocator;

  bool IsReference() const { return bytes_[row_.begin] == 1; }
  std::uint32_t WindowFirst() const { return GetU32(bytes_ + row_.begin + 1); }
  std::uint32_t WindowPages() const { return (row_.Length() - kBitsAt) * 8; }
  std::uint32_t ReferenceCount() const { return (row_.Length() - 1) / 4; }
  std::uint32_t Reference(std::uint32_t index) const {
    return GetU32(bytes_ + row_.begin + 1 + 4 * index);
  }
  Status ReadBitmapPage(std::uint32_t page, const std::uint8_t** bits) const;
  // Sets or clears one bit; REQUIRES that it is inside the window, or its page is there.
  Status PutBit(std::uint32_t page, bool value);
  Status MakeReference(const std::vector<std::uint32_t>& pages, PageAllocator& allocator);
  Status AddByReference(std::uint32_t page, PageAllocator& allocator);

  static constexpr std::uint32_t kBitsAt = 5;

  Pager* pager_ = nullptr;
  RowPointer at_;
  const std::uint8_t* bytes_ = nullptr;  // of the page the row is on
  Slot row_;
};

}  // namespace jet

#endif  // DB_JET_USAGE_MAP_H_
