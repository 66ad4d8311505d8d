// SPDX-License-Identifier: MIT
//
// The whole configuration on its way to the switcher: the real console on the real simulator.

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "tests/end_to_end/console_and_switcher.h"
#include "tests/end_to_end/system_database.h"

namespace test {
namespace {

using testing::AnyOf;
using testing::EndsWith;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::Not;
using testing::StartsWith;
using namespace std::chrono_literals;

class DownloadTransferTest : public testing::TestWithParam<int>, protected ConsoleAndSwitcher {
 protected:
  void OpenDownload() {
    console_->Trigger("ID_SendData");
    ASSERT_TRUE(ConsoleProcess::WaitFor([this] { return console_->IsShown("frmDownProg"); }));
  }

  void BeginDownload() {
    OpenDownload();
    console_->Click("cmdDownGo");
  }

  bool WaitForTheEnd(std::chrono::seconds within = 120s) {
    return ConsoleProcess::WaitFor([this] { return !console_->IsShown("frmDownProg"); }, within);
  }

  // Waits for the buttons of a station, or of a later one: a busy machine looks late.
  bool WaitForStation(int station) {
    static constexpr std::string_view kButtons = "Download Status (Button Programming Sta ";
    return ConsoleProcess::WaitFor(
        [&] {
          const std::string status = Text("lblDownloadStatus");
          return status.starts_with(kButtons) &&
                 std::stoi(status.substr(kButtons.size())) >= station;
        },
        60s);
  }

  // All that the simulator holds, as text.
  static std::string Holdings(SimulatorProcess& simulator, const std::filesystem::path& file) {
    EXPECT_THAT(simulator.Command("save " + file.string()), StartsWith("ok"));
    return ReadFile(file);
  }

  // What a switcher holds that has every table of the database.
  std::string HoldingsOf(const std::filesystem::path& database) {
    SimulatorProcess other({"--database", database.string()});
    return Holdings(other, folder_.Home() / "wanted");
  }
};

TEST_P(DownloadTransferTest, TheSwitcherThenHoldsTheDatabase) {
  const int channels = GetParam();
  const std::string count = std::to_string(channels);
  const std::string labels = std::to_string(LabelsOf(channels));
  CreateSystem(folder_ / "Tesk.mdb", channels, 1);
  StartSimulator({"--channels", count, "--stations", count, "--labels", labels, "--baud", "0"});
  StartConsole();
  const std::string wanted = HoldingsOf(folder_ / "Tesk.mdb");
  EXPECT_NE(Holdings(*simulator_, folder_.Home() / "before"), wanted);
  BeginDownload();
  ASSERT_TRUE(WaitForTheEnd());
  ASSERT_TRUE(simulator_->WaitForLine("rx buttons station " + count));
  EXPECT_EQ(Holdings(*simulator_, folder_.Home() / "after"), wanted);
  EXPECT_THAT(simulator_->Command("stats"), HasSubstr(" malformed 0 "));
  EXPECT_THAT(console_->Boxes(), IsEmpty());
  EXPECT_TRUE(simulator_->WaitForLine("rx poll keep-alive"));
}

INSTANTIATE_TEST_SUITE_P(Channels, DownloadTransferTest, testing::Values(16, 64, 128, 256));

// The rest needs no particular size.
using DownloadTest = DownloadTransferTest;

TEST_F(DownloadTest, TablesInOrderAndNoPollBetweenThem) {
  StartSimulator({"--baud", "0"});
  StartConsole();
  BeginDownload();
  // The lines of what came, without what belongs to each: "optos", "inhibits".
  std::vector<std::string> order;
  ASSERT_TRUE(simulator_->WaitForLine("rx optos"));
  for (;;) {
    const auto line = simulator_->WaitForLine("rx ");
    ASSERT_TRUE(line);
    ASSERT_THAT(*line, Not(HasSubstr("rx poll"))) << "between two tables";
    const std::string kind = line->substr(line->find("rx ") + 3);
    const std::string word = kind.substr(0, kind.find(' '));
    if (order.empty() || order.back() != word) order.push_back(word);
    if (line->find("rx buttons station 64") != std::string::npos) break;
  }
  EXPECT_THAT(order, testing::ElementsAre("label-order", "label-texts", "label-order",
                                          "label-texts", "inhibits", "relays", "buttons"));
  ASSERT_TRUE(WaitForTheEnd());
}

TEST_F(DownloadTest, WhatTheOperatorSetUpArrives) {
  const std::filesystem::path database = folder_ / "Tesk.mdb";
  CreateSystem(database, 64, 1);
  SetField(database, 2, "Label", "MIC");
  SetField(database, 2, "Hidden", 1);
  SetField(database, 3, "InLabel", "CAM 1");
  SetField(database, 4, "Inhibits",
           "1000000100000000000000000000000000000000000000000000000000000001");
  SetField(database, 5, "Relays",
           "0100000000000000000000000000000000000000000000000000000000000010");
  SetField(database, 6, "B7 Type", 255);
  SetField(database, 6, "B7 First", 9);
  SetField(database, 6, "B7 Prog",
           "0000000010000000000000000000000000000000000000000000000000000001");
  SetField(database, 8, "OptoType", 2);
  SetField(database, 8, "OptoChannel", 40);
  SetField(database, 8, "OptoFirst", 41);
  SetField(database, 8, "OptoStations",
           "0000000000000000000000000000000000000000100000000000000000000000");
  StartSimulator({"--baud", "0"});
  StartConsole();
  EXPECT_FALSE(IsUnsentShown());
  console_->Use("ID_ToggleInhibit", 10, 10);
  ASSERT_TRUE(ConsoleProcess::WaitFor([this] { return IsUnsentShown(); }));
  EXPECT_THAT(Text("aidUnsent"),
              testing::AllOf(StartsWith("Unsent since "), EndsWith(": inhibits of output 10")));
  BeginDownload();
  ASSERT_TRUE(WaitForTheEnd());
  // Once the next poll is answered.
  EXPECT_TRUE(ConsoleProcess::WaitFor([this] { return !IsUnsentShown(); }));
  ASSERT_TRUE(simulator_->WaitForLine("rx buttons station 64"));
  EXPECT_EQ(simulator_->Command("label out 2"), "ok out 2 \"{IC     \" hidden");
  EXPECT_EQ(simulator_->Command("label in 3"), "ok in 3 \"CAM 1   \"");
  EXPECT_EQ(simulator_->Command("inhibits 4"), "ok output 4 inhibits 1 8 64");
  EXPECT_EQ(simulator_->Command("relays 5"), "ok output 5 relays 2 63");
  EXPECT_EQ(simulator_->Command("button 6 7"),
            "ok station 6 button 7 type 255 first 9 members 9 64");
  EXPECT_EQ(simulator_->Command("opto 8"), "ok opto 8 type 2 channel 40 first 41 members 41");
}

TEST_F(DownloadTest, AsksFirstAndCancelSendsNothing) {
  StartSimulator({});
  StartConsole();
  OpenDownload();
  EXPECT_THAT(Text("lblDownloadText"), StartsWith("Preparing to Transmit System Information"));
  // A second command opens no second window.
  console_->Trigger("ID_SendData");
  console_->Trigger("ID_RetreiveData");
  console_->Click("cmdDownCancel");
  ASSERT_TRUE(WaitForTheEnd());
  EXPECT_FALSE(console_->IsShown("frmSysInfo"));
  EXPECT_TRUE(simulator_->WaitForLine("rx poll keep-alive"));
  EXPECT_THAT(simulator_->Command("stats"), HasSubstr(" tables 0 "));
  EXPECT_THAT(Text("aidNote"), testing::Not(HasSubstr("Download"))) << "nothing was begun";
}

// At the pace of the line the relays of a large system take a second.
TEST_F(DownloadTest, CancelInTheMiddleOfATableSendsAllOfItAndNoOther) {
  CreateSystem(folder_ / "Tesk.mdb", 256, 1);
  StartSimulator({"--channels", "256", "--stations", "256", "--labels", "256"});
  StartConsole();
  BeginDownload();
  ASSERT_TRUE(ConsoleProcess::WaitFor(
      [this] {
        const std::string status = Text("lblDownloadStatus");
        return status == "Download Status (Relays)" || status.find("Sta ") != std::string::npos;
      },
      60s));
  EXPECT_EQ(console_->Property("frmDownProg", "windowTitle").toString().toStdString(),
            "System Download Progress (293891 Total Bytes)");
  console_->Click("cmdDownCancel");
  ASSERT_TRUE(WaitForTheEnd());
  // On a busy machine the click may have come when a station or two was through.
  const std::string note = Text("aidNote");
  ASSERT_THAT(note, StartsWith("Cancelled. Stages not sent: Button Programming Sta "));
  ASSERT_THAT(note, EndsWith(" to 256"));
  const int first = std::stoi(note.substr(std::string("Cancelled. Stages not sent: Button "
                                                      "Programming Sta ")
                                              .size()));
  ASSERT_TRUE(simulator_->WaitForLine("rx relays output 256", 60s));
  ASSERT_TRUE(simulator_->WaitForLine("rx poll keep-alive", 60s));
  const std::string stats = simulator_->Command("stats");
  EXPECT_THAT(stats, HasSubstr(" malformed 0 "));
  // Optos, two pairs of labels, two rows for each output.
  EXPECT_THAT(stats, HasSubstr(" tables " + std::to_string(1 + 4 + 2 * 256 + first - 1) + " "));
}

TEST_F(DownloadTest, ThePulledCableIsReportedTheWindowClosesAndTheLinkComesBack) {
  StartSimulator({});
  StartConsole();
  BeginDownload();
  ASSERT_TRUE(WaitForStation(3));
  simulator_->Command("unplug");
  ASSERT_TRUE(WaitForTheEnd());
  // The report outlives the window that it stood over.
  ASSERT_TRUE(ConsoleProcess::WaitFor([this] { return !console_->Boxes().empty(); }));
  int boxes = 0;
  for (auto now = console_->Boxes(); !now.empty(); now = console_->Boxes()) {
    EXPECT_EQ(now[0].icon, "critical");
    EXPECT_EQ(now[0].title, "Serial Communications Error");
    EXPECT_THAT(now[0].text, AnyOf(StartsWith("Error Sending Button Table\r\rError # 8018 - "),
                                   StartsWith("Error Sending Button Table\r\rError # 8020 - ")));
    console_->CloseBox();
    ASSERT_LT(++boxes, 4) << "the reports are not folded";
  }
  EXPECT_TRUE(
      ConsoleProcess::WaitFor([this] { return console_->LinkText() == "Not Connected - COM 1"; }));
  simulator_->Command("replug");
  EXPECT_TRUE(ConsoleProcess::WaitFor([this] { return console_->LinkText() == kConnected; }));
  BeginDownload();
  ASSERT_TRUE(WaitForStation(3));
  console_->Click("cmdDownCancel");
  EXPECT_TRUE(WaitForTheEnd());
  EXPECT_THAT(console_->Boxes(), IsEmpty());
}

TEST_F(DownloadTest, ClosingTheMainWindowSendsTheTableToItsEndAndEndsTheProgram) {
  StartSimulator({});
  StartConsole();
  BeginDownload();
  ASSERT_TRUE(WaitForStation(2));
  console_->CloseWindow("frmMain");
  EXPECT_EQ(console_->WaitForEnd(), 0);
  EXPECT_THAT(simulator_->Command("stats"), HasSubstr(" malformed 0 "));
  EXPECT_EQ(simulator_->WaitForLine("rx buttons station 64", 1s), std::nullopt);
  EXPECT_FALSE(std::filesystem::exists(folder_ / "WorkingDb.md$"));
  ConsoleProcess again(folder_);
  EXPECT_TRUE(again.IsUp());
  EXPECT_EQ(again.Mark(1, 1), 2);
}

TEST_F(DownloadTest, TheSystemsRequestToEndIsHeardInTheMiddle) {
  StartSimulator({});
  StartConsole();
  BeginDownload();
  ASSERT_TRUE(WaitForStation(2));
  EXPECT_EQ(console_->Terminate(), 0);
  EXPECT_FALSE(std::filesystem::exists(folder_ / "WorkingDb.md$"));
}

}  // namespace
}  // namespace test
