// SPDX-License-Identifier: MIT

#ifndef APP_TABLE_TOOLS_H_
#define APP_TABLE_TOOLS_H_

#include "switcher/table_senders.h"
#include "switcher/wire/messages/label_order.h"
#include "views/table_sender.h"

namespace app {

// Sends the tables for the tools of the views.
class TableTools : public views::TableSender {
 public:
  // `tables` must outlive the object.
  explicit TableTools(switcher::TableSenders& tables) : tables_(tables) {}

  std::optional<int> Send(const switcher::TablePart& part) override {
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

 private:
  switcher::TableSenders& tables_;
};

}  // namespace app

#endif  // APP_TABLE_TOOLS_H_
