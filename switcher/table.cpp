// SPDX-License-Identifier: MIT

#include "switcher/table.h"

#include "switcher/wire/message_table.h"
#include "switcher/wire/messages/row_number.h"

namespace switcher {
namespace {

std::optional<TablePart> LabelsOf(int selector) {
  if (selector == kOutputLabels) return TablePart{.table = Table::OutputLabels};
  if (selector == kInputLabels) return TablePart{.table = Table::InputLabels};
  return std::nullopt;
}

}  // namespace

std::optional<TablePart> PartOf(std::span<const std::uint8_t> message) {
  if (message.size() < 2) return std::nullopt;
  switch (message[0]) {
    case kLabelOrderCode:
    case kAlphaLabelsCode:
      return LabelsOf(message[1]);
    case kInhibitRowCode:
      return TablePart{.table = Table::Inhibits, .station = RowNumber(message)};
    case kRelayRowCode:
      return TablePart{.table = Table::Relays, .station = RowNumber(message)};
    case kButtonDataCode:
      return TablePart{.table = Table::Buttons, .station = RowNumber(message)};
    case kOptoDataCode:
      return TablePart{.table = Table::Optos};
    default:
      return std::nullopt;
  }
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
