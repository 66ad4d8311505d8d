// SPDX-License-Identifier: MIT

#include "switcher/table.h"

#include <algorithm>

#include "db/station_fields.h"
#include "switcher/wire/messages/row_number.h"

namespace switcher {
namespace {

constexpr bool IsOfLabels(MessageCode code) {
  return code == kLabelOrderCode || code == kAlphaLabelsCode;
}

constexpr bool EveryTableMessageHasItsTable() {
  return std::ranges::all_of(kMessages, [](const MessageKind& kind) {
    const bool isOfOneTable = kind.use == MessageUse::Table && !IsOfLabels(kind.code);
    return TableOf(kind.code).has_value() == isOfOneTable;
  });
}
static_assert(EveryTableMessageHasItsTable());

struct CarriedField {
  std::string_view name;  // as in db::kTableFields
  Carried carried;
};

constexpr CarriedField kCarriedFields[] = {
    {db::kOptoTypeField, Carried::Number},  {db::kOptoChannelField, Carried::Number},
    {db::kOptoFirstField, Carried::Number}, {db::kOptoStationsField, Carried::Flags},
    {db::kLabelField, Carried::Label},      {db::kInLabelField, Carried::Label},
    {db::kHiddenField, Carried::Mark},      {db::kInhibitsField, Carried::Flags},
    {db::kRelaysField, Carried::Flags},     {db::kButtonType, Carried::Number},
    {db::kButtonFirst, Carried::Number},    {db::kButtonTargets, Carried::Flags},
};

constexpr std::optional<Carried> FindCarried(std::string_view name) {
  for (const CarriedField& field : kCarriedFields) {
    if (field.name == name) return field.carried;
  }
  return std::nullopt;
}

constexpr bool EveryFieldIsCarried() {
  return std::ranges::all_of(db::kTableFields, [](const db::TableField& field) {
    return FindCarried(field.name).has_value();
  });
}
static_assert(EveryFieldIsCarried());

std::optional<TablePart> LabelsOf(int selector) {
  if (selector == kOutputLabels) return TablePart{.table = Table::OutputLabels};
  if (selector == kInputLabels) return TablePart{.table = Table::InputLabels};
  return std::nullopt;
}

}  // namespace

std::optional<Carried> HowCarried(std::string_view field) {
  const db::TableField* const known = db::FindTableField(field);
  return known == nullptr ? std::nullopt : FindCarried(known->name);
}

std::optional<TablePart> PartOf(std::span<const std::uint8_t> message) {
  if (message.size() < 2) return std::nullopt;
  const MessageKind* const kind = FindMessage(message[0]);
  if (kind == nullptr) return std::nullopt;
  if (IsOfLabels(kind->code)) return LabelsOf(message[1]);
  const std::optional<Table> table = TableOf(kind->code);
  if (!table) return std::nullopt;
  const bool hasRows = db::RowsOf(*table) != db::Rows::None;
  return TablePart{.table = *table, .station = hasRows ? RowNumber(message) : model::kAll};
}

TablePart MessageOf(const TablePart& part) {
  return db::RowsOf(part.table) == db::Rows::None ? TablePart{.table = part.table} : part;
}

int LastRow(Table table, const model::SystemModel& model) {
  switch (db::RowsOf(table)) {
    case db::Rows::None:
      break;
    case db::Rows::Outputs:
      return model.ChannelCount;
    case db::Rows::Stations:
      return model.StationCount;
  }
  return 0;
}

std::vector<TablePart> AllMessages(const model::SystemModel& model) {
  std::vector<TablePart> parts;
  for (const db::TableKind& kind : db::kTables) {
    if (kind.rows == db::Rows::None) parts.push_back({.table = kind.table});
    for (int row = 1; row <= LastRow(kind.table, model); ++row) parts.push_back({kind.table, row});
  }
  return parts;
}

}  // namespace switcher
