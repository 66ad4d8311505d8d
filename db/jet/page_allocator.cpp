// SPDX-License-Identifier: MIT

#include "db/jet/page_allocator.h"

#include <algorithm>

namespace jet {
namespace {

constexpr std::uint32_t kGrowBytes = 32;  // of the window, at a time
constexpr RowPointer kGlobalMap = {kGlobalMapPage, 0};

}  // namespace

// The lowest page that is free and in the file; kNoPage when there is none.
Status PageAllocator::FindFree(std::uint32_t* page) {
  UsageMap map;
  Status status = UsageMap::Open(pager_, kGlobalMap, &map);
  if (!status.ok()) return status;
  *page = 2;  // pages 0 and 1 are never free
  while (true) {
    status = map.Next(*page, page);
    if (!status.ok() || *page == kNoPage) return status;
    if (*page >= inUse_.size() || !inUse_[*page]) return {};
    ++*page;
  }
}

Status PageAllocator::IsFree(std::uint32_t page, bool* isFree) {
  UsageMap map;
  Status status = UsageMap::Open(pager_, kGlobalMap, &map);
  if (!status.ok()) return status;
  return map.Contains(page, isFree);
}

Status PageAllocator::Allocate(std::uint32_t* page) {
  Status status = FindFree(page);
  if (!status.ok()) return status;
  if (*page != kNoPage) {
    PageEditor editor;
    status = pager_.Edit(*page, &editor);
    if (!status.ok()) return status;
    editor.Fill(0, pager_.GetFormat().pageSize, 0);
  } else {
    status = pager_.Append(page);
    if (!status.ok()) return status;
  }
  return MarkUsed(*page);
}

Status PageAllocator::Free(std::uint32_t page) {
  PageEditor editor;
  Status status = pager_.Edit(page, &editor);
  if (!status.ok()) return status;
  editor.PutU8(0, editor.Data()[0] == kDataPage ? kFreedDataPage : kFreedOtherPage);
  if (page < inUse_.size()) inUse_[page] = false;
  return MarkFree(page);
}

Status PageAllocator::MarkUsed(std::uint32_t page) {
  UsageMap map;
  Status status = UsageMap::Open(pager_, kGlobalMap, &map);
  if (!status.ok()) return status;
  if (map.IsReference()) return PutReferenced(page, false);
  const std::uint32_t first = map.WindowFirst();
  if (page < first) return {};  // below the window everything is in use
  if (page - first >= map.WindowPages()) {
    status = GrowWindow(page);
    if (!status.ok()) return status;
    status = UsageMap::Open(pager_, kGlobalMap, &map);
    if (!status.ok()) return status;
  }
  return map.PutBit(page, false);
}

Status PageAllocator::MarkFree(std::uint32_t page) {
  UsageMap map;
  Status status = UsageMap::Open(pager_, kGlobalMap, &map);
  if (!status.ok()) return status;
  if (map.IsReference()) return PutReferenced(page, true);
  const std::uint32_t first = map.WindowFirst();
  if (page >= first) {
    // Above the window everything is free already.
    return page - first < map.WindowPages() ? map.PutBit(page, true) : Status();
  }
  // The window must begin at 0 to reach the page: the gap is in use.
  DataPage dataPage;
  status = DataPage::Open(pager_, kGlobalMapPage, &dataPage);
  if (!status.ok()) return status;
  const Bytes old(map.bytes_ + map.row_.begin, map.bytes_ + map.row_.end);
  const std::uint32_t gap = (first + 7) / 8;
  if (first % 8 != 0 || gap > dataPage.FreeBytes()) return {};  // the page is lost, harmlessly
  Bytes row(UsageMap::kBitsAt + gap);
  Append(&row, ByteView(old).subspan(UsageMap::kBitsAt));
  dataPage.Resize(0, static_cast<std::uint32_t>(row.size()));
  dataPage.Write(0, row);
  status = UsageMap::Open(pager_, kGlobalMap, &map);
  if (!status.ok()) return status;
  return map.PutBit(page, true);
}

// Lengthens the window until it covers `page`; the new pages are free.
Status PageAllocator::GrowWindow(std::uint32_t page) {
  DataPage dataPage;
  Status status = DataPage::Open(pager_, kGlobalMapPage, &dataPage);
  if (!status.ok()) return status;
  const Slot slot = dataPage.GetSlot(0);
  const std::uint8_t* bytes = nullptr;
  status = pager_.Read(kGlobalMapPage, &bytes);
  if (!status.ok()) return status;
  Bytes row(bytes + slot.begin, bytes + slot.end);
  const std::uint32_t first = GetU32(&row[1]);
  const std::uint32_t neededBits = page - first + 1;
  const std::uint32_t missing = (neededBits + 7) / 8 - (slot.Length() - UsageMap::kBitsAt);
  const std::uint32_t grow = (missing + kGrowBytes - 1) / kGrowBytes * kGrowBytes;
  if (grow > dataPage.FreeBytes()) {
    return Status(ErrorNumber::DiskFull, "The map of pages is full: the database is too large",
                  kGlobalMapPage);
  }
  row.resize(row.size() + grow, 0xFF);
  dataPage.Resize(0, static_cast<std::uint32_t>(row.size()));
  dataPage.Write(0, row);
  return {};
}

// For a global map that is a list of bitmap pages.  A missing one is appended.
Status PageAllocator::PutReferenced(std::uint32_t page, bool isFree) {
  UsageMap map;
  Status status = UsageMap::Open(pager_, kGlobalMap, &map);
  if (!status.ok()) return status;
  const std::uint32_t perPage = pager_.GetFormat().pagesPerMapPage;
  const std::uint32_t index = page / perPage;
  if (index >= map.ReferenceCount()) {
    return Status(ErrorNumber::DiskFull, "The map of pages is full: the database is too large",
                  kGlobalMapPage);
  }
  if (map.Reference(index) != 0) {
    const std::uint8_t* bits = nullptr;
    status = map.ReadBitmapPage(map.Reference(index), &bits);
    if (!status.ok()) return status;
    return map.PutBit(page, isFree);
  }
  std::uint32_t bitmapPage = 0;
  status = pager_.Append(&bitmapPage);
  if (!status.ok()) return status;
  PageEditor editor;
  status = pager_.Edit(bitmapPage, &editor);
  if (!status.ok()) return status;
  editor.PutU16(0, kMapPage | 0x100);
  status = pager_.Edit(kGlobalMapPage, &editor);
  if (!status.ok()) return status;
  editor.PutU32(map.row_.begin + 1 + 4 * index, bitmapPage);
  const std::uint32_t base = index * perPage;
  for (std::uint32_t p = std::max(base, bitmapPage + 1); p < base + perPage; ++p) {
    status = map.PutBit(p, true);
    if (!status.ok()) return status;
  }
  status = map.PutBit(page, isFree);
  if (!status.ok()) return status;
  return bitmapPage / perPage == index ? Status() : PutReferenced(bitmapPage, false);
}

}  // namespace jet
