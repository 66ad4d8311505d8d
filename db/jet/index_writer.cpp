// SPDX-License-Identifier: MIT

#include "db/jet/index_writer.h"

#include <algorithm>

#include "db/jet/index_cursor.h"
#include "db/jet/usage_map.h"

namespace jet {
namespace {

// After a rebuild in the course of edits every page has room for more of them.
constexpr std::uint32_t kEditFill = 80;

IndexPageHead HeadOf(const IndexPage& page, std::uint32_t table) {
  return {table, page.Previous(), page.Next(), page.IsLeaf() ? 0 : page.Tail(), page.Level()};
}

void AddNodeEntry(EntryList* entries, ByteView entry, std::uint32_t child) {
  Bytes bytes(entry.begin(), entry.end());
  bytes.resize(bytes.size() + kChildPointer);
  PutU32BigEndian(bytes.data() + bytes.size() - kChildPointer, child);
  entries->Add(bytes);
}

std::size_t TotalBytes(const EntryList& entries) {
  std::size_t total = 0;
  for (std::size_t i = 0; i < entries.Count(); ++i) total += entries[i].size();
  return total;
}

Status TooLong() {
  return Status(ErrorNumber::RecordTooLarge, "The fields of an index are too long together");
}

// The entry to cut before so that both halves have about as many bytes.
std::size_t Middle(const EntryList& entries) {
  const std::size_t half = TotalBytes(entries) / 2;
  std::size_t bytes = 0;
  std::size_t cut = 0;
  while (cut + 1 < entries.Count() && bytes < half) bytes += entries[cut++].size();
  return std::max<std::size_t>(cut, 1);
}

}  // namespace

Status IndexWriter::FindLeaf(ByteView entry, IndexPage* leaf, std::vector<Step>* path) {
  std::uint32_t page = index_.root;
  for (int depth = 0; depth < kMaxIndexDepth; ++depth) {
    Status status = leaf->Load(pager_, page, table_);
    if (!status.ok() || leaf->IsLeaf()) return status;
    int child = leaf->LowerBound(entry);
    if (child == leaf->Count() && leaf->Tail() == 0) --child;
    if (child < 0) return Status(ErrorNumber::Damaged, "Index: a node has no children", page);
    path->push_back({page, child});
    page = leaf->Child(child);
  }
  return Status(ErrorNumber::Damaged, "Index: the tree is too deep", page);
}

Status IndexWriter::WriteLeaf(const IndexPage& leaf, const EntryList& entries,
                              std::uint32_t prefix) {
  return WriteIndexPage(pager_, leaf.Number(), HeadOf(leaf, table_), entries, 0, entries.Count(),
                        prefix);
}

Status IndexWriter::Insert(ByteView entry) {
  if (entry.size() > MaxEntry(pager_.GetFormat())) return TooLong();
  IndexPage leaf;
  std::vector<Step> path;
  Status status = FindLeaf(entry, &leaf, &path);
  if (!status.ok()) return status;
  const int position = leaf.LowerBound(entry);
  if (position < leaf.Count() && leaf.Compare(position, entry) == 0) {
    return Status(ErrorNumber::Damaged, "Index: the record is entered already", leaf.Number());
  }
  const bool appended = position == leaf.Count();
  bool done = true;
  if (leaf.PrefixLength() == 0 &&
      leaf.StoredBytes() + entry.size() <= pager_.GetFormat().EntryArea()) {
    if (appended) status = PutSeparator(path, entry, &done);
    if (!status.ok()) return status;
    return done ? InsertIntoLeaf(pager_, leaf, position, entry) : Rebuild({}, entry);
  }

  EntryList entries;
  entries.Reserve(leaf.Count() + 1, pager_.GetFormat().EntryArea() + entry.size());
  Bytes whole;
  for (int i = 0; i < leaf.Count(); ++i) {
    if (i == position) entries.Add(entry);
    leaf.Entry(i, &whole);
    entries.Add(whole);
  }
  if (appended) entries.Add(entry);

  std::uint32_t prefix = 0;
  if (FitsLeaf(entries, 0, entries.Count(), pager_.GetFormat().EntryArea(), &prefix)) {
    if (appended) {
      status = PutSeparator(path, entry, &done);
      if (!status.ok()) return status;
    }
    if (done) return WriteLeaf(leaf, entries, prefix);
  } else {
    status = Split(leaf, path, entries, appended, &done);
    if (!status.ok() || done) return status;
  }
  return Rebuild({}, entry);
}

Status IndexWriter::Remove(ByteView entry) {
  IndexPage leaf;
  std::vector<Step> path;
  Status status = FindLeaf(entry, &leaf, &path);
  if (!status.ok()) return status;
  const int position = leaf.LowerBound(entry);
  const bool found = position < leaf.Count() && leaf.Compare(position, entry) == 0;
  if (!found || (leaf.Count() == 1 && !path.empty())) return Rebuild(entry, {});
  Bytes whole;
  if (leaf.PrefixLength() == 0) {
    bool done = true;
    if (position == leaf.Count() - 1 && position > 0) {
      leaf.Entry(position - 1, &whole);
      status = PutSeparator(path, whole, &done);
      if (!status.ok()) return status;
    }
    return done ? RemoveFromLeaf(pager_, leaf, position) : Rebuild(entry, {});
  }

  EntryList entries;
  entries.Reserve(leaf.Count(), pager_.GetFormat().EntryArea());
  for (int i = 0; i < leaf.Count(); ++i) {
    if (i == position) continue;
    leaf.Entry(i, &whole);
    entries.Add(whole);
  }
  if (position == leaf.Count() - 1 && entries.Count() > 0) {
    bool done = true;
    status = PutSeparator(path, entries[entries.Count() - 1], &done);
    if (!status.ok()) return status;
    if (!done) return Rebuild(entry, {});
  }
  std::uint32_t prefix = 0;
  if (!FitsLeaf(entries, 0, entries.Count(), pager_.GetFormat().EntryArea(), &prefix)) {
    return Rebuild(entry, {});
  }
  return WriteLeaf(leaf, entries, prefix);
}

// The last entry below a child of a node has become `last`: the node that has an entry for it
// is the first on the way up that was not left through its tail.
Status IndexWriter::PutSeparator(const std::vector<Step>& path, ByteView last, bool* done) {
  for (std::size_t i = path.size(); i-- > 0;) {
    IndexPage node;
    Status status = node.Load(pager_, path[i].page, table_);
    if (!status.ok()) return status;
    if (path[i].child == node.Count()) continue;
    EntryList entries;
    Bytes whole;
    for (int k = 0; k < node.Count(); ++k) {
      node.Entry(k, &whole);
      AddNodeEntry(&entries, k == path[i].child ? last : ByteView(whole), node.Child(k));
    }
    *done = node.Tail() != 0 && TotalBytes(entries) <= pager_.GetFormat().EntryArea();
    if (!*done) return {};
    return WriteIndexPage(pager_, node.Number(), HeadOf(node, table_), entries, 0, entries.Count(),
                          0);
  }
  return {};
}

// The leaf keeps its page for the left part; a new page to its right takes the rest.
Status IndexWriter::Split(const IndexPage& leaf, const std::vector<Step>& path,
                          const EntryList& entries, bool appended, bool* done) {
  *done = false;
  if (path.empty()) return {};
  const std::uint32_t area = pager_.GetFormat().EntryArea();
  // Entries that come in ascending order leave full pages behind.
  const bool atRightEnd = appended && leaf.Next() == 0;
  const std::size_t cut = atRightEnd ? entries.Count() - 1 : Middle(entries);
  std::uint32_t leftPrefix = 0;
  std::uint32_t rightPrefix = 0;
  if (!FitsLeaf(entries, 0, cut, area, &leftPrefix) ||
      !FitsLeaf(entries, cut, entries.Count(), area, &rightPrefix)) {
    return {};
  }
  IndexPage parent;
  Status status = parent.Load(pager_, path.back().page, table_);
  if (!status.ok()) return status;
  const std::uint32_t oldNext = leaf.Next();
  const int child = path.back().child;
  if (parent.Tail() == 0) return {};
  const auto build = [&](std::uint32_t right, EntryList* node) {
    Bytes whole;
    for (int k = 0; k < parent.Count(); ++k) {
      if (k == child) AddNodeEntry(node, entries[cut - 1], leaf.Number());
      parent.Entry(k, &whole);
      AddNodeEntry(node, whole, k == child ? right : parent.Child(k));
    }
    if (child == parent.Count()) AddNodeEntry(node, entries[cut - 1], leaf.Number());
  };
  EntryList trial;
  build(0, &trial);
  if (TotalBytes(trial) > area) return {};

  std::uint32_t right = 0;
  std::vector<std::uint32_t> none;
  status = TakePage(&none, &right);
  if (!status.ok()) return status;
  IndexPageHead parentHead = HeadOf(parent, table_);
  if (child == parent.Count()) parentHead.tail = right;
  EntryList node;
  build(right, &node);
  status = WriteIndexPage(pager_, parent.Number(), parentHead, node, 0, node.Count(), 0);
  if (!status.ok()) return status;
  const IndexPageHead rightHead = {table_, leaf.Number(), oldNext, 0, 0};
  status = WriteIndexPage(pager_, right, rightHead, entries, cut, entries.Count(), rightPrefix);
  if (!status.ok()) return status;
  IndexPageHead leftHead = HeadOf(leaf, table_);
  leftHead.next = right;
  status = WriteIndexPage(pager_, leaf.Number(), leftHead, entries, 0, cut, leftPrefix);
  if (!status.ok()) return status;
  if (oldNext != 0) {
    PageEditor editor;
    status = pager_.Edit(oldNext, &editor);
    if (!status.ok()) return status;
    editor.PutU32(pager_.GetFormat().previousAt, right);
  }
  *done = true;
  return {};
}

// Writes the tree again from its leaves, less one entry or with one more.
Status IndexWriter::Rebuild(ByteView without, ByteView with) {
  EntryList entries;
  IndexCursor cursor(pager_, table_, index_.root);
  Status status = cursor.SeekFirst();
  bool pending = !with.empty();
  while (status.ok() && !cursor.AtEnd()) {
    if (pending && CompareBytes(with, cursor.Entry()) < 0) {
      entries.Add(with);
      pending = false;
    }
    if (without.empty() || CompareBytes(without, cursor.Entry()) != 0) {
      entries.Add(cursor.Entry());
    }
    status = cursor.Next();
  }
  if (!status.ok()) return status;
  if (pending) entries.Add(with);
  return Build(entries, kEditFill);
}

// The pages of the index's map that are pages of this index beyond doubt, less the root.  The
// others are struck off the map.
Status IndexWriter::CollectPages(std::vector<std::uint32_t>* pages) {
  UsageMap map;
  Status status = UsageMap::Open(pager_, index_.pageMap, &map);
  if (!status.ok()) return status;
  std::vector<std::uint32_t> all;
  status = map.AllPages(&all);
  if (!status.ok()) return status;
  for (const std::uint32_t page : all) {
    if (page == index_.root) continue;
    const std::uint8_t* bytes = nullptr;
    status = pager_.Read(page, &bytes);
    if (!status.ok()) return status;
    const bool isIndex = bytes[0] == kLeafPage || bytes[0] == kNodePage;
    if (isIndex && GetU32(bytes + 4) == table_) {
      pages->push_back(page);
    } else {
      status = map.Remove(page);
      if (!status.ok()) return status;
    }
  }
  return map.Add(index_.root, allocator_);
}

Status IndexWriter::TakePage(std::vector<std::uint32_t>* spare, std::uint32_t* page) {
  if (!spare->empty()) {
    *page = spare->front();
    spare->erase(spare->begin());
    return {};
  }
  Status status = allocator_.Allocate(page);
  if (!status.ok()) return status;
  UsageMap map;
  status = UsageMap::Open(pager_, index_.pageMap, &map);
  if (!status.ok()) return status;
  return map.Add(*page, allocator_);
}

Status IndexWriter::Build(const EntryList& entries, std::uint32_t fill) {
  const Format& format = pager_.GetFormat();
  for (std::size_t i = 0; i < entries.Count(); ++i) {
    if (entries[i].size() > MaxEntry(format)) return TooLong();
  }
  const std::uint32_t room = format.EntryArea() * fill / 100;
  std::vector<std::uint32_t> spare;
  Status status = CollectPages(&spare);
  if (!status.ok()) return status;
  std::vector<Child> children;
  status = BuildLeaves(entries, room, &spare, &children);
  for (std::uint8_t level = 1; status.ok() && children.size() > 1; ++level) {
    status = BuildNodes(entries, room, level, &spare, &children);
  }
  if (!status.ok()) return status;
  UsageMap map;
  status = UsageMap::Open(pager_, index_.pageMap, &map);
  if (!status.ok()) return status;
  for (const std::uint32_t page : spare) {
    status = map.Remove(page);
    if (!status.ok()) return status;
    status = allocator_.Free(page);
    if (!status.ok()) return status;
  }
  return {};
}

Status IndexWriter::BuildLeaves(const EntryList& entries, std::uint32_t room,
                                std::vector<std::uint32_t>* spare, std::vector<Child>* children) {
  const std::uint32_t area = pager_.GetFormat().EntryArea();
  std::uint32_t prefix = 0;
  if (FitsLeaf(entries, 0, entries.Count(), area, &prefix)) {
    children->push_back({entries.Count(), index_.root});
    return WriteIndexPage(pager_, index_.root, {table_, 0, 0, 0, 0}, entries, 0, entries.Count(),
                          prefix);
  }
  std::vector<std::size_t> begins;
  for (std::size_t i = 0; i < entries.Count(); ++i) {
    if (begins.empty() || !FitsLeaf(entries, begins.back(), i + 1, room, &prefix)) {
      begins.push_back(i);
      std::uint32_t page = 0;
      Status status = TakePage(spare, &page);
      if (!status.ok()) return status;
      children->push_back({0, page});
    }
  }
  begins.push_back(entries.Count());
  for (std::size_t i = 0; i + 1 < begins.size(); ++i) {
    (*children)[i].last = begins[i + 1] - 1;
    (void)FitsLeaf(entries, begins[i], begins[i + 1], area, &prefix);  // prefix only if needed
    const IndexPageHead head = {table_, i == 0 ? 0 : (*children)[i - 1].page,
                                i + 2 < begins.size() ? (*children)[i + 1].page : 0, 0, 0};
    Status status = WriteIndexPage(pager_, (*children)[i].page, head, entries, begins[i],
                                   begins[i + 1], prefix);
    if (!status.ok()) return status;
  }
  return {};
}

// Builds one level of nodes over `children` and puts its pages in their place.
Status IndexWriter::BuildNodes(const EntryList& entries, std::uint32_t room, std::uint8_t level,
                               std::vector<std::uint32_t>* spare, std::vector<Child>* children) {
  // Groups of children, each with a last one that has no entry.
  std::vector<std::size_t> begins = {0};
  std::size_t bytes = 0;
  for (std::size_t i = 1; i < children->size(); ++i) {
    const std::size_t more = entries[(*children)[i - 1].last].size() + kChildPointer;
    const bool hasEntry = i - begins.back() > 1;
    if (hasEntry && bytes + more > room) {
      begins.push_back(i);
      bytes = 0;
    } else {
      bytes += more;
    }
  }
  // No node has a single child.  Two entries always fit on a page, so three children do.
  if (begins.size() > 1 && children->size() - begins.back() == 1) {
    if (begins.back() - begins[begins.size() - 2] > 2) {
      --begins.back();
    } else {
      begins.pop_back();
    }
  }
  begins.push_back(children->size());
  const std::size_t count = begins.size() - 1;
  std::vector<Child> nodes(count);
  for (Child& node : nodes) {
    node.page = index_.root;
    if (count == 1) break;
    Status status = TakePage(spare, &node.page);
    if (!status.ok()) return status;
  }
  for (std::size_t i = 0; i < count; ++i) {
    EntryList node;
    for (std::size_t k = begins[i]; k + 1 < begins[i + 1]; ++k) {
      AddNodeEntry(&node, entries[(*children)[k].last], (*children)[k].page);
    }
    const Child& tail = (*children)[begins[i + 1] - 1];
    nodes[i].last = tail.last;
    const IndexPageHead head = {table_, i == 0 ? 0 : nodes[i - 1].page,
                                i + 1 < count ? nodes[i + 1].page : 0, tail.page, level};
    Status status = WriteIndexPage(pager_, nodes[i].page, head, node, 0, node.Count(), 0);
    if (!status.ok()) return status;
  }
  *children = std::move(nodes);
  return {};
}

Status PutDistinctKeys(Pager& pager, std::uint32_t page, const RealIndex& index,
                       std::uint32_t count) {
  // The count is a hint: in a definition so long that it stands on a further page it is left.
  if (index.distinctKeysAt + 4 > pager.GetFormat().pageSize) return {};
  PageEditor editor;
  Status status = pager.Edit(page, &editor);
  if (!status.ok()) return status;
  if (GetU32(editor.Data() + index.distinctKeysAt) != count) {
    editor.PutU32(index.distinctKeysAt, count);
  }
  return {};
}

}  // namespace jet
