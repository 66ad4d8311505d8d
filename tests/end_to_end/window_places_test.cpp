// SPDX-License-Identifier: MIT
//
// Where the windows of the real console stand, and what it stores of that.

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "tests/end_to_end/console_process.h"
#include "tests/support/pty.h"
#include "tests/support/simulator_process.h"

namespace test {
namespace {

namespace fs = std::filesystem;
using testing::HasSubstr;
using testing::Not;

class WindowPlacesTest : public testing::Test {
 protected:
  WindowPlacesTest() { fs::create_directories(places_.parent_path()); }

  // No switcher: a port that cannot be opened has its panel in the status bar.
  void SetUp() override { folder_.WriteSettings(folder_ / "no-device"); }

  static QJsonValue Pair(int first, int second) { return QJsonArray{first, second}; }

  int argc_ = 0;
  QCoreApplication application_{argc_, nullptr};
  ConsoleFolder folder_;
  fs::path places_ = folder_.Home() / "Orvo" / "Orvo Intercom Control.conf";
};

TEST_F(WindowPlacesTest, SectionSettingsDecidesOnEveryRun) {
  for (const auto& [twips, pixels] : {std::pair("1500", 100), {"3000", 200}}) {
    WriteFile(places_, std::string("[Settings]\nMainLeft=") + twips + "\nMainWidth=12000\n");
    ConsoleProcess console(folder_);
    ASSERT_TRUE(console.IsUp());
    EXPECT_EQ(console.Property("frmMain", "pos"), Pair(pixels, 67));
    EXPECT_EQ(console.Terminate(), 0);
    EXPECT_THAT(ReadFile(places_), HasSubstr(std::string("MainLeft=") + twips + "\n"));
    EXPECT_THAT(ReadFile(places_), Not(HasSubstr("[Console")));
  }
}

TEST_F(WindowPlacesTest, AConsoleWhoseSettingsNameASectionKeepsToIt) {
  const std::string settings =
      ReadFile(folder_ / "Orvotesk.ini") + "\r\n[WINDOW PLACES]\r\nSection=Console Studio A\r\n";
  WriteFile(folder_ / "Orvotesk.ini", settings);
  WriteFile(places_,
            "[Console%20Studio%20A]\nMainLeft=3000\n\n[Settings]\nMainLeft=1500\nMainTop=1500\n");
  ConsoleProcess console(folder_);
  ASSERT_TRUE(console.IsUp());
  EXPECT_EQ(console.Property("frmMain", "pos"), Pair(200, 67));
  console.SetSize("frmMain", 600, 500);
  EXPECT_EQ(console.Terminate(), 0);
  EXPECT_THAT(ReadFile(places_), HasSubstr("\n\n[Settings]\nMainLeft=1500\nMainTop=1500\n"));
  EXPECT_THAT(ReadFile(places_), HasSubstr("MainWidth=9000\n"));
  EXPECT_THAT(ReadFile(folder_ / "Orvotesk.ini"), HasSubstr("Section=Console Studio A\r\n"));
}

// A folder that cannot be written, also by the superuser: something else has its name.
TEST_F(WindowPlacesTest, APlaceThatCannotBeKeptIsHintedAtUntilItCan) {
  constexpr char kHint[] =
      "Where the windows stand cannot be kept: Cannot write Orvo Intercom Control.conf";
  const std::string line = folder_.Home() / "line";
  const SimulatorProcess simulator({"--link", line});
  folder_.WriteSettings(line);
  ConsoleProcess console(folder_);
  // A new database is not what the switcher has: that is more urgent.
  ASSERT_TRUE(console.LivesUntil([&] { return console.IsShown("aidHintStrip"); }));
  console.Click("aidHintClose");
  const auto isHinted = [&] {
    return console.IsShown("aidHintStrip") &&
           console.Property("aidHintText", "text").toString() == QLatin1String(kHint);
  };
  fs::remove_all(places_.parent_path());
  WriteFile(places_.parent_path(), "");
  console.CloseWindow("frmXmap");
  EXPECT_TRUE(console.LivesUntil(isHinted));
  fs::remove(places_.parent_path());
  console.CloseWindow("frmAlphas");
  EXPECT_TRUE(console.LivesUntil([&] { return !isHinted(); }));
  EXPECT_THAT(ReadFile(places_), HasSubstr("XmapLeft="));
  fs::remove_all(places_.parent_path());
  WriteFile(places_.parent_path(), "");
  EXPECT_EQ(console.Terminate(), 0);
  const std::string log = ReadFile(folder_ / "Teskctl.log");
  EXPECT_NE(log.find(kHint), log.rfind(kHint)) << "at the end there is nobody to see a hint";
}

TEST_F(WindowPlacesTest, AMainWindowThatSticksOutOfTheScreenComesBackWhereItWas) {
  WriteFile(places_, "[Settings]\nMainTop=-15\nMainLeft=-900\nMainWidth=30000\nMainHeight=24000\n");
  ConsoleProcess console(folder_);
  ASSERT_TRUE(console.IsUp());
  EXPECT_EQ(console.Property("frmMain", "pos"), Pair(-60, -1));
  EXPECT_EQ(console.Property("frmMain", "size"), Pair(2000, 1600));
  EXPECT_EQ(console.Terminate(), 0);
  EXPECT_THAT(ReadFile(places_), HasSubstr("MainTop=-15\n"));
  EXPECT_THAT(ReadFile(places_), HasSubstr("MainLeft=-900\n"));
  EXPECT_THAT(ReadFile(places_), HasSubstr("MainWidth=30000\n"));
}

TEST_F(WindowPlacesTest, WhatTheStatusBarHasToSayDoesNotWidenTheMainWindow) {
  const Pty line;
  folder_.WriteSettings(line.Device(), "Demo Mode=1\r\n");
  ConsoleProcess console(folder_);
  ASSERT_TRUE(console.IsUp());
  console.Use("ID_ToggleInhibit", 6, 8);
  ASSERT_TRUE(ConsoleProcess::WaitFor([&] { return console.Mark(6, 8) == 2; }));
  console.Click("ckRelaySel_3");
  console.Click("ckStationSel_5");
  console.Click("ckOptoStationSel_5");
  line.Send("E0 01 FF");
  ASSERT_TRUE(ConsoleProcess::WaitFor([&] { return console.IsShown("aidBlockedCode"); }));
  EXPECT_EQ(console.Property("frmMain", "size"), Pair(433, 433));
  EXPECT_EQ(console.Terminate(), 0);
  EXPECT_THAT(ReadFile(places_), HasSubstr("MainWidth=6500\n"));
}

// The focus aid scrolls the area, which is smaller than its windows at first.
TEST_F(WindowPlacesTest, KeysThatScrollTheAreaChangeNoPlace) {
  const Pty line;
  folder_.WriteSettings(line.Device());
  ConsoleProcess console(folder_);
  ASSERT_TRUE(console.IsUp());
  for (int times = 0; times < 30; ++times) console.Keys("msfgXmap", "Down");
  for (int times = 0; times < 30; ++times) console.Keys("msfgXmap", "Right");
  EXPECT_THAT(console.Property("aidReadout", "text").toString().toStdString(),
              testing::StartsWith("Out 31  Sta. 031  <  In 31"))
      << "beyond what the area has room for";
  EXPECT_EQ(console.Terminate(), 0);
  for (const char* const stored :
       {"ButnsLeft=0\n", "ButnsTop=0\n", "AlphasLeft=300\n", "AlphasTop=300\n", "XmapLeft=500\n",
        "XmapTop=500\n", "XmapWidth=10000\n", "XmapHeight=9000\n"}) {
    EXPECT_THAT(ReadFile(places_), HasSubstr(stored));
  }
}

}  // namespace
}  // namespace test
