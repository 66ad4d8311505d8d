// SPDX-License-Identifier: MIT

#include "db/table.h"

#include <iterator>

#include "db/station_fields.h"

namespace db {
namespace {

constexpr bool StandAtTheirPlaces() {
  for (std::size_t i = 0; i < std::size(kTables); ++i) {
    if (static_cast<std::size_t>(kTables[i].table) != i) return false;
  }
  return true;
}
static_assert(StandAtTheirPlaces());

}  // namespace

bool IsFieldOf(Table table, std::string_view field) {
  switch (table) {
    case Table::Optos:
      return field == kOptoTypeField || field == kOptoChannelField || field == kOptoFirstField ||
             field == kOptoStationsField;
    case Table::OutputLabels:
      return field == kLabelField || field == kHiddenField;
    case Table::InputLabels:
      return field == kInLabelField || field == kHiddenField;  // a mark in both
    case Table::Inhibits:
      return field == kInhibitsField;
    case Table::Relays:
      return field == kRelaysField;
    case Table::Buttons:
      return ButtonOfField(field) != 0;
  }
  return false;
}

}  // namespace db
