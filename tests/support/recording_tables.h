// SPDX-License-Identifier: MIT

#ifndef TESTS_SUPPORT_RECORDING_TABLES_H_
#define TESTS_SUPPORT_RECORDING_TABLES_H_

#include <optional>
#include <string>
#include <vector>

#include "switcher/poll_switch.h"
#include "views/table_sender.h"

namespace test {

// Keeps what the views send, and what they do to the poll around it, in order: "poll off",
// "inhibits 9999", "poll on".
class RecordingTables : public views::TableSender, public switcher::PollSwitch {
 public:
  std::optional<int> Send(const switcher::TablePart& part) override {
    traffic.push_back(Name(part));
    return goOut ? std::optional(messages) : std::nullopt;
  }
  void SetPolling(bool on) override { traffic.emplace_back(on ? "poll on" : "poll off"); }

  std::vector<std::string> traffic;
  bool goOut = true;  // else sending fails
  int messages = 1;   // so many are said to have been sent

 private:
  static std::string Name(const switcher::TablePart& part) {
    using switcher::Table;
    switch (part.table) {
      case Table::Optos:
        return "optos";
      case Table::OutputLabels:
        return "labels 20";
      case Table::InputLabels:
        return "labels 10";
      case Table::Inhibits:
        return "inhibits " + std::to_string(part.station);
      case Table::Relays:
        return "relays " + std::to_string(part.station);
      case Table::Buttons:
        return "buttons " + std::to_string(part.station);
    }
    return "?";
  }
};

}  // namespace test

#endif  // TESTS_SUPPORT_RECORDING_TABLES_H_
