// SPDX-License-Identifier: MIT
//
// The free pages of the file: the global map, row 0 of page 1.

#ifndef DB_JET_PAGE_ALLOCATOR_H_
#define DB_JET_PAGE_ALLOCATOR_H_

#include <cstdint>
#include <vector>

#include "db/jet/pager.h"
#include "db/jet/usage_map.h"

namespace jet {

class PageAllocator {
 public:
  explicit PageAllocator(Pager& pager) : pager_(pager) {}

  // Takes the lowest free page, or appends one, and clears it.
  // REQUIRES: a Change is open.
  Status Allocate(std::uint32_t* page);
  // Gives a page back.
  Status Free(std::uint32_t page);

  // Whether the global map says that a page is free.
  Status IsFree(std::uint32_t page, bool* isFree);

  // Pages that are in use whatever the map says are not given out.  `inUse` is by page.
  void Protect(std::vector<bool> inUse) { inUse_ = std::move(inUse); }

 private:
  Status FindFree(std::uint32_t* page);
  Status MarkUsed(std::uint32_t page);
  Status MarkFree(std::uint32_t page);
  Status GrowWindow(std::uint32_t page);
  Status PutReferenced(std::uint32_t page, bool isFree);

  Pager& pager_;
  std::vector<bool> inUse_;
};

}  // namespace jet

#endif  // DB_JET_PAGE_ALLOCATOR_H_
