// SPDX-License-Identifier: MIT

#include "switcher/unsent/edited_parts.h"

#include <set>
#include <string_view>

#include "db/station_fields.h"

namespace switcher {
namespace {

// Adds the tables that a field is in.
void AddTables(std::string_view field, std::set<Table>* tables) {
  if (field == db::kLabelField) {
    tables->insert(Table::OutputLabels);
  } else if (field == db::kInLabelField) {
    tables->insert(Table::InputLabels);
  } else if (field == db::kHiddenField) {
    // A mark in both.
    tables->insert({Table::OutputLabels, Table::InputLabels});
  } else if (field == db::kInhibitsField) {
    tables->insert(Table::Inhibits);
  } else if (field == db::kRelaysField) {
    tables->insert(Table::Relays);
  } else if (field == db::kOptoTypeField || field == db::kOptoChannelField ||
             field == db::kOptoFirstField || field == db::kOptoStationsField) {
    tables->insert(Table::Optos);
  } else if (db::ButtonOfField(field) != 0) {
    tables->insert(Table::Buttons);
  }
}

}  // namespace

std::vector<TablePart> EditedParts(const stations::Change& change) {
  std::set<Table> tables;
  for (const stations::FieldChange& field : change.fields) AddTables(field.field, &tables);
  std::vector<TablePart> parts;
  for (const Table table : tables) parts.push_back({.table = table, .station = change.station});
  return parts;
}

}  // namespace switcher
