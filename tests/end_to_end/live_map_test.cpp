// SPDX-License-Identifier: MIT
//
// The main job, with the real console on the real simulated switcher: bytes on the line to
// marks on the screen, and back.

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>

#include "tests/end_to_end/console_process.h"
#include "tests/support/simulator_process.h"

namespace test {
namespace {

using testing::HasSubstr;
using testing::StartsWith;
using namespace std::chrono_literals;

constexpr int kNone = 0;
constexpr int kInhibit = 2;
constexpr int kPriority = 3;

constexpr char kNotConnected[] = "Not Connected - COM 1";

class LiveMapTest : public testing::Test {
 protected:
  // Starts the console and waits until it has the whole map: only then does it ask for the
  // tally.
  void Start() {
    console_ = std::make_unique<ConsoleProcess>(folder_);
    ASSERT_TRUE(console_->IsUp());
    ASSERT_TRUE(simulator_.WaitForLine("rx poll tally"));
  }

  void SetUp() override { folder_.WriteSettings(line_); }

  // The mark of a crosspoint becomes `mark`.
  void ExpectMark(int output, int input, int mark) {
    EXPECT_TRUE(ConsoleProcess::WaitFor([&] { return console_->Mark(output, input) == mark; }))
        << "output " << output << " input " << input << " shows " << console_->Mark(output, input);
  }

  void ExpectLinkText(const char* text) {
    EXPECT_TRUE(ConsoleProcess::WaitFor([&] { return console_->LinkText() == text; }))
        << console_->LinkText();
  }

  int argc_ = 0;
  QCoreApplication application_{argc_, nullptr};
  ConsoleFolder folder_;
  std::string line_ = folder_ / "line";
  SimulatorProcess simulator_{{"--log", "--link", line_}};
  std::unique_ptr<ConsoleProcess> console_;
};

TEST_F(LiveMapTest, MapFillsFromTheWire) {
  EXPECT_THAT(simulator_.Command("make 1 2"), StartsWith("ok"));
  EXPECT_THAT(simulator_.Command("make 64 63"), StartsWith("ok"));
  EXPECT_THAT(simulator_.Command("make 5 9 priority"), StartsWith("ok"));
  Start();
  EXPECT_EQ(console_->LinkText(), kConnected);
  ExpectMark(1, 2, kCrosspoint);
  ExpectMark(64, 63, kCrosspoint);
  ExpectMark(5, 9, kPriority);
  EXPECT_EQ(console_->Mark(1, 3), kNone);
  EXPECT_EQ(console_->Mark(1, 1), kInhibit);
  EXPECT_EQ(console_->CellText(2, 0), "Sta. 001");
  EXPECT_EQ(console_->CellText(2, 1), "01");
  EXPECT_EQ(console_->CellText(0, 3), "I\rn\rp\rt\r \r0\r0\r2\r");
  EXPECT_TRUE(console_->Boxes().empty());
}

TEST_F(LiveMapTest, ATakeGoesOutComesBackAndShows) {
  Start();
  console_->Use("ID_Take", 6, 8);
  EXPECT_TRUE(simulator_.WaitForLine("rx take output 6 source 8 action 3"));
  ExpectMark(6, 8, kCrosspoint);

  // The switcher releases the other source; a second take of the same crosspoint sends nothing.
  console_->Use("ID_Take", 6, 9);
  EXPECT_TRUE(simulator_.WaitForLine("rx take output 6 source 9 action 3"));
  ExpectMark(6, 9, kCrosspoint);
  ExpectMark(6, 8, kNone);
  console_->Use("ID_Take", 6, 9);
  console_->Use("ID_Take", 7, 9);
  const auto next = simulator_.WaitForLine("rx take");
  ASSERT_TRUE(next);
  EXPECT_THAT(*next, HasSubstr("output 7 source 9 action 3"));
}

TEST_F(LiveMapTest, ATakeIsTakenBackAfterAQuestion) {
  EXPECT_THAT(simulator_.Command("make 6 8"), StartsWith("ok"));
  EXPECT_THAT(simulator_.Command("make 6 10"), StartsWith("ok"));
  Start();
  ExpectMark(6, 10, kCrosspoint);
  console_->Use("ID_Take", 6, 9);
  EXPECT_TRUE(simulator_.WaitForLine("rx take output 6 source 9 action 3"));
  ExpectMark(6, 9, kCrosspoint);
  ExpectMark(6, 8, kNone);
  console_->Trigger("aidUndoTake", "frmXmap");
  ASSERT_TRUE(ConsoleProcess::WaitFor([&] { return console_->IsShown("aidUndoTakeQuestion"); }));
  EXPECT_EQ(console_->Property("aidUndoTakeQuestion", "text").toString().toStdString(),
            "Out 06: back to In 08, In 10?");
  console_->Click("aidTakeBack");
  // Each when the switcher has reported the one before.
  EXPECT_TRUE(simulator_.WaitForLine("rx take output 6 source 8 action 2"));
  EXPECT_TRUE(simulator_.WaitForLine("rx take output 6 source 10 action 2"));
  EXPECT_TRUE(simulator_.WaitForLine("rx take output 6 source 9 action 0"));
  ExpectMark(6, 8, kCrosspoint);
  ExpectMark(6, 10, kCrosspoint);
  ExpectMark(6, 9, kNone);
  console_->Trigger("aidUndoTake", "frmXmap");
  EXPECT_FALSE(console_->IsShown("aidUndoTakeQuestion")) << "there is nothing more to undo";
  EXPECT_TRUE(console_->Boxes().empty());
}

TEST_F(LiveMapTest, InhibitsOfABlockAreOneStepOfUndo) {
  Start();
  console_->Use("ID_RefreshMap", 6, 8);
  for (int i = 0; i < 2; ++i) {
    console_->Keys("msfgXmap", "Shift+Right");
    console_->Keys("msfgXmap", "Shift+Down");
  }
  console_->Trigger("ID_ToggleInhibit", "frmXmap");
  ASSERT_TRUE(ConsoleProcess::WaitFor([&] { return console_->IsShown("aidInhibitQuestion"); }));
  EXPECT_EQ(console_->Property("aidInhibitQuestion", "text").toString().toStdString(),
            "Inhibit 8 crosspoints?")
      << "one of the nine is a station with itself";
  console_->Click("aidInhibitAll");
  for (int output = 6; output <= 8; ++output) {
    for (int input = 8; input <= 10; ++input) ExpectMark(output, input, kInhibit);
  }
  console_->Trigger("aidUndo");
  for (int output = 6; output <= 8; ++output) {
    for (int input = 8; input <= 10; ++input) {
      ExpectMark(output, input, output == input ? kInhibit : kNone);
    }
  }
  EXPECT_TRUE(console_->Boxes().empty());
}

TEST_F(LiveMapTest, SumsCallsAndListensAreMadeAndBroken) {
  Start();
  console_->Use("ID_Sum", 2, 10);
  EXPECT_TRUE(simulator_.WaitForLine("rx take output 2 source 10 action 2"));
  ExpectMark(2, 10, kCrosspoint);
  console_->Use("ID_Listen", 2, 11);
  EXPECT_TRUE(simulator_.WaitForLine("rx take output 2 source 11 action 2"));
  ExpectMark(2, 11, kCrosspoint);
  console_->Use("ID_Sum", 2, 10);
  EXPECT_TRUE(simulator_.WaitForLine("rx take output 2 source 10 action 0"));
  ExpectMark(2, 10, kNone);

  console_->Use("ID_Call", 3, 20);
  EXPECT_TRUE(simulator_.WaitForLine("rx take output 3 source 20 action 134"));
  ExpectMark(3, 20, kPriority);
  console_->Use("ID_Call", 3, 20);
  EXPECT_TRUE(simulator_.WaitForLine("rx take output 3 source 20 action 132"));
  ExpectMark(3, 20, kNone);
  console_->Use("ID_PriorityListen", 4, 20);
  EXPECT_TRUE(simulator_.WaitForLine("rx take output 4 source 20 action 138"));
  ExpectMark(4, 20, kPriority);
  console_->Use("ID_PriorityListen", 4, 20);
  EXPECT_TRUE(simulator_.WaitForLine("rx take output 4 source 20 action 136"));
  ExpectMark(4, 20, kNone);
}

TEST_F(LiveMapTest, AnInhibitedCrosspointIsRefusedAndNothingIsSent) {
  Start();
  console_->Use("ID_ToggleInhibit", 6, 8);
  ExpectMark(6, 8, kInhibit);
  console_->Use("ID_Take", 6, 8);
  ASSERT_TRUE(ConsoleProcess::WaitFor([&] { return !console_->Boxes().empty(); }));
  EXPECT_EQ(console_->Boxes()[0], (Box{"exclamation", "Control Error",
                                       "Action Not Allowed On Inhibited Crosspoint", ""}));
  console_->CloseBox();
  console_->Use("ID_ToggleInhibit", 6, 8);
  ExpectMark(6, 8, kNone);
  console_->Use("ID_Take", 6, 8);
  const auto take = simulator_.WaitForLine("rx take");
  ASSERT_TRUE(take);
  EXPECT_THAT(*take, HasSubstr("output 6 source 8"));
  ExpectMark(6, 8, kCrosspoint);

  console_->Use("ID_ToggleInhibit", 6, 8);
  ASSERT_TRUE(ConsoleProcess::WaitFor([&] { return !console_->Boxes().empty(); }));
  EXPECT_EQ(console_->Boxes()[0].text, "Inhibit Not Possible With Existing Crosspoint");
}

TEST_F(LiveMapTest, InhibitsReachTheSwitcherWhenSent) {
  Start();
  console_->Use("ID_ToggleInhibit", 6, 8);
  ExpectMark(6, 8, kInhibit);
  console_->Trigger("ID_SendInhibits", "frmXmap");
  EXPECT_TRUE(simulator_.WaitForLine("rx inhibits output 64"));
  EXPECT_EQ(simulator_.Command("inhibits 6"), "ok output 6 inhibits 6 8");
  EXPECT_EQ(simulator_.Command("inhibits 64"), "ok output 64 inhibits 64");
  // The poll goes on afterwards.
  EXPECT_TRUE(simulator_.WaitForLine("rx poll keep-alive"));
}

TEST_F(LiveMapTest, ACrosspointReportedOnAnInhibitedCellIsShownAndWarnedOf) {
  Start();
  simulator_.Command("make 3 3");
  simulator_.Command("send-row 3");
  ExpectMark(3, 3, kCrosspoint);
  ASSERT_TRUE(ConsoleProcess::WaitFor([&] { return !console_->Boxes().empty(); }));
  EXPECT_EQ(console_->Boxes()[0],
            (Box{"exclamation", "Synchronization Warning",
                 "Crosspoint selection received for Inhibited Crosspoint.\n", ""}));
}

// Nothing would ask for the map again, and the call stands all the same.
TEST_F(LiveMapTest, ReportedInhibitsLeaveAStandingCallInSight) {
  simulator_.Command("make 5 9 priority");
  Start();
  ExpectMark(5, 9, kPriority);
  // Output 7: input 2 is inhibited.
  simulator_.Command("raw F5 06 00 02 00 00 00 00 00 00 00 00 00 00 00 00 00 00 00 08 FF");
  ExpectMark(7, 2, kInhibit);
  EXPECT_EQ(console_->Mark(5, 9), kPriority);
  EXPECT_TRUE(console_->Boxes().empty());
}

TEST_F(LiveMapTest, ATakeOfWhatIsMadeAndSentInhibitsAreNoted) {
  simulator_.Command("make 6 8");
  Start();
  ExpectMark(6, 8, kCrosspoint);
  const auto note = [this] {
    return console_->Property("aidNote", "text").toString().toStdString();
  };
  console_->Use("ID_Take", 6, 8);
  EXPECT_TRUE(ConsoleProcess::WaitFor([&] { return note() == "Already made; Sum breaks it"; }));
  console_->Trigger("ID_SendInhibits", "frmXmap");
  EXPECT_TRUE(ConsoleProcess::WaitFor([&] { return note() == "Sent: inhibits, 64 outputs"; }));
  // A switcher that says nothing of it.
  simulator_.Command("silence on");
  console_->Use("ID_Take", 11, 8);
  EXPECT_TRUE(ConsoleProcess::WaitFor([&] { return note() == "No report for Out 11"; }));
}

TEST_F(LiveMapTest, TheLogSaysWhatWasSentAndReportedInWords) {
  simulator_.Command("make 5 9");
  Start();
  console_->Use("ID_Take", 5, 10);
  ExpectMark(5, 10, kCrosspoint);
  simulator_.Command("raw F3 00 00 00 00 00 FF");
  console_->Trigger("ID_About");
  ASSERT_TRUE(ConsoleProcess::WaitFor([this] { return console_->IsShown("frmTeskAbout"); }));
  console_->CloseWindow("frmTeskAbout");
  console_->Trigger("aidEventLog");
  ASSERT_TRUE(ConsoleProcess::WaitFor([this] { return console_->IsShown("frmEventLog"); }));
  const auto lines = [this] {
    std::vector<std::string> all = console_->Rows("aidLogLines");
    for (std::string& line : all) line.erase(0, line.find('|') + 1);
    return all;
  };
  EXPECT_TRUE(ConsoleProcess::WaitFor([&] {
    const auto all = lines();
    return std::find(all.begin(), all.end(), "Link|Refused: Output 1 Crosspoint Map, Size Error") !=
           all.end();
  }));
  EXPECT_THAT(lines(), testing::IsSupersetOf({
                           "Map|Sta. 005: + Inpt 009",  // while the map was loading
                           "Command|Take: Sta. 005 < Inpt 010",
                           "Map|Sta. 005: + Inpt 010, − Inpt 009",
                           "Command|About Orvo Intercom Control",
                       }));
}

TEST_F(LiveMapTest, RefreshAsksForTheWholeMapAgain) {
  Start();
  simulator_.Command("make 10 11");
  EXPECT_EQ(console_->Mark(10, 11), kNone);
  console_->Trigger("ID_RefreshMap", "frmXmap");
  EXPECT_TRUE(simulator_.WaitForLine("rx poll map"));
  ExpectMark(10, 11, kCrosspoint);
}

TEST_F(LiveMapTest, SilenceLosesTheLinkAndAnAnswerBringsItBack) {
  const auto lamp = [this] { return console_->Property("aidLinkLamp", "connected").toBool(); };
  Start();
  ASSERT_TRUE(simulator_.WaitForLine("rx poll keep-alive"));
  EXPECT_TRUE(lamp());
  simulator_.Command("silence on");
  ExpectLinkText(kNotConnected);
  EXPECT_FALSE(lamp());
  simulator_.Command("silence off");
  ExpectLinkText(kConnected);
  EXPECT_TRUE(lamp());
}

TEST_F(LiveMapTest, APulledLineComesBackWithAFreshMap) {
  Start();
  simulator_.Command("unplug");
  ExpectLinkText(kNotConnected);
  simulator_.Command("make 12 13");
  simulator_.Command("replug");
  EXPECT_TRUE(simulator_.WaitForLine("rx poll map"));
  ExpectLinkText(kConnected);
  ExpectMark(12, 13, kCrosspoint);
  EXPECT_TRUE(console_->Boxes().empty());
}

TEST_F(LiveMapTest, ALinePulledInTheMiddleOfAMessageLosesNothingElse) {
  Start();
  simulator_.Command("raw F3 00 00 00 00");
  simulator_.Command("unplug");
  ExpectLinkText(kNotConnected);
  simulator_.Command("make 1 2");
  simulator_.Command("replug");
  ExpectMark(1, 2, kCrosspoint);
}

TEST_F(LiveMapTest, NoiseAndBrokenMessagesAreOutlived) {
  simulator_.Command("make 20 21");
  simulator_.Command("data-noise 200");
  simulator_.Command("bad-checksum 7");
  Start();
  console_->Use("ID_Take", 30, 31);
  EXPECT_TRUE(simulator_.WaitForLine("rx take output 30 source 31"));
  // Rows that were hit are missing; on a quiet line a refresh brings them.
  simulator_.Command("bad-checksum 0");
  simulator_.Command("data-noise 0");
  console_->Trigger("ID_RefreshMap", "frmXmap");
  ExpectMark(20, 21, kCrosspoint);
  ExpectMark(30, 31, kCrosspoint);
  EXPECT_TRUE(console_->Boxes().empty());
}

TEST_F(LiveMapTest, AnUnknownCodeIsNamedInTheStatusBar) {
  Start();
  simulator_.Command("raw E0 00 FF");
  EXPECT_TRUE(ConsoleProcess::WaitFor([&] {
    return console_->Property("aidBlockedCode", "text").toString().contains(QStringLiteral("0xE0"));
  }));
  // The line opened anew frees the way.
  simulator_.Command("unplug");
  ExpectLinkText(kNotConnected);
  simulator_.Command("make 7 8");
  simulator_.Command("replug");
  ExpectMark(7, 8, kCrosspoint);
}

TEST_F(LiveMapTest, ABlockingByteIsDiscardedOnCommand) {
  const auto blocked = [this](const char* byte) {
    return ConsoleProcess::WaitFor([&] {
      return console_->Property("aidDiscardByte", "enabled").toBool() &&
             console_->Property("aidDiscardByte", "text").toString().endsWith(QLatin1String(byte));
    });
  };
  Start();
  ASSERT_TRUE(simulator_.WaitForLine("rx poll keep-alive"));
  EXPECT_FALSE(console_->Property("aidDiscardByte", "enabled").toBool());
  // An unknown message; behind it output 7 hears input 8.
  simulator_.Command("make 7 8");
  simulator_.Command("raw CD 00 01 FF");
  simulator_.Command("send-row 7");
  ASSERT_TRUE(blocked("0xCD"));
  // The link goes on meanwhile, and nothing is discarded by itself.
  ASSERT_TRUE(simulator_.WaitForLine("rx poll keep-alive"));
  ASSERT_TRUE(simulator_.WaitForLine("rx poll keep-alive"));
  EXPECT_EQ(console_->Mark(7, 8), kNone);
  console_->Trigger("aidDiscardByte");
  // The rest of that message is data bytes, which go, and the end byte.
  ASSERT_TRUE(blocked("0xFF"));
  EXPECT_EQ(console_->Mark(7, 8), kNone);
  console_->Trigger("aidDiscardByte");
  ExpectMark(7, 8, kCrosspoint);
  EXPECT_FALSE(console_->Property("aidDiscardByte", "enabled").toBool());
  // Only the hint is left that this switcher never had these tables.
  EXPECT_FALSE(console_->Property("aidHintText", "text").toString().contains(u"0xFF"));
  EXPECT_EQ(console_->LinkText(), kConnected);
}

}  // namespace
}  // namespace test
