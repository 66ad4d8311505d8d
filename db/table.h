// SPDX-License-Identifier: MIT

#ifndef DB_TABLE_H_
#define DB_TABLE_H_

#include <cstdint>

namespace db {

// The tables that the console and the switcher hand each other, each made of a few fields of every
// station, in the order of a download.
enum class Table : std::uint8_t { Optos, OutputLabels, InputLabels, Inhibits, Relays, Buttons };

inline constexpr Table kTables[] = {Table::Optos,    Table::OutputLabels, Table::InputLabels,
                                    Table::Inhibits, Table::Relays,       Table::Buttons};

}  // namespace db

#endif  // DB_TABLE_H_
