// SPDX-License-Identifier: MIT
//
// Starting on what is missing, taken or broken: a clear message, and nothing lost.

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <QTcpServer>

#include "db/schema.h"
#include "tests/end_to_end/console_process.h"
#include "tests/end_to_end/system_database.h"
#include "tests/support/damaged_file.h"
#include "tests/support/fake_console.h"
#include "tests/support/simulator_process.h"
#include "tests/support/socket_peer.h"

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

// Whoever is on the network may take as often as they like.
TEST_F(BadInputTest, TakesOfPanelsWithoutTheLineBringNoBoxBackThatWasJustClosed) {
  const int port = FakeConsole().Port();
  folder_.WriteSettings(folder_ / "line",
                        "IP Port=" + std::to_string(port) + "\r\nSoftpanel Support=Yes\r\n");
  ConsoleProcess console(folder_);
  ASSERT_TRUE(console.IsUp());
  EXPECT_EQ(AllBoxes(console).size(), 1U) << "there is no such line";
  SocketPeer panel;
  ASSERT_TRUE(panel.Connect(port));
  ASSERT_TRUE(panel.Send("81 1E 1E FF FE 20 00 05 00 07 00 2C FF"));
  ASSERT_TRUE(ConsoleProcess::WaitFor([&] { return !console.Boxes().empty(); }));
  EXPECT_EQ(AllBoxes(console), (std::vector<Box>{{"critical", "Serial Communications Error",
                                                  "Error Sending Take Command\r\r"
                                                  "Error # 8018 - The serial port is not open",
                                                  ""}}));
  ASSERT_TRUE(panel.Send("FE 20 00 05 00 07 00 2C FF"));
  ASSERT_TRUE(ConsoleProcess::WaitFor(
      [&] { return console.IsShown("aidHintStrip") || !console.Boxes().empty(); }));
  EXPECT_TRUE(console.Boxes().empty());
  EXPECT_EQ(console.Property("aidHintStrip", "accessibleName").toString().toStdString(),
            "Again since you closed it: Error Sending Take Command, Error # 8018 - The serial port "
            "is not open");
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

// A page of the file has become zeros: whose stations they were is said, and nothing is sent that
// lacks them.
class DamagedDatabaseTest : public BadInputTest {
 protected:
  void SetUp() override {
    folder_.WriteSettings(line_);
    ASSERT_TRUE(db::CreateDatabase(folder_ / "Tesk.mdb").ok());
    ZeroPageOf(folder_ / "Tesk.mdb", "Sta. 012");
    damaged_ = ReadFile(folder_ / "Tesk.mdb");
  }

  // The one file of the folder whose name begins so.
  fs::path TheFile(const std::string& begin) const {
    fs::path found;
    for (const auto& entry : fs::directory_iterator(folder_.Program())) {
      if (!entry.path().filename().string().starts_with(begin)) continue;
      EXPECT_TRUE(found.empty()) << "only one";
      found = entry.path();
    }
    return found;
  }

  // The box that shows, closed.
  static Box TakeBox(ConsoleProcess& console) {
    if (!ConsoleProcess::WaitFor([&] { return !console.Boxes().empty(); })) return {};
    Box box = console.Boxes()[0];
    console.CloseBox();
    return box;
  }

  const std::string line_ = folder_.Home() / "line";
  SimulatorProcess simulator_{{"--log", "--link", line_}};
  std::string damaged_;
};

TEST_F(DamagedDatabaseTest, IsSaidAndWorkedOnAndNoHalfTableIsSent) {
  ConsoleProcess console(folder_);
  ASSERT_TRUE(console.IsUp());
  const Box box = TakeBox(console);
  EXPECT_EQ(box.icon, "critical");
  EXPECT_EQ(box.title, "Database Error");
  EXPECT_THAT(box.text, StartsWith("Database File Is Damaged\r\r"));
  EXPECT_THAT(box.text, HasSubstr("(page "));
  EXPECT_THAT(box.text, HasSubstr("\rStations that cannot be read whole: "));
  EXPECT_TRUE(console.Boxes().empty()) << "one box";
  EXPECT_EQ(console.Mark(6, 6), 2) << "what can be read is shown";

  ASSERT_TRUE(ConsoleProcess::WaitFor([&] { return console.LinkText() == kConnected; }));
  console.Trigger("ID_SendInhibits", "frmXmap");
  const Box refused = TakeBox(console);
  EXPECT_EQ(refused.title, "Serial Communications Error");
  EXPECT_THAT(refused.text,
              StartsWith("Error Sending Inhibits Table\r\rError # 3049 - The database is damaged, "
                         "stations cannot be read: "));
  console.Use("ID_Take", 1, 3);
  std::optional<std::string> line = simulator_.WaitForLine("");
  while (line && line->find("rx take") == std::string::npos) {
    EXPECT_EQ(line->find("rx inhibits"), std::string::npos) << *line;
    line = simulator_.WaitForLine("");
  }
  EXPECT_TRUE(line.has_value());

  console.Use("ID_ToggleInhibit", 1, 8);
  ASSERT_TRUE(ConsoleProcess::WaitFor([&] { return console.Mark(1, 8) == 2; }));
  console.Trigger("ID_Exit");
  EXPECT_EQ(console.WaitForEnd(), 0);
  EXPECT_TRUE(ReadFile(TheFile("Tesk-damaged-20")) == damaged_);
  EXPECT_FALSE(ReadFile(folder_ / "Tesk.mdb") == damaged_);
}

TEST_F(DamagedDatabaseTest, IsSalvagedWhenTheOperatorSaysSo) {
  ConsoleProcess console(folder_);
  ASSERT_TRUE(console.IsUp());
  ASSERT_TRUE(ConsoleProcess::WaitFor([&] { return console.IsShown("aidSalvageDefaults"); }));
  console.Click("aidSalvageDefaults");
  ASSERT_TRUE(ConsoleProcess::WaitFor(
      [&] { return !console.Boxes().empty() && console.Boxes()[0].title != "Database Error"; }));
  const fs::path salvaged = TheFile("Tesk-salvaged-20");
  const Box box = TakeBox(console);
  EXPECT_EQ(box.title, "Orvo Intercom Control");
  EXPECT_THAT(box.text, StartsWith("Database Salvaged\r\rNew file: " + salvaged.string() +
                                   "\rStations found: "));
  EXPECT_THAT(box.text, HasSubstr("\rNot found: "));
  EXPECT_THAT(box.text, HasSubstr("\rWhat was not found is as in a new database.\r\r"));
  EXPECT_TRUE(ReadFile(folder_ / "Tesk.mdb") == damaged_);
  EXPECT_EQ(ReadField(salvaged, 12, "Label"), "Sta. 012");
  EXPECT_EQ(console.Terminate(), 0);
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
