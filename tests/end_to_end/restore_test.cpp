// SPDX-License-Identifier: MIT
//
// What was edited in a console that was killed, restored by the next one.

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <random>

#include "db/database_files.h"
#include "tests/end_to_end/operator_edits.h"
#include "tests/support/database_check.h"
#include "tests/support/simulator_process.h"

namespace test {
namespace {

using testing::HasSubstr;
using testing::MatchesRegex;
using testing::SizeIs;

class RestoreTest : public testing::Test {
 protected:
  void SetUp() override {
    folder_.WriteSettings(line_);
    ConsoleProcess console(folder_);
    ASSERT_TRUE(console.IsUp());
    ASSERT_EQ(console.Terminate(), 0);
    saved_ = ReadStations(main_);
    tables_ = saved_;
  }

  // Each kind of edit once.
  void EditEverything(ConsoleProcess& console) {
    for (const OperatorEdit& edit : Edits()) {
      ASSERT_TRUE(edit.make(console, random_, tables_)) << edit.name;
    }
  }

  static bool IsOffered(ConsoleProcess& console) {
    return ConsoleProcess::WaitFor([&] { return console.IsShown("aidRestore"); });
  }

  int argc_ = 0;
  QCoreApplication application_{argc_, nullptr};
  ConsoleFolder folder_;
  const std::filesystem::path main_ = folder_ / db::kMainFile;
  const std::string line_ = folder_.Home() / "line";
  SimulatorProcess simulator_{{"--log", "--link", line_}};
  std::mt19937 random_{7};
  StoredTables saved_;   // what Tesk.mdb held
  StoredTables tables_;  // what stood on the screen
};

TEST_F(RestoreTest, WhatStoodOnTheScreenIsRestoredAfterAKill) {
  {
    ConsoleProcess console(folder_);
    ASSERT_TRUE(console.IsUp());
    EditEverything(console);
    console.Kill();
  }
  ASSERT_NE(tables_, saved_);
  EXPECT_EQ(ReadStations(main_), saved_);
  {
    ConsoleProcess console(folder_);
    ASSERT_TRUE(IsOffered(console));
    EXPECT_THAT(console.Property("aidHintText", "toolTip").toString().toStdString(),
                MatchesRegex("The console ended without saving on .*: [0-9]+ changes"));
    console.Click("aidRestore");
    ASSERT_TRUE(ConsoleProcess::WaitFor([&] { return !console.IsShown("aidRestore"); }));
    for (int output = 1; output <= 64; ++output) {
      const std::string& inhibits = tables_.at(std::to_string(output) + " Inhibits");
      if (inhibits == saved_.at(std::to_string(output) + " Inhibits")) continue;
      for (int input = 1; input <= 64; ++input) {
        const int mark = inhibits[static_cast<std::size_t>(input) - 1] == '1' ? 2 : 0;
        EXPECT_EQ(console.Mark(output, input), mark) << output << " " << input;
      }
    }
    EXPECT_THAT(console.Boxes(), SizeIs(0));
    EXPECT_EQ(console.Terminate(), 0);
  }
  EXPECT_EQ(ReadStations(main_), tables_);
  EXPECT_EQ(WhatIsWrong(main_), "");
  ConsoleProcess console(folder_);
  ASSERT_TRUE(console.IsUp());
  EXPECT_EQ(console.Property("aidUnsavedRuns", "enabled").toBool(), false);
  EXPECT_FALSE(console.IsShown("aidDiscard"));
}

TEST_F(RestoreTest, WhatIsNotRestoredStaysOnOffer) {
  {
    ConsoleProcess console(folder_);
    ASSERT_TRUE(console.IsUp());
    EditEverything(console);
    console.Kill();
  }
  {
    ConsoleProcess console(folder_);
    ASSERT_TRUE(IsOffered(console));
    console.Click("aidShowChanges");
    ASSERT_TRUE(ConsoleProcess::WaitFor([&] { return console.IsShown("frmChanges"); }));
    EXPECT_THAT(console.Rows("lstChanges"), SizeIs(testing::Ge(Edits().size() - 2)));
    console.Click("aidHintClose");
    EXPECT_TRUE(ConsoleProcess::WaitFor([&] { return !console.IsShown("aidRestore"); }));
    EXPECT_EQ(console.Terminate(), 0);
  }
  EXPECT_EQ(ReadStations(main_), saved_) << "nothing is restored unasked";
  ConsoleProcess console(folder_);
  EXPECT_TRUE(IsOffered(console));
  console.Click("aidDiscard");
  ASSERT_TRUE(ConsoleProcess::WaitFor([&] { return console.IsShown("aidDiscardRun"); }));
  console.Click("aidDiscardRun");
  EXPECT_TRUE(ConsoleProcess::WaitFor([&] { return !console.IsShown("aidDiscard"); }));
  EXPECT_THAT(ReadFile(folder_ / "Tesk.journal"), HasSubstr(" discarded "));
}

}  // namespace
}  // namespace test
