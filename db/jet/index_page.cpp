// SPDX-License-Identifier: MIT

#include "db/jet/index_page.h"

#include <algorithm>
#include <bit>
#include <cstring>
#include <string>

namespace jet {
namespace {

constexpr std::uint32_t kMaxPrefix = 255;

std::uint32_t CommonPrefix(ByteView a, ByteView b) {
  const std::size_t most = std::min(a.size(), b.size());
  std::size_t i = 0;
  while (i < most && a[i] == b[i]) ++i;
  return static_cast<std::uint32_t>(i);
}

}  // namespace

int CompareBytes(ByteView a, ByteView b) {
  const std::size_t shared = std::min(a.size(), b.size());
  const int order = shared == 0 ? 0 : std::memcmp(a.data(), b.data(), shared);
  if (order != 0) return order < 0 ? -1 : 1;
  return a.size() == b.size() ? 0 : (a.size() < b.size() ? -1 : 1);
}

bool StartsWith(ByteView bytes, ByteView beginning) {
  return bytes.size() >= beginning.size() &&
         CompareBytes(bytes.first(beginning.size()), beginning) == 0;
}

void AppendRowPointer(Bytes* entry, RowPointer row) {
  entry->push_back(static_cast<std::uint8_t>(row.page >> 16));
  entry->push_back(static_cast<std::uint8_t>(row.page >> 8));
  entry->push_back(static_cast<std::uint8_t>(row.page));
  entry->push_back(row.slot);
}

RowPointer EntryRow(ByteView entry) {
  const std::uint8_t* pointer = entry.data() + entry.size() - kEntryPointer;
  return {GetU24BigEndian(pointer), pointer[3]};
}

Status IndexPage::Load(Pager& pager, std::uint32_t page, std::uint32_t table) {
  const auto damaged = [page](const std::string& text) {
    return Status(ErrorNumber::Damaged, "Index: " + text, page);
  };
  Status status = pager.Read(page, &bytes_);
  if (!status.ok()) return status;
  format_ = &pager.GetFormat();
  number_ = page;
  count_ = 0;
  if (bytes_[0] != kLeafPage && bytes_[0] != kNodePage) {
    return damaged("the page has type " + std::to_string(bytes_[0]) + ", not 3 or 4");
  }
  if (GetU32(bytes_ + 4) != table) return damaged("the page belongs to another table");

  prefix_ = format_->IsJet4() ? GetU16(bytes_ + format_->prefixAt) : bytes_[format_->prefixAt];
  const std::uint32_t area = format_->EntryArea();
  const std::uint8_t* mask = bytes_ + format_->maskAt;
  const std::uint32_t maskBytes = format_->entriesAt - format_->maskAt;
  std::uint32_t begin = 0;
  std::uint32_t shortest = area;
  for (std::uint32_t at = 0; at < maskBytes; at += 8) {
    std::uint64_t word = 0;
    if (at + 8 <= maskBytes) {
      word = GetU64(mask + at);
    } else {
      for (std::uint32_t i = at; i < maskBytes; ++i) {
        word |= std::uint64_t{mask[i]} << (8 * (i - at));
      }
    }
    for (; word != 0; word &= word - 1) {
      const std::uint32_t end = at * 8 + std::countr_zero(word);
      const std::uint32_t length = end - begin + (count_ == 0 ? 0 : prefix_);
      shortest = std::min(shortest, length);
      ends_[count_++] = static_cast<std::uint16_t>(end);
      begin = end;
    }
  }
  if (count_ == 0) return {};
  if (ends_[count_ - 1] > area) return damaged("an entry reaches past the page");
  if (ends_[0] < prefix_) return damaged("the shared beginning is longer than an entry");
  const std::size_t least = kEntryPointer + 1 + (IsLeaf() ? 0 : kChildPointer);
  if (shortest < least) return damaged("an entry is too short");
  return {};
}

ByteView IndexPage::Stored(int index) const {
  const std::uint32_t begin = Begin(index);
  return {bytes_ + format_->entriesAt + begin, ends_[index] - begin};
}

void IndexPage::Entry(int index, Bytes* entry) const {
  entry->clear();
  if (index > 0) Append(entry, Stored(0).first(prefix_));
  Append(entry, Stored(index));
  if (!IsLeaf()) entry->resize(entry->size() - kChildPointer);
}

// The child may reach into the shared beginning, so it is read from the whole entry.
std::uint32_t IndexPage::Child(int index) const {
  if (index >= count_) return Tail();
  const ByteView stored = Stored(index);
  if (stored.size() >= kChildPointer) {
    return GetU32BigEndian(stored.data() + stored.size() - kChildPointer);
  }
  Bytes whole;
  Append(&whole, Stored(0).first(prefix_));
  Append(&whole, stored);
  return GetU32BigEndian(whole.data() + whole.size() - kChildPointer);
}

RowPointer IndexPage::Row(int index) const {
  const ByteView stored = Stored(index);
  if (stored.size() >= kEntryPointer) return EntryRow(stored);
  Bytes whole;
  Append(&whole, Stored(0).first(prefix_));
  Append(&whole, stored);
  return EntryRow(whole);
}

int IndexPage::Compare(int index, ByteView key) const {
  const std::size_t childBytes = IsLeaf() ? 0 : kChildPointer;
  ByteView stored = Stored(index);
  if (index == 0 || prefix_ == 0) {
    return CompareBytes(stored.first(stored.size() - childBytes), key);
  }
  if (stored.size() < childBytes) {  // the shared beginning reaches into the child's number
    Bytes whole;
    Entry(index, &whole);
    return CompareBytes(whole, key);
  }
  const ByteView shared = Stored(0).first(prefix_);
  stored = stored.first(stored.size() - childBytes);
  if (key.size() <= shared.size()) {
    const int order = CompareBytes(shared, key);
    return order != 0 || stored.empty() ? order : 1;
  }
  const int order = CompareBytes(shared, key.first(shared.size()));
  return order != 0 ? order : CompareBytes(stored, key.subspan(shared.size()));
}

int IndexPage::LowerBound(ByteView key) const {
  int low = 0;
  int high = count_;
  while (low < high) {
    const int middle = (low + high) / 2;
    if (Compare(middle, key) < 0) {
      low = middle + 1;
    } else {
      high = middle;
    }
  }
  return low;
}

bool FitsLeaf(const EntryList& entries, std::size_t begin, std::size_t end, std::uint32_t room,
              std::uint32_t* prefix) {
  *prefix = 0;
  if (begin == end) return true;
  const std::uint8_t* first = entries[begin].data();
  const std::size_t whole = entries[end - 1].data() + entries[end - 1].size() - first;
  if (whole <= room) return true;
  const ByteView a = entries[begin];
  const ByteView b = entries[end - 1];
  // Sorted entries share what the first and the last share.  The row pointers are left out.
  const std::uint32_t shared =
      std::min(kMaxPrefix,
               CommonPrefix(a.first(a.size() - kEntryPointer), b.first(b.size() - kEntryPointer)));
  *prefix = shared;
  return whole - shared * (end - begin - 1) <= room;
}

namespace {

// Replaces the `removed` entries (0 or 1) from `position` by `entry`, which is empty for none.
Status Splice(Pager& pager, const IndexPage& leaf, int position, int removed, ByteView entry) {
  const Format& format = pager.GetFormat();
  PageEditor editor;
  Status status = pager.Edit(leaf.Number(), &editor);
  if (!status.ok()) return status;
  const std::uint32_t begin = position == 0 ? 0 : leaf.End(position - 1);
  const std::uint32_t end = removed == 0 ? begin : leaf.End(position);
  const auto newEnd = static_cast<std::uint32_t>(begin + entry.size());
  const std::uint32_t rest = leaf.StoredBytes() - end;

  std::array<std::uint8_t, 512> mask{};
  const auto mark = [&mask](std::uint32_t at) {
    mask[at / 8] |= static_cast<std::uint8_t>(1U << (at % 8));
  };
  // Bits of entries before the place stay; the byte that they share with it is made again.
  for (int i = position; i-- > 0 && leaf.End(i) / 8 >= begin / 8;) mark(leaf.End(i));
  if (!entry.empty()) mark(newEnd);
  for (int i = position + removed; i < leaf.Count(); ++i) mark(leaf.End(i) - end + newEnd);

  if (rest != 0) editor.Move(format.entriesAt + newEnd, format.entriesAt + end, rest);
  editor.Put(format.entriesAt + begin, entry);
  const std::uint32_t maskEnd = std::max(leaf.StoredBytes(), newEnd + rest) / 8 + 1;
  editor.Put(format.maskAt + begin / 8, ByteView(mask).subspan(begin / 8, maskEnd - begin / 8));
  editor.PutU16(2, format.EntryArea() - newEnd - rest);
  return {};
}

}  // namespace

Status InsertIntoLeaf(Pager& pager, const IndexPage& leaf, int position, ByteView entry) {
  return Splice(pager, leaf, position, 0, entry);
}

Status RemoveFromLeaf(Pager& pager, const IndexPage& leaf, int position) {
  return Splice(pager, leaf, position, 1, {});
}

Status WriteIndexPage(Pager& pager, std::uint32_t page, const IndexPageHead& head,
                      const EntryList& entries, std::size_t begin, std::size_t end,
                      std::uint32_t prefix) {
  const Format& format = pager.GetFormat();
  std::array<std::uint8_t, 4096> image{};
  PageEditor editor;
  Status status = pager.Edit(page, &editor);
  if (!status.ok()) return status;

  image[0] = head.level == 0 ? kLeafPage : kNodePage;
  image[1] = 1;
  PutU32(&image[4], head.table);
  PutU32(&image[format.previousAt], head.previous);
  PutU32(&image[format.nextAt], head.next);
  PutU32(&image[format.tailAt], head.tail);
  image[format.prefixAt] = static_cast<std::uint8_t>(prefix);
  image[format.levelAt] = head.level;
  std::uint32_t at = 0;
  for (std::size_t i = begin; i < end; ++i) {
    const ByteView stored = i == begin ? entries[i] : entries[i].subspan(prefix);
    std::memcpy(&image[format.entriesAt + at], stored.data(), stored.size());
    at += static_cast<std::uint32_t>(stored.size());
    image[format.maskAt + at / 8] |= static_cast<std::uint8_t>(1U << (at % 8));
  }
  PutU16(&image[2], format.EntryArea() - at);
  // What lies behind the last entry counts for nothing and stays.
  editor.Put(0, ByteView(image).first(format.entriesAt + at));
  return {};
}

}  // namespace jet
