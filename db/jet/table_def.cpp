// SPDX-License-Identifier: MIT

#include "db/jet/table_def.h"

#include <algorithm>
#include <bitset>
#include <string>

#include "db/jet/text_codec.h"

namespace jet {
namespace {

constexpr std::uint32_t kLengthAt = 8;
constexpr std::uint32_t kNextPageAt = 4;
constexpr std::uint32_t kMaxIndexes = 1000;
constexpr std::uint32_t kMaxLength = 1 << 20;  // well above what 255 columns can need
constexpr std::uint32_t kMapRecord = 10;

Status Damaged(std::uint32_t page, std::string text) {
  return Status(ErrorNumber::Damaged, "Table definition: " + std::move(text), page);
}

// Offset behind `count` names that begin at `at`; 0 when they do not fit.
std::uint32_t SkipNames(const Format& format, ByteView string, std::uint32_t at,
                        std::uint32_t count) {
  const std::uint32_t prefix = format.CharSize();
  for (std::uint32_t i = 0; i < count; ++i) {
    if (at + prefix > string.size()) return 0;
    at += prefix + (prefix == 2 ? GetU16(&string[at]) : string[at]);
    if (at > string.size()) return 0;
  }
  return at;
}

// Reads names one after the other; the parts were checked before.
class NameReader {
 public:
  NameReader(const Format& format, ByteView string, std::uint32_t at)
      : format_(format), string_(string), at_(at) {}

  std::string Next() {
    const std::uint32_t prefix = format_.CharSize();
    const std::uint32_t length = prefix == 2 ? GetU16(&string_[at_]) : string_[at_];
    std::string name;
    DecodeText(format_, string_.subspan(at_ + prefix, length), &name);
    at_ += prefix + length;
    return name;
  }

 private:
  const Format& format_;
  ByteView string_;
  std::uint32_t at_;
};

Column ReadColumn(const Format& format, const std::uint8_t* record) {
  Column column;
  column.type = static_cast<FieldType>(record[0]);
  if (format.IsJet4()) {
    column.number = GetU16(record + 5);
    column.variableIndex = GetU16(record + 7);
    column.sortOrder = GetU16(record + 11);
    column.sortVersion = record[14];
    column.flags = record[15];
    column.extraFlags = record[16];
    column.fixedOffset = GetU16(record + 21);
    column.length = GetU16(record + 23);
  } else {
    column.number = GetU16(record + 1);
    column.variableIndex = GetU16(record + 3);
    column.sortOrder = GetU16(record + 9);
    column.flags = record[13];
    column.fixedOffset = GetU16(record + 14);
    column.length = GetU16(record + 16);
  }
  if (column.type == FieldType::Numeric) {
    column.precision = record[11];
    column.scale = record[12];
  }
  return column;
}

// Columns must not share their place in a row.
Status CheckColumns(const Format& format, const TableDef& def) {
  std::bitset<kMaxColumns + 1> numbers;
  std::bitset<kMaxColumns + 1> variables;
  std::vector<std::pair<std::uint32_t, std::uint32_t>> fixed;
  for (const Column& column : def.columns) {
    if (column.number >= def.columnsEver || numbers[column.number]) {
      return Damaged(def.page, "column number " + std::to_string(column.number) +
                                   " is out of range or given twice");
    }
    numbers.set(column.number);
    if (column.IsBoolean()) continue;
    if (column.IsFixed()) {
      fixed.emplace_back(column.fixedOffset, column.FixedSize());
    } else {
      if (column.variableIndex >= def.variableEver || variables[column.variableIndex]) {
        return Damaged(def.page, "the place of column \"" + column.name +
                                     "\" in a row is out of range or given twice");
      }
      variables.set(column.variableIndex);
    }
  }
  std::sort(fixed.begin(), fixed.end());
  std::uint32_t end = 0;
  for (const auto& [offset, size] : fixed) {
    if (offset < end || offset + size > format.maxRowSize) {
      return Damaged(def.page, "the places of the fixed columns in a row overlap");
    }
    end = offset + size;
  }
  return {};
}

Status ReadRealIndex(const Format& format, const std::uint8_t* record, const TableDef& def,
                     RealIndex* index) {
  const std::uint8_t* slots = record + (format.IsJet4() ? 4 : 0);
  for (std::uint32_t i = 0; i < kMaxIndexColumns; ++i, slots += 3) {
    const std::uint16_t number = GetU16(slots);
    if (number == kNoColumn) continue;
    const auto column = std::find_if(def.columns.begin(), def.columns.end(),
                                     [number](const Column& c) { return c.number == number; });
    if (column == def.columns.end()) {
      return Damaged(def.page, "an index is on column number " + std::to_string(number) +
                                   ", which is not there");
    }
    index->columns.push_back({static_cast<int>(column - def.columns.begin()), (slots[2] & 1) != 0});
  }
  if (index->columns.empty()) return Damaged(def.page, "an index has no columns");
  index->pageMap = RowPointer::Unpack(GetU32(slots));
  index->root = GetU32(slots + 4);
  index->flags = record[format.IsJet4() ? 46 : 38];
  return {};
}

}  // namespace

std::uint32_t Column::FixedSize() const {
  switch (type) {
    case FieldType::Boolean:
      return 0;
    case FieldType::Byte:
      return 1;
    case FieldType::Integer:
      return 2;
    case FieldType::Long:
    case FieldType::Single:
      return 4;
    case FieldType::Currency:
    case FieldType::Double:
    case FieldType::DateTime:
      return 8;
    case FieldType::Guid:
      return 16;
    case FieldType::Numeric:
      return 17;
    default:
      return length;
  }
}

bool EqualNoCase(std::string_view a, std::string_view b) {
  if (a == b) return true;  // as names nearly always are
  const auto lower = [](char c) { return c >= 'A' && c <= 'Z' ? static_cast<char>(c + 32) : c; };
  return std::equal(a.begin(), a.end(), b.begin(), b.end(),
                    [&](char x, char y) { return lower(x) == lower(y); });
}

const LogicalIndex* TableDef::FindIndex(std::string_view name) const {
  for (const LogicalIndex& index : logicalIndexes) {
    if (EqualNoCase(index.name, name)) return &index;
  }
  return nullptr;
}

int TableDef::FindColumn(std::string_view name) const {
  for (std::size_t i = 0; i < columns.size(); ++i) {
    if (EqualNoCase(columns[i].name, name)) return static_cast<int>(i);
  }
  return -1;
}

Status ReadDefinitionString(Pager& pager, std::uint32_t page, Bytes* string,
                            std::vector<std::uint32_t>* pages) {
  const std::uint32_t pageSize = pager.GetFormat().pageSize;
  std::uint32_t length = 0;
  string->clear();
  for (std::uint32_t next = page; pages->empty() || string->size() < length;) {
    if (next == 0) return Damaged(page, "its chain of pages ends early");
    if (pages->size() >= pager.PageCount() ||
        std::find(pages->begin(), pages->end(), next) != pages->end()) {
      return Damaged(next, "its chain of pages is a circle");
    }
    const std::uint8_t* bytes = nullptr;
    Status status = pager.Read(next, &bytes);
    if (!status.ok()) return status;
    if (bytes[0] != kDefinitionPage) {
      return Damaged(next, "the page has type " + std::to_string(bytes[0]) + ", not 2");
    }
    if (pages->empty()) {
      length = GetU32(bytes + kLengthAt);
      if (length > kMaxLength) return Damaged(page, "it cannot be that long");
      string->assign(bytes, bytes + pageSize);
    } else {
      string->insert(string->end(), bytes + kContinuedAt, bytes + pageSize);
    }
    pages->push_back(next);
    next = GetU32(bytes + kNextPageAt);
  }
  string->resize(length);
  return {};
}

Status LocateParts(const Format& format, ByteView string, std::uint32_t page,
                   DefinitionParts* parts) {
  const auto size = static_cast<std::uint32_t>(string.size());
  if (size < format.definitionHeader) return Damaged(page, "it is too short");
  const std::uint32_t columns = GetU16(&string[format.columnCountAt]);
  const std::uint32_t logical = GetU32(&string[format.logicalCountAt]);
  const std::uint32_t real = GetU32(&string[format.realCountAt]);
  if (columns > kMaxColumns || GetU16(&string[format.columnsEverAt]) > kMaxColumns ||
      GetU16(&string[format.variableEverAt]) > kMaxColumns) {
    return Damaged(page, "it cannot have " + std::to_string(columns) + " columns");
  }
  if (logical > kMaxIndexes || real > kMaxIndexes) {
    return Damaged(page, "it cannot have that many indexes");
  }
  parts->statistics = format.definitionHeader;
  parts->columns = parts->statistics + real * format.statisticsSize;
  parts->columnNames = parts->columns + columns * format.columnSize;
  parts->realIndexes = SkipNames(format, string, parts->columnNames, columns);
  if (parts->realIndexes == 0) return Damaged(page, "the column names do not fit into it");
  parts->logicalIndexes = parts->realIndexes + real * format.realIndexSize;
  parts->indexNames = parts->logicalIndexes + logical * format.logicalIndexSize;
  if (parts->indexNames > size) return Damaged(page, "the indexes do not fit into it");
  parts->longValueMaps = SkipNames(format, string, parts->indexNames, logical);
  if (parts->longValueMaps == 0) return Damaged(page, "the index names do not fit into it");
  return {};
}

Status ReadTableDef(Pager& pager, std::uint32_t page, TableDef* def) {
  const Format& format = pager.GetFormat();
  *def = TableDef();
  def->page = page;
  Bytes string;
  Status status = ReadDefinitionString(pager, page, &string, &def->pages);
  if (!status.ok()) return status;
  DefinitionParts parts;
  status = LocateParts(format, string, page, &parts);
  if (!status.ok()) return status;

  def->length = static_cast<std::uint32_t>(string.size());
  def->kind = string[format.tableKindAt];
  def->columnsEver = GetU16(&string[format.columnsEverAt]);
  def->variableEver = GetU16(&string[format.variableEverAt]);
  def->ownedMap = RowPointer::Unpack(GetU32(&string[format.ownedMapAt]));
  def->freeMap = RowPointer::Unpack(GetU32(&string[format.freeMapAt]));

  const std::uint32_t columnCount = GetU16(&string[format.columnCountAt]);
  NameReader columnNames(format, string, parts.columnNames);
  for (std::uint32_t i = 0; i < columnCount; ++i) {
    def->columns.push_back(ReadColumn(format, &string[parts.columns + i * format.columnSize]));
    def->columns.back().name = columnNames.Next();
  }
  std::stable_sort(def->columns.begin(), def->columns.end(),
                   [](const Column& a, const Column& b) { return a.number < b.number; });
  status = CheckColumns(format, *def);
  if (!status.ok()) return status;

  const std::uint32_t realCount = GetU32(&string[format.realCountAt]);
  for (std::uint32_t i = 0; i < realCount; ++i) {
    RealIndex index;
    status =
        ReadRealIndex(format, &string[parts.realIndexes + i * format.realIndexSize], *def, &index);
    if (!status.ok()) return status;
    index.distinctKeysAt = parts.statistics + i * format.statisticsSize + 4;
    def->realIndexes.push_back(std::move(index));
  }

  const std::uint32_t logicalCount = GetU32(&string[format.logicalCountAt]);
  NameReader indexNames(format, string, parts.indexNames);
  for (std::uint32_t i = 0; i < logicalCount; ++i) {
    const std::uint8_t* record =
        &string[parts.logicalIndexes + i * format.logicalIndexSize] + (format.IsJet4() ? 4 : 0);
    LogicalIndex index;
    index.name = indexNames.Next();
    index.number = GetU32(record);
    index.real = GetU32(record + 4);
    index.otherTable = GetU32(record + 13);
    index.kind = record[19];
    if (index.real >= def->realIndexes.size()) {
      return Damaged(page, "index \"" + index.name + "\" has no tree");
    }
    def->logicalIndexes.push_back(std::move(index));
  }

  for (std::uint32_t at = parts.longValueMaps; at + kMapRecord <= string.size(); at += kMapRecord) {
    const std::uint16_t number = GetU16(&string[at]);
    if (number == kNoColumn) break;
    for (Column& column : def->columns) {
      if (column.number != number) continue;
      column.ownedMap = RowPointer::Unpack(GetU32(&string[at + 2]));
      column.freeMap = RowPointer::Unpack(GetU32(&string[at + 6]));
    }
  }
  return {};
}

}  // namespace jet
