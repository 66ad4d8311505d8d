// SPDX-License-Identifier: MIT
//
// The tables of the console compared with those of the switcher: the real console on the real
// simulator.

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cstdio>
#include <memory>
#include <string>
#include <vector>

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

class ComparisonTransferTest : public testing::Test, protected ConsoleAndSwitcher {
 protected:
  // A console whose database holds pattern 1 and a switcher that holds another, of so many
  // channels.
  void StartBoth(int channels, int heldPattern, const std::string& baud) {
    CreateSystem(database_, channels, 1);
    CreateSystem(held_, channels, heldPattern);
    StartSimulator({"--baud", baud, "--database", held_.string()});
    StartConsole();
  }

  std::string Summary() { return Text("aidCompareSummary"); }

  bool WaitForSummary(const std::string& end) {
    return ConsoleProcess::WaitFor([&] { return Summary().ends_with(end); }, 120s);
  }

  // Until so many have come, and more are to come.
  bool WaitForTables(int count) {
    return ConsoleProcess::WaitFor(
        [&] {
          int come = 0;
          return std::sscanf(Summary().c_str(), "Comparing: %d tables", &come) == 1 &&
                 come >= count;
        },
        60s);
  }

  std::vector<std::string> Rows() { return console_->Rows("lstDifferences"); }
};

TEST_F(ComparisonTransferTest, WhatIsTickedIsStored) {
  StartBoth(64, 2, "0");
  const std::vector<std::string> held = ReadTables(held_, 64);
  ASSERT_NE(ReadTables(database_, 64), held);
  console_->Trigger("aidCompare");
  ASSERT_TRUE(WaitForSummary(" differences in 195 tables"));
  EXPECT_FALSE(Rows().empty());
  console_->Click("aidTickAll");
  console_->Click("cmdStoreCmp");
  ASSERT_TRUE(WaitForSummary(" rows stored"));
  EXPECT_THAT(Rows(), IsEmpty());
  console_->Click("aidCompareAgain");
  ASSERT_TRUE(WaitForSummary("No difference in 195 tables"));
  EXPECT_THAT(console_->Boxes(), IsEmpty());
  EXPECT_EQ(console_->Terminate(), 0);
  EXPECT_EQ(ReadTables(database_, 64), held);
}

TEST_F(ComparisonTransferTest, WhatIsTickedIsSent) {
  StartBoth(64, 1, "0");
  const std::vector<std::string> before = ReadTables(database_, 64);
  const std::string label = simulator_->Command("label out 7");
  const std::string inhibits = simulator_->Command("inhibits 3");
  ASSERT_THAT(simulator_->Command("label out 7 NEWS 1"), StartsWith("ok"));
  ASSERT_THAT(simulator_->Command("inhibits 3 5 6"), StartsWith("ok"));
  console_->Trigger("aidCompare");
  ASSERT_TRUE(WaitForSummary("2 differences in 195 tables"));
  EXPECT_THAT(Rows(), ElementsAre(HasSubstr("Output 3|Inhibits|"), HasSubstr("Station 7|Label|")));
  EXPECT_THAT(Rows().back(), EndsWith("|NEWS 1"));
  console_->Click("aidTickAll");
  console_->Click("cmdSendCmp");
  ASSERT_TRUE(ConsoleProcess::WaitFor([this] { return console_->IsShown("cmdOkSendChg"); }));
  console_->Click("cmdOkSendChg");
  ASSERT_TRUE(simulator_->WaitForLine("rx inhibits output 3"));
  EXPECT_EQ(simulator_->Command("label out 7"), label);
  EXPECT_EQ(simulator_->Command("inhibits 3"), inhibits);
  ASSERT_TRUE(ConsoleProcess::WaitFor([this] { return !console_->IsShown("frmSendChanges"); }));
  console_->Click("aidCompareAgain");
  ASSERT_TRUE(WaitForSummary("No difference in 195 tables"));
  EXPECT_THAT(console_->Boxes(), IsEmpty());
  EXPECT_EQ(console_->Terminate(), 0);
  EXPECT_EQ(ReadTables(database_, 64), before);
}

// At a pace that leaves the time to cancel in the middle.
TEST_F(ComparisonTransferTest, WhatComesAfterCancelReachesNothing) {
  StartBoth(64, 2, "19200");
  const std::vector<std::string> before = ReadTables(database_, 64);
  console_->Trigger("aidCompare");
  ASSERT_TRUE(simulator_->WaitForLine("rx poll tables"));
  ASSERT_TRUE(WaitForTables(20));
  console_->Click("cmdCloseCmp");
  EXPECT_THAT(Summary(), StartsWith("Cancelled. "));
  EXPECT_THAT(Summary(), EndsWith(" not reported"));
  console_->Click("cmdCloseCmp");
  EXPECT_FALSE(console_->IsShown("frmCompare"));
  console_->Trigger("ID_RetreiveData");
  EXPECT_FALSE(console_->IsShown("frmSysInfo")) << "the switcher is still sending";
  ASSERT_TRUE(ConsoleProcess::WaitFor(
      [this] {
        console_->Trigger("ID_RetreiveData");
        return console_->IsShown("frmSysInfo");
      },
      120s));
  console_->CloseWindow("frmSysInfo");
  EXPECT_THAT(console_->Boxes(), IsEmpty());
  EXPECT_EQ(console_->Terminate(), 0);
  EXPECT_EQ(ReadTables(database_, 64), before);
}

TEST_F(ComparisonTransferTest, UnpluggedInTheMiddleItSaysWhatIsNotKnown) {
  StartBoth(64, 2, "19200");
  const std::vector<std::string> before = ReadTables(database_, 64);
  console_->Trigger("aidCompare");
  ASSERT_TRUE(simulator_->WaitForLine("rx poll tables"));
  ASSERT_TRUE(WaitForTables(20));
  simulator_->Command("unplug");
  const auto line = [this] {
    return console_->Property("aidCompareLine", "text").toString().toStdString();
  };
  EXPECT_TRUE(ConsoleProcess::WaitFor(
      [&] { return line() == "COM 1 is not open. It is tried again every second."; }));
  simulator_->Command("replug");
  EXPECT_TRUE(ConsoleProcess::WaitFor([&] {
    return line() ==
           "COM 1 was lost and is open again. Tables may be missing: cancel, and compare again.";
  }));
  console_->Click("cmdCloseCmp");
  EXPECT_THAT(Summary(), EndsWith(". The line was lost meanwhile"));
  EXPECT_TRUE(ConsoleProcess::WaitFor([this] { return console_->LinkText() == kConnected; }));
  EXPECT_THAT(console_->Boxes(), IsEmpty());
  EXPECT_EQ(console_->Terminate(), 0);
  EXPECT_EQ(ReadTables(database_, 64), before);
}

}  // namespace
}  // namespace test
