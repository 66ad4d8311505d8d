// SPDX-License-Identifier: MIT

#include "db/jet/ownership.h"

#include "db/jet/store.h"
#include "db/jet/usage_map.h"

namespace jet {
namespace {

class UsedPages {
 public:
  UsedPages(Pager& pager, std::vector<bool>* used) : pager_(pager), used_(*used) {}

  void Mark(std::uint32_t page) {
    if (page < used_.size()) used_[page] = true;
  }

  void MarkMap(RowPointer at) {
    UsageMap map;
    if (!at || !UsageMap::Open(pager_, at, &map).ok()) return;
    Mark(at.page);
    std::vector<std::uint32_t> pages;
    (void)map.BitmapPages(&pages);  // what was found up to a damage counts
    (void)map.AllPages(&pages);
    for (const std::uint32_t page : pages) Mark(page);
  }

 private:
  Pager& pager_;
  std::vector<bool>& used_;
};

}  // namespace

Status CollectUsedPages(Store& store, std::vector<bool>* used) {
  Pager& pager = store.GetPager();
  used->assign(pager.PageCount(), false);
  UsedPages pages(pager, used);
  pages.Mark(0);
  pages.MarkMap({kGlobalMapPage, 1});
  UsageMap global;
  if (UsageMap::Open(pager, {kGlobalMapPage, 0}, &global).ok()) {
    std::vector<std::uint32_t> bitmaps;
    (void)global.BitmapPages(&bitmaps);
    for (const std::uint32_t page : bitmaps) pages.Mark(page);
  }
  pages.Mark(kGlobalMapPage);
  const std::vector<CatalogEntry>* entries = nullptr;
  Status status = store.Catalog(&entries);
  if (!status.ok()) return status;
  for (const CatalogEntry& entry : *entries) {
    TableDef def;
    if (!entry.IsTable() || !ReadTableDef(pager, static_cast<std::uint32_t>(entry.id), &def).ok()) {
      continue;
    }
    for (const std::uint32_t page : def.pages) pages.Mark(page);
    pages.MarkMap(def.ownedMap);
    pages.MarkMap(def.freeMap);
    for (const RealIndex& index : def.realIndexes) {
      pages.MarkMap(index.pageMap);
      pages.Mark(index.root);
    }
    for (const Column& column : def.columns) {
      pages.MarkMap(column.ownedMap);
      pages.MarkMap(column.freeMap);
    }
  }
  return {};
}

}  // namespace jet
