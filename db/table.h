// SPDX-License-Identifier: MIT
//
// The tables that the console and the switcher hand each other, and what there is to know of each
// wherever it goes.

#ifndef DB_TABLE_H_
#define DB_TABLE_H_

#include <cstddef>
#include <cstdint>
#include <string_view>

#include "db/station_fields.h"

namespace db {

// Each is made of a few fields of every station.  In the order of a download.
enum class Table : std::uint8_t { Optos, OutputLabels, InputLabels, Inhibits, Relays, Buttons };

// What has a message of its own in a table.
enum class Rows : std::uint8_t {
  None,  // one message, or pair of them, has all stations
  Outputs,
  Stations,
};

struct TableKind {
  Table table;
  std::string_view word;  // by which files have it
  Rows rows;
};

inline constexpr TableKind kTables[] = {
    {Table::Optos, "optos", Rows::None},
    {Table::OutputLabels, "station-labels", Rows::None},
    {Table::InputLabels, "input-labels", Rows::None},
    {Table::Inhibits, "inhibits", Rows::Outputs},
    {Table::Relays, "relays", Rows::Outputs},
    {Table::Buttons, "buttons", Rows::Stations},
};

constexpr const TableKind& KindOf(Table table) { return kTables[static_cast<std::size_t>(table)]; }

constexpr Rows RowsOf(Table table) { return KindOf(table).rows; }

// The table of this word; null when there is none.
constexpr const TableKind* FindTable(std::string_view word) {
  for (const TableKind& kind : kTables) {
    if (kind.word == word) return &kind;
  }
  return nullptr;
}

struct TableField {
  Table table;
  std::string_view name;  // of a button's fields what their names end in
};

inline constexpr TableField kTableFields[] = {
    {Table::Optos, kOptoTypeField},      {Table::Optos, kOptoChannelField},
    {Table::Optos, kOptoFirstField},     {Table::Optos, kOptoStationsField},
    {Table::OutputLabels, kLabelField},  {Table::OutputLabels, kHiddenField},
    {Table::InputLabels, kInLabelField}, {Table::InputLabels, kHiddenField},
    {Table::Inhibits, kInhibitsField},   {Table::Relays, kRelaysField},
    {Table::Buttons, kButtonType},       {Table::Buttons, kButtonFirst},
    {Table::Buttons, kButtonTargets},
};

// Whether a field of a station is in a table.
bool IsFieldOf(Table table, std::string_view field);

// The entry above of a field of a station, the first where it is in two tables; null for a field
// that never travels.
const TableField* FindTableField(std::string_view field);

}  // namespace db

#endif  // DB_TABLE_H_
