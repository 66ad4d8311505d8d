// SPDX-License-Identifier: MIT

#ifndef SWITCHER_TABLE_H_
#define SWITCHER_TABLE_H_

#include "db/table.h"
#include "model/system_model.h"

namespace switcher {

using db::Table;

// What a table holds of one station or output (from 1), or of all with model::kAll.
struct TablePart {
  Table table = Table::Optos;
  int station = model::kAll;

  bool operator==(const TablePart&) const = default;
};

}  // namespace switcher

#endif  // SWITCHER_TABLE_H_
