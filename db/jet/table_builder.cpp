// SPDX-License-Identifier: MIT

#include "db/jet/table_builder.h"

#include <algorithm>
#include <string_view>

#include "db/jet/data_page.h"
#include "db/jet/index_page.h"
#include "db/jet/text_codec.h"
#include "db/jet/usage_map.h"

namespace jet {
namespace {

constexpr std::uint32_t kDefinitionMargin = 8;  // left out of a page's count of free bytes
constexpr std::uint16_t kJet3Mark = 0x4356;     // "VC"
constexpr std::uint8_t kNoCascade = 4;
constexpr std::uint8_t kUserTable = 'N';
constexpr std::uint8_t kSystemTable = 'S';

// A column with its place in the rows.
struct PlacedColumn {
  const ColumnPlan* plan;
  std::uint16_t number;
  std::uint16_t variableIndex;  // of a fixed column: variable columns before it
  std::uint16_t fixedOffset;
  RowPointer ownedMap;
  RowPointer freeMap;
};

struct PlacedIndex {
  const IndexPlan* plan;
  std::uint32_t number;
  RowPointer pageMap;
  std::uint32_t root;
};

bool IsLongValue(const ColumnPlan& column) {
  return column.type == FieldType::Memo || column.type == FieldType::Ole;
}

bool LessNoCase(std::string_view a, std::string_view b) {
  const auto lower = [](char c) { return c >= 'A' && c <= 'Z' ? c + 32 : c; };
  return std::lexicographical_compare(a.begin(), a.end(), b.begin(), b.end(),
                                      [&](char x, char y) { return lower(x) < lower(y); });
}

std::vector<PlacedColumn> PlaceColumns(const TablePlan& plan, std::uint16_t* variableCount) {
  std::vector<PlacedColumn> placed;
  std::uint16_t fixedOffset = 0;
  *variableCount = 0;
  for (const ColumnPlan& column : plan.columns) {
    PlacedColumn place = {&column, static_cast<std::uint16_t>(placed.size()), *variableCount, 0, {},
                          {}};
    if ((column.flags & kColumnFixed) == 0) {
      ++*variableCount;
    } else if (column.type != FieldType::Boolean) {
      place.fixedOffset = fixedOffset;
      fixedOffset = static_cast<std::uint16_t>(fixedOffset + column.length);
    }
    placed.push_back(place);
  }
  return placed;
}

void AppendName(const Format& format, std::string_view name, Bytes* out) {
  Bytes stored;
  std::size_t characters = 0;
  (void)EncodeText(format, name, false, &stored, &characters);  // names were checked before
  if (format.IsJet4()) {
    AppendU16(out, static_cast<std::uint32_t>(stored.size()));
  } else {
    out->push_back(static_cast<std::uint8_t>(stored.size()));
  }
  Append(out, stored);
}

void AppendColumn(const Format& format, const PlacedColumn& column, bool isSystem, Bytes* out) {
  const bool isFixed = (column.plan->flags & kColumnFixed) != 0;
  out->push_back(static_cast<std::uint8_t>(column.plan->type));
  if (format.IsJet4()) AppendU32(out, kDefinitionMark);
  AppendU16(out, column.number);
  AppendU16(out, column.variableIndex);
  AppendU16(out, isSystem ? 0 : column.number);
  if (!format.IsJet4()) AppendU16(out, 1);
  AppendU16(out, kGeneralSortOrder);
  AppendU16(out, format.IsJet4() ? 0 : kWesternCodePage);
  out->push_back(column.plan->flags);
  if (format.IsJet4()) {
    out->push_back(column.plan->extraFlags);
    AppendU32(out, 0);
  }
  AppendU16(out, isFixed ? column.fixedOffset : 0);
  AppendU16(out, column.plan->length);
}

void AppendStatistics(const Format& format, Bytes* out) {
  out->resize(out->size() + format.statisticsSize);
}

void AppendRealIndex(const Format& format, const PlacedIndex& index,
                     const std::vector<std::uint16_t>& columnNumbers, Bytes* out) {
  if (format.IsJet4()) AppendU32(out, kRealIndexMark);
  for (std::size_t i = 0; i < kMaxIndexColumns; ++i) {
    const bool isUsed = i < columnNumbers.size();
    AppendU16(out, isUsed ? columnNumbers[i] : kNoColumn);
    out->push_back(isUsed ? 1 : 0);
  }
  AppendU32(out, index.pageMap.Packed());
  AppendU32(out, index.root);
  if (format.IsJet4()) AppendU32(out, 0);
  out->push_back(index.plan->flags | (format.IsJet4() ? kIndexJet4 : 0));
  if (format.IsJet4()) out->resize(out->size() + 5);
}

void AppendLogicalIndex(const Format& format, const IndexPlan& plan, std::uint32_t number,
                        std::uint32_t real, Bytes* out) {
  if (format.IsJet4()) AppendU32(out, kDefinitionMark);
  AppendU32(out, number);
  AppendU32(out, real);
  out->push_back(0);
  AppendU32(out, 0xFFFFFFFF);
  AppendU32(out, 0);
  out->push_back(kNoCascade);
  out->push_back(kNoCascade);
  out->push_back(plan.primary ? LogicalIndex::kPrimary : LogicalIndex::kOrdinary);
  if (format.IsJet4()) AppendU32(out, 0);
}

Status TakeIndexPages(Pager& pager, PageAllocator& allocator, MapRows& maps, std::uint32_t table,
                      PlacedIndex* index) {
  Status status = maps.Take(&index->pageMap);
  if (!status.ok()) return status;
  status = allocator.Allocate(&index->root);
  if (!status.ok()) return status;
  status = WriteIndexPage(pager, index->root, {table, 0, 0, 0, 0}, {}, 0, 0, 0);
  if (!status.ok()) return status;
  UsageMap map;
  status = UsageMap::Open(pager, index->pageMap, &map);
  return status.ok() ? map.Add(index->root, allocator) : status;
}

// Cuts the string over `pages`, to which further ones are added; superfluous ones are given
// back.
Status WriteDefinition(Pager& pager, PageAllocator& allocator, Bytes string,
                       std::vector<std::uint32_t> pages) {
  const Format& format = pager.GetFormat();
  PutU32(&string[8], static_cast<std::uint32_t>(string.size()));
  const std::size_t perPage = format.pageSize - kContinuedAt;
  const std::size_t count = string.size() <= format.pageSize
                                ? 1
                                : 1 + (string.size() - format.pageSize + perPage - 1) / perPage;
  while (pages.size() < count) {
    pages.push_back(0);
    Status status = allocator.Allocate(&pages.back());
    if (!status.ok()) return status;
  }
  for (std::size_t i = 0; i < count; ++i) {
    const std::size_t begin = i == 0 ? kContinuedAt : format.pageSize + (i - 1) * perPage;
    const std::size_t length = std::min(perPage, string.size() - begin);
    const auto used = static_cast<std::uint32_t>(kContinuedAt + length);
    const std::uint32_t free = format.pageSize - used;
    PageEditor editor;
    Status status = pager.Edit(pages[i], &editor);
    if (!status.ok()) return status;
    Bytes head = {kDefinitionPage, 1};
    if (format.IsJet4()) {
      AppendU16(&head, free > kDefinitionMargin ? free - kDefinitionMargin : 0);
    } else {
      AppendU16(&head, kJet3Mark);
    }
    AppendU32(&head, i + 1 < count ? pages[i + 1] : 0);
    editor.Put(0, head);
    editor.Put(kContinuedAt, ByteView(string).subspan(begin, length));
    if (free > 0) editor.Fill(used, free, 0);
  }
  return {};
}

}  // namespace

Status MapRows::Take(RowPointer* row) {
  const Bytes empty(pager_.GetFormat().mapRowSize);
  DataPage page;
  Status status;
  if (page_ != 0) {
    status = DataPage::Open(pager_, page_, &page);
    if (!status.ok()) return status;
    if (page.Owner() != 0 || !page.Fits(static_cast<std::uint32_t>(empty.size()))) page_ = 0;
  }
  if (page_ == 0) {
    status = allocator_.Allocate(&page_);
    if (status.ok()) status = DataPage::Format(pager_, page_, 0, &page);
    if (!status.ok()) return status;
  }
  *row = {page_, page.Insert(empty)};
  return {};
}

Status BuildTable(Pager& pager, PageAllocator& allocator, MapRows& maps, const TablePlan& plan,
                  std::uint32_t page) {
  const Format& format = pager.GetFormat();
  std::uint16_t variableCount = 0;
  std::vector<PlacedColumn> columns = PlaceColumns(plan, &variableCount);
  RowPointer owned;
  RowPointer free;
  Status status = maps.Take(&owned);
  if (status.ok()) status = maps.Take(&free);
  if (!status.ok()) return status;

  const auto takeColumnMaps = [&] {
    for (PlacedColumn& column : columns) {
      if (!IsLongValue(*column.plan) || !status.ok()) continue;
      status = maps.Take(&column.ownedMap);
      if (status.ok()) status = maps.Take(&column.freeMap);
    }
  };
  if (plan.isSystem) takeColumnMaps();
  std::vector<PlacedIndex> indexes;
  for (const IndexPlan& index : plan.indexes) {
    if (!status.ok()) break;
    indexes.push_back({&index, static_cast<std::uint32_t>(indexes.size()), {}, 0});
    status = TakeIndexPages(pager, allocator, maps, page, &indexes.back());
  }
  if (!plan.isSystem) takeColumnMaps();
  if (!status.ok()) return status;

  const auto columnCount = static_cast<std::uint32_t>(columns.size());
  const auto indexCount = static_cast<std::uint32_t>(indexes.size());
  Bytes string(format.definitionHeader);
  if (format.IsJet4()) {
    PutU32(&string[12], kDefinitionMark);
    PutU32(&string[24], 1);
  }
  string[format.tableKindAt] = plan.isSystem ? kSystemTable : kUserTable;
  PutU16(&string[format.columnsEverAt], columnCount);
  PutU16(&string[format.variableEverAt], variableCount);
  PutU16(&string[format.columnCountAt], columnCount);
  PutU32(&string[format.logicalCountAt], indexCount);
  PutU32(&string[format.realCountAt], indexCount);
  PutU32(&string[format.ownedMapAt], owned.Packed());
  PutU32(&string[format.freeMapAt], free.Packed());

  for (std::uint32_t i = 0; i < indexCount; ++i) AppendStatistics(format, &string);
  if (plan.isSystem && format.IsJet4()) {
    std::stable_sort(columns.begin(), columns.end(),
                     [](const PlacedColumn& a, const PlacedColumn& b) {
                       return LessNoCase(a.plan->name, b.plan->name);
                     });
  }
  for (const PlacedColumn& column : columns) {
    AppendColumn(format, column, plan.isSystem, &string);
  }
  for (const PlacedColumn& column : columns) AppendName(format, column.plan->name, &string);
  for (const PlacedIndex& index : indexes) {
    std::vector<std::uint16_t> numbers(index.plan->columns.begin(), index.plan->columns.end());
    AppendRealIndex(format, index, numbers, &string);
  }
  std::vector<PlacedIndex> byName = indexes;
  std::stable_sort(byName.begin(), byName.end(), [](const PlacedIndex& a, const PlacedIndex& b) {
    return LessNoCase(a.plan->name, b.plan->name);
  });
  for (const PlacedIndex& index : byName) {
    AppendLogicalIndex(format, *index.plan, index.number, index.number, &string);
  }
  for (const PlacedIndex& index : byName) AppendName(format, index.plan->name, &string);
  for (const PlacedColumn& column : columns) {
    if (!IsLongValue(*column.plan)) continue;
    AppendU16(&string, column.number);
    AppendU32(&string, column.ownedMap.Packed());
    AppendU32(&string, column.freeMap.Packed());
  }
  AppendU16(&string, kNoColumn);
  return WriteDefinition(pager, allocator, std::move(string), {page});
}

Status BuildIndex(Pager& pager, PageAllocator& allocator, const TableDef& def,
                  const IndexPlan& plan) {
  const Format& format = pager.GetFormat();
  Bytes string;
  std::vector<std::uint32_t> pages;
  DefinitionParts parts;
  Status status = ReadDefinitionString(pager, def.page, &string, &pages);
  if (status.ok()) status = LocateParts(format, string, def.page, &parts);
  if (!status.ok()) return status;

  const auto real = static_cast<std::uint32_t>(def.realIndexes.size());
  PlacedIndex index = {&plan, real, {}, 0};
  MapRows maps(pager, allocator, def.ownedMap.page);
  status = TakeIndexPages(pager, allocator, maps, def.page, &index);
  if (!status.ok()) return status;

  // The logical indexes are in the order of their names, their numbers are free.
  std::uint32_t number = 0;
  std::uint32_t before = 0;
  for (const LogicalIndex& logical : def.logicalIndexes) {
    number = std::max(number, logical.number + 1);
    if (LessNoCase(logical.name, plan.name)) ++before;
  }
  std::uint32_t nameAt = parts.indexNames;
  for (std::uint32_t i = 0; i < before; ++i) {
    nameAt += format.CharSize() + (format.IsJet4() ? GetU16(&string[nameAt]) : string[nameAt]);
  }

  // From the back, so that the offsets of the parts hold.
  const auto insert = [&string](std::uint32_t at, const Bytes& part) {
    string.insert(string.begin() + at, part.begin(), part.end());
  };
  Bytes part;
  AppendName(format, plan.name, &part);
  insert(nameAt, part);
  part.clear();
  AppendLogicalIndex(format, plan, number, real, &part);
  insert(parts.logicalIndexes + before * format.logicalIndexSize, part);
  part.clear();
  std::vector<std::uint16_t> numbers;
  for (const int column : plan.columns) numbers.push_back(def.columns[column].number);
  AppendRealIndex(format, index, numbers, &part);
  insert(parts.logicalIndexes, part);
  part.clear();
  AppendStatistics(format, &part);
  insert(parts.columns, part);
  PutU32(&string[format.logicalCountAt], GetU32(&string[format.logicalCountAt]) + 1);
  PutU32(&string[format.realCountAt], real + 1);
  return WriteDefinition(pager, allocator, std::move(string), std::move(pages));
}

}  // namespace jet
