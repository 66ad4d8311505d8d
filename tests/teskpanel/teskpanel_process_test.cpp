// SPDX-License-Identifier: MIT
//
// The real program on a real socket, seen from the console's end of it.

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <QCoreApplication>
#include <chrono>

#include "tests/support/fake_console.h"
#include "tests/support/panel_process.h"

namespace test {
namespace {

using std::chrono::milliseconds;
using std::chrono::steady_clock;
using testing::HasSubstr;
using testing::StartsWith;
using namespace std::chrono_literals;

constexpr char kAsk[] = "81 00 00 FF";
constexpr char kReply[] = "81 1E 1E FF F5";
constexpr char kAskForMap[] = "F2 00 01 00 00 00 00 00 00 01 FF F5";
constexpr char kWatchMap[] = "F2 00 01 00 00 00 00 00 00 01 FF";
constexpr char kNothingMade[] = "F6 00 02 00 00 00 00 00 00 00 00 00 02 FF";
constexpr char kOneHearsTwo[] = "F6 00 02 00 00 00 01 00 00 01 00 00 00 00 04 FF";
constexpr char kMapLines[] = "output 1: 2\n2 outputs, 1 crosspoints\n";

constexpr int kDone = 0;
constexpr int kNoConnection = 1;
constexpr int kUsage = 2;
constexpr int kNotServed = 3;
constexpr int kLinkDown = 4;
constexpr int kNoAnswer = 5;
constexpr int kNotConfirmed = 6;

class ProcessTest : public testing::Test {
 protected:
  // Takes the panel's connection and serves it.
  void Serve(const char* linkAnswer = "F4") {
    ASSERT_TRUE(console_.Accept());
    console_.Send(kAsk);
    ASSERT_EQ(console_.Receive(5), kReply);
    console_.Send(linkAnswer);
  }

  // Serves a panel that shows the map, up to its request.
  void ServeMap() {
    Serve();
    ASSERT_EQ(console_.Receive(12), kAskForMap);
    console_.Send("F4");
  }

  std::string Where() const { return "teskpanel: 127.0.0.1:" + std::to_string(console_.Port()); }

  int argc_ = 0;
  QCoreApplication application_{argc_, nullptr};
  FakeConsole console_;
};

TEST_F(ProcessTest, ShowsTheMap) {
  PanelProcess panel(console_.Port(), {"map"});
  ServeMap();
  console_.Send(kOneHearsTwo);
  EXPECT_EQ(panel.Wait(), kDone);
  EXPECT_EQ(panel.Output(), kMapLines);
  EXPECT_EQ(panel.Errors(), "");
  EXPECT_TRUE(console_.WaitForClose());
}

TEST_F(ProcessTest, AnswersThatComeCutByteByByte) {
  PanelProcess panel(console_.Port(), {"map"});
  ServeMap();
  for (const char* byte : {"F6", "00", "02", "00", "00", "00", "01", "00", "00", "01", "00", "00",
                           "00", "00", "04", "FF"}) {
    console_.Send(byte);
    EXPECT_EQ(console_.Receive(1, 5ms), "");  // lets it read
  }
  EXPECT_EQ(panel.Wait(), kDone);
  EXPECT_EQ(panel.Output(), kMapLines);
}

TEST_F(ProcessTest, SaysWhatTypeItIs) {
  PanelProcess panel(console_.Port(), {"--type", "lrm", "map"});
  ASSERT_TRUE(console_.Accept());
  console_.Send(kAsk);
  EXPECT_EQ(console_.Receive(5), "81 0A 0A FF F5");
}

TEST_F(ProcessTest, ATypeThatIsRefused) {
  PanelProcess panel(console_.Port(), {"--type", "20", "--timeout", "1", "map"});
  ASSERT_TRUE(console_.Accept());
  console_.Send(kAsk);
  EXPECT_EQ(console_.Receive(5), "81 14 14 FF F5");
  console_.Send(kOneHearsTwo);  // what all are told
  EXPECT_EQ(panel.Wait(), kNotServed);
  EXPECT_EQ(panel.Output(), "");
  EXPECT_EQ(panel.Errors(), Where() + ": the console does not serve panels of type 20\n");
}

TEST_F(ProcessTest, AConsoleWithoutASwitcher) {
  PanelProcess panel(console_.Port(), {"labels"});
  Serve("F1");
  EXPECT_EQ(panel.Wait(), kLinkDown);
  EXPECT_EQ(panel.Errors(), "teskpanel: the console has no switcher connected\n");
}

TEST_F(ProcessTest, ABadChecksum) {
  PanelProcess panel(console_.Port(), {"map"});
  ServeMap();
  console_.Send("F6 00 02 00 00 00 01 00 00 01 00 00 00 00 05 FF");
  EXPECT_EQ(panel.Wait(), kNoConnection);
  EXPECT_EQ(panel.Output(), "");
  EXPECT_EQ(panel.Errors(),
            Where() + ": this is no console: a frame of type 0xF6 has a wrong checksum\n");
}

TEST_F(ProcessTest, AFrameCutShort) {
  PanelProcess panel(console_.Port(), {"map"});
  ServeMap();
  console_.Send("F6 00 02 00 00 00 01 00");
  console_.Close();
  EXPECT_EQ(panel.Wait(), kNoConnection);
  EXPECT_EQ(panel.Output(), "");
  EXPECT_THAT(panel.Errors(), StartsWith(Where() + ": "));
}

TEST_F(ProcessTest, AReset) {
  PanelProcess panel(console_.Port(), {"map"});
  ServeMap();
  console_.Reset();
  EXPECT_EQ(panel.Wait(), kNoConnection);
  EXPECT_THAT(panel.Errors(), StartsWith(Where() + ": "));
}

TEST_F(ProcessTest, AnAnswerRightBeforeTheEndCounts) {
  PanelProcess panel(console_.Port(), {"map"});
  ServeMap();
  console_.Send(kOneHearsTwo);
  console_.Close();
  EXPECT_EQ(panel.Wait(), kDone);
  EXPECT_EQ(panel.Output(), kMapLines);
}

TEST_F(ProcessTest, SomethingElseListens) {
  PanelProcess panel(console_.Port(), {"map"});
  ASSERT_TRUE(console_.Accept());
  console_.Send("53 53 48 2D 32 2E 30");
  EXPECT_EQ(panel.Wait(), kNoConnection);
  EXPECT_EQ(panel.Errors(),
            Where() + ": this is no console: 0x53 stands where a frame should begin\n");
}

TEST_F(ProcessTest, ASilentListener) {
  PanelProcess panel(console_.Port(), {"map", "--timeout", "1"});
  ASSERT_TRUE(console_.Accept());
  EXPECT_EQ(panel.Wait(), kNoConnection);
  EXPECT_EQ(panel.Errors(), Where() + ": this is no console: it does not ask who is there\n");
}

TEST_F(ProcessTest, NobodyListens) {
  console_.StopListening();
  PanelProcess panel(console_.Port(), {"map"});
  EXPECT_EQ(panel.Wait(), kNoConnection);
  EXPECT_EQ(panel.Errors(), Where() + ": Connection refused\n");
}

TEST_F(ProcessTest, ASlowConsoleWithinItsTimeAndBeyond) {
  PanelProcess patient(console_.Port(), {"map", "--timeout", "10"});
  ServeMap();
  EXPECT_EQ(console_.Receive(1, 1200ms), "");
  console_.Send(kOneHearsTwo);
  EXPECT_EQ(patient.Wait(), kDone);

  PanelProcess panel(console_.Port(), {"map", "--timeout", "1"});
  ServeMap();
  EXPECT_EQ(panel.Wait(), kNoAnswer);
  EXPECT_EQ(panel.Errors(), Where() + ": the console does not answer\n");
}

TEST_F(ProcessTest, ATakeIsConfirmedByItsRow) {
  PanelProcess panel(console_.Port(), {"--json", "take", "1", "2", "call"});
  Serve();
  ASSERT_EQ(console_.Receive(11), "F2 00 01 00 00 00 00 00 00 01 FF");
  console_.Send(kNothingMade);
  EXPECT_EQ(console_.Receive(10), "FE 25 01 00 00 01 00 27 FF F5");
  console_.Send("F4");
  console_.Send("F6 00 01 00 00 00 01 00 00 01 00 03 FF");
  EXPECT_EQ(panel.Wait(), kDone);
  EXPECT_EQ(panel.Output(), "{\"event\":\"take\",\"output\":1,\"input\":2,\"made\":true}\n");
}

TEST_F(ProcessTest, ATakeThatIsNotConfirmed) {
  PanelProcess panel(console_.Port(), {"take", "1", "2", "--timeout", "1"});
  Serve();
  console_.Receive(11);
  console_.Send(kNothingMade);
  console_.Receive(10);
  console_.Send("F4");
  EXPECT_EQ(panel.Wait(), kNotConfirmed);
  EXPECT_EQ(panel.Errors(), Where() + ": the switcher does not report the crosspoint as asked\n");
}

TEST_F(ProcessTest, WatchConnectsAgainAndShowsWhatChangedMeanwhile) {
  PanelProcess panel(console_.Port(), {"watch"});
  Serve();
  ASSERT_EQ(console_.Receive(11), kWatchMap);
  console_.Send(kOneHearsTwo);
  EXPECT_EQ(panel.WaitForLine("output"), "output 1: 2");
  const auto lost = steady_clock::now();
  console_.Reset();
  const auto note = panel.WaitForLine("not connected");
  ASSERT_TRUE(note.has_value());
  EXPECT_THAT(*note, HasSubstr("next try in 500 ms"));

  Serve();
  EXPECT_GE(steady_clock::now() - lost, 490ms);
  ASSERT_EQ(console_.Receive(11), kWatchMap);
  console_.Send(kNothingMade);
  EXPECT_EQ(panel.WaitForLine("output"), "output 1: nothing");

  // The wait begins anew with each connection that served.
  console_.Close();
  const auto again = panel.WaitForLine("not connected");
  ASSERT_TRUE(again.has_value());
  EXPECT_THAT(*again, HasSubstr("next try in 500 ms"));
}

TEST_F(ProcessTest, WatchWaitsLongerEachTimeAndGivesUpWhenTold) {
  console_.StopListening();
  PanelProcess panel(console_.Port(), {"--json", "watch", "--tries", "3"});
  EXPECT_EQ(panel.WaitForLine("disconnected"),
            "{\"event\":\"disconnected\",\"reason\":\"Connection refused\",\"retry_ms\":500}");
  EXPECT_EQ(panel.WaitForLine("disconnected"),
            "{\"event\":\"disconnected\",\"reason\":\"Connection refused\",\"retry_ms\":1000}");
  EXPECT_EQ(panel.Wait(), kNoConnection);
  EXPECT_EQ(panel.Output(), "");
  EXPECT_EQ(panel.Errors(), Where() + ": Connection refused\n");
}

TEST_F(ProcessTest, WatchNoticesAConsoleThatHasStopped) {
  PanelProcess panel(console_.Port(), {"watch", "--timeout", "1"});
  Serve();
  ASSERT_EQ(console_.Receive(11), kWatchMap);
  console_.Send(kOneHearsTwo);
  ASSERT_EQ(console_.Receive(1), "F5");
  console_.Send("F4");
  ASSERT_EQ(console_.Receive(1), "F5");
  const auto note = panel.WaitForLine("not connected");
  ASSERT_TRUE(note.has_value());
  EXPECT_THAT(*note, HasSubstr("the console does not answer"));
  EXPECT_TRUE(console_.WaitForClose());
}

TEST_F(ProcessTest, WatchStartsAnewAfterADamagedFrame) {
  PanelProcess panel(console_.Port(), {"watch"});
  Serve();
  console_.Send("F6 00 01 F4");
  const auto note = panel.WaitForLine("not connected");
  ASSERT_TRUE(note.has_value());
  EXPECT_THAT(*note, HasSubstr("0xF4 stands within a frame of type 0xF6"));
  Serve();
  console_.Send(kOneHearsTwo);
  EXPECT_EQ(panel.WaitForLine("output"), "output 1: 2");
}

TEST_F(ProcessTest, OutputThatCannotBeWrittenEndsIt) {
  PanelProcess panel(console_.Port(), {"watch"}, "/dev/full");
  Serve();
  EXPECT_EQ(panel.Wait(), kNoConnection);
  EXPECT_EQ(panel.Errors(), "teskpanel: the output cannot be written\n");
}

TEST_F(ProcessTest, AFloodWithoutAnEndIsCutOff) {
  PanelProcess panel(console_.Port(), {"watch", "--tries", "1"});
  Serve();
  ASSERT_EQ(console_.Receive(11), kWatchMap);
  console_.Send("F6");
  const std::vector<std::uint8_t> megabyte(std::size_t{1} << 20, 0);
  bool cutOff = false;
  for (int i = 0; i < 64 && !cutOff; ++i) cutOff = !console_.SendBytes(megabyte);
  EXPECT_TRUE(cutOff);
  EXPECT_EQ(panel.Wait(), kNoConnection);
  EXPECT_EQ(panel.Errors(), Where() + ": this is no console: a frame of type 0xF6 does not end\n");
}

TEST_F(ProcessTest, AWrongCommandLine) {
  PanelProcess panel(console_.Port(), {"take", "6"});
  EXPECT_EQ(panel.Wait(), kUsage);
  EXPECT_EQ(panel.Errors(), "teskpanel: usage: take OUT IN [ACTION]; --help explains\n");
}

TEST_F(ProcessTest, HelpEndsWithZero) {
  PanelProcess panel(console_.Port(), {"--help"});
  EXPECT_EQ(panel.Wait(), kDone);
  EXPECT_THAT(panel.Output(), StartsWith("Usage: teskpanel "));
}

}  // namespace
}  // namespace test
