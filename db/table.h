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
  std::string_view word;  // by which files have it, and its message where that is its alone
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

// What of a field a message carries.
enum class Carried : std::uint8_t {
  Number,  // its low eight bits
  Mark,    // whether it is 1
  Label,   // eight characters
  Flags,   // each "0" or "1", a missing one "0"
};

struct TableField {
  Table table;
  std::string_view name;  // of a button's fields what their names end in
  Carried carried;
};

inline constexpr TableField kTableFields[] = {
    {Table::Optos, kOptoTypeField, Carried::Number},
    {Table::Optos, kOptoChannelField, Carried::Number},
    {Table::Optos, kOptoFirstField, Carried::Number},
    {Table::Optos, kOptoStationsField, Carried::Flags},
    {Table::OutputLabels, kLabelField, Carried::Label},
    {Table::OutputLabels, kHiddenField, Carried::Mark},
    {Table::InputLabels, kInLabelField, Carried::Label},
    {Table::InputLabels, kHiddenField, Carried::Mark},
    {Table::Inhibits, kInhibitsField, Carried::Flags},
    {Table::Relays, kRelaysField, Carried::Flags},
    {Table::Buttons, kButtonType, Carried::Number},
    {Table::Buttons, kButtonFirst, Carried::Number},
    {Table::Buttons, kButtonTargets, Carried::Flags},
};

// Whether a field of a station is in a table.
bool IsFieldOf(Table table, std::string_view field);

// What a message carries of a field of a station.  REQUIRES: it is in a table.
Carried HowCarried(std::string_view field);

}  // namespace db

#endif  // DB_TABLE_H_
