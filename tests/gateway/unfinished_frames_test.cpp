// SPDX-License-Identifier: MIT

#include "tests/gateway/gateway_fixture.h"
#include "tests/support/hex.h"

namespace gateway {
namespace {

using test::FromHex;
using test::Hex;
using testing::Each;
using testing::ElementsAre;
using testing::IsEmpty;
using testing::SizeIs;

constexpr char kTakeReport[] =
    "critical|Error Processing|Error in Error Processing Take Command"
    "\rError # 9 - The end of the frame has not arrived";

class UnfinishedFramesTest : public GatewayTest {
 protected:
  // What is left of the panel's bytes, and what the switcher's line was sent, after one tick.
  std::string LeftAfterTick(int slot = 1) {
    Tick();
    return Hex(Connection(slot).RxData.View());
  }
};

TEST_F(UnfinishedFramesTest, ATakeWithoutItsEndIsReportedWithEveryTick) {
  const auto panel = ConnectPanel();
  panel->Send("FE 20 00 05");
  EXPECT_EQ(LeftAfterTick(), "FE 20 00 05");
  Ticks(2);
  EXPECT_THAT(reporter_.reports, ElementsAre(kTakeReport, kTakeReport, kTakeReport));
  EXPECT_EQ(port_.TakeWritten(), "");
  panel->Send("00 07 00 2C FF");
  Tick();
  EXPECT_THAT(reporter_.reports, SizeIs(3));
  EXPECT_EQ(port_.TakeWritten(), "FD 00 00 07 00 05 00 0C FF");
}

TEST_F(UnfinishedFramesTest, TheFlushEndsATakeWithoutItsEnd) {
  const auto panel = ConnectPanel();
  panel->Send("FE 20 00 05");
  Ticks(200);
  EXPECT_THAT(reporter_.reports, SizeIs(200));
  EXPECT_EQ(Hex(Connection(1).RxData.View()), "FE 20 00 05");
  EXPECT_TRUE(Tick());
  EXPECT_THAT(Connection(1).RxData, IsEmpty());
  EXPECT_EQ(Clients().TcpIdleTicks, 0);
  EXPECT_FALSE(Tick());
  EXPECT_THAT(reporter_.reports, SizeIs(201));
  EXPECT_THAT(reporter_.reports, Each(kTakeReport));
}

TEST_F(UnfinishedFramesTest, TheFlushEmptiesEverySlot) {
  const auto first = ConnectPanel();
  const auto second = ConnectPanel();
  first->Send("F2 00 01");
  second->Send("80 11 22");
  Ticks(201);
  EXPECT_THAT(Connection(1).RxData, IsEmpty());
  EXPECT_THAT(Connection(2).RxData, IsEmpty());
}

TEST_F(UnfinishedFramesTest, DataAndSendsPutTheFlushOff) {
  const auto first = ConnectPanel();
  const auto second = ConnectPanel();
  first->Send("F2 00 01");
  Ticks(200);
  second->Send("F4");
  Ticks(200);
  EXPECT_EQ(Hex(Connection(1).RxData.View()), "F2 00 01");
  gateway_.CrosspointRowChanged(1, 0);
  Ticks(200);
  EXPECT_EQ(Hex(Connection(1).RxData.View()), "F2 00 01");
  Tick();
  EXPECT_THAT(Connection(1).RxData, IsEmpty());
}

TEST_F(UnfinishedFramesTest, TheFlushLeavesWholeFrames) {
  const auto panel = ConnectPanel();
  // One in a tick: the flush comes before the last of them.
  panel->Send(FromHex(test::Times(300, "FE 20 00 05 00 07 00 2C FF") + "F5 80 11 FF FE 20"));
  Ticks(201);
  EXPECT_EQ(Clients().TcpIdleTicks, 0);
  EXPECT_EQ(Connection(1).RxData.size(), 99U * 9 + 4);
  Ticks(99);
  EXPECT_EQ(Hex(Connection(1).RxData.View()), "F5 80 11 FF");
  EXPECT_EQ(port_.TakeWritten().size(), 300U * 27 - 1);
  Tick();
  EXPECT_EQ(panel->TakeWritten(), "F4");
  EXPECT_THAT(reporter_.reports, IsEmpty());
}

TEST_F(UnfinishedFramesTest, TheFlushLeavesNothingThatIsNoFrame) {
  const auto panel = ConnectPanel();
  panel->Send(FromHex(test::Times(300, "41") + "F4 42 AA F2 00"));
  Ticks(201);
  EXPECT_EQ(Hex(Connection(1).RxData.View()), "F4");
}

// A byte every tenth of a second, so that the flush for want of traffic never comes.
TEST_F(UnfinishedFramesTest, ATakeThatNeverEndsIsReportedSoOftenAndNotMore) {
  const auto panel = ConnectPanel();
  panel->Send("FE");
  int ticks = 0;
  for (; Connection(1).Connected && ticks < 10000; ++ticks) {
    if (ticks % 20 == 19) panel->Send("11");
    Tick();
  }
  EXPECT_EQ(ticks, 400);
  EXPECT_THAT(reporter_.reports, SizeIs(400));
  EXPECT_THAT(reporter_.reports, Each(kTakeReport));
  EXPECT_TRUE(panel->closedByConsole);
  EXPECT_THAT(events_.dropped, ElementsAre(std::pair("10.0.0.7", DropReason::UnfinishedTake)));
}

// The flush forgets the bytes, not how often they have been reported.
TEST_F(UnfinishedFramesTest, TakesThatEachWaitForTheFlushAreReportedNoMoreOften) {
  const auto panel = ConnectPanel();
  int ticks = 0;
  for (; Connection(1).Connected && ticks < 10000; ++ticks) {
    if (Connection(1).RxData.empty()) panel->Send("FE 20");
    Tick();
  }
  EXPECT_EQ(ticks, 400);
  EXPECT_THAT(reporter_.reports, SizeIs(400));
  EXPECT_THAT(events_.dropped, ElementsAre(std::pair("10.0.0.7", DropReason::UnfinishedTake)));
  // The next client of the slot begins anew.
  ConnectPanel()->Send("FE 20");
  Ticks(100);
  EXPECT_TRUE(Connection(1).Connected);
}

TEST_F(UnfinishedFramesTest, EachTakeHasReportsOfItsOwn) {
  const auto panel = ConnectPanel();
  for (int take = 0; take < 10; ++take) {
    panel->Send("FE 20 00 05 00");
    Ticks(150);
    panel->Send("07 00 2C FF");
    Tick();
  }
  EXPECT_EQ(port_.TakeWritten().size(), 10U * 27 - 1);
  EXPECT_THAT(reporter_.reports, SizeIs(1500));
  EXPECT_TRUE(Connection(1).Connected);
}

TEST_F(UnfinishedFramesTest, AnyOtherFrameThatNeverEndsIsThrownAwayAfterHalfAMinute) {
  for (const char* const begin : {"F2", "80", "FD", "81"}) {
    const auto panel = ConnectPanel();
    panel->Send(begin);
    int ticks = 0;
    for (; !Connection(1).RxData.empty() && ticks < 10000; ++ticks) {
      if (ticks % 20 == 19) panel->Send("11");
      Tick();
    }
    EXPECT_EQ(ticks, 6000) << begin;
    panel->Send("F5");
    Tick();
    EXPECT_EQ(panel->TakeWritten(), "F4") << begin;
    panel->Close();
  }
  EXPECT_THAT(reporter_.reports, IsEmpty());
  EXPECT_THAT(events_.dropped, IsEmpty());
}

TEST_F(UnfinishedFramesTest, AFrameThatTakesItsTimeIsServed) {
  const auto panel = ConnectPanel();
  panel->Send("F2 00 01 00 00 00");
  for (int part = 0; part < 29; ++part) {
    Ticks(200);
    Clients().TcpIdleTicks = 0;  // somebody else's traffic
  }
  panel->Send("00 00 00 01 FF");
  Tick();
  EXPECT_EQ(panel->TakeWritten().substr(0, 5), "F6 00");
}

}  // namespace
}  // namespace gateway
