// SPDX-License-Identifier: MIT
//
// The pages of a file that may be damaged, without any belief in what they say of each other.

#ifndef DB_JET_SALVAGE_PAGES_H_
#define DB_JET_SALVAGE_PAGES_H_

#include <cstdint>
#include <memory>
#include <vector>

#include "db/jet/bytes.h"
#include "db/jet/data_page.h"
#include "db/jet/format.h"
#include "db/jet/page_file.h"
#include "db/jet/pager.h"
#include "db/jet/status.h"

namespace jet {

// The slots of a page as far as they make sense, whatever the page's type is said to be.
struct SlotTable {
  struct Entry {
    Slot slot;
    bool isSound = false;  // its bounds are possible
  };

  std::vector<Entry> entries;
  bool isSound = false;  // a data page, all bounds are possible and leave as much as it says
};

SlotTable ReadSlots(const Format& format, ByteView page);

class SalvagePages {
 public:
  static Status Open(std::unique_ptr<PageFile> file, std::unique_ptr<SalvagePages>* pages);

  // The version that more of the pages look like than the other.
  const Format& GetFormat() const { return *format_; }
  // The last one may be there in part.
  std::uint32_t Count() const { return pager_->PageCount(); }

  // The bytes of a page, zeros where the file has none; until the next call.
  ByteView Read(std::uint32_t page);
  // How many of a page's bytes the file has.
  std::uint32_t LengthOf(std::uint32_t page) const;

  // The same pages for the readers of sound structures, which report what is not.
  Pager& GetPager() { return *pager_; }

  // Whether the global map, if it can be read, says that the page is free.
  bool IsSaidFree(std::uint32_t page);

 private:
  SalvagePages(std::shared_ptr<PageFile> file, std::uint64_t size);

  void GuessFormat();

  std::shared_ptr<PageFile> file_;
  const std::uint64_t size_;
  const Format* format_ = nullptr;
  std::unique_ptr<Pager> pager_;
  Bytes buffer_;
};

}  // namespace jet

#endif  // DB_JET_SALVAGE_PAGES_H_
