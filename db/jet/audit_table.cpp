// SPDX-License-Identifier: MIT

#include "db/jet/audit_table.h"

#include <algorithm>

#include "db/jet/data_page.h"
#include "db/jet/index_check.h"
#include "db/jet/long_value.h"
#include "db/jet/store.h"

namespace jet {

TableAudit::TableAudit(Table& table, AuditPages& pages, AuditLog& log)
    : table_(table),
      def_(table.Def()),
      pager_(table.GetStore().GetPager()),
      format_(table.GetFormat()),
      pages_(pages),
      log_(log),
      subject_("table \"" + table.Name() + "\"") {}

void TableAudit::Run() {
  ClaimDefinition();
  ClaimDataPages();
  ClaimLongValuePages();
  CheckRows();
  CheckUnreferred();
  CheckIndexes();
}

void TableAudit::ClaimDefinition() {
  std::uint32_t rest = def_.length;
  for (const std::uint32_t page : def_.pages) {
    pages_.Claim(page, subject_);
    const std::uint8_t* bytes = nullptr;
    if (!format_.IsJet4() || !pager_.Read(page, &bytes).ok()) continue;
    const std::uint32_t used = page == def_.page ? std::min(rest, format_.pageSize)
                                                 : 8 + std::min(rest, format_.pageSize - 8);
    rest -= page == def_.page ? used : used - 8;
    const std::uint32_t free = format_.pageSize - used < 8 ? 0 : format_.pageSize - used - 8;
    if (GetU16(bytes + 2) != free) {
      log_.Note(subject_, "the definition's count of free bytes is not right", page);
    }
  }
}

void TableAudit::ClaimDataPages() {
  std::vector<std::uint32_t> owned;
  std::vector<std::uint32_t> free;
  pages_.ClaimMap(def_.ownedMap, subject_, &owned);
  pages_.ClaimMap(def_.freeMap, subject_, &free);
  for (const std::uint32_t page : owned) {
    pages_.Claim(page, subject_);
    if (pages_.CheckDataPage(page, def_.page, subject_)) dataPages_.push_back(page);
  }
  rowsSound_ = dataPages_.size() == owned.size();
  for (const std::uint32_t page : free) {
    if (std::binary_search(owned.begin(), owned.end(), page)) continue;
    log_.Problem(subject_, "the page may have room but is not one of the table's", page);
  }
}

void TableAudit::ClaimLongValuePages() {
  for (std::size_t i = 0; i < def_.columns.size(); ++i) {
    const Column& column = def_.columns[i];
    if (!column.IsLongValue()) continue;
    const std::string subject = subject_ + ", field \"" + column.name + "\"";
    std::vector<std::uint32_t> owned;
    std::vector<std::uint32_t> free;
    pages_.ClaimMap(column.ownedMap, subject, &owned);
    pages_.ClaimMap(column.freeMap, subject, &free);
    ValueRows& values = values_[static_cast<int>(i)];
    for (const std::uint32_t page : owned) {
      pages_.Claim(page, subject);
      if (pages_.CheckDataPage(page, kLongValueOwner, subject)) values.pages.insert(page);
    }
    for (const std::uint32_t page : free) {
      if (std::binary_search(owned.begin(), owned.end(), page)) continue;
      log_.Problem(subject, "the page may have room but is not one of the field's", page);
    }
  }
}

void TableAudit::CheckRows() {
  std::uint32_t rows = 0;
  for (const std::uint32_t page : dataPages_) {
    const std::uint8_t* bytes = nullptr;
    if (!pager_.Read(page, &bytes).ok()) continue;
    const std::uint32_t count = GetU16(bytes + format_.slotCountAt);
    for (std::uint32_t i = 0; i < count; ++i) {
      Slot slot;
      (void)ReadSlot(format_, bytes, count, i, &slot);  // checked with the page
      if (!slot.IsLive()) continue;
      ++rows;
      CheckRow({page, static_cast<std::uint8_t>(i)});
    }
  }
  const std::uint8_t* definition = nullptr;
  if (pager_.Read(def_.page, &definition).ok() && GetU32(definition + format_.rowCountAt) != rows) {
    log_.Note(subject_,
              "the definition counts " + std::to_string(GetU32(definition + format_.rowCountAt)) +
                  " rows, there are " + std::to_string(rows),
              def_.page);
  }
}

void TableAudit::CheckRow(RowPointer row) {
  RowView view;
  RowPointer place;
  const Status status = table_.ReadRow(row, &view, &place);
  if (!status.ok()) {
    rowsSound_ = false;
    log_.Problem(subject_, status.Text(), row.page, row.slot);
    return;
  }
  if (place != row && !moved_.insert(place.Packed()).second) {
    log_.Problem(subject_, "another row has moved to the same place", row.page, row.slot);
  }
  for (std::size_t i = 0; i < def_.columns.size(); ++i) {
    ByteView field;
    const RowView::Field kind = view.Get(def_.columns[i], &field);
    if (kind == RowView::Field::Bad) {
      rowsSound_ = false;
      log_.Problem(subject_, "the place of field \"" + def_.columns[i].name + "\" is impossible",
                   row.page, row.slot);
    } else if (kind == RowView::Field::Present && def_.columns[i].IsLongValue()) {
      CheckLongValue(row, static_cast<int>(i), field);
    }
  }
}

void TableAudit::CheckLongValue(RowPointer row, int column, ByteView field) {
  const std::string subject = subject_ + ", field \"" + def_.columns[column].name + "\"";
  LongValueHead head;
  Status status = ReadLongValueHead(field, &head);
  if (!status.ok()) {
    log_.Problem(subject, status.Text(), row.page, row.slot);
    return;
  }
  if (head.kind == LongValueHead::kInline) return;
  ValueRows& values = values_[column];
  LongValueRows parts(pager_, head);
  while (true) {
    RowPointer part;
    ByteView bytes;
    bool done = false;
    status = parts.Next(&part, &bytes, &done);
    if (!status.ok()) {
      log_.Problem(subject, status.Description(), row.page, row.slot);
      return;
    }
    if (done) return;
    if (!values.referred.insert(part.Packed()).second) {
      log_.Problem(subject, "the long value belongs to another record as well", part.page,
                   part.slot);
      return;
    }
    if (!values.pages.contains(part.page)) {
      log_.Problem(subject, "the long value is on a page that is not the field's", part.page,
                   part.slot);
    }
  }
}

// Rows that nothing leads to take room but do no harm.
void TableAudit::CheckUnreferred() {
  const auto check = [this](std::uint32_t page, const std::unordered_set<std::uint32_t>& referred,
                            std::uint16_t flags, const std::string& subject, const char* text) {
    const std::uint8_t* bytes = nullptr;
    if (!pager_.Read(page, &bytes).ok()) return;
    const std::uint32_t count = GetU16(bytes + format_.slotCountAt);
    int rows = 0;
    for (std::uint32_t i = 0; i < count; ++i) {
      Slot slot;
      (void)ReadSlot(format_, bytes, count, i, &slot);  // checked with the page
      const RowPointer row = {page, static_cast<std::uint8_t>(i)};
      if (slot.flags == flags && slot.Length() > 0 && !referred.contains(row.Packed())) ++rows;
    }
    if (rows > 0) log_.Note(subject, std::to_string(rows) + text, page);
  };
  for (const std::uint32_t page : dataPages_) {
    check(page, moved_, kSlotDeleted, subject_, " deleted or moved rows that no row points to");
  }
  for (const auto& [column, values] : values_) {
    for (const std::uint32_t page : values.pages) {
      check(page, values.referred, 0, subject_ + ", field \"" + def_.columns[column].name + "\"",
            " long values that no record has");
    }
  }
}

std::string TableAudit::IndexSubject(std::size_t number) const {
  for (const LogicalIndex& logical : def_.logicalIndexes) {
    if (logical.real == number) return subject_ + ", index \"" + logical.name + "\"";
  }
  return subject_ + ", index " + std::to_string(number);
}

void TableAudit::CheckIndexes() {
  for (std::size_t i = 0; i < def_.realIndexes.size(); ++i) CheckIndex(i);
}

void TableAudit::CheckIndex(std::size_t number) {
  const RealIndex& index = def_.realIndexes[number];
  const std::string subject = IndexSubject(number);
  TreeInspection tree;
  InspectTree(pager_, def_.page, index, &tree);
  for (const std::uint32_t page : tree.pages) pages_.Claim(page, subject);
  std::vector<std::uint32_t> mapped;
  pages_.ClaimMap(index.pageMap, subject, &mapped);
  const std::unordered_set<std::uint32_t> inTree(tree.pages.begin(), tree.pages.end());
  for (const std::uint32_t page : mapped) {
    if (inTree.contains(page)) continue;
    pages_.Claim(page, subject);
    log_.Note(subject, "the page is the index's but not in its tree", page);
  }
  for (const std::uint32_t page : tree.pages) {
    if (std::binary_search(mapped.begin(), mapped.end(), page)) continue;
    log_.Problem(subject, "the page is in the tree but not in the index's map", page);
  }

  // Without all rows at hand, what the index should hold is not known.
  ExpectedEntries expected;
  if (rowsSound_) {
    const Status status = ExpectEntries(table_, index, &expected);
    if (status.ok()) {
      CompareEntries(tree.entries, expected, &tree.findings);
    } else {
      log_.Problem(subject, status);
    }
  }
  for (const Finding& finding : tree.findings) {
    if (finding.IsProblem()) {
      log_.Problem(subject, finding.text, finding.page, finding.row);
    } else {
      log_.Note(subject, finding.text, finding.page, finding.row);
    }
  }
  if (HasProblem(tree.findings)) return;
  const EntryList& entries = tree.entries;
  for (std::size_t i = 1; index.IsUnique() && i < entries.Count(); ++i) {
    const RowPointer row = EntryRow(entries[i]);
    const ByteView key = entries[i].first(entries[i].size() - kEntryPointer);
    if (entries[i].size() == entries[i - 1].size() && StartsWith(entries[i - 1], key) &&
        !std::binary_search(expected.nullRows.begin(), expected.nullRows.end(), row.Packed())) {
      log_.Problem(subject, "two records have the same key in a unique index", row.page, row.slot);
    }
  }
  const std::uint8_t* definition = nullptr;
  const std::uint32_t distinct = CountDistinctKeys(entries);
  if (index.distinctKeysAt + 4 <= format_.pageSize && pager_.Read(def_.page, &definition).ok() &&
      GetU32(definition + index.distinctKeysAt) != distinct) {
    log_.Note(subject,
              "the definition counts " + std::to_string(GetU32(definition + index.distinctKeysAt)) +
                  " different keys, there are " + std::to_string(distinct),
              def_.page);
  }
}

}  // namespace jet
