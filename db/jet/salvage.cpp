// SPDX-License-Identifier: MIT

#include "db/jet/salvage.h"

#include <algorithm>
#include <map>
#include <string>
#include <tuple>
#include <unordered_map>
#include <utility>

#include "db/jet/index_check.h"
#include "db/jet/key_codec.h"
#include "db/jet/salvage_pages.h"
#include "db/jet/salvage_rows.h"
#include "db/jet/salvage_values.h"
#include "db/jet/text_codec.h"
#include "db/jet/usage_map.h"
#include "db/jet/value_codec.h"

namespace jet {
namespace {

// A row that is taken for the record of its key.
struct Chosen {
  Evidence evidence = Evidence::Repaired;
  bool isNamedByIndex = false;
  Bytes bytes;
  const TableDef* layout = nullptr;

  // Which of two is the better one.
  auto Rank() const { return std::tuple(evidence, !isNamedByIndex); }
};

class TableSalvage {
 public:
  TableSalvage(SalvagePages& pages, const SoughtTable& table)
      : pages_(pages), table_(table), layouts_(FindLayouts(pages, table.spec)), values_(pages) {
    for (const TableDef& layout : layouts_) {
      std::vector<int>& columns = columns_.emplace_back();
      for (const FieldSpec& field : table.spec.fields) {
        columns.push_back(layout.FindColumn(field.name));
      }
    }
  }

  std::vector<SalvagedRecord> Run() {
    ReadIndexes();
    FindMovedRows();
    for (std::uint32_t page = 1; page < pages_.Count(); ++page) {
      if (!IsNobodys(page)) LookAt(page);
    }
    ExpectLongValues();
    std::vector<SalvagedRecord> records;
    for (const auto& [key, chosen] : chosen_) records.push_back(ReadRecord(chosen));
    return records;
  }

 private:
  // What the indexes of the key say where the record of a key is.  Those of every definition that
  // was found; a damaged one says less.
  void ReadIndexes() {
    if (!table_.key) return;
    for (const TableDef& layout : layouts_) {
      const std::vector<IndexColumn> key = {
          {layout.FindColumn(table_.spec.fields[*table_.key].name), true}};
      for (const RealIndex& index : layout.realIndexes) {
        if (index.columns != key) continue;
        TreeInspection tree;
        InspectTree(pages_.GetPager(), layout.page, index, &tree);
        for (std::size_t i = 0; i < tree.entries.Count(); ++i) {
          const ByteView entry = tree.entries[i];
          const ByteView value = entry.first(entry.size() - kEntryPointer);
          named_[EntryRow(entry).Packed()].assign(value.begin(), value.end());
        }
      }
    }
  }

  // Where the rows are at home that have moved.
  void FindMovedRows() {
    for (std::uint32_t page = 1; page < pages_.Count(); ++page) {
      const ByteView bytes = pages_.Read(page);
      const SlotTable slots = ReadSlots(pages_.GetFormat(), bytes);
      for (std::size_t i = 0; bytes[0] == kDataPage && i < slots.entries.size(); ++i) {
        const auto& [slot, isSound] = slots.entries[i];
        if (!isSound || !slot.IsOverflow() || slot.Length() < 4) continue;
        homes_[GetU32(&bytes[slot.begin])] = {page, static_cast<std::uint8_t>(i)};
      }
    }
  }

  // Free by the global map, and no definition says that the page is its table's.
  bool IsNobodys(std::uint32_t page) {
    if (!pages_.IsSaidFree(page)) return false;
    bool isDenied = false;
    for (const TableDef& layout : layouts_) {
      UsageMap map;
      bool isOwned = true;
      if (!layout.ownedMap || !UsageMap::Open(pages_.GetPager(), layout.ownedMap, &map).ok() ||
          !map.Contains(page, &isOwned).ok()) {
        continue;
      }
      if (isOwned) return false;
      isDenied = true;
    }
    return isDenied;
  }

  void LookAt(std::uint32_t page) {
    const ByteView bytes = pages_.Read(page);
    FindRows(pages_.GetFormat(), layouts_, page, bytes, pages_.LengthOf(page),
             [this](const FoundRow& row) { Consider(row); });
  }

  void Consider(const FoundRow& row) {
    RowView view;
    int key = 0;
    if (!view.Parse(pages_.GetFormat(), *row.layout, row.bytes) || !ReadKey(row, view, &key)) {
      return;
    }
    Chosen candidate{row.evidence, false, {}, row.layout};
    RowPointer home = row.place;
    if (const auto moved = homes_.find(row.place.Packed()); moved != homes_.end()) {
      home = moved->second;
      if (row.evidence == Evidence::Moved) candidate.evidence = Evidence::Live;
    }
    candidate.isNamedByIndex = IsNamed(home, view, *row.layout);
    const auto found = chosen_.find(key);
    if (found != chosen_.end() && found->second.Rank() <= candidate.Rank()) return;
    candidate.bytes.assign(row.bytes.begin(), row.bytes.end());
    chosen_[key] = std::move(candidate);
  }

  // The key of a row; false when it can be none of the table.
  bool ReadKey(const FoundRow& row, const RowView& view, int* key) {
    for (std::size_t i = 0; i < table_.spec.fields.size(); ++i) {
      const Column& column = ColumnOf(*row.layout, i);
      if (column.IsLongValue() || (table_.key && *table_.key != static_cast<int>(i))) continue;
      ByteView content;
      if (view.Get(column, &content) != RowView::Field::Present || !Accepts(i, column, content)) {
        return false;
      }
      if (table_.key) *key = value_.Int();
    }
    return true;
  }

  bool IsNamed(RowPointer home, const RowView& view, const TableDef& layout) {
    const auto named = named_.find(home.Packed());
    if (named == named_.end()) return false;
    const Column& column = ColumnOf(layout, static_cast<std::size_t>(*table_.key));
    ByteView content;
    Bytes key;
    return view.Get(column, &content) == RowView::Field::Present &&
           AppendKey(pages_.GetFormat(), column, true, &content, &key) && key == named->second;
  }

  void ExpectLongValues() {
    for (const auto& [key, chosen] : chosen_) {
      RowView view;
      if (!view.Parse(pages_.GetFormat(), *chosen.layout, chosen.bytes)) continue;
      for (const Column& column : chosen.layout->columns) {
        ByteView field;
        if (column.IsLongValue() && view.Get(column, &field) == RowView::Field::Present) {
          values_.Expect(field);
        }
      }
    }
  }

  SalvagedRecord ReadRecord(const Chosen& chosen) {
    SalvagedRecord record;
    record.hasSlot = chosen.evidence == Evidence::Live || chosen.evidence == Evidence::Moved;
    record.isSure = chosen.evidence != Evidence::Repaired;
    RowView view;
    (void)view.Parse(pages_.GetFormat(), *chosen.layout, chosen.bytes);  // it was before
    for (std::size_t i = 0; i < table_.spec.fields.size(); ++i) {
      if (!ReadField(chosen, view, i)) {
        record.lost.push_back(static_cast<int>(i));
        value_.SetNull();
      }
      record.values.push_back(value_);
    }
    return record;
  }

  // Into value_.  False when it did not survive.
  bool ReadField(const Chosen& chosen, const RowView& view, std::size_t field) {
    const Column& column = ColumnOf(*chosen.layout, field);
    ByteView content;
    const RowView::Field kind = view.Get(column, &content);
    if (kind == RowView::Field::Null) {
      value_.SetNull();
      return chosen.evidence != Evidence::Repaired;  // there, it may have been a value
    }
    if (kind == RowView::Field::Bad) return false;
    if (!column.IsLongValue()) return Accepts(field, column, content);
    return values_.Read(content, [&](ByteView bytes, bool isSure) {
      return Accepts(field, column, bytes) &&
             (isSure || table_.expects(static_cast<int>(field), value_));
    });
  }

  // Reads the content into value_ and judges it.
  bool Accepts(std::size_t field, const Column& column, ByteView content) {
    DecodeContent(pages_.GetFormat(), column, content, &value_);
    if (value_.IsNull()) return false;
    if (column.type == FieldType::Text) {
      units_.clear();
      DecodeUnits(pages_.GetFormat(), content, &units_);
      if (units_.size() > static_cast<std::size_t>(table_.spec.fields[field].size)) return false;
    }
    return table_.accepts(static_cast<int>(field), value_);
  }

  const Column& ColumnOf(const TableDef& layout, std::size_t field) const {
    return layout.columns[columns_[&layout - layouts_.data()][field]];
  }

  SalvagePages& pages_;
  const SoughtTable& table_;
  const std::vector<TableDef> layouts_;
  std::vector<std::vector<int>> columns_;  // of the fields, in each layout
  SalvageValues values_;
  std::unordered_map<std::uint32_t, Bytes> named_;       // keys, by packed row
  std::unordered_map<std::uint32_t, RowPointer> homes_;  // by packed place of the moved row
  std::map<int, Chosen> chosen_;                         // by key
  Value value_;
  std::u16string units_;
};

}  // namespace

Status Salvage::Open(std::unique_ptr<PageFile> file, std::unique_ptr<Salvage>* salvage) {
  std::unique_ptr<SalvagePages> pages;
  Status status = SalvagePages::Open(std::move(file), &pages);
  if (status.ok()) salvage->reset(new Salvage(std::move(pages)));
  return status;
}

Salvage::Salvage(std::unique_ptr<SalvagePages> pages) : pages_(std::move(pages)) {}
Salvage::~Salvage() = default;

std::vector<SalvagedRecord> Salvage::Records(const SoughtTable& table) {
  return TableSalvage(*pages_, table).Run();
}

}  // namespace jet
