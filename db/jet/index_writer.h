// SPDX-License-Identifier: MIT
//
// Changing an index tree.

#ifndef DB_JET_INDEX_WRITER_H_
#define DB_JET_INDEX_WRITER_H_

#include <cstdint>
#include <vector>

#include "db/jet/index_page.h"
#include "db/jet/page_allocator.h"
#include "db/jet/pager.h"
#include "db/jet/status.h"
#include "db/jet/table_def.h"

namespace jet {

// Edits a leaf in place, splits it when it is full, and writes the whole tree again where
// that is not enough: when a node is full, a leaf has become empty, or other software has left
// a tree of another shape.
// REQUIRES: a Change is open.
class IndexWriter {
 public:
  IndexWriter(Pager& pager, PageAllocator& allocator, std::uint32_t table, const RealIndex& index)
      : pager_(pager), allocator_(allocator), table_(table), index_(index) {}

  // The longest entry that every tree can hold.
  static std::size_t MaxEntry(const Format& format) {
    return format.EntryArea() / 2 - kChildPointer;
  }

  // Entries are whole: key and row pointer, at most MaxEntry bytes.
  Status Insert(ByteView entry);
  Status Remove(ByteView entry);

  // Replaces the whole tree.  The entries are sorted.  Its leaves are left `fill` percent
  // full; a tree that will not change soon is best full.
  Status Build(const EntryList& entries, std::uint32_t fill = 100);

 private:
  // A node on the way to a leaf, and which child the way took; its count is the tail.
  struct Step {
    std::uint32_t page;
    int child;
  };
  // A page of one level while the level above is built: its last entry and its number.
  struct Child {
    std::size_t last;
    std::uint32_t page;
  };

  Status FindLeaf(ByteView entry, IndexPage* leaf, std::vector<Step>* path);
  Status WriteLeaf(const IndexPage& leaf, const EntryList& entries, std::uint32_t prefix);
  // Sets *done to false, having changed nothing, when the tree must be built again.
  Status Split(const IndexPage& leaf, const std::vector<Step>& path, const EntryList& entries,
               bool appended, bool* done);
  Status PutSeparator(const std::vector<Step>& path, ByteView last, bool* done);
  Status Rebuild(ByteView without, ByteView with);

  Status CollectPages(std::vector<std::uint32_t>* pages);
  Status TakePage(std::vector<std::uint32_t>* spare, std::uint32_t* page);
  Status BuildLeaves(const EntryList& entries, std::uint32_t room,
                     std::vector<std::uint32_t>* spare, std::vector<Child>* children);
  Status BuildNodes(const EntryList& entries, std::uint32_t room, std::uint8_t level,
                    std::vector<std::uint32_t>* spare, std::vector<Child>* children);

  Pager& pager_;
  PageAllocator& allocator_;
  const std::uint32_t table_;
  const RealIndex& index_;
};

// Sets the count of different keys that the definition on `page` keeps for an index.
Status PutDistinctKeys(Pager& pager, std::uint32_t page, const RealIndex& index,
                       std::uint32_t count);

}  // namespace jet

#endif  // DB_JET_INDEX_WRITER_H_
