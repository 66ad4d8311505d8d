// SPDX-License-Identifier: MIT
//
// Whether an index tree is sound in itself and agrees with the rows of its table.

#ifndef DB_JET_INDEX_CHECK_H_
#define DB_JET_INDEX_CHECK_H_

#include <cstdint>
#include <vector>

#include "db/jet/finding.h"
#include "db/jet/index_page.h"
#include "db/jet/pager.h"
#include "db/jet/status.h"
#include "db/jet/table.h"
#include "db/jet/table_def.h"

namespace jet {

// What a walk over a whole tree found.
struct TreeInspection {
  EntryList entries;                 // of the leaves, in the order of the tree
  std::vector<std::uint32_t> pages;  // each once
  Findings findings;
};

// Walks over the tree.  What cannot be read is a finding, and the walk goes on beside it.
void InspectTree(Pager& pager, std::uint32_t table, const RealIndex& index,
                 TreeInspection* inspection);

// The entries that the index should have for the rows of the table.
struct ExpectedEntries {
  EntryList entries;                    // sorted
  std::vector<std::uint32_t> nullRows;  // with a null in one of the fields; packed, sorted
  // Rows whose keys this engine cannot make; an index may hold anything for them, but must
  // hold one entry each.  Packed row pointers, sorted.
  std::vector<std::uint32_t> opaqueRows;
};

// Damaged when a row cannot be read.
Status ExpectEntries(Table& table, const RealIndex& index, ExpectedEntries* expected);

// Adds a finding for each entry that is missing, superfluous or of another key.
void CompareEntries(const EntryList& found, const ExpectedEntries& expected, Findings* findings);

// The entries for a tree to be built anew: the expected ones and, for rows whose keys cannot
// be made, those that were found.  False when one of these is missing.
bool MergeEntries(const EntryList& found, const ExpectedEntries& expected, EntryList* merged);

// The number of different keys of sorted entries.
std::uint32_t CountDistinctKeys(const EntryList& entries);

// Sorts by bytes.
void SortEntries(EntryList* entries);

}  // namespace jet

#endif  // DB_JET_INDEX_CHECK_H_
