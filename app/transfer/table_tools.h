// SPDX-License-Identifier: MIT

#ifndef APP_TRANSFER_TABLE_TOOLS_H_
#define APP_TRANSFER_TABLE_TOOLS_H_

#include "switcher/table_senders.h"
#include "views/table_sender.h"

namespace app {

// Sends the tables for the tools of the views.
class TableTools : public views::TableSender {
 public:
  // `tables` must outlive the object.
  explicit TableTools(const switcher::TableSenders& tables) : tables_(tables) {}

  std::optional<int> Send(const switcher::TablePart& part) override {
    return tables_.Make(part).Run();
  }

 private:
  const switcher::TableSenders& tables_;
};

}  // namespace app

#endif  // APP_TRANSFER_TABLE_TOOLS_H_
