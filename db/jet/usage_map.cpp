// SPDX-License-Identifier: MIT

#include "db/jet/usage_map.h"

#include <algorithm>
#include <bit>
#include <string>

#include "db/jet/page_allocator.h"

namespace jet {
namespace {

constexpr std::uint32_t kBitmapAt = 4;  // on a bitmap page

// The first set bit of bits[from, count), or `count`.
std::uint32_t NextBit(const std::uint8_t* bits, std::uint32_t from, std::uint32_t count) {
  while (from < count) {
    const auto rest = static_cast<std::uint8_t>(bits[from / 8] >> (from % 8));
    if (rest != 0) return std::min(count, from + std::countr_zero(rest));
    from = (from / 8 + 1) * 8;
  }
  return count;
}

// The last set bit of bits[0, end), or kNoPage.
std::uint32_t PreviousBit(const std::uint8_t* bits, std::uint32_t end) {
  while (end > 0) {
    const std::uint32_t byte = (end - 1) / 8;
    const std::uint32_t kept = end - byte * 8;  // 1 to 8 bits
    const auto rest = static_cast<std::uint8_t>(bits[byte] << (8 - kept));
    if (rest != 0) return end - 1 - std::countl_zero(rest);
    end = byte * 8;
  }
  return kNoPage;
}

}  // namespace

Status UsageMap::Open(Pager& pager, RowPointer at, UsageMap* map) {
  map->pager_ = &pager;
  map->at_ = at;
  map->bytes_ = nullptr;
  if (!at) return {};
  Status status = FindRow(pager, at, &map->row_, &map->bytes_);
  if (!status.ok()) return status;
  const std::uint32_t owner = PageOwner(map->bytes_);
  if (map->row_.flags != 0 || map->row_.Length() < kBitsAt || owner > 1 ||
      map->bytes_[map->row_.begin] > 1) {
    return Status(ErrorNumber::Damaged, "Row " + std::to_string(at.slot) + " is not a usage map",
                  at.page);
  }
  return {};
}

Status UsageMap::ReadBitmapPage(std::uint32_t page, const std::uint8_t** bits) const {
  Status status = pager_->Read(page, bits);
  if (!status.ok()) return status;
  if ((*bits)[0] != kMapPage) {
    return Status(ErrorNumber::Damaged,
                  "A usage map points to the page, which is not one of its kind", page);
  }
  *bits += kBitmapAt;
  return {};
}

Status UsageMap::Next(std::uint32_t from, std::uint32_t* page) const {
  *page = kNoPage;
  const std::uint32_t limit = pager_->PageCount();
  if (bytes_ == nullptr || from >= limit) return {};
  if (!IsReference()) {
    const std::uint32_t first = WindowFirst();
    if (first >= limit) return {};
    const std::uint32_t count = std::min(WindowPages(), limit - first);
    const std::uint32_t bit =
        NextBit(bytes_ + row_.begin + kBitsAt, from > first ? from - first : 0, count);
    if (bit < count) *page = first + bit;
    return {};
  }
  const std::uint32_t perPage = pager_->GetFormat().pagesPerMapPage;
  for (std::uint32_t i = from / perPage; i < ReferenceCount() && i * perPage < limit; ++i) {
    if (Reference(i) == 0) continue;
    const std::uint8_t* bits = nullptr;
    Status status = ReadBitmapPage(Reference(i), &bits);
    if (!status.ok()) return status;
    const std::uint32_t base = i * perPage;
    const std::uint32_t count = std::min(perPage, limit - base);
    const std::uint32_t bit = NextBit(bits, from > base ? from - base : 0, count);
    if (bit < count) {
      *page = base + bit;
      return {};
    }
  }
  return {};
}

Status UsageMap::Previous(std::uint32_t from, std::uint32_t* page) const {
  *page = kNoPage;
  if (bytes_ == nullptr || pager_->PageCount() == 0) return {};
  from = std::min(from, pager_->PageCount() - 1);
  if (!IsReference()) {
    const std::uint32_t first = WindowFirst();
    if (from < first) return {};
    const std::uint32_t bit =
        PreviousBit(bytes_ + row_.begin + kBitsAt, std::min(WindowPages(), from - first + 1));
    if (bit != kNoPage) *page = first + bit;
    return {};
  }
  const std::uint32_t perPage = pager_->GetFormat().pagesPerMapPage;
  for (std::uint32_t i = std::min(from / perPage + 1, ReferenceCount()); i-- > 0;) {
    if (Reference(i) == 0) continue;
    const std::uint8_t* bits = nullptr;
    Status status = ReadBitmapPage(Reference(i), &bits);
    if (!status.ok()) return status;
    const std::uint32_t base = i * perPage;
    const std::uint32_t bit = PreviousBit(bits, std::min(perPage, from - base + 1));
    if (bit != kNoPage) {
      *page = base + bit;
      return {};
    }
  }
  return {};
}

Status UsageMap::Contains(std::uint32_t page, bool* contains) const {
  std::uint32_t found = kNoPage;
  Status status = Next(page, &found);
  *contains = found == page;
  return status;
}

Status UsageMap::AllPages(std::vector<std::uint32_t>* pages) const {
  std::uint32_t page = 0;
  while (true) {
    Status status = Next(page, &page);
    if (!status.ok() || page == kNoPage) return status;
    pages->push_back(page++);
  }
}

Status UsageMap::BitmapPages(std::vector<std::uint32_t>* pages) const {
  if (bytes_ == nullptr || !IsReference()) return {};
  const std::uint32_t limit = pager_->PageCount();
  for (std::uint32_t i = 0; i < ReferenceCount(); ++i) {
    const bool isNeeded = i * pager_->GetFormat().pagesPerMapPage < limit;
    if (Reference(i) != 0 && (isNeeded || Reference(i) < limit)) pages->push_back(Reference(i));
  }
  return {};
}

Status UsageMap::PutBit(std::uint32_t page, bool value) {
  PageEditor editor;
  Status status;
  std::uint32_t bit = 0;
  std::uint32_t bitsAt = 0;
  if (IsReference()) {
    const std::uint32_t perPage = pager_->GetFormat().pagesPerMapPage;
    status = pager_->Edit(Reference(page / perPage), &editor);
    bit = page % perPage;
    bitsAt = kBitmapAt;
  } else {
    status = pager_->Edit(at_.page, &editor);
    bit = page - WindowFirst();
    bitsAt = row_.begin + kBitsAt;
  }
  if (!status.ok()) return status;
  const std::uint32_t at = bitsAt + bit / 8;
  const auto mask = static_cast<std::uint8_t>(1U << (bit % 8));
  const std::uint8_t old = editor.Data()[at];
  const auto changed = static_cast<std::uint8_t>(value ? old | mask : old & ~mask);
  if (changed != old) editor.PutU8(at, changed);
  return {};
}

Status UsageMap::Add(std::uint32_t page, PageAllocator& allocator) {
  if (bytes_ == nullptr) {
    return Status(ErrorNumber::Unsupported, "The table has no usage map to enter a page into");
  }
  if (IsReference()) return AddByReference(page, allocator);
  const std::uint32_t first = WindowFirst();
  if (page >= first && page - first < WindowPages()) return PutBit(page, true);

  std::vector<std::uint32_t> pages;
  Status status = AllPages(&pages);
  if (!status.ok()) return status;
  pages.insert(std::lower_bound(pages.begin(), pages.end(), page), page);
  const std::uint32_t newFirst = pages.front() / 8 * 8;
  if (pages.back() - newFirst >= WindowPages()) return MakeReference(pages, allocator);
  PageEditor editor;
  status = pager_->Edit(at_.page, &editor);
  if (!status.ok()) return status;
  editor.PutU32(row_.begin + 1, newFirst);
  editor.Fill(row_.begin + kBitsAt, row_.Length() - kBitsAt, 0);
  for (const std::uint32_t member : pages) {
    status = PutBit(member, true);
    if (!status.ok()) return status;
  }
  return {};
}

Status UsageMap::MakeReference(const std::vector<std::uint32_t>& pages, PageAllocator& allocator) {
  PageEditor editor;
  Status status = pager_->Edit(at_.page, &editor);
  if (!status.ok()) return status;
  editor.Fill(row_.begin, row_.Length(), 0);
  editor.PutU8(row_.begin, 1);
  for (const std::uint32_t page : pages) {
    status = AddByReference(page, allocator);
    if (!status.ok()) return status;
  }
  return {};
}

Status UsageMap::AddByReference(std::uint32_t page, PageAllocator& allocator) {
  const std::uint32_t index = page / pager_->GetFormat().pagesPerMapPage;
  if (index >= ReferenceCount()) {
    return Status(ErrorNumber::DiskFull, "A usage map is full: the database is too large");
  }
  if (Reference(index) == 0) {
    std::uint32_t bitmapPage = 0;
    Status status = allocator.Allocate(&bitmapPage);
    if (!status.ok()) return status;
    PageEditor editor;
    status = pager_->Edit(bitmapPage, &editor);
    if (!status.ok()) return status;
    editor.PutU16(0, kMapPage | 0x100);
    status = pager_->Edit(at_.page, &editor);
    if (!status.ok()) return status;
    editor.PutU32(row_.begin + 1 + 4 * index, bitmapPage);
  } else {
    const std::uint8_t* bits = nullptr;
    Status status = ReadBitmapPage(Reference(index), &bits);
    if (!status.ok()) return status;
  }
  return PutBit(page, true);
}

Status UsageMap::Remove(std::uint32_t page) {
  bool contains = false;
  Status status = Contains(page, &contains);
  if (!status.ok() || !contains) return status;
  return PutBit(page, false);
}

}  // namespace jet
