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
  std::optional<int> SendLabels(int selector) override { return Keep("labels", selector); }
  std::optional<int> SendInhibits(int output) override { return Keep("inhibits", output); }
  std::optional<int> SendRelays(int station) override { return Keep("relays", station); }
  std::optional<int> SendButtons(int station) override { return Keep("buttons", station); }
  std::optional<int> SendOptos() override {
    traffic.emplace_back("optos");
    return Sent();
  }
  void SetPolling(bool on) override { traffic.emplace_back(on ? "poll on" : "poll off"); }

  std::vector<std::string> traffic;
  bool goOut = true;  // else sending fails
  int messages = 1;   // so many are said to have been sent

 private:
  std::optional<int> Keep(const char* table, int number) {
    traffic.push_back(table + (" " + std::to_string(number)));
    return Sent();
  }
  std::optional<int> Sent() const { return goOut ? std::optional(messages) : std::nullopt; }
};

}  // namespace test

#endif  // TESTS_SUPPORT_RECORDING_TABLES_H_
