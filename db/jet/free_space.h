// SPDX-License-Identifier: MIT
//
// Where a row goes: the data pages of a table or of a long-value column that have room.

#ifndef DB_JET_FREE_SPACE_H_
#define DB_JET_FREE_SPACE_H_

#include <cstdint>

#include "db/jet/data_page.h"
#include "db/jet/format.h"
#include "db/jet/page_allocator.h"
#include "db/jet/pager.h"
#include "db/jet/status.h"

namespace jet {

// The data pages of one owner.  REQUIRES: a Change is open.
class FreeSpace {
 public:
  // `freeMap` may be null; `owner` is what the head of each page says.
  FreeSpace(Pager& pager, PageAllocator& allocator, RowPointer ownedMap, RowPointer freeMap,
            std::uint32_t owner)
      : pager_(pager),
        allocator_(allocator),
        ownedMap_(ownedMap),
        freeMap_(freeMap),
        owner_(owner) {}

  // Opens a page that a row of `length` bytes fits on: the last one of the free-space map if it
  // does, otherwise the first one of the map, otherwise a new one.
  Status FindRoom(std::uint32_t length, DataPage* page, std::uint32_t* number);

  // A new, empty page that the free-space map does not name.
  Status NewPage(DataPage* page, std::uint32_t* number);

 private:
  // Opens the page if the row fits on it; otherwise *fits is false, and a page with next to
  // no room leaves the free-space map.
  Status Try(std::uint32_t number, std::uint32_t length, DataPage* page, bool* fits);

  Pager& pager_;
  PageAllocator& allocator_;
  const RowPointer ownedMap_;
  const RowPointer freeMap_;
  const std::uint32_t owner_;
};

}  // namespace jet

#endif  // DB_JET_FREE_SPACE_H_
