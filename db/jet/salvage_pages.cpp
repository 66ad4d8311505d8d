// SPDX-License-Identifier: MIT

#include "db/jet/salvage_pages.h"

#include <algorithm>
#include <utility>

#include "db/jet/page_allocator.h"

namespace jet {
namespace {

// Pages enough to tell the version by.
constexpr std::uint64_t kGuessedFrom = std::uint64_t{16} << 20;
constexpr std::size_t kSector = 512;

// A file with zeros where it cannot be read and behind its end.
class ReadableFile : public PageFile {
 public:
  ReadableFile(std::shared_ptr<PageFile> file, std::uint64_t size)
      : file_(std::move(file)), size_(size) {}

  Status Size(std::uint64_t* size) override {
    *size = size_;
    return {};
  }

  Status Read(std::uint64_t offset, std::span<std::uint8_t> bytes) override {
    std::fill(bytes.begin(), bytes.end(), 0);
    if (offset >= size_) return {};
    const std::span<std::uint8_t> there =
        bytes.first(std::min<std::uint64_t>(bytes.size(), size_ - offset));
    if (file_->Read(offset, there).ok()) return {};
    for (std::size_t at = 0; at < there.size(); at += kSector) {
      const auto sector = there.subspan(at, std::min(kSector, there.size() - at));
      if (!file_->Read(offset + at, sector).ok()) std::fill(sector.begin(), sector.end(), 0);
    }
    return {};
  }

  Status Write(std::uint64_t, std::span<const std::uint8_t>) override { return ReadOnly(); }
  Status Truncate(std::uint64_t) override { return ReadOnly(); }

 private:
  static Status ReadOnly() { return Status(ErrorNumber::ReadOnly, "A damaged file is only read"); }

  const std::shared_ptr<PageFile> file_;
  const std::uint64_t size_;
};

}  // namespace

SlotTable ReadSlots(const Format& format, ByteView page) {
  SlotTable table;
  const std::uint32_t stated = GetU16(&page[format.slotCountAt]);
  const std::uint32_t room = (format.pageSize - format.slotsAt) / 2;
  const std::uint32_t count = std::min({stated, kMaxSlots, room});
  bool areSound = stated == count;
  std::uint32_t lowest = format.pageSize;
  for (std::uint32_t i = 0; i < count; ++i) {
    SlotTable::Entry& entry = table.entries.emplace_back();
    entry.isSound = ReadSlot(format, page.data(), count, i, &entry.slot);
    areSound = areSound && entry.isSound;
    lowest = entry.slot.begin;
  }
  table.isSound =
      areSound && page[0] == kDataPage && GetU16(&page[2]) == lowest - format.slotsAt - 2 * count;
  return table;
}

Status SalvagePages::Open(std::unique_ptr<PageFile> file, std::unique_ptr<SalvagePages>* pages) {
  std::uint64_t size = 0;
  Status status = file->Size(&size);
  if (!status.ok()) return status;
  if (size > kJet4.maxFileSize) {
    return Status(ErrorNumber::UnknownFormat, "The file is larger than a Jet database can be");
  }
  pages->reset(new SalvagePages(std::move(file), size));
  return {};
}

SalvagePages::SalvagePages(std::shared_ptr<PageFile> file, std::uint64_t size)
    : file_(std::make_shared<ReadableFile>(std::move(file), size)), size_(size) {
  GuessFormat();
  const auto count = static_cast<std::uint32_t>((size + format_->pageSize - 1) / format_->pageSize);
  pager_ = std::make_unique<Pager>(std::make_unique<ReadableFile>(file_, size), *format_, count);
}

// By the pages with rows: what is one in the one version is none in the other.
void SalvagePages::GuessFormat() {
  const auto soundPages = [this](const Format& format) {
    Bytes page(format.pageSize);
    int sound = 0;
    for (std::uint64_t at = 0; at < std::min(size_, kGuessedFrom); at += page.size()) {
      (void)file_->Read(at, page);  // zeros where it fails
      const SlotTable slots = ReadSlots(format, page);
      if (slots.isSound && !slots.entries.empty()) ++sound;
    }
    return sound;
  };
  format_ = soundPages(kJet3) > soundPages(kJet4) ? &kJet3 : &kJet4;
  buffer_.resize(format_->pageSize);
}

ByteView SalvagePages::Read(std::uint32_t page) {
  (void)file_->Read(std::uint64_t{page} * format_->pageSize, buffer_);
  return buffer_;
}

std::uint32_t SalvagePages::LengthOf(std::uint32_t page) const {
  const std::uint64_t begin = std::uint64_t{page} * format_->pageSize;
  if (begin >= size_) return 0;
  return static_cast<std::uint32_t>(std::min<std::uint64_t>(size_ - begin, format_->pageSize));
}

bool SalvagePages::IsSaidFree(std::uint32_t page) {
  bool isFree = false;
  return PageAllocator(*pager_).IsFree(page, &isFree).ok() && isFree;
}

}  // namespace jet
