// SPDX-License-Identifier: MIT

#include "db/jet/index_check.h"

#include <algorithm>
#include <string>
#include <unordered_set>

#include "db/jet/index_cursor.h"

namespace jet {
namespace {

ByteView KeyOf(ByteView entry) { return entry.first(entry.size() - kEntryPointer); }

class TreeWalk {
 public:
  TreeWalk(Pager& pager, std::uint32_t table, TreeInspection* inspection)
      : pager_(pager), table_(table), inspection_(*inspection) {}

  void Run(std::uint32_t root) {
    Visit(root, 0);
    CheckLinks();
  }

 private:
  struct Leaf {
    std::uint32_t page;
    std::uint32_t previous;
    std::uint32_t next;
  };

  void Report(Finding::Kind kind, std::uint32_t page, std::string text) {
    inspection_.findings.push_back({kind, std::move(text), page, -1});
  }
  void Problem(std::uint32_t page, std::string text) {
    Report(Finding::Kind::Problem, page, std::move(text));
  }
  void Note(std::uint32_t page, std::string text) {
    Report(Finding::Kind::Note, page, std::move(text));
  }

  // Returns the level of the page, or -1 when it could not be read.
  int Visit(std::uint32_t page, int depth) {
    if (depth >= kMaxIndexDepth) {
      Problem(page, "the tree is too deep");
      return -1;
    }
    if (!seen_.insert(page).second) {
      Problem(page, "the tree meets the page twice");
      return -1;
    }
    IndexPage node;
    const Status status = node.Load(pager_, page, table_);
    if (!status.ok()) {
      Problem(page, status.Text());
      return -1;
    }
    inspection_.pages.push_back(page);
    const std::uint32_t free = pager_.GetFormat().EntryArea() - node.StoredBytes();
    if (node.StoredFreeBytes() != free) {
      Problem(page, "the count of free bytes is " + std::to_string(node.StoredFreeBytes()) +
                        ", not " + std::to_string(free));
    }
    return node.IsLeaf() ? VisitLeaf(node, depth) : VisitNode(node, depth);
  }

  int VisitLeaf(const IndexPage& leaf, int depth) {
    if (leaf.Level() != 0) Note(leaf.Number(), "a leaf has a level other than 0");
    if (leaf.Count() == 0 && depth > 0) Note(leaf.Number(), "a leaf is empty");
    leaves_.push_back({leaf.Number(), leaf.Previous(), leaf.Next()});
    Bytes entry;
    for (int i = 0; i < leaf.Count(); ++i) {
      leaf.Entry(i, &entry);
      if (!last_.empty() && CompareBytes(last_, entry) >= 0) {
        Problem(leaf.Number(),
                "entry " + std::to_string(i) + " is not greater than the one before");
      }
      inspection_.entries.Add(entry);
      last_.swap(entry);
    }
    return 0;
  }

  int VisitNode(const IndexPage& node, int depth) {
    int level = -1;
    const auto child = [&](int index) {
      const int below = Visit(node.Child(index), depth + 1);
      if (below < 0) return;
      if (level >= 0 && level != below + 1) {
        Problem(node.Number(), "the children are of different levels");
      }
      level = below + 1;
    };
    Bytes separator;
    for (int i = 0; i < node.Count(); ++i) {
      child(i);
      node.Entry(i, &separator);
      const int order = CompareBytes(separator, last_);
      if (order < 0) {
        Problem(node.Number(), "entry " + std::to_string(i) + " is less than those below it");
      } else if (order > 0) {
        Note(node.Number(), "entry " + std::to_string(i) + " is not the last one below it");
        last_ = separator;  // what follows must be greater than the separator, too
      }
    }
    if (node.Tail() == 0) {
      Note(node.Number(), "a node has no rightmost child");
    } else {
      child(node.Count());
    }
    if (level >= 0 && node.Level() != level) Note(node.Number(), "the level is not right");
    return level;
  }

  void CheckLinks() {
    for (std::size_t i = 0; i < leaves_.size(); ++i) {
      const std::uint32_t previous = i == 0 ? 0 : leaves_[i - 1].page;
      const std::uint32_t next = i + 1 == leaves_.size() ? 0 : leaves_[i + 1].page;
      if (leaves_[i].previous != previous || leaves_[i].next != next) {
        Problem(leaves_[i].page, "the leaf is not linked to its neighbours");
      }
    }
  }

  Pager& pager_;
  const std::uint32_t table_;
  TreeInspection& inspection_;
  std::unordered_set<std::uint32_t> seen_;
  std::vector<Leaf> leaves_;
  Bytes last_;  // greatest entry so far
};

// Indexes into `entries`, sorted by row pointer.
std::vector<std::size_t> ByRow(const EntryList& entries) {
  std::vector<std::size_t> order(entries.Count());
  for (std::size_t i = 0; i < order.size(); ++i) order[i] = i;
  std::stable_sort(order.begin(), order.end(), [&](std::size_t a, std::size_t b) {
    return EntryRow(entries[a]) < EntryRow(entries[b]);
  });
  return order;
}

bool IsOpaque(const ExpectedEntries& expected, RowPointer row) {
  return std::binary_search(expected.opaqueRows.begin(), expected.opaqueRows.end(), row.Packed());
}

}  // namespace

void InspectTree(Pager& pager, std::uint32_t table, const RealIndex& index,
                 TreeInspection* inspection) {
  TreeWalk(pager, table, inspection).Run(index.root);
}

Status ExpectEntries(Table& table, const RealIndex& index, ExpectedEntries* expected) {
  RowPointer row;
  Bytes entry;
  Status status = table.FirstRow(&row);
  for (; status.ok() && row; status = table.NextRow(row, &row)) {
    RowView view;
    status = table.ReadRow(row, &view);
    if (!status.ok()) return status;
    entry.clear();
    KeyInfo info;
    status = table.AppendRowKey(index, view, &entry, &info);
    if (!status.ok()) {
      return Status(status.Error(), status.Text(),
                    status.Page() == kNoPage ? row.page : status.Page());
    }
    if (info.hasNull) expected->nullRows.push_back(row.Packed());
    if (!info.entered) continue;
    if (!info.known) {
      expected->opaqueRows.push_back(row.Packed());
      continue;
    }
    AppendRowPointer(&entry, row);
    expected->entries.Add(entry);
  }
  if (!status.ok()) return status;
  SortEntries(&expected->entries);
  std::sort(expected->opaqueRows.begin(), expected->opaqueRows.end());
  std::sort(expected->nullRows.begin(), expected->nullRows.end());
  return {};
}

void CompareEntries(const EntryList& found, const ExpectedEntries& expected, Findings* findings) {
  const auto report = [findings](RowPointer row, const char* text) {
    findings->push_back({Finding::Kind::Problem, text, row.page, row.slot});
  };
  const std::vector<std::size_t> foundOrder = ByRow(found);
  const std::vector<std::size_t> expectedOrder = ByRow(expected.entries);
  std::vector<bool> opaqueSeen(expected.opaqueRows.size());
  std::size_t e = 0;
  RowPointer last;
  for (const std::size_t f : foundOrder) {
    const RowPointer row = EntryRow(found[f]);
    if (last && row == last) {
      report(row, "the row has more than one entry in the index");
      continue;
    }
    last = row;
    const auto expectedRow = [&](std::size_t i) {
      return EntryRow(expected.entries[expectedOrder[i]]);
    };
    while (e < expectedOrder.size() && expectedRow(e) < row) {
      report(expectedRow(e), "the row has no entry in the index");
      ++e;
    }
    if (e < expectedOrder.size() && expectedRow(e) == row) {
      if (CompareBytes(found[f], expected.entries[expectedOrder[e]]) != 0) {
        report(row, "the row's entry in the index has another key");
      }
      ++e;
      continue;
    }
    const auto opaque =
        std::lower_bound(expected.opaqueRows.begin(), expected.opaqueRows.end(), row.Packed());
    if (opaque != expected.opaqueRows.end() && *opaque == row.Packed()) {
      opaqueSeen[opaque - expected.opaqueRows.begin()] = true;
    } else {
      report(row, "the index has an entry for a row that is not there");
    }
  }
  for (; e < expectedOrder.size(); ++e) {
    report(EntryRow(expected.entries[expectedOrder[e]]), "the row has no entry in the index");
  }
  for (std::size_t i = 0; i < opaqueSeen.size(); ++i) {
    if (opaqueSeen[i]) continue;
    report(RowPointer::Unpack(expected.opaqueRows[i]), "the row has no entry in the index");
  }
}

bool MergeEntries(const EntryList& found, const ExpectedEntries& expected, EntryList* merged) {
  *merged = expected.entries;
  std::unordered_set<std::uint32_t> taken;
  for (std::size_t i = 0; i < found.Count(); ++i) {
    const RowPointer row = EntryRow(found[i]);
    if (IsOpaque(expected, row) && taken.insert(row.Packed()).second) merged->Add(found[i]);
  }
  SortEntries(merged);
  return taken.size() == expected.opaqueRows.size();
}

std::uint32_t CountDistinctKeys(const EntryList& entries) {
  std::uint32_t count = 0;
  for (std::size_t i = 0; i < entries.Count(); ++i) {
    if (i == 0 || CompareBytes(KeyOf(entries[i - 1]), KeyOf(entries[i])) != 0) ++count;
  }
  return count;
}

void SortEntries(EntryList* entries) {
  bool sorted = true;
  for (std::size_t i = 1; sorted && i < entries->Count(); ++i) {
    sorted = CompareBytes((*entries)[i - 1], (*entries)[i]) <= 0;
  }
  if (sorted) return;
  std::vector<std::size_t> order(entries->Count());
  for (std::size_t i = 0; i < order.size(); ++i) order[i] = i;
  std::sort(order.begin(), order.end(), [&](std::size_t a, std::size_t b) {
    return CompareBytes((*entries)[a], (*entries)[b]) < 0;
  });
  EntryList result;
  for (const std::size_t i : order) result.Add((*entries)[i]);
  *entries = std::move(result);
}

}  // namespace jet
