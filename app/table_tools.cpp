// SPDX-License-Identifier: MIT

#include "app/table_tools.h"

#include "switcher/wire/messages/label_order.h"

namespace app {

std::optional<int> TableTools::Send(const switcher::TablePart& part) {
  using switcher::Table;
  switch (part.table) {
    case Table::Optos:
      return tables_.SendOptos();
    case Table::OutputLabels:
      return tables_.SendLabels(switcher::kOutputLabels);
    case Table::InputLabels:
      return tables_.SendLabels(switcher::kInputLabels);
    case Table::Inhibits:
      return tables_.SendInhibits(part.station);
    case Table::Relays:
      return tables_.SendRelays(part.station);
    case Table::Buttons:
      return tables_.SendButtons(part.station);
  }
  return std::nullopt;
}

}  // namespace app
