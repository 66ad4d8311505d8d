// SPDX-License-Identifier: MIT
//
// What an open database consists of: pages, free pages, catalogue, open tables.

#ifndef DB_JET_STORE_H_
#define DB_JET_STORE_H_

#include <cstdint>
#include <ctime>
#include <memory>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

#include "db/jet/header.h"
#include "db/jet/page_allocator.h"
#include "db/jet/page_file.h"
#include "db/jet/pager.h"
#include "db/jet/property_blob.h"
#include "db/jet/status.h"
#include "db/jet/table.h"

namespace jet {

// A row of MSysObjects.
struct CatalogEntry {
  std::int32_t id = 0;  // of a table: its definition page
  std::int32_t parent = 0;
  std::string name;
  std::int32_t type = 0;
  std::uint32_t flags = 0;
  RowPointer row;

  static constexpr std::int32_t kTable = 1;

  bool IsTable() const { return type == kTable; }
  bool IsUserTable() const { return IsTable() && (flags & 0x80000002) == 0; }
};

class Store {
 public:
  // Reads header and catalogue.
  static Status Open(std::unique_ptr<PageFile> file, bool writable, std::shared_ptr<Store>* store);
  // A Jet 4 store over an empty file, whose pages are yet to be made.
  static std::shared_ptr<Store> ForCreation(std::unique_ptr<PageFile> file);

  Pager& GetPager() { return pager_; }
  PageAllocator& Allocator() { return allocator_; }
  const Header& GetHeader() const { return header_; }
  const Format& GetFormat() const { return pager_.GetFormat(); }

  // Success, or why the database cannot be changed.
  Status CheckWritable() const;
  // The same, and makes sure that no page in use will be given out as free.
  Status PrepareWrite();

  // The catalogue.  It is read again after ForgetCatalog and when a change was dropped.
  Status Catalog(const std::vector<CatalogEntry>** entries);
  void ForgetCatalog() { catalogRead_ = false; }
  // NoSuchTable when there is none.
  Status FindTable(std::string_view name, CatalogEntry* entry);
  Status ReadProperties(const CatalogEntry& entry, std::vector<Property>* properties);
  Status OpenTable(std::string_view name, std::shared_ptr<Table>* table);
  // The table whose definition begins at `page`; for those of the system, whose rows in the
  // catalogue are not needed.
  Status OpenTableAt(std::uint32_t page, std::string name, std::vector<Property> properties,
                     std::shared_ptr<Table>* table);

  // Days since 1899-12-30, local time, for the dates of the catalogue; or a fixed date.
  double Now() const;
  void SetNow(double days) { fixedNow_ = days; }
  // An instant on the local clock, in such days; that of the world where there is no other.
  static double LocalDays(std::time_t instant);

  // Keeps all changes from now on in memory; nothing while a batch is open.
  void BeginBatch();
  // Writes what the batch changed and ends it.  DiskError or DiskFull when a write fails: then all
  // of it is dropped.  Success without a batch.
  Status CommitBatch();
  // Ends the batch, if one is open, with everything as it was before it.
  void DropBatch();

 private:
  Store(std::unique_ptr<PageFile> file, const Header& header, bool writable);

  Status ReadCatalog();

  const Header header_;
  const bool writable_;
  Pager pager_;
  PageAllocator allocator_;
  std::vector<CatalogEntry> catalog_;
  bool catalogRead_ = false;
  std::uint64_t catalogRollbacks_ = 0;  // dropped changes when the catalogue was read
  std::unordered_map<std::uint32_t, std::shared_ptr<Table>> tables_;  // by definition page
  bool usedPagesKnown_ = false;
  double fixedNow_ = 0;
  std::unique_ptr<Change> batch_;
};

}  // namespace jet

#endif  // DB_JET_STORE_H_
