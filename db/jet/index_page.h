// SPDX-License-Identifier: MIT
//
// A page of an index tree: sorted byte strings behind a mask of their ends.

#ifndef DB_JET_INDEX_PAGE_H_
#define DB_JET_INDEX_PAGE_H_

#include <array>
#include <cstdint>
#include <span>
#include <vector>

#include "db/jet/bytes.h"
#include "db/jet/format.h"
#include "db/jet/pager.h"
#include "db/jet/status.h"

namespace jet {

// At the end of every entry of a leaf: page (3 bytes) and slot of its row, big-endian.  A
// node's entry is an entry of a leaf and the number of a page, big-endian.
inline constexpr std::size_t kEntryPointer = 4;
inline constexpr std::size_t kChildPointer = 4;

// -1, 0 or 1; a longer string with an equal beginning is greater.
int CompareBytes(ByteView a, ByteView b);
// Whether the first bytes are these; anything starts with an empty string.
bool StartsWith(ByteView bytes, ByteView beginning);

// Ends an entry with its row.
void AppendRowPointer(Bytes* entry, RowPointer row);
// The row of an entry of a leaf.  REQUIRES: kEntryPointer bytes or more.
RowPointer EntryRow(ByteView entry);

// A page taken apart.  Refers to the page's bytes: valid until they change.
class IndexPage {
 public:
  // Damaged unless the page is a leaf or node of the table's with entries that fit.
  Status Load(Pager& pager, std::uint32_t page, std::uint32_t table);

  std::uint32_t Number() const { return number_; }
  bool IsLeaf() const { return bytes_[0] == kLeafPage; }
  std::uint8_t Level() const { return bytes_[format_->levelAt]; }
  int Count() const { return count_; }
  std::uint32_t Previous() const { return GetU32(bytes_ + format_->previousAt); }
  std::uint32_t Next() const { return GetU32(bytes_ + format_->nextAt); }
  // Child without an entry: the rightmost of a node; 0 where other software wrote none.
  std::uint32_t Tail() const { return GetU32(bytes_ + format_->tailAt); }
  std::uint32_t PrefixLength() const { return prefix_; }
  std::uint32_t StoredFreeBytes() const { return GetU16(bytes_ + 2); }
  std::uint32_t StoredBytes() const { return count_ == 0 ? 0 : ends_[count_ - 1]; }
  // Where the stored bytes of entry `index` end, counted from the first entry's beginning.
  std::uint32_t End(int index) const { return ends_[index]; }

  // Entry `index` whole; of a node without its child.
  void Entry(int index, Bytes* entry) const;
  std::uint32_t Child(int index) const;  // nodes; Count() is the tail
  RowPointer Row(int index) const;       // leaves
  // How entry `index` (of a node without its child) compares with `key`.
  int Compare(int index, ByteView key) const;
  // The first entry that is >= key; Count() when there is none.
  int LowerBound(ByteView key) const;

 private:
  std::uint32_t Begin(int index) const { return index == 0 ? 0 : ends_[index - 1]; }
  ByteView Stored(int index) const;  // without what it shares with the first

  static constexpr std::size_t kMaxEntries = 453 * 8;  // bits of the mask

  const Format* format_ = nullptr;
  const std::uint8_t* bytes_ = nullptr;
  std::uint32_t number_ = 0;
  std::uint32_t prefix_ = 0;
  int count_ = 0;
  std::array<std::uint16_t, kMaxEntries> ends_;
};

// A sorted list of entries, in one piece of memory.  Entries count from 0.
class EntryList {
 public:
  std::size_t Count() const { return ends_.size(); }
  // Valid until the list changes.  REQUIRES: i < Count()
  ByteView operator[](std::size_t i) const {
    const std::size_t begin = i == 0 ? 0 : ends_[i - 1];
    return {bytes_.data() + begin, ends_[i] - begin};
  }
  // Puts an entry at the end.  REQUIRES: it is not one of this list.
  void Add(ByteView entry) {
    Append(&bytes_, entry);
    ends_.push_back(bytes_.size());
  }
  // Makes room for `count` entries of together `bytes` bytes.
  void Reserve(std::size_t count, std::size_t bytes) {
    ends_.reserve(count);
    bytes_.reserve(bytes);
  }
  void Clear() {
    bytes_.clear();
    ends_.clear();
  }

 private:
  Bytes bytes_;
  std::vector<std::size_t> ends_;
};

// The fields of a page that are not its entries.
struct IndexPageHead {
  std::uint32_t table = 0;
  std::uint32_t previous = 0;
  std::uint32_t next = 0;
  std::uint32_t tail = 0;
  std::uint8_t level = 0;
};

// Whether the sorted entries [begin, end) of a leaf fit into `room` bytes; *prefix is then the
// length of the shared beginning to store them with: none while they fit whole.
bool FitsLeaf(const EntryList& entries, std::size_t begin, std::size_t end, std::uint32_t room,
              std::uint32_t* prefix);

// Puts `entry` before entry `position` of a leaf, or takes that entry out; the other entries
// keep their bytes.  The leaf must be loaded again.
// REQUIRES: PrefixLength() == 0, and for the first that the entry fits.
Status InsertIntoLeaf(Pager& pager, const IndexPage& leaf, int position, ByteView entry);
Status RemoveFromLeaf(Pager& pager, const IndexPage& leaf, int position);

// Writes a leaf (level 0) or a node.  A node's entries bear their children and have no prefix.
// REQUIRES: the entries fit.
Status WriteIndexPage(Pager& pager, std::uint32_t page, const IndexPageHead& head,
                      const EntryList& entries, std::size_t begin, std::size_t end,
                      std::uint32_t prefix);

}  // namespace jet

#endif  // DB_JET_INDEX_PAGE_H_
