// SPDX-License-Identifier: MIT

#ifndef SWITCHER_TABLE_H_
#define SWITCHER_TABLE_H_

#include <cstdint>

#include "model/system_model.h"

namespace switcher {

// The tables of the configuration that are sent to the switcher, in the order of a download.
enum class Table : std::uint8_t { Optos, OutputLabels, InputLabels, Inhibits, Relays, Buttons };

// What a table holds of one station or output (from 1), or of all with model::kAll.
struct TablePart {
  Table table = Table::Optos;
  int station = model::kAll;

  bool operator==(const TablePart&) const = default;
};

}  // namespace switcher

#endif  // SWITCHER_TABLE_H_
