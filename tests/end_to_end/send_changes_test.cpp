// SPDX-License-Identifier: MIT
//
// What is unsent, and no more than that on its way to the switcher: the real console on the real
// simulator.

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <fstream>

#include "tests/end_to_end/console_and_switcher.h"
#include "tests/end_to_end/system_database.h"

namespace test {
namespace {

using testing::ElementsAre;
using testing::EndsWith;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::StartsWith;
using namespace std::chrono_literals;

// What is unsent is known by then.
constexpr char kKeepAlive[] = "rx poll keep-alive";

class SendChangesTest : public testing::Test, protected ConsoleAndSwitcher {
 protected:
  void SetUp() override {
    CreateSystem(database_, 16, 1);
    StartSimulator({"--database", database_.string(), "--baud", "0"});
    StartConsole(kKeepAlive);
  }

  bool WaitForUnsent(const std::string& words) {
    return ConsoleProcess::WaitFor(
        [&] { return IsUnsentShown() && Text("aidUnsent").ends_with(words); });
  }

  bool WaitForNothingUnsent() {
    return ConsoleProcess::WaitFor([this] { return !IsUnsentShown(); });
  }

  void OpenSendChanges() {
    console_->Trigger("aidSendChanges");
    ASSERT_TRUE(ConsoleProcess::WaitFor([this] { return console_->IsShown("frmSendChanges"); }));
  }

  bool CanBeSent() { return console_->Property("cmdOkSendChg", "enabled").toBool(); }

  // What reaches the switcher from now on, up to the next poll.
  std::vector<std::string> Received() {
    std::vector<std::string> received;
    while (const auto line = simulator_->WaitForLine("rx ")) {
      const std::string what = line->substr(line->find("rx "));
      if (what.starts_with("rx poll")) {
        if (received.empty()) continue;
        break;
      }
      received.push_back(what);
    }
    return received;
  }
};

TEST_F(SendChangesTest, TheSwitcherHasTheEditAndNothingElseTravels) {
  console_->Use("ID_ToggleInhibit", 10, 3);
  ASSERT_TRUE(WaitForUnsent(": inhibits of output 10"));
  const std::string before = simulator_->Command("inhibits 10");
  OpenSendChanges();
  const std::vector<std::string> rows = console_->Rows("lstUnsent");
  ASSERT_EQ(rows.size(), 1U);
  EXPECT_THAT(rows[0], HasSubstr("Inhibits of output 10"));
  console_->Click("cmdOkSendChg");
  const std::vector<std::string> received = Received();
  ASSERT_EQ(received.size(), 1U);
  EXPECT_THAT(received[0], StartsWith("rx inhibits output 10 "));
  EXPECT_TRUE(ConsoleProcess::WaitFor([this] { return !console_->IsShown("frmSendChanges"); }));
  EXPECT_TRUE(WaitForNothingUnsent());
  EXPECT_NE(simulator_->Command("inhibits 10"), before);
  SimulatorProcess wanted({"--database", (folder_ / "WorkingDb.md$").string()});
  EXPECT_EQ(simulator_->Command("inhibits 10"), wanted.Command("inhibits 10"));
  EXPECT_THAT(console_->Boxes(), IsEmpty());
}

TEST_F(SendChangesTest, TheQuestionFollowsTheLinkWhileItIsOpen) {
  console_->Use("ID_ToggleInhibit", 10, 3);
  ASSERT_TRUE(WaitForUnsent(": inhibits of output 10"));
  OpenSendChanges();
  EXPECT_TRUE(CanBeSent());
  EXPECT_FALSE(console_->IsShown("aidSendChgLink"));
  simulator_->Command("unplug");
  EXPECT_TRUE(ConsoleProcess::WaitFor(
      [this] { return console_->IsShown("aidSendChgLink") && !CanBeSent(); }));
  EXPECT_EQ(Text("aidSendChgLink"), "Not connected: nothing would arrive.");
  simulator_->Command("replug");
  EXPECT_TRUE(ConsoleProcess::WaitFor(
      [this] { return !console_->IsShown("aidSendChgLink") && CanBeSent(); }));
  EXPECT_THAT(console_->Boxes(), IsEmpty());
}

TEST_F(SendChangesTest, WhatIsUnsentIsSaidAgainInTheNextRun) {
  console_->Use("ID_ToggleInhibit", 10, 3);
  ASSERT_TRUE(WaitForUnsent(": inhibits of output 10"));
  const std::string words = Text("aidUnsent");
  EXPECT_EQ(console_->Terminate(), 0);
  std::ifstream file(folder_ / "Tesk.sent");
  std::string line;
  ASSERT_TRUE(std::getline(file, line));
  EXPECT_THAT(line, StartsWith("inhibits 10 found "));
  console_.reset();
  StartConsole(kKeepAlive);
  ASSERT_TRUE(WaitForUnsent(": inhibits of output 10"));
  EXPECT_EQ(Text("aidUnsent"), words);
  console_->Use("ID_ToggleInhibit", 10, 3);
  EXPECT_TRUE(WaitForNothingUnsent()) << "an edit that is taken back";
}

TEST_F(SendChangesTest, ASwitcherThatDoesNotAnswerConfirmsNothing) {
  console_->Use("ID_ToggleInhibit", 10, 3);
  OpenSendChanges();
  EXPECT_EQ(simulator_->Command("silence on"), "ok");
  console_->Click("cmdOkSendChg");
  ASSERT_TRUE(ConsoleProcess::WaitFor(
      [this] { return Text("lblSendChg").starts_with("Not confirmed by the switcher"); }));
  EXPECT_THAT(Text("lblSendChg"), EndsWith("unsent as before: inhibits of output 10"));
  console_->Click("cmdCancelSendChg");
  EXPECT_TRUE(WaitForUnsent(": inhibits of output 10"));
}

TEST_F(SendChangesTest, UnpluggedBeforeTheAnswerItStaysUnsent) {
  console_->Use("ID_ToggleInhibit", 10, 3);
  OpenSendChanges();
  EXPECT_EQ(simulator_->Command("silence on"), "ok");
  console_->Click("cmdOkSendChg");
  ASSERT_TRUE(simulator_->WaitForLine("rx inhibits output 10"));
  simulator_->Command("unplug");
  ASSERT_TRUE(ConsoleProcess::WaitFor(
      [this] { return Text("lblSendChg").starts_with("Not confirmed by the switcher"); }));
  console_->Click("cmdCancelSendChg");
  // The closed port takes the room of the bar in so small a window.
  EXPECT_TRUE(ConsoleProcess::WaitFor([this] { return console_->IsShown("aidClosedPort"); }));
  EXPECT_THAT(Text("aidUnsent"), EndsWith(": inhibits of output 10"));
}

}  // namespace
}  // namespace test
