// SPDX-License-Identifier: MIT

#include "db/jet/index_cursor.h"

namespace jet {

// To the leaf that holds the first entry >= *key; without a key to the first or last leaf.
Status IndexCursor::Descend(const ByteView* key, bool toLast) {
  std::uint32_t page = root_;
  for (int depth = 0; depth < kMaxIndexDepth; ++depth) {
    Status status = leaf_.Load(pager_, page, table_);
    if (!status.ok() || leaf_.IsLeaf()) return status;
    int child = 0;
    if (key != nullptr) {
      child = leaf_.LowerBound(*key);
    } else if (toLast) {
      child = leaf_.Count();
    }
    if (child == leaf_.Count() && leaf_.Tail() == 0) --child;
    if (child < 0) return Status(ErrorNumber::Damaged, "Index: a node has no children", page);
    page = leaf_.Child(child);
  }
  return Status(ErrorNumber::Damaged, "Index: the tree is too deep", page);
}

// From a position before or behind the leaf's entries to the next leaf that has any.
Status IndexCursor::SkipEmptyLeaves(bool forward) {
  for (std::uint32_t steps = 0; position_ < 0 || position_ >= leaf_.Count(); ++steps) {
    const std::uint32_t page = forward ? leaf_.Next() : leaf_.Previous();
    if (page == 0) {
      atEnd_ = true;
      return {};
    }
    if (steps > pager_.PageCount()) {
      return Status(ErrorNumber::Damaged, "Index: the chain of leaves is a circle", page);
    }
    Status status = leaf_.Load(pager_, page, table_);
    if (!status.ok()) return status;
    if (!leaf_.IsLeaf()) {
      return Status(ErrorNumber::Damaged, "Index: the chain of leaves leads to a node", page);
    }
    position_ = forward ? 0 : leaf_.Count() - 1;
  }
  atEnd_ = false;
  return {};
}

Status IndexCursor::SeekFirst() {
  atEnd_ = true;
  Status status = Descend(nullptr, false);
  if (!status.ok()) return status;
  position_ = 0;
  status = SkipEmptyLeaves(true);
  if (status.ok() && !atEnd_) leaf_.Entry(position_, &entry_);
  return status;
}

Status IndexCursor::SeekLast() {
  atEnd_ = true;
  Status status = Descend(nullptr, true);
  if (!status.ok()) return status;
  position_ = leaf_.Count() - 1;
  status = SkipEmptyLeaves(false);
  if (status.ok() && !atEnd_) leaf_.Entry(position_, &entry_);
  return status;
}

Status IndexCursor::Seek(ByteView key) {
  atEnd_ = true;
  Status status = Descend(&key, false);
  if (!status.ok()) return status;
  position_ = leaf_.LowerBound(key);
  status = SkipEmptyLeaves(true);
  if (!status.ok() || atEnd_) return status;
  leaf_.Entry(position_, &entry_);
  if (CompareBytes(entry_, key) >= 0) return {};
  atEnd_ = true;
  return OutOfOrder();
}

Status IndexCursor::OutOfOrder() const {
  return Status(ErrorNumber::Damaged, "Index: the entries are not in order", leaf_.Number());
}

Status IndexCursor::CheckOrder(bool forward) {
  if (atEnd_) return {};
  previousEntry_.swap(entry_);
  leaf_.Entry(position_, &entry_);
  const int order = CompareBytes(previousEntry_, entry_);
  if (forward ? order < 0 : order > 0) return {};
  atEnd_ = true;
  return OutOfOrder();
}

Status IndexCursor::Next() {
  ++position_;
  Status status = SkipEmptyLeaves(true);
  return status.ok() ? CheckOrder(true) : status;
}

Status IndexCursor::Previous() {
  --position_;
  Status status = SkipEmptyLeaves(false);
  return status.ok() ? CheckOrder(false) : status;
}

}  // namespace jet
