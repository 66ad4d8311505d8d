// SPDX-License-Identifier: MIT

#ifndef TESTS_END_TO_END_CONSOLE_AND_SWITCHER_H_
#define TESTS_END_TO_END_CONSOLE_AND_SWITCHER_H_

#include <gtest/gtest.h>

#include <chrono>
#include <filesystem>
#include <memory>
#include <string>
#include <vector>

#include "tests/end_to_end/console_process.h"
#include "tests/support/simulator_process.h"

namespace test {

// A console and the switcher at its line, for a test of what travels between them.
class ConsoleAndSwitcher {
 protected:
  ConsoleAndSwitcher() { folder_.WriteSettings(line_); }

  void StartSimulator(std::vector<std::string> options) {
    options.insert(options.end(), {"--log", "--link", line_});
    simulator_ = std::make_unique<SimulatorProcess>(options);
  }

  // The map is complete when the console asks for the tally.
  void StartConsole(const char* firstPoll = "rx poll tally") {
    console_ = std::make_unique<ConsoleProcess>(folder_);
    ASSERT_TRUE(console_->IsUp());
    ASSERT_TRUE(simulator_->WaitForLine(firstPoll, std::chrono::seconds(60)));
  }

  std::string Text(const char* object) {
    return console_->Property(object, "text").toString().toStdString();
  }

  // In words, or where the bar has no room for them as a sign.
  bool IsUnsentShown() {
    return console_->IsShown("aidUnsent") || console_->IsShown("aidUnsentSign");
  }

  int argc_ = 0;
  QCoreApplication application_{argc_, nullptr};
  ConsoleFolder folder_;
  std::filesystem::path database_ = folder_ / "Tesk.mdb";
  std::filesystem::path held_ = folder_.Home() / "Held.mdb";  // what the switcher holds
  std::string line_ = folder_ / "line";
  std::unique_ptr<SimulatorProcess> simulator_;
  std::unique_ptr<ConsoleProcess> console_;
};

}  // namespace test

#endif  // TESTS_END_TO_END_CONSOLE_AND_SWITCHER_H_
