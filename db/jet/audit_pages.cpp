// SPDX-License-Identifier: MIT

#include "db/jet/audit_pages.h"

#include "db/jet/data_page.h"

namespace jet {
namespace {

constexpr const char* kMapOwner = "usage maps";

}  // namespace

void AuditPages::Claim(std::uint32_t page, const std::string& owner) {
  if (page >= owners_.size()) {
    log_.Problem(owner, "page " + std::to_string(page) + " is not in the file");
  } else if (owners_[page].empty()) {
    owners_[page] = owner;
  } else {
    log_.Problem(owner, "the page belongs to " + owners_[page] + " as well", page);
  }
}

void AuditPages::ClaimMap(RowPointer at, const std::string& owner,
                          std::vector<std::uint32_t>* pages) {
  if (!at) return;
  UsageMap map;
  Status status = UsageMap::Open(pager_, at, &map);
  std::vector<std::uint32_t> bitmaps;
  if (status.ok()) status = map.BitmapPages(&bitmaps);
  if (status.ok()) status = map.AllPages(pages);
  if (!status.ok()) {
    log_.Problem(owner, status);
    return;
  }
  if (!mapRows_.insert(at.Packed()).second) {
    log_.Problem(owner, "another usage map has the same row", at.page, at.slot);
  }
  if (owners_[at.page] != kMapOwner) Claim(at.page, kMapOwner);
  for (const std::uint32_t page : bitmaps) Claim(page, owner + " (bitmap)");
}

bool AuditPages::CheckDataPage(std::uint32_t page, std::uint32_t owner,
                               const std::string& subject) {
  const Format& format = pager_.GetFormat();
  const std::uint8_t* bytes = nullptr;
  Status status = pager_.Read(page, &bytes);
  std::uint32_t count = 0;
  if (status.ok()) status = CountSlots(format, bytes, page, &count);
  if (!status.ok()) {
    log_.Problem(subject, status);
    return false;
  }
  if (PageOwner(bytes) != owner) {
    log_.Problem(subject, "the page says that it belongs to " + std::to_string(PageOwner(bytes)),
                 page);
    return false;
  }
  std::uint32_t lowest = format.pageSize;
  for (std::uint32_t i = 0; i < count; ++i) {
    Slot slot;
    if (!ReadSlot(format, bytes, count, i, &slot)) {
      log_.Problem(subject, "the offset of the row is impossible", page, static_cast<int>(i));
      return false;
    }
    lowest = slot.begin;
  }
  const std::uint32_t free = lowest - format.slotsAt - 2 * count;
  if (GetU16(bytes + 2) != free) {
    log_.Problem(subject,
                 "the count of free bytes is " + std::to_string(GetU16(bytes + 2)) + ", not " +
                     std::to_string(free),
                 page);
  }
  return true;
}

}  // namespace jet
