// SPDX-License-Identifier: MIT

#include "db/jet/salvage_rows.h"

#include <algorithm>
#include <array>
#include <memory>
#include <utility>

#include "db/jet/long_value.h"
#include "db/jet/row_codec.h"
#include "db/jet/store.h"

namespace jet {
namespace {

constexpr std::uint32_t kMarkSize = 2;       // bytes that a compressed text may have besides
constexpr std::uint32_t kMostJumps = 7;      // of a Jet 3 row
constexpr std::size_t kMostDefinitions = 4;  // of one table, with those of earlier days

// Whether the field can be what its column says; long values are not followed.
bool CanBe(const Column& column, ByteView field) {
  if (column.IsLongValue()) {
    LongValueHead head;
    if (!ReadLongValueHead(field, &head).ok()) return false;
    const std::size_t rest = field.size() - kLongValueHead;
    return head.kind == LongValueHead::kInline ? head.length == rest
                                               : rest == 0 && head.length > 0 && head.row;
  }
  if (column.type == FieldType::Text) return field.size() <= column.length + kMarkSize;
  return true;
}

// Whether the bytes are built as a row of the table, by all that can be told from them.
bool IsRow(const Format& format, const TableDef& layout, ByteView bytes, bool ofToday) {
  RowView row;
  if (!row.Parse(format, layout, bytes) || !row.AgreesWithItself(layout)) return false;
  if (ofToday && !row.IsOfToday(layout)) return false;
  return std::all_of(layout.columns.begin(), layout.columns.end(), [&](const Column& column) {
    ByteView field;
    const RowView::Field kind = row.Get(column, &field);
    return kind == RowView::Field::Null ||
           (kind == RowView::Field::Present && CanBe(column, field));
  });
}

// The row with the counts of columns that a row of today has.
bool RepairCounts(const Format& format, const TableDef& layout, ByteView bytes, Bytes* repaired) {
  const std::uint32_t unit = format.CharSize();
  const std::uint32_t maskSize = (layout.columnsEver + 7U) / 8;
  if (bytes.size() < 2 * unit + maskSize) return false;
  repaired->assign(bytes.begin(), bytes.end());
  const auto put = [&](std::size_t at, std::uint32_t value) {
    (*repaired)[at] = static_cast<std::uint8_t>(value);
    if (unit == 2) (*repaired)[at + 1] = static_cast<std::uint8_t>(value >> 8);
  };
  put(0, layout.columnsEver);
  if (layout.variableEver > 0) put(bytes.size() - maskSize - unit, layout.variableEver);
  RowView row;
  return row.Parse(format, layout, *repaired);
}

class PageSearch {
 public:
  PageSearch(const Format& format, const std::vector<TableDef>& layouts, std::uint32_t number,
             ByteView page, std::uint32_t length, const std::function<void(const FoundRow&)>& found)
      : format_(format),
        layouts_(layouts),
        number_(number),
        page_(page),
        length_(length),
        found_(found) {}

  void Run() {
    const SlotTable slots = ReadSlots(format_, page_);
    bool areSound = slots.isSound && length_ == format_.pageSize;
    for (std::size_t i = 0; i < slots.entries.size(); ++i) {
      const SlotTable::Entry& entry = slots.entries[i];
      if (!entry.isSound || entry.slot.end > length_ || entry.slot.IsDead()) continue;
      const bool isRow = TakeSlot(static_cast<std::uint8_t>(i), entry.slot);
      areSound = areSound && (isRow || entry.slot.flags != 0);
    }
    if (areSound) return;
    for (const TableDef& layout : layouts_) {
      if (layout.variableEver > 0) Carve(layout);
    }
  }

 private:
  void Take(std::uint8_t slot, Evidence evidence, const TableDef& layout, ByteView bytes) {
    found_({{number_, slot}, evidence, &layout, bytes});
  }

  // Whether there is a row.  With impossible counts of columns it is taken, but it may as well be
  // that its bounds are wrong.
  bool TakeSlot(std::uint8_t index, const Slot& slot) {
    const ByteView bytes = page_.subspan(slot.begin, slot.Length());
    const std::uint32_t owner = PageOwner(page_.data());
    for (const TableDef& layout : layouts_) {
      // Those of another table with few columns can look like old ones of this table.
      if (!IsRow(format_, layout, bytes, owner != layout.page)) continue;
      Take(index, slot.IsLive() ? Evidence::Live : Evidence::Moved, layout, bytes);
      return true;
    }
    if (slot.flags != 0) return false;
    for (const TableDef& layout : layouts_) {
      if (owner != layout.page || !RepairCounts(format_, layout, bytes, &repaired_)) continue;
      Take(index, Evidence::Repaired, layout, repaired_);
      break;
    }
    return false;
  }

  // A row says at its end how long it is: its tables stand there and say where they begin.  From
  // the page's end on: what was left behind by rows that have moved stands before those in use.
  void Carve(const TableDef& layout) {
    const std::uint32_t unit = format_.CharSize();
    const std::uint32_t maskSize = (layout.columnsEver + 7U) / 8;
    const std::uint32_t tables = unit * (layout.variableEver + 1U);
    for (std::uint32_t end = length_; end >= maskSize + tables + 2 * unit; --end) {
      const std::uint32_t countAt = end - maskSize - unit;
      if (Number(countAt) != layout.variableEver) continue;
      if (format_.IsJet4()) {
        const std::uint32_t tablesAt = countAt - tables;
        const std::uint32_t size = Number(tablesAt);
        if (size <= tablesAt) CarveRow(layout, tablesAt - size, end);
        continue;
      }
      for (std::uint32_t jumps = 0; jumps <= kMostJumps && jumps + tables < countAt; ++jumps) {
        const std::uint32_t tablesAt = countAt - jumps - tables;
        for (std::uint32_t size = page_[tablesAt]; size <= tablesAt; size += 256) {
          const std::uint32_t begin = tablesAt - size;
          if ((end - begin - 1) / 256 == jumps) CarveRow(layout, begin, end);
        }
      }
    }
  }

  void CarveRow(const TableDef& layout, std::uint32_t begin, std::uint32_t end) {
    const ByteView bytes = page_.subspan(begin, end - begin);
    if (Number(begin) == layout.columnsEver && IsRow(format_, layout, bytes, true)) {
      Take(0, Evidence::Carved, layout, bytes);
    }
  }

  std::uint32_t Number(std::uint32_t at) const {
    return format_.IsJet4() ? GetU16(&page_[at]) : page_[at];
  }

  const Format& format_;
  const std::vector<TableDef>& layouts_;
  const std::uint32_t number_;
  const ByteView page_;
  const std::uint32_t length_;
  const std::function<void(const FoundRow&)>& found_;
  Bytes repaired_;
};

// As this engine places the columns, in the order of their numbers.
bool DefaultLayout(const Format& format, const TableSpec& spec, TableDef* layout) {
  std::unique_ptr<Database> database;
  std::shared_ptr<Table> table;
  if (!Database::CreateInMemory(&database).ok() || !database->CreateTable(spec).ok() ||
      !database->GetStore().OpenTable(spec.name, &table).ok()) {
    return false;
  }
  *layout = table->Def();
  layout->page = kNoPage;
  layout->ownedMap = {};
  layout->realIndexes.clear();
  layout->logicalIndexes.clear();
  for (std::size_t i = 0; i < spec.fields.size(); ++i) {
    if (spec.fields[i].type != FieldType::Text) continue;
    const auto size = static_cast<std::uint32_t>(spec.fields[i].size) * format.CharSize();
    layout->columns[i].length = static_cast<std::uint16_t>(size);
  }
  return true;
}

// As software does that places long values behind all other variable columns.
TableDef WithLongValuesLast(TableDef layout) {
  std::uint16_t next = 0;
  for (const bool isLongValue : {false, true}) {
    for (Column& column : layout.columns) {
      if (!column.IsFixed() && column.IsLongValue() == isLongValue) column.variableIndex = next++;
    }
  }
  return layout;
}

bool HasFieldsOf(const TableDef& definition, const TableSpec& spec) {
  return std::all_of(spec.fields.begin(), spec.fields.end(), [&](const FieldSpec& field) {
    const int column = definition.FindColumn(field.name);
    return column >= 0 && definition.columns[column].type == field.type;
  });
}

}  // namespace

std::vector<TableDef> FindLayouts(SalvagePages& pages, const TableSpec& spec) {
  std::vector<TableDef> layouts;
  for (std::uint32_t page = 2; page < pages.Count() && layouts.size() < kMostDefinitions; ++page) {
    TableDef definition;
    if (pages.Read(page)[0] == kDefinitionPage &&
        ReadTableDef(pages.GetPager(), page, &definition).ok() && HasFieldsOf(definition, spec)) {
      layouts.push_back(std::move(definition));
    }
  }
  TableDef usual;
  if (DefaultLayout(pages.GetFormat(), spec, &usual)) {
    layouts.push_back(WithLongValuesLast(usual));
    layouts.insert(layouts.end() - 1, std::move(usual));
  }
  return layouts;
}

void FindRows(const Format& format, const std::vector<TableDef>& layouts, std::uint32_t number,
              ByteView page, std::uint32_t length,
              const std::function<void(const FoundRow&)>& found) {
  PageSearch(format, layouts, number, page, length, found).Run();
}

}  // namespace jet
