// SPDX-License-Identifier: MIT

#include "switcher/table.h"

#include "switcher/wire/message_table.h"
#include "switcher/wire/messages/row_number.h"

namespace switcher {
namespace {

// These serve two tables; of any other message of a table the name is the table's word.
constexpr bool IsOfLabels(const MessageKind& kind) {
  return kind.code == kLabelOrderCode || kind.code == kAlphaLabelsCode;
}

constexpr bool EveryMessageHasItsTable() {
  for (const MessageKind& kind : kMessages) {
    if (kind.use != MessageUse::Table || IsOfLabels(kind)) continue;
    if (db::FindTable(kind.name) == nullptr) return false;
  }
  return true;
}
static_assert(EveryMessageHasItsTable());

std::optional<TablePart> LabelsOf(int selector) {
  if (selector == kOutputLabels) return TablePart{.table = Table::OutputLabels};
  if (selector == kInputLabels) return TablePart{.table = Table::InputLabels};
  return std::nullopt;
}

}  // namespace

std::optional<TablePart> PartOf(std::span<const std::uint8_t> message) {
  if (message.size() < 2) return std::nullopt;
  const MessageKind* const kind = FindMessage(message[0]);
  if (kind == nullptr || kind->use != MessageUse::Table) return std::nullopt;
  if (IsOfLabels(*kind)) return LabelsOf(message[1]);
  const db::TableKind& table = *db::FindTable(kind->name);
  return TablePart{.table = table.table,
                   .station = table.rows == db::Rows::None ? model::kAll : RowNumber(message)};
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
