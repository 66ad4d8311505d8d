// SPDX-License-Identifier: MIT

#include "db/jet/table.h"

#include <algorithm>
#include <string>

#include "db/jet/data_page.h"
#include "db/jet/key_codec.h"
#include "db/jet/long_value.h"
#include "db/jet/property_blob.h"
#include "db/jet/store.h"
#include "db/jet/usage_map.h"
#include "db/jet/value_codec.h"

namespace jet {
namespace {

constexpr RowPointer kPastEverything = {0xFFFFFF, 0xFF};

Status BadRow(RowPointer row, const char* text) {
  return Status(ErrorNumber::Damaged, "Row " + std::to_string(row.slot) + " " + text, row.page);
}

}  // namespace

Table::Table(Store& store, std::string name, std::uint32_t page, std::vector<Property> properties)
    : store_(store),
      format_(store.GetFormat()),
      name_(std::move(name)),
      page_(page),
      properties_(std::move(properties)) {}

Table::~Table() = default;

Status Table::Load(Store& store, std::string name, std::uint32_t page,
                   std::vector<Property> properties, std::shared_ptr<Table>* table) {
  std::shared_ptr<Table> loaded(new Table(store, std::move(name), page, std::move(properties)));
  Status status = loaded->Reload();
  if (status.ok()) *table = std::move(loaded);
  return status;
}

Status Table::Refresh() {
  if (rollbacksSeen_ != store_.GetPager().Rollbacks() && !isGone_) {
    rowsCounted_ = false;
    indexesChecked_ = false;
    rollbacksSeen_ = store_.GetPager().Rollbacks();
    TableDef def;
    // Another table may have taken the page since.
    isGone_ = !ReadDefinition(&def).ok() || !HasColumnsOf(def);
    if (!isGone_) UseDefinition(std::move(def));
  }
  if (!isGone_) return {};
  return Status(ErrorNumber::NoSuchTable, "Table \"" + name_ + "\" is not there any more");
}

Status Table::Reload() {
  rollbacksSeen_ = store_.GetPager().Rollbacks();
  TableDef def;
  Status status = ReadDefinition(&def);
  if (status.ok()) UseDefinition(std::move(def));
  return status;
}

Status Table::ReadDefinition(TableDef* def) const {
  Status status = ReadTableDef(store_.GetPager(), page_, def);
  if (!status.ok()) return status;
  for (const Property& property : properties_) {
    const int column = property.owner.empty() ? -1 : def->FindColumn(property.owner);
    if (column < 0) continue;
    if (EqualNoCase(property.name, kAllowZeroLength)) {
      def->columns[column].hasAllowZeroLength = true;
      def->columns[column].allowZeroLength = property.IsTrue();
    } else if (EqualNoCase(property.name, kRequired)) {
      def->columns[column].required = property.IsTrue();
    }
  }
  return {};
}

void Table::UseDefinition(TableDef def) {
  def_ = std::move(def);
  columnsByName_.clear();
  columnsByName_.reserve(def_.columns.size());
  for (std::size_t i = 0; i < def_.columns.size(); ++i) {
    columnsByName_.emplace(def_.columns[i].name, static_cast<int>(i));
  }
}

std::size_t Table::NameHash::operator()(std::string_view name) const {
  std::uint32_t hash = 2166136261;
  // Capitals hash as small letters do: the bit is set in which they differ.  A few signs that
  // differ in nothing else share a hash by that.
  for (const char c : name) hash = (hash ^ (static_cast<std::uint8_t>(c) | 0x20U)) * 16777619;
  return hash;
}

int Table::FindColumn(std::string_view name) const {
  const auto found = columnsByName_.find(name);
  return found == columnsByName_.end() ? -1 : found->second;
}

bool Table::HasColumnsOf(const TableDef& def) const {
  return std::equal(def_.columns.begin(), def_.columns.end(), def.columns.begin(),
                    def.columns.end(), [](const Column& a, const Column& b) {
                      return a.name == b.name && a.type == b.type && a.length == b.length;
                    });
}

bool Table::OwnsPage(const std::uint8_t* bytes) const {
  return bytes[0] == kDataPage && PageOwner(bytes) == page_;
}

// The slot count of a page of the owned map; 0 when the page is not one of the table's.
Status Table::SlotsOf(std::uint32_t page, const std::uint8_t** bytes, std::uint32_t* count) {
  *count = 0;
  Status status = store_.GetPager().Read(page, bytes);
  if (!status.ok() || !OwnsPage(*bytes)) return status;
  return CountSlots(format_, *bytes, page, count);
}

Status Table::NextRow(RowPointer after, RowPointer* row) {
  UsageMap owned;
  std::uint32_t page = after.page;
  std::uint32_t slotIndex = after ? after.slot + 1U : 0;
  Status status;
  if (page == 0) {
    status = UsageMap::Open(store_.GetPager(), def_.ownedMap, &owned);
    if (status.ok()) status = owned.Next(0, &page);
    if (!status.ok()) return status;
  }
  while (page != kNoPage) {
    const std::uint8_t* bytes = nullptr;
    std::uint32_t count = 0;
    if (slotIndex < kMaxSlots) status = SlotsOf(page, &bytes, &count);
    if (!status.ok()) return status;
    for (; slotIndex < count; ++slotIndex) {
      if ((GetU16(bytes + format_.slotsAt + 2 * slotIndex) & kSlotDeleted) != 0) continue;
      *row = {page, static_cast<std::uint8_t>(slotIndex)};
      return {};
    }
    status = UsageMap::Open(store_.GetPager(), def_.ownedMap, &owned);
    if (status.ok()) status = owned.Next(page + 1, &page);
    if (!status.ok()) return status;
    slotIndex = 0;
  }
  *row = {};
  return {};
}

Status Table::LastRow(RowPointer* row) { return PreviousRow(kPastEverything, row); }

Status Table::PreviousRow(RowPointer before, RowPointer* row) {
  UsageMap owned;
  Status status = UsageMap::Open(store_.GetPager(), def_.ownedMap, &owned);
  std::uint32_t page = kNoPage;
  if (status.ok()) status = owned.Previous(before.page, &page);
  while (status.ok() && page != kNoPage) {
    const std::uint8_t* bytes = nullptr;
    std::uint32_t count = 0;
    status = SlotsOf(page, &bytes, &count);
    if (!status.ok()) return status;
    if (page == before.page) count = std::min<std::uint32_t>(count, before.slot);
    for (std::uint32_t i = count; i-- > 0;) {
      if ((GetU16(bytes + format_.slotsAt + 2 * i) & kSlotDeleted) != 0) continue;
      *row = {page, static_cast<std::uint8_t>(i)};
      return {};
    }
    if (page == 0) break;
    status = owned.Previous(page - 1, &page);
  }
  *row = {};
  return status;
}

Status Table::CountRows(std::uint32_t* count) {
  Status status = Refresh();
  if (!status.ok()) return status;
  if (!rowsCounted_) {
    UsageMap owned;
    status = UsageMap::Open(store_.GetPager(), def_.ownedMap, &owned);
    std::uint32_t rows = 0;
    for (std::uint32_t page = 0; status.ok(); ++page) {
      status = owned.Next(page, &page);
      if (!status.ok() || page == kNoPage) break;
      const std::uint8_t* bytes = nullptr;
      std::uint32_t slots = 0;
      status = SlotsOf(page, &bytes, &slots);
      if (!status.ok()) break;
      for (std::uint32_t i = 0; i < slots; ++i) {
        if ((GetU16(bytes + format_.slotsAt + 2 * i) & kSlotDeleted) == 0) ++rows;
      }
    }
    if (!status.ok()) return status;
    rowCount_ = rows;
    rowsCounted_ = true;
  }
  *count = rowCount_;
  return {};
}

bool Table::HasRow(RowPointer row) {
  const std::uint8_t* bytes = nullptr;
  std::uint32_t count = 0;
  if (!row || !SlotsOf(row.page, &bytes, &count).ok() || row.slot >= count) return false;
  return (GetU16(bytes + format_.slotsAt + 2 * std::uint32_t{row.slot}) & kSlotDeleted) == 0;
}

Status Table::ReadRow(RowPointer row, RowView* view, RowPointer* place) {
  if (!HasRow(row)) {
    return Status(ErrorNumber::NoCurrentRecord, "The record has been deleted");
  }
  Slot slot;
  const std::uint8_t* bytes = nullptr;
  Status status = FindRow(store_.GetPager(), row, &slot, &bytes);
  if (!status.ok()) return status;
  if (place != nullptr) *place = row;
  std::uint32_t page = row.page;
  if (slot.IsOverflow()) {
    if (slot.Length() < 4) return BadRow(row, "is too short for a pointer");
    const RowPointer target = RowPointer::Unpack(GetU32(bytes + slot.begin));
    status = FindRow(store_.GetPager(), target, &slot, &bytes);
    if (!status.ok()) return status;
    if (!OwnsPage(bytes) || slot.flags != kSlotDeleted) {
      return BadRow(row, "points to what is no moved row of its table");
    }
    if (place != nullptr) *place = target;
    page = target.page;
  }
  if (!view->Parse(format_, def_, {bytes + slot.begin, slot.Length()})) {
    return BadRow(row, "is too short for its own tables");
  }
  view->SetPage(page);
  return {};
}

Status Table::ReadContent(const RowView& row, int column, Bytes* scratch, bool* present,
                          ByteView* content) {
  const Column& definition = def_.columns[column];
  const RowView::Field field = row.Get(definition, content);
  *present = field == RowView::Field::Present;
  if (field == RowView::Field::Bad) {
    return Status(ErrorNumber::Damaged,
                  "The place of field \"" + definition.name + "\" in its row is impossible",
                  row.Page());
  }
  if (*present && definition.IsLongValue()) {
    Status status = ReadLongValue(store_.GetPager(), *content, scratch, content);
    if (status.ok() || status.Page() != kNoPage) return status;
    return Status(status.Error(), status.Text(), row.Page());
  }
  return {};
}

Status Table::ReadValue(const RowView& row, int column, Value* value) {
  bool present = false;
  ByteView content;
  Status status = ReadContent(row, column, &scratch_, &present, &content);
  if (!status.ok()) return status;
  if (present) {
    DecodeContent(format_, def_.columns[column], content, value);
  } else if (def_.columns[column].IsBoolean()) {
    value->SetNumber(Value::Kind::Bool, 0);
  } else {
    value->SetNull();
  }
  return {};
}

Status Table::AppendRowKey(const RealIndex& index, const RowView& row, Bytes* key, KeyInfo* info) {
  *info = KeyInfo();
  bool allNull = true;
  for (const IndexColumn& part : index.columns) {
    bool present = false;
    ByteView content;
    Status status = ReadContent(row, part.column, &scratch_, &present, &content);
    if (!status.ok()) return status;
    const Column& column = def_.columns[part.column];
    if (present || column.IsBoolean()) {
      allNull = false;
    } else {
      info->hasNull = true;
    }
    if (!AppendKey(format_, column, part.ascending, present ? &content : nullptr, key)) {
      info->known = false;
    }
  }
  info->entered = !(allNull && index.IgnoresNulls());
  return {};
}

std::uint64_t Table::TenantAt(RowPointer row) const {
  const auto found = tenants_->find(row.Packed());
  return found == tenants_->end() ? 0 : found->second;
}

void Table::NoteNewTenant(RowPointer row) {
  store_.GetPager().OnUndo([tenants = tenants_, packed = row.Packed(), before = TenantAt(row)] {
    (*tenants)[packed] = before;
  });
  (*tenants_)[row.Packed()] = ++lastTenant_;
}

}  // namespace jet
