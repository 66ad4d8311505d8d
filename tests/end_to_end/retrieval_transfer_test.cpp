// SPDX-License-Identifier: MIT
//
// The whole configuration on its way back from the switcher: the real console on the real
// simulator.

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <csignal>
#include <string_view>
#include <thread>

#include "db/table.h"
#include "tests/end_to_end/console_and_switcher.h"
#include "tests/end_to_end/system_database.h"

namespace test {
namespace {

using testing::Contains;
using testing::Each;
using testing::EndsWith;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::Not;
using testing::StartsWith;
using namespace std::chrono_literals;

class RetrievalTransferTest : public testing::TestWithParam<int>, protected ConsoleAndSwitcher {
 protected:
  // A switcher that holds pattern 2 and a console whose database holds pattern 1, both of so
  // many channels.
  void StartBoth(int channels, std::vector<std::string> options) {
    CreateSystem(database_, channels, 1);
    CreateSystem(held_, channels, 2);
    options.insert(options.end(), {"--database", held_.string()});
    StartSimulator(std::move(options));
    StartConsole();
  }

  std::string Caption() {
    return console_->Property("frmSysInfo", "windowTitle").toString().toStdString();
  }

  void OpenRetrieval() {
    console_->Trigger("ID_RetreiveData");
    ASSERT_TRUE(ConsoleProcess::WaitFor([this] { return console_->IsShown("frmSysInfo"); }));
  }

  void BeginRetrieval() {
    OpenRetrieval();
    console_->Click("cmdOkSysInf");
  }

  bool WaitForCompletion() {
    return ConsoleProcess::WaitFor(
        [this] { return Caption().starts_with("Retrieval Completed ("); }, 120s);
  }

  std::vector<std::string> History() { return console_->Rows("lstMsgHistory"); }

  // The tables of the history.  Answers to the last polls may have been on their way.
  std::vector<std::string> ReceivedTables() {
    auto rows = History();
    std::erase_if(rows, [](const std::string& row) {
      return row.find(" Crosspoint Map|") != std::string::npos || row.starts_with("QDV ") ||
             row.starts_with("DCA ");
    });
    return rows;
  }

  bool WaitForRow(const std::string& row) {
    return ConsoleProcess::WaitFor(
        [&] {
          const auto rows = History();
          return std::find(rows.begin(), rows.end(), row) != rows.end();
        },
        60s);
  }

  // What the window says of a retrieval that has ended.
  std::string Summary() { return Text("aidSummary"); }

  void CloseRetrieval() {
    console_->Click("cmdCancelSysInf");
    ASSERT_TRUE(ConsoleProcess::WaitFor([this] { return !console_->IsShown("frmSysInfo"); }));
  }

  // The lines of a station's fields that are in this table.
  static std::vector<std::string> FieldsOf(db::Table table, const std::filesystem::path& file,
                                           int channels) {
    std::vector<std::string> lines = ReadTables(file, channels);
    std::erase_if(lines, [table](const std::string& line) {
      const std::size_t field = line.find(' ') + 1;
      return !db::IsFieldOf(table, std::string_view(line).substr(field, line.find('=') - field));
    });
    return lines;
  }

  // The switcher's tables as the console stores them: flag texts have at least 64 members.
  std::vector<std::string> HeldTables(int channels) {
    std::vector<std::string> lines = ReadTables(held_, channels);
    for (std::string& line : lines) {
      const std::size_t value = line.find('=') + 1;
      const std::string_view field = std::string_view(line).substr(0, value);
      if (!field.ends_with(" Inhibits=") && !field.ends_with(" Prog=")) continue;
      line.resize(std::max(line.size(), value + 64), '0');
    }
    return lines;
  }
};

TEST_P(RetrievalTransferTest, TheDatabaseThenHoldsTheSwitchersTables) {
  const int channels = GetParam();
  StartBoth(channels, {"--baud", "0"});
  const std::vector<std::string> held = HeldTables(channels);
  for (const db::TableKind& kind : db::kTables) {
    ASSERT_NE(FieldsOf(kind.table, database_, channels), FieldsOf(kind.table, held_, channels))
        << "what would show that " << kind.word << " came?";
  }
  BeginRetrieval();
  ASSERT_TRUE(WaitForCompletion());
  const auto rows = ReceivedTables();
  // Two labels, two rows for each output, the optos, the stations.
  EXPECT_EQ(rows.size(), static_cast<std::size_t>(2 + 2 * channels + 1 + channels));
  EXPECT_THAT(rows, Each(EndsWith(" Bytes|OK")));
  EXPECT_EQ(Summary(), std::to_string(History().size()) + " messages, none refused");
  EXPECT_THAT(rows.back(), StartsWith("Station " + std::to_string(channels) + " Button Data|"));
  CloseRetrieval();
  EXPECT_THAT(console_->Boxes(), IsEmpty());
  EXPECT_EQ(console_->Terminate(), 0);
  EXPECT_EQ(ReadTables(database_, channels), held);
}

INSTANTIATE_TEST_SUITE_P(Channels, RetrievalTransferTest, testing::Values(16, 64, 128, 256));

// The rest needs no particular size.
using RetrievalTest = RetrievalTransferTest;

TEST_F(RetrievalTest, TheViewsCloseAndComeBackInTheirPlacesWithWhatIsNew) {
  StartBoth(16, {"--baud", "0"});
  simulator_->Command("label out 1 NEWS 1");
  simulator_->Command("inhibits 3 5 6");
  const QJsonValue place = console_->Property("frmXmap", "size");
  OpenRetrieval();
  EXPECT_TRUE(console_->IsShown("frmXmap"));
  console_->Click("cmdOkSysInf");
  EXPECT_FALSE(console_->IsShown("frmXmap"));
  EXPECT_FALSE(console_->IsShown("frmAlphas"));
  EXPECT_FALSE(console_->IsShown("frmButtons"));
  ASSERT_TRUE(WaitForCompletion());
  EXPECT_FALSE(console_->IsShown("frmXmap"));
  CloseRetrieval();
  EXPECT_TRUE(ConsoleProcess::WaitFor([this] { return console_->IsShown("frmXmap"); }));
  EXPECT_TRUE(console_->IsShown("frmAlphas"));
  EXPECT_TRUE(console_->IsShown("frmButtons"));
  EXPECT_EQ(console_->Property("frmXmap", "size"), place);
  EXPECT_EQ(console_->CellText(2, 0), "NEWS 1");
  EXPECT_EQ(console_->Mark(3, 4), 0);
  EXPECT_EQ(console_->Mark(3, 5), 2);
  EXPECT_EQ(console_->Mark(3, 6), 2);
  EXPECT_TRUE(simulator_->WaitForLine("rx poll keep-alive"));
}

TEST_F(RetrievalTest, ARestartKeepsEverything) {
  StartBoth(64, {"--baud", "0"});
  simulator_->Command("label out 7 {WINGS");
  BeginRetrieval();
  ASSERT_TRUE(WaitForCompletion());
  CloseRetrieval();
  EXPECT_EQ(console_->Terminate(), 0);
  EXPECT_EQ(ReadField(database_, 7, "Hidden"), "1");
  EXPECT_EQ(ReadField(database_, 7, "Label"), "{WINGS");
  const std::vector<std::string> stored = ReadTables(database_, 64);
  StartConsole();
  EXPECT_EQ(console_->CellText(8, 0), "{WINGS");
  EXPECT_EQ(console_->Terminate(), 0);
  EXPECT_EQ(ReadTables(database_, 64), stored);
}

TEST_F(RetrievalTest, ADownloadAndARetrievalGiveTheSameDatabase) {
  CreateSystem(database_, 64, 1);
  SetField(database_, 9, "Label", "MIC");
  SetField(database_, 9, "Hidden", 1);
  const std::vector<std::string> before = ReadTables(database_, 64);
  StartSimulator({"--baud", "0"});
  StartConsole();
  console_->Trigger("ID_SendData");
  ASSERT_TRUE(ConsoleProcess::WaitFor([this] { return console_->IsShown("cmdDownGo"); }));
  console_->Click("cmdDownGo");
  ASSERT_TRUE(ConsoleProcess::WaitFor([this] { return !console_->IsShown("frmDownProg"); }, 60s));
  BeginRetrieval();
  ASSERT_TRUE(WaitForCompletion());
  EXPECT_THAT(History(), Each(EndsWith(" Bytes|OK")));
  CloseRetrieval();
  EXPECT_EQ(console_->Terminate(), 0);
  EXPECT_EQ(ReadTables(database_, 64), before);
}

TEST_F(RetrievalTest, BrokenMessagesAreListedWithTheirWordAndNotWritten) {
  StartBoth(16, {"--baud", "0"});
  for (const char* const harm :
       {"spoil label-texts 20 checksum", "spoil inhibits 4 length", "spoil relays 5 checksum",
        "spoil relays 6 number", "spoil optos length", "spoil buttons 7 checksum"}) {
    ASSERT_THAT(simulator_->Command(harm), StartsWith("ok"));
  }
  const std::vector<std::string> before = ReadTables(database_, 16);
  const std::vector<std::string> held = HeldTables(16);
  BeginRetrieval();
  ASSERT_TRUE(WaitForCompletion());
  const auto rows = ReceivedTables();
  ASSERT_THAT(rows, Not(IsEmpty()));
  EXPECT_THAT(rows[0], StartsWith("Alpha Labels|1028 Bytes|Failed Csum"));
  EXPECT_THAT(rows, Contains("Output 4 Inhibit Map|8 Bytes|Size Error"));
  EXPECT_THAT(rows, Contains("Output 5 Relay Assignments|21 Bytes|Failed Csum"));
  EXPECT_THAT(rows, Contains("Output 17 Relay Assignments|21 Bytes|Channel Error"));
  EXPECT_THAT(rows, Contains("Opto Programming Data|1410 Bytes|Size Error"));
  EXPECT_THAT(rows, Contains(HasSubstr("Station 7 Button Data|261 Bytes|Failed Csum")));
  EXPECT_EQ(Summary(),
            std::to_string(History().size()) + " messages, 6 refused, the first: Alpha Labels");
  CloseRetrieval();
  EXPECT_EQ(console_->Terminate(), 0);

  // Each line is the switcher's, but for those of the refused messages.
  const std::vector<std::string> after = ReadTables(database_, 16);
  ASSERT_EQ(after.size(), held.size());
  for (std::size_t i = 0; i < after.size(); ++i) {
    const std::string& line = after[i];
    const std::string field = line.substr(0, line.find('='));
    const bool refused = field.ends_with(" Label") || field == "4 Inhibits" ||
                         field == "5 Relays" || field == "6 Relays" ||
                         field.find(" Opto") != std::string::npos || field.starts_with("7 B");
    EXPECT_EQ(line, refused ? before[i] : held[i]);
  }
}

TEST_F(RetrievalTest, AMissingEndSpoilsTwoMessagesAndTheRestGoesOn) {
  StartBoth(16, {"--baud", "0"});
  ASSERT_THAT(simulator_->Command("spoil relays 3 end"), StartsWith("ok"));
  BeginRetrieval();
  ASSERT_TRUE(WaitForCompletion());
  const auto rows = History();
  EXPECT_THAT(rows, Not(Contains(StartsWith("Output 4 Inhibit Map"))));
  EXPECT_THAT(rows, Contains(StartsWith("Output 3 Relay Assignments|29 Bytes|Size Error")));
  EXPECT_THAT(rows, Contains("Output 4 Relay Assignments|21 Bytes|OK"));
}

TEST_F(RetrievalTest, ARefusedLastMessageEndsItToo) {
  StartBoth(16, {"--baud", "0"});
  ASSERT_THAT(simulator_->Command("spoil buttons 16 checksum"), StartsWith("ok"));
  BeginRetrieval();
  ASSERT_TRUE(WaitForCompletion());
  EXPECT_EQ(History().back(), "Station 16 Button Data|261 Bytes|Failed Csum");
}

TEST_F(RetrievalTest, WithoutTheLastMessageItWaitsUntilTheOperatorCancels) {
  StartBoth(16, {"--baud", "0"});
  ASSERT_THAT(simulator_->Command("spoil buttons 16 drop"), StartsWith("ok"));
  BeginRetrieval();
  ASSERT_TRUE(WaitForRow("Station 15 Button Data|261 Bytes|OK"));
  EXPECT_THAT(Caption(), StartsWith("Retrieving System Data ( "));
  // No poll while it waits.
  ASSERT_TRUE(simulator_->WaitForLine("rx poll tables"));
  EXPECT_EQ(simulator_->WaitForLine("rx poll", 2500ms), std::nullopt);
  console_->Click("cmdCancelSysInf");
  EXPECT_EQ(Caption(), "Retrieve System Data");
  EXPECT_FALSE(History().empty());
  EXPECT_TRUE(simulator_->WaitForLine("rx poll keep-alive"));

  // Once more, and now all of it comes.
  simulator_->Command("spoil none");
  console_->Click("cmdOkSysInf");
  ASSERT_TRUE(WaitForCompletion());
  CloseRetrieval();
}

TEST_F(RetrievalTest, CancelBeforeTheRequestSendsNothing) {
  StartBoth(16, {});
  OpenRetrieval();
  CloseRetrieval();
  OpenRetrieval();
  // Together, so that half a second cannot pass between them.
  console_->ClickTogether({"cmdOkSysInf", "cmdCancelSysInf"});
  EXPECT_FALSE(console_->IsShown("frmXmap")) << "the retrieval had begun";
  CloseRetrieval();
  EXPECT_TRUE(simulator_->WaitForLine("rx poll keep-alive"));
  EXPECT_THAT(simulator_->Command("stats"), HasSubstr(" table-polls 0 "));
  EXPECT_TRUE(console_->IsShown("frmXmap"));
}

TEST_F(RetrievalTest, APulledCableIsSpokenOfAndTriedAgainWhileItWaits) {
  // So slow that a busy machine has the time to look.
  StartBoth(64, {"--baud", "9600"});
  BeginRetrieval();
  ASSERT_TRUE(simulator_->WaitForLine("rx poll tables"));
  ASSERT_TRUE(ConsoleProcess::WaitFor([this] { return History().size() > 20; }, 60s));
  simulator_->Command("unplug");
  EXPECT_TRUE(
      ConsoleProcess::WaitFor([this] { return console_->LinkText() == "Not Connected - COM 1"; }));
  EXPECT_THAT(Caption(), StartsWith("Retrieving System Data ( "));
  const auto line = [this] {
    return console_->Property("aidRetrievalLine", "text").toString().toStdString();
  };
  EXPECT_TRUE(ConsoleProcess::WaitFor(
      [&] { return line() == "COM 1 is not open. It is tried again every second."; }));
  simulator_->Command("replug");
  EXPECT_TRUE(ConsoleProcess::WaitFor([&] {
    return line() ==
           "COM 1 was lost and is open again. Tables may be missing: cancel, and retrieve again.";
  }));
  // It still waits: no poll, and the request is not repeated.
  EXPECT_EQ(simulator_->WaitForLine("rx poll", 2500ms), std::nullopt);
  console_->Click("cmdCancelSysInf");
  EXPECT_EQ(Caption(), "Retrieve System Data");
  EXPECT_THAT(Summary(), StartsWith("Cancelled. "));
  EXPECT_THAT(Summary(), EndsWith(" The line was lost meanwhile: tables may be missing"));
  EXPECT_TRUE(ConsoleProcess::WaitFor([this] { return console_->LinkText() == kConnected; }));
  CloseRetrieval();
  EXPECT_TRUE(console_->IsShown("frmXmap"));
  EXPECT_THAT(console_->Boxes(), IsEmpty());
  EXPECT_EQ(console_->Terminate(), 0);
}

TEST_F(RetrievalTest, NoiseBetweenMessagesIsOutlived) {
  StartBoth(16, {"--baud", "0"});
  simulator_->Command("gap-noise 50");
  BeginRetrieval();
  ASSERT_TRUE(WaitForCompletion());
  simulator_->Command("gap-noise 0");
  CloseRetrieval();
  EXPECT_EQ(console_->Terminate(), 0);
  EXPECT_EQ(ReadTables(database_, 16), HeldTables(16));
}

// Nothing comes past an unknown code until the line is opened anew.
TEST_F(RetrievalTest, ABlockedLineLeavesItWaitingAndTheNextOneBringsAll) {
  StartBoth(16, {"--baud", "0"});
  OpenRetrieval();
  simulator_->Command("raw E0 00 FF");
  ASSERT_TRUE(ConsoleProcess::WaitFor([this] { return console_->IsShown("aidBlockedCode"); }));
  console_->Click("cmdOkSysInf");
  ASSERT_TRUE(simulator_->WaitForLine("tx table buttons 16"));
  EXPECT_THAT(History(), IsEmpty());
  EXPECT_EQ(Caption(), "Retrieve System Data");
  console_->Click("cmdCancelSysInf");
  simulator_->Command("unplug");
  EXPECT_TRUE(
      ConsoleProcess::WaitFor([this] { return console_->LinkText() == "Not Connected - COM 1"; }));
  simulator_->Command("replug");
  EXPECT_TRUE(ConsoleProcess::WaitFor([this] { return console_->LinkText() == kConnected; }));
  console_->Click("cmdOkSysInf");
  ASSERT_TRUE(WaitForCompletion());
  CloseRetrieval();
  EXPECT_EQ(console_->Terminate(), 0);
  EXPECT_EQ(ReadTables(database_, 16), HeldTables(16));
}

// The line is held between two tables, so that the act is in the middle whatever the machine does:
// it goes on in short pieces only, and stands while it is looked at.  In such a piece, and in the
// second that a line may catch up with, less comes than lies between the first table and the last
// of the outputs.
TEST_F(RetrievalTest, WhatIsTakenBackInTheMiddleIsOverwrittenByTheTablesBehindIt) {
  constexpr auto kPiece = 20ms;
  StartBoth(16, {"--baud", "4800"});
  const std::vector<std::string> held = HeldTables(16);
  const int before = console_->Mark(16, 1);
  ASSERT_TRUE(before == 0 || before == 2);
  console_->Use("ID_ToggleInhibit", 16, 1);
  ASSERT_TRUE(ConsoleProcess::WaitFor([&] { return console_->Mark(16, 1) == 2 - before; }));
  OpenRetrieval();
  ASSERT_EQ(kill(simulator_->Id(), SIGSTOP), 0);
  console_->Click("cmdOkSysInf");
  const auto goOn = [&] {
    kill(simulator_->Id(), SIGCONT);
    std::this_thread::sleep_for(kPiece);
    kill(simulator_->Id(), SIGSTOP);
    return !ReceivedTables().empty();
  };
  ASSERT_TRUE(ConsoleProcess::WaitFor(goOn, 60s));
  console_->Trigger("aidUndo");
  EXPECT_TRUE(ConsoleProcess::WaitFor(
      [this] { return console_->Property("aidRedo", "enabled").toBool(); }));
  EXPECT_THAT(History(), Not(Contains(StartsWith("Output 16 Inhibit Map|"))));
  ASSERT_EQ(kill(simulator_->Id(), SIGCONT), 0);
  ASSERT_TRUE(WaitForCompletion());
  CloseRetrieval();
  EXPECT_FALSE(IsUnsentShown()) << "the switcher holds all of it";
  EXPECT_THAT(console_->Boxes(), IsEmpty());
  console_->Kill();

  // What was edited is in the journal as well as what came in around it.
  StartConsole();
  ASSERT_TRUE(ConsoleProcess::WaitFor([this] { return console_->IsShown("aidRestore"); }));
  console_->Click("aidRestore");
  ASSERT_TRUE(ConsoleProcess::WaitFor([this] { return console_->IsShown("aidRestoreAll"); }));
  console_->Click("aidRestoreAll");
  ASSERT_TRUE(ConsoleProcess::WaitFor([this] { return !console_->IsShown("aidRestore"); }));
  EXPECT_THAT(console_->Boxes(), IsEmpty());
  EXPECT_EQ(console_->Terminate(), 0);
  EXPECT_EQ(ReadTables(database_, 16), held);
}

// The switcher holds what was edited, so that its table leaves the edit as it is.
TEST_F(RetrievalTest, WhatIsTakenBackBehindItsTableStaysAndIsUnsent) {
  StartBoth(64, {"--baud", "19200"});
  const std::string before = ReadField(database_, 1, "Inhibits");
  const int mark = console_->Mark(1, 1);
  ASSERT_TRUE(mark == 0 || mark == 2);
  console_->Use("ID_ToggleInhibit", 1, 1);
  ASSERT_TRUE(ConsoleProcess::WaitFor([&] { return console_->Mark(1, 1) == 2 - mark; }));
  std::string command = "inhibits 1";
  if (mark == 0) command += " 1";
  for (std::size_t input = 2; input <= before.size(); ++input) {
    if (before[input - 1] == '1') command += " " + std::to_string(input);
  }
  ASSERT_THAT(simulator_->Command(command), StartsWith("ok"));
  BeginRetrieval();
  ASSERT_TRUE(ConsoleProcess::WaitFor(
      [this] { return !History().empty() && History().back().starts_with("Output "); }, 60s));
  ASSERT_EQ(kill(simulator_->Id(), SIGSTOP), 0);
  console_->Trigger("aidUndo");
  EXPECT_TRUE(ConsoleProcess::WaitFor(
      [this] { return console_->Property("aidRedo", "enabled").toBool(); }));
  ASSERT_EQ(kill(simulator_->Id(), SIGCONT), 0);
  ASSERT_TRUE(WaitForCompletion());
  CloseRetrieval();
  EXPECT_TRUE(ConsoleProcess::WaitFor([this] { return IsUnsentShown(); }));
  EXPECT_EQ(console_->Mark(1, 1), mark);
  EXPECT_THAT(console_->Boxes(), IsEmpty());
  EXPECT_EQ(console_->Terminate(), 0);
  std::vector<std::string> expected = HeldTables(64);
  const auto line = std::ranges::find_if(
      expected, [](const std::string& each) { return each.starts_with("1 Inhibits="); });
  ASSERT_NE(line, expected.end());
  *line = "1 Inhibits=" + before;
  EXPECT_EQ(ReadTables(database_, 64), expected);
}

TEST_F(RetrievalTest, ClosingTheMainWindowEndsTheProgram) {
  StartBoth(64, {});
  BeginRetrieval();
  ASSERT_TRUE(ConsoleProcess::WaitFor([this] { return History().size() > 5; }, 60s));
  console_->CloseWindow("frmMain");
  EXPECT_EQ(console_->WaitForEnd(), 0);
  EXPECT_FALSE(std::filesystem::exists(folder_ / "WorkingDb.md$"));
  // What had come is kept.
  EXPECT_EQ(ReadField(database_, 1, "Label"), ReadField(held_, 1, "Label"));
  StartConsole();
  EXPECT_TRUE(console_->IsShown("frmXmap"));
}

}  // namespace
}  // namespace test
