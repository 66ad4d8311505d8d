// SPDX-License-Identifier: MIT
//
// Starting on what is missing, taken or broken: a clear message, and nothing lost.

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <QTcpServer>

#include "tests/end_to_end/console_process.h"
#include "tests/support/simulator_process.h"

namespace test {
namespace {

namespace fs = std::filesystem;
using testing::HasSubstr;
using testing::StartsWith;
using namespace std::string_literals;

class BadInputTest : public testing::Test {
 protected:
  // Never the machine's own serial port.
  void SetUp() override { folder_.WriteSettings("/dev/null"); }

  // All boxes, one after the other as the operator closes them.
  static std::vector<Box> AllBoxes(ConsoleProcess& console) {
    std::vector<Box> all;
    ConsoleProcess::WaitFor([&] { return !console.Boxes().empty(); });
    for (std::vector<Box> now = console.Boxes(); !now.empty(); now = console.Boxes()) {
      all.push_back(now[0]);
      console.CloseBox();
    }
    return all;
  }

  int argc_ = 0;
  QCoreApplication application_{argc_, nullptr};
  ConsoleFolder folder_;
};

constexpr char kIpText[] =
    "The IP Port: 1250 is either in use by another program or unavailable.\r"
    "Please select another IP port and restart Orvo Intercom Control.\r"
    "Soft Panel support is not available.";

TEST_F(BadInputTest, AMissingSerialDeviceIsSaidOnceAndFoundWhenItComes) {
  const std::string line = folder_ / "line";
  folder_.WriteSettings(line);
  ConsoleProcess console(folder_);
  ASSERT_TRUE(console.IsUp());
  EXPECT_EQ(AllBoxes(console),
            (std::vector<Box>{{"critical", "Comm Error",
                               "Comm: 1 is either in use by another program or unavailable.\r"
                               "Please select another comm port and restart Orvo Intercom Control",
                               ""}}));
  EXPECT_EQ(console.LinkText(), "");
  SimulatorProcess simulator({"--log", "--link", line});
  EXPECT_TRUE(simulator.WaitForLine("rx poll map"));
  EXPECT_TRUE(ConsoleProcess::WaitFor(
      [&] { return console.LinkText() == "Connected - COM 1  (57600, 8, N, 1)"; }));
  EXPECT_TRUE(console.Boxes().empty());
}

TEST_F(BadInputTest, ABusySerialDeviceIsSaid) {
  const std::string line = folder_ / "line";
  folder_.WriteSettings(line);
  SimulatorProcess simulator({"--log", "--link", line});
  ConsoleProcess first(folder_);
  ASSERT_TRUE(first.IsUp());
  ASSERT_TRUE(simulator.WaitForLine("rx poll"));
  const ConsoleFolder other;
  other.WriteSettings(line);
  ConsoleProcess second(other);
  ASSERT_TRUE(second.IsUp());
  const auto boxes = AllBoxes(second);
  ASSERT_EQ(boxes.size(), 1U);
  EXPECT_THAT(boxes[0].text, StartsWith("Comm: 1 is either in use by another program"));
}

TEST_F(BadInputTest, ATakenIpPortIsSaid) {
  QTcpServer other;
  ASSERT_TRUE(other.listen(QHostAddress::Any, 0));
  const std::string port = std::to_string(other.serverPort());
  folder_.WriteSettings("/dev/null", "Softpanel Support=Yes\r\nIP Port=" + port + "\r\n");
  ConsoleProcess console(folder_);
  ASSERT_TRUE(console.IsUp());
  const auto boxes = AllBoxes(console);
  ASSERT_EQ(boxes.size(), 2U);
  EXPECT_EQ(boxes[0], (Box{"critical", "Comm Error",
                           "The IP Port: " + port +
                               " is either in use by another program or unavailable.\r"
                               "Please select another IP port and restart Orvo Intercom Control.\r"
                               "Soft Panel support is not available.",
                           ""}));
  EXPECT_EQ(console.Mark(1, 1), 2);
}

TEST_F(BadInputTest, AForeignDatabaseIsRefusedAndLeftAlone) {
  WriteFile(folder_ / "Tesk.mdb", std::string(5000, 'x'));
  ConsoleProcess console(folder_);
  ASSERT_TRUE(console.IsUp());
  const auto boxes = AllBoxes(console);
  ASSERT_GE(boxes.size(), 2U);
  EXPECT_EQ(boxes[0].title, "Database Error");
  EXPECT_THAT(boxes[0].text, StartsWith("Error Opening Database File\r\rError #  3343 - "));
  EXPECT_EQ(boxes[1], (Box{"critical", "Comm Error", kIpText, "Reported 7 times"}));
  EXPECT_EQ(console.Terminate(), 0);
  EXPECT_EQ(ReadFile(folder_ / "Tesk.mdb"), std::string(5000, 'x'));
  EXPECT_FALSE(fs::exists(folder_ / "WorkingDb.md$"));
}

TEST_F(BadInputTest, ATruncatedDatabaseNamesThePage) {
  const std::string whole = ReadFile(std::string(TESK_TEST_DATA) + "/mdb/tesk_jet4.mdb");
  ASSERT_GT(whole.size(), 100000U);
  WriteFile(folder_ / "Tesk.mdb", whole.substr(0, 61440));
  ConsoleProcess console(folder_);
  ASSERT_TRUE(console.IsUp());
  const auto boxes = AllBoxes(console);
  ASSERT_FALSE(boxes.empty());
  EXPECT_THAT(boxes[0].text, StartsWith("Error Opening Database File\r\rError #  "));
  EXPECT_THAT(boxes[0].text, HasSubstr("page "));
  EXPECT_EQ(console.Terminate(), 0);
  EXPECT_EQ(ReadFile(folder_ / "Tesk.mdb"), whole.substr(0, 61440));
}

TEST_F(BadInputTest, JunkInTheSettingsFileIsKept) {
  const std::string junk = "\xFF\0\r[[CONF\n=\nCOM Port=3\n[SERIAL DEVICES\nCOM1=/dev/null\n"s;
  WriteFile(folder_ / "Orvotesk.ini", junk);
  ConsoleProcess console(folder_);
  ASSERT_TRUE(console.IsUp());
  const auto boxes = AllBoxes(console);
  ASSERT_FALSE(boxes.empty());
  EXPECT_THAT(boxes[0].text, StartsWith("Comm: 1 "));
  EXPECT_EQ(console.Terminate(), 0);
  const std::string settings = ReadFile(folder_ / "Orvotesk.ini");
  EXPECT_EQ(settings.substr(0, junk.size()), junk);
  EXPECT_THAT(settings, HasSubstr("[CONFIGURATION]\nCOM Port=1\n"));
}

TEST_F(BadInputTest, SettingsThatCannotBeWrittenAreSaidBeforeTheEnd) {
  ConsoleProcess console(folder_);
  ASSERT_TRUE(console.IsUp());
  EXPECT_EQ(AllBoxes(console).size(), 1U);  // no serial device
  fs::remove(folder_ / "Orvotesk.ini");
  fs::create_directory(folder_ / "Orvotesk.ini");
  console.Trigger("ID_Exit");
  ASSERT_TRUE(ConsoleProcess::WaitFor([&] { return !console.Boxes().empty(); }));
  const auto boxes = console.Boxes();
  ASSERT_EQ(boxes.size(), 1U);
  EXPECT_EQ(boxes[0].icon, "critical");
  EXPECT_EQ(boxes[0].title, "Error Processing");
  EXPECT_THAT(boxes[0].text, StartsWith("Error in Writing Configuration File\rError # 75 - "));
  EXPECT_FALSE(fs::exists(folder_ / "WorkingDb.md$"));
  console.CloseBox();
  EXPECT_EQ(console.WaitForEnd(), 0);
}

TEST_F(BadInputTest, AReportThatNobodyReadsDoesNotHoldUpTheSystem) {
  ConsoleProcess console(folder_);
  ASSERT_TRUE(console.IsUp());
  EXPECT_EQ(AllBoxes(console).size(), 1U);  // no serial device
  fs::remove(folder_ / "Orvotesk.ini");
  fs::create_directory(folder_ / "Orvotesk.ini");
  console.Trigger("ID_Exit");
  ASSERT_TRUE(ConsoleProcess::WaitFor([&] { return !console.Boxes().empty(); }));
  EXPECT_EQ(console.Terminate(), 0);
}

TEST_F(BadInputTest, JunkInTheWindowPlacesIsOutlivedAndKept) {
  const fs::path places = folder_.Home() / "Orvo" / "Orvo Intercom Control.conf";
  fs::create_directories(places.parent_path());
  WriteFile(places,
            "[Settings]\nMainLeft=junk\nMainWidth=1e9\nMainHeight=99999999\n"
            "ButnsWidth=-5\nXmapWidth=1e9\nXmapHeight=1e9\n");
  ConsoleProcess console(folder_);
  ASSERT_TRUE(console.IsUp());
  EXPECT_EQ(console.Property("frmMain", "size"), QJsonValue(QJsonArray{8192, 8192}));
  EXPECT_EQ(console.Mark(1, 1), 2);
  EXPECT_EQ(console.Terminate(), 0);
  const std::string stored = ReadFile(places);
  for (const char* const line : {"MainLeft=junk\n", "MainTop=1000\n", "MainWidth=1e9\n",
                                 "MainHeight=99999999\n", "ButnsWidth=-5\n", "XmapWidth=1e9\n"}) {
    EXPECT_THAT(stored, HasSubstr(line));
  }
}

}  // namespace
}  // namespace test
