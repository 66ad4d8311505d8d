// SPDX-License-Identifier: MIT
//
// What panels take, on its way to the switcher.

#include "gateway/panel_takes.h"

#include "tests/gateway/gateway_fixture.h"

namespace gateway {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

class PanelTakesTest : public GatewayTest {
 protected:
  // The line takes bytes and has not sent them yet.
  void HoldLine() { port_.sendsAtOnce = false; }

  // Makes the line send all, and returns what that was, the destination of each take.
  std::string Destinations() {
    std::string bytes = port_.TakeWritten();
    port_.unsent = 0;
    std::string destinations;
    for (; bytes.size() >= 26; bytes.erase(0, std::min<std::size_t>(27, bytes.size()))) {
      destinations += bytes.substr(15, 3);
    }
    return destinations;
  }
};

TEST_F(PanelTakesTest, ATakeReachesTheSwitcher) {
  const auto panel = ConnectPanel();
  panel->Send("FE 20 00 05 00 07 00 2C FF");
  Tick();
  EXPECT_THAT(Connection(1).RxData, IsEmpty());
  EXPECT_EQ(port_.TakeWritten(), "FD 00 00 07 00 05 00 0C FF");
  panel->Send("FE 22 00 05 00 07 00 2E FF");  // 34 is the same as 32
  Tick();
  EXPECT_EQ(port_.TakeWritten(), "FD 00 00 07 00 05 00 0C FF");
  panel->Send("FE 24 00 05 00 07 00 30 FF");
  Tick();
  EXPECT_EQ(port_.TakeWritten(), "FD 02 00 07 00 05 00 0E FF");
  panel->Send("FE 25 01 07 00 00 00 2D FF");  // 165, a call
  Tick();
  EXPECT_EQ(port_.TakeWritten(), "FD 06 01 00 00 07 00 0D FF");
  timer_.ElapseAll();
  EXPECT_EQ(panel->TakeWritten(), "");
  EXPECT_THAT(reporter_.reports, IsEmpty());
}

// It is served otherwise.
TEST_F(PanelTakesTest, ATakeOfOneThatMayNotIsIgnored) {
  const auto panel = ConnectPanel();
  mayNotTake_ = {"10.0.0.7"};
  panel->Send("FE 20 00 05 00 07 00 2C FF");
  Tick();
  EXPECT_EQ(port_.TakeWritten(), "");
  EXPECT_EQ(events_.lines.back(), "1 10.0.0.7 may not take 6");
  panel->Send("F5");
  Tick();
  timer_.ElapseAll();
  EXPECT_EQ(panel->TakeWritten(), "F4");
}

TEST_F(PanelTakesTest, ATakeOutsideTheSystemIsForTheSwitcherToJudge) {
  const auto panel = ConnectPanel();
  const std::pair<const char*, const char*> kTakes[] = {
      {"FE 20 00 08 00 07 00 2F FF", "FD 00 00 07 00 08 00 0F FF"},  // destination 9 of 8
      {"FE 20 00 07 00 08 00 2F FF", "FD 00 00 08 00 07 00 0F FF"},  // source 9 of 8
      {"FE 20 00 7F 01 7F 01 20 FF", "FD 00 00 7F 01 7F 01 7E FF"},  // 256 and 256
  };
  for (const auto& [frame, message] : kTakes) {
    panel->Send(frame);
    Tick();
    EXPECT_EQ(port_.TakeWritten(), message) << frame;
  }
}

TEST_F(PanelTakesTest, ATakeThatEightBitsMakeAnotherIsIgnored) {
  const auto panel = ConnectPanel();
  panel->Send("FE 20 00 00 02 07 00 29 FF");  // destination 257, which eight bits make 1
  panel->Send("FE 20 00 07 00 07 02 30 FF");  // source 264, which eight bits make 8
  panel->Send("FE 24 00 7F 7F 07 00 29 FF");  // destination 16384, which eight bits make 256
  Ticks(3);
  EXPECT_EQ(port_.TakeWritten(), "");
  EXPECT_THAT(Connection(1).RxData, IsEmpty());
  panel->Send("FE 20 00 07 00 07 00 2E FF");
  Tick();
  EXPECT_EQ(port_.TakeWritten(), "FD 00 00 07 00 07 00 0E FF");
}

TEST_F(PanelTakesTest, ATakeDoesNotAskForTheLink) {
  const auto panel = ConnectPanel();
  model_.LinkStatus[0] = 0;
  panel->Send("FE 20 00 05 00 07 00 2C FF");
  Tick();
  EXPECT_EQ(port_.TakeWritten(), "FD 00 00 07 00 05 00 0C FF");
}

TEST_F(PanelTakesTest, ABadTakeIsIgnoredSilently) {
  const auto panel = ConnectPanel();
  panel->Send("FE 20 00 05 00 07 00 2D FF");
  panel->Send("FE 20 00 05 00 07 00 00 2C FF");
  panel->Send("FE 20 05 07 2C FF");
  Ticks(3);
  EXPECT_EQ(port_.TakeWritten(), "");
  EXPECT_THAT(Connection(1).RxData, IsEmpty());
  EXPECT_THAT(reporter_.reports, IsEmpty());
}

TEST_F(PanelTakesTest, OnAnOutputThatIsLockedForPanelsAreIgnored) {
  const auto panel = ConnectPanel();
  locks_.LockOutput(6, model::Locks::Against::ConsoleAndPanels);
  locks_.LockOutput(7, model::Locks::Against::Console);
  locks_.LockConsole(true);
  events_.lines.clear();
  panel->Send("FE 20 00 05 00 07 00 2C FF");  // output 6
  panel->Send("FE 20 00 06 00 07 00 2D FF");  // output 7
  Ticks(3);
  EXPECT_EQ(port_.TakeWritten(), "FD 00 00 07 00 06 00 0D FF");
  EXPECT_THAT(events_.lines, ElementsAre("1 10.0.0.7 ignored 6 8", "1 10.0.0.7 took 7 8 0"));
  EXPECT_EQ(panel->TakeWritten(), "");
  locks_.UnlockOutput(6);
  panel->Send("FE 20 00 05 00 07 00 2C FF");
  Tick();
  EXPECT_EQ(port_.TakeWritten(), "FD 00 00 07 00 05 00 0C FF");
}

TEST_F(PanelTakesTest, WaitWhileTheLineIsBehind) {
  const auto panel = ConnectPanel();
  port_.unsent = 248;
  panel->Send("FE 20 00 05 00 07 00 2C FF");
  EXPECT_TRUE(Tick());
  EXPECT_TRUE(Tick()) << "there is work as long as one waits";
  EXPECT_EQ(port_.TakeWritten(), "");
  port_.unsent = 247;
  EXPECT_TRUE(Tick());
  EXPECT_EQ(port_.TakeWritten(), "FD 00 00 07 00 05 00 0C FF");
  EXPECT_FALSE(Tick());
}

TEST_F(PanelTakesTest, WaitForThePoll) {
  const auto panel = ConnectPanel();
  untilPoll_ = std::chrono::milliseconds(20);
  panel->Send("FE 20 00 05 00 07 00 2C FF");
  Ticks(10);
  EXPECT_EQ(port_.TakeWritten(), "");
  untilPoll_ = std::chrono::milliseconds(1000);
  Tick();
  EXPECT_EQ(port_.TakeWritten(), "FD 00 00 07 00 05 00 0C FF");
}

TEST_F(PanelTakesTest, NeverStandLongBeforeTheLine) {
  HoldLine();
  std::vector<std::shared_ptr<test::FakePeer>> panels;
  for (int i = 0; i < 64; ++i) panels.push_back(ConnectPanel());
  for (int i = 0; i < 20; ++i) {
    for (const auto& panel : panels) panel->Send("FE 20 00 05 00 07 00 2C FF");
    Tick();
  }
  EXPECT_EQ(port_.unsent, 252U) << "one more would have the port wait";
}

TEST_F(PanelTakesTest, HoldUpNothingElseOfTheirPanel) {
  AddStations();
  const auto panel = ConnectPanel();
  port_.unsent = 256;
  panel->Send("FE 20 00 05 00 07 00 2C FF F5 FE 20 00 06 00 07 00 2D FF");
  panel->Send("F2 00 01 00 00 00 00 00 00 01 FF");
  Ticks(4);
  timer_.ElapseAll();
  EXPECT_EQ(
      panel->TakeWritten(),
      "F4 F6 00 08 00 00 00 00 00 00 00 00 00 00 00 00 00 00 00 00 00 00 00 00 00 00 00 00 00 "
      "00 00 08 FF");
  port_.unsent = 0;
  Ticks(2);
  EXPECT_EQ(Destinations(), "05 06 ");
}

TEST_F(PanelTakesTest, GoInTheirOrderAndPanelByPanel) {
  const auto first = ConnectPanel();
  const auto second = ConnectPanel();
  const auto third = ConnectPanel();
  port_.unsent = 256;
  first->Send("FE 20 00 00 00 07 00 27 FF FE 20 00 01 00 07 00 28 FF");
  second->Send("FE 20 00 02 00 07 00 29 FF FE 20 00 03 00 07 00 2A FF");
  third->Send("FE 20 00 04 00 07 00 2B FF FE 20 00 05 00 07 00 2C FF");
  Ticks(2);
  HoldLine();
  std::string destinations;
  for (int i = 0; i < 6; ++i) {
    port_.unsent = 240;  // there is room for one
    Tick();
    destinations += Destinations();
  }
  EXPECT_EQ(destinations, "00 02 04 01 03 05 ");
  EXPECT_FALSE(Tick());
}

TEST_F(PanelTakesTest, AreNeverThrownAwayAndFillNoMemory) {
  const auto panel = ConnectPanel();
  port_.unsent = 256;
  for (int i = 0; i < 20000; ++i) panel->Send("FE 20 00 05 00 07 00 2C FF");
  Ticks(30000);
  EXPECT_LE(Connection(1).Undecoded(), 65536U);
  EXPECT_TRUE(Connection(1).Connected);
  EXPECT_THAT(reporter_.reports, IsEmpty());
  port_.unsent = 0;
  int ticks = 0;
  while (Tick()) ++ticks;
  EXPECT_EQ(port_.TakeWritten().size(), 20000U * 27 - 1);
  EXPECT_EQ(ticks, 20000);
}

TEST_F(PanelTakesTest, OfAPanelThatHasGoneAreForgotten) {
  const auto panel = ConnectPanel();
  port_.unsent = 256;
  panel->Send("FE 20 00 05 00 07 00 2C FF");
  Tick();
  panel->Close();
  ConnectPanel();
  port_.unsent = 0;
  EXPECT_FALSE(Tick());
  EXPECT_EQ(port_.TakeWritten(), "");
}

}  // namespace
}  // namespace gateway
