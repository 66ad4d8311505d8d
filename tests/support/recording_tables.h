// SPDX-License-Identifier: MIT

#ifndef TESTS_SUPPORT_RECORDING_TABLES_H_
#define TESTS_SUPPORT_RECORDING_TABLES_H_

#include <string>
#include <vector>

#include "switcher/poll_switch.h"
#include "views/table_sender.h"

namespace test {

// Keeps what the views send, and what they do to the poll around it, in order: "poll off",
// "inhibits 9999", "poll on".
class RecordingTables : public views::TableSender, public switcher::PollSwitch {
 public:
  bool SendLabels(int selector) override { return Keep("labels", selector); }
  bool SendInhibits(int output) override { return Keep("inhibits", output); }
  bool SendRelays(int station) override { return Keep("relays", station); }
  bool SendButtons(int station) override { return Keep("buttons", station); }
  bool SendOptos() override {
    traffic.emplace_back("optos");
    return goOut;
  }
  void SetPolling(bool on) override { traffic.emplace_back(on ? "poll on" : "poll off"); }

  std::vector<std::string> traffic;
  bool goOut = true;  // else sending fails

 private:
  bool Keep(const char* table, int number) {
    traffic.push_back(table + (" " + std::to_string(number)));
    return goOut;
  }
};

}  // namespace test

#endif  // TESTS_SUPPORT_RECORDING_TABLES_H_
