// SPDX-License-Identifier: MIT
//
// Making sure, before the first use of a table's indexes, that they are right.

#include <algorithm>
#include <span>
#include <string>
#include <unordered_set>
#include <vector>

#include "db/jet/index_check.h"
#include "db/jet/index_writer.h"
#include "db/jet/store.h"
#include "db/jet/table.h"
#include "db/jet/usage_map.h"

namespace jet {
namespace {

struct Repair {
  const RealIndex* index;
  EntryList entries;
};

Status NotRepairable(const Table& table, const std::string& text, std::uint32_t page) {
  return Status(ErrorNumber::Damaged,
                "An index of table \"" + table.Name() + "\" is damaged: " + text, page);
}

// Whether a page holds nothing of anybody, so that it may be written over: one byte all over, such
// as zeros.  A page of which only the beginning is no page's may still hold the rows of a table.
bool IsRuin(std::span<const std::uint8_t> page) {
  const bool isOfAKind = (page[0] >= kDataPage && page[0] <= kMapPage) ||
                         page[0] == kFreedOtherPage || page[0] == kFreedDataPage;
  return !isOfAKind &&
         std::ranges::all_of(page, [&](std::uint8_t byte) { return byte == page[0]; });
}

// Whether the tree may be written again without writing over anything else.
Status CheckPages(Table& table, const RealIndex& index, const std::vector<std::uint32_t>& treePages,
                  std::unordered_set<std::uint32_t>* claimed) {
  Pager& pager = table.GetStore().GetPager();
  std::unordered_set<std::uint32_t> pages(treePages.begin(), treePages.end());
  pages.insert(index.root);
  UsageMap map;
  std::vector<std::uint32_t> mapped;
  Status status = UsageMap::Open(pager, index.pageMap, &map);
  if (status.ok()) status = map.AllPages(&mapped);
  if (!status.ok()) return NotRepairable(table, status.Text(), status.Page());
  pages.insert(mapped.begin(), mapped.end());
  for (const std::uint32_t page : pages) {
    if (!claimed->insert(page).second) {
      return NotRepairable(table, "another index has the same page", page);
    }
  }
  const std::uint8_t* root = nullptr;
  status = pager.Read(index.root, &root);
  if (!status.ok()) return NotRepairable(table, status.Text(), index.root);
  const bool isIndex = root[0] == kLeafPage || root[0] == kNodePage;
  if (isIndex && GetU32(root + 4) == table.Def().page) return {};
  // The definition and the map of the index both have to say that it is the root.
  if (index.root != 0 && IsRuin({root, pager.GetFormat().pageSize}) &&
      std::find(mapped.begin(), mapped.end(), index.root) != mapped.end()) {
    return {};
  }
  return NotRepairable(table, "its root is no page of it", index.root);
}

}  // namespace

void Table::SetIndexesChecked() { indexesChecked_ = true; }

Status Table::EnsureIndexesChecked() {
  Status status = Refresh();
  if (!status.ok() || indexesChecked_) return status;
  Pager& pager = store_.GetPager();
  std::vector<Repair> repairs;
  std::unordered_set<std::uint32_t> claimed;
  for (const RealIndex& index : def_.realIndexes) {
    TreeInspection tree;
    InspectTree(pager, page_, index, &tree);
    ExpectedEntries expected;
    status = ExpectEntries(*this, index, &expected);
    if (!status.ok()) return status;
    CompareEntries(tree.entries, expected, &tree.findings);
    status = CheckPages(*this, index, tree.pages, &claimed);
    if (!status.ok()) return status;
    const auto problem = std::find_if(tree.findings.begin(), tree.findings.end(),
                                      [](const Finding& finding) { return finding.IsProblem(); });
    if (problem == tree.findings.end()) continue;
    Repair repair = {&index, {}};
    if (!store_.CheckWritable().ok() || !MergeEntries(tree.entries, expected, &repair.entries)) {
      return NotRepairable(*this, problem->text, problem->page);
    }
    repairs.push_back(std::move(repair));
  }
  if (!repairs.empty()) {
    status = store_.PrepareWrite();
    if (!status.ok()) return status;
    Change change(pager);
    for (const Repair& repair : repairs) {
      IndexWriter writer(pager, store_.Allocator(), page_, *repair.index);
      status = writer.Build(repair.entries);
      if (status.ok()) {
        status = PutDistinctKeys(pager, page_, *repair.index, CountDistinctKeys(repair.entries));
      }
      if (!status.ok()) return status;
    }
    status = change.Commit();
    if (!status.ok()) return status;
  }
  indexesChecked_ = true;
  return {};
}

}  // namespace jet
