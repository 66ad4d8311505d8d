// SPDX-License-Identifier: MIT

#include "gateway/panel_protocol.h"

#include <map>

#include "db/schema.h"
#include "gateway/panel_tables.h"
#include "tests/gateway/gateway_fixture.h"
#include "tests/support/damaged_file.h"
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

class PanelProtocolTest : public GatewayTest {
 protected:
  // What is left of the panel's bytes, and what the switcher's line was sent, after one tick.
  std::string LeftAfterTick(int slot = 1) {
    Tick();
    return Hex(Connection(slot).RxData.View());
  }

  // The types of the frames that a panel is sent until no pause runs any more, one at a time: "F6
  // FC ".
  std::string FrameTypes(test::FakePeer& panel) {
    std::string types;
    for (;;) {
      types += panel.TakeWritten().substr(0, 3);
      if (!timer_.IsRunning()) return types;
      timer_.Elapse();
    }
  }

  // What a service request is answered with.  Everything asked for has gone out.
  std::string Request(test::FakePeer& panel, std::string_view frame) {
    panel.Send(frame);
    Tick();
    timer_.ElapseAll();
    return panel.TakeWritten();
  }
};

TEST_F(PanelProtocolTest, ATakeWithoutItsEndIsReportedWithEveryTick) {
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

TEST_F(PanelProtocolTest, TheFlushEndsATakeWithoutItsEnd) {
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

TEST_F(PanelProtocolTest, TheFlushEmptiesEverySlot) {
  const auto first = ConnectPanel();
  const auto second = ConnectPanel();
  first->Send("F2 00 01");
  second->Send("80 11 22");
  Ticks(201);
  EXPECT_THAT(Connection(1).RxData, IsEmpty());
  EXPECT_THAT(Connection(2).RxData, IsEmpty());
}

TEST_F(PanelProtocolTest, DataAndSendsPutTheFlushOff) {
  const auto first = ConnectPanel();
  const auto second = ConnectPanel();
  first->Send("F2 00 01");
  Ticks(200);
  second->Send("F4");
  Ticks(200);
  EXPECT_EQ(Hex(Connection(1).RxData.View()), "F2 00 01");
  gateway_.ForwardCrosspointRow(1);
  Ticks(200);
  EXPECT_EQ(Hex(Connection(1).RxData.View()), "F2 00 01");
  Tick();
  EXPECT_THAT(Connection(1).RxData, IsEmpty());
}

TEST_F(PanelProtocolTest, TheFlushLeavesWholeFrames) {
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

TEST_F(PanelProtocolTest, TheFlushLeavesNothingThatIsNoFrame) {
  const auto panel = ConnectPanel();
  panel->Send(FromHex(test::Times(300, "41") + "F4 42 AA F2 00"));
  Ticks(201);
  EXPECT_EQ(Hex(Connection(1).RxData.View()), "F4");
}

// A byte every tenth of a second, so that the flush for want of traffic never comes.
TEST_F(PanelProtocolTest, ATakeThatNeverEndsIsReportedSoOftenAndNotMore) {
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
TEST_F(PanelProtocolTest, TakesThatEachWaitForTheFlushAreReportedNoMoreOften) {
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

TEST_F(PanelProtocolTest, EachTakeHasReportsOfItsOwn) {
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

TEST_F(PanelProtocolTest, AnyOtherFrameThatNeverEndsIsThrownAwayAfterHalfAMinute) {
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

TEST_F(PanelProtocolTest, AFrameThatTakesItsTimeIsServed) {
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

TEST_F(PanelProtocolTest, BytesThatCannotBeginAFrameGoOnePerTick) {
  const auto panel = ConnectPanel();
  panel->Send("41 42 F4");
  Connection(1).KeepAliveCount = 7;
  EXPECT_EQ(LeftAfterTick(), "42 F4");
  EXPECT_EQ(LeftAfterTick(), "F4");
  EXPECT_EQ(Connection(1).KeepAliveCount, 7);
  EXPECT_EQ(LeftAfterTick(), "");
  EXPECT_EQ(Connection(1).KeepAliveCount, 0);
}

TEST_F(PanelProtocolTest, OneFramePerTickAndSlot) {
  const auto first = ConnectPanel();
  const auto second = ConnectPanel();
  first->Send("FE 20 00 00 00 00 00 20 FF FE 20 00 00 00 01 00 21 FF");
  second->Send("FE 20 00 00 00 02 00 22 FF");
  Tick();
  EXPECT_EQ(port_.TakeWritten(), "FD 00 00 00 00 00 00 00 FF FD 00 00 02 00 00 00 02 FF");
  Tick();
  EXPECT_EQ(port_.TakeWritten(), "FD 00 00 01 00 00 00 01 FF");
  EXPECT_FALSE(Tick());
}

TEST_F(PanelProtocolTest, OtherTypesLoseOneByteAndResynchronise) {
  const auto panel = ConnectPanel();
  panel->Send("F6 00 FF");
  EXPECT_EQ(LeftAfterTick(), "00 FF");
  EXPECT_EQ(LeftAfterTick(), "FF");
  EXPECT_EQ(LeftAfterTick(), "");
  panel->Send("82 F1 FB FC FF");
  EXPECT_EQ(LeftAfterTick(), "F1 FB FC FF");
  EXPECT_EQ(LeftAfterTick(), "FB FC FF");
  EXPECT_EQ(LeftAfterTick(), "FC FF");
  EXPECT_EQ(LeftAfterTick(), "FF");
  EXPECT_EQ(LeftAfterTick(), "");
}

TEST_F(PanelProtocolTest, DiscardedFramesGoWhole) {
  const auto panel = ConnectPanel();
  panel->Send("80 01 02 03 FF FD 04 FF 41");
  EXPECT_EQ(LeftAfterTick(), "FD 04 FF 41");
  EXPECT_EQ(LeftAfterTick(), "41");
  panel->Send("80 01 02");
  Tick();
  EXPECT_EQ(LeftAfterTick(), "80 01 02");
  EXPECT_EQ(LeftAfterTick(), "80 01 02");
  panel->Send("FF F4");
  EXPECT_EQ(LeftAfterTick(), "F4");
}

TEST_F(PanelProtocolTest, RequestsAndRepliesWithoutTheirEndWaitSilently) {
  const auto panel = ConnectPanel();
  panel->Send("F2 00 01");
  EXPECT_EQ(LeftAfterTick(), "F2 00 01");
  panel->Send("00 00 00 00 00 00 01 FF 81 33");
  EXPECT_EQ(LeftAfterTick(), "81 33");
  EXPECT_EQ(LeftAfterTick(), "81 33");
  EXPECT_EQ(Connection(1).ConnType, 53);
  panel->Send("33 FF");
  EXPECT_EQ(LeftAfterTick(), "");
  EXPECT_EQ(Connection(1).ConnType, 51);
  EXPECT_THAT(reporter_.reports, IsEmpty());
}

TEST_F(PanelProtocolTest, UnidentifiedClientsAreNotServed) {
  const auto peer = Connect();
  peer->TakeWritten();
  peer->Send("F5 F4 F2 00 07 00 00 00 00 00 00 07 FF FE 20 00 05 00 07 00 2C FF FF 41");
  EXPECT_EQ(LeftAfterTick(),
            "F4 F2 00 07 00 00 00 00 00 00 07 FF FE 20 00 05 00 07 00 2C FF FF 41");
  EXPECT_EQ(LeftAfterTick(), "F2 00 07 00 00 00 00 00 00 07 FF FE 20 00 05 00 07 00 2C FF FF 41");
  EXPECT_EQ(LeftAfterTick(), "FE 20 00 05 00 07 00 2C FF FF 41");
  EXPECT_EQ(LeftAfterTick(), "FF 41");
  EXPECT_EQ(LeftAfterTick(), "41");
  EXPECT_EQ(LeftAfterTick(), "");
  timer_.ElapseAll();
  EXPECT_EQ(peer->TakeWritten(), "");
  EXPECT_EQ(port_.TakeWritten(), "");
  EXPECT_FALSE(Connection(1).AlphasPending);
  EXPECT_THAT(reporter_.reports, IsEmpty());
}

TEST_F(PanelProtocolTest, AnUnidentifiedFrameWithoutItsEndGoesByteByByte) {
  const auto peer = Connect();
  peer->Send("FE 20 F2");
  EXPECT_EQ(LeftAfterTick(), "20 F2");
  EXPECT_EQ(LeftAfterTick(), "F2");
  EXPECT_EQ(LeftAfterTick(), "");
  EXPECT_THAT(reporter_.reports, IsEmpty());
}

TEST_F(PanelProtocolTest, TypesLookedAtBeforeIdentification) {
  const auto peer = Connect();
  peer->Send("F6 80 01 FF 81 35 35 FF");
  EXPECT_EQ(LeftAfterTick(), "80 01 FF 81 35 35 FF");
  EXPECT_EQ(LeftAfterTick(), "81 35 35 FF");
  EXPECT_EQ(LeftAfterTick(), "");
  EXPECT_TRUE(Connection(1).Identified);
}

TEST_F(PanelProtocolTest, ARefusedClientGetsNoService) {
  const auto peer = Connect();
  peer->TakeWritten();
  peer->Send("81 14 14 FF F5 FE 20 00 05 00 07 00 2C FF F2 00 07 00 00 00 00 00 00 07 FF");
  Ticks(5);
  timer_.ElapseAll();
  EXPECT_THAT(Connection(1).RxData, IsEmpty());
  EXPECT_EQ(peer->TakeWritten(), "");
  EXPECT_EQ(port_.TakeWritten(), "");
}

TEST_F(PanelProtocolTest, PollsAreAnsweredByTheStateOfTheLink) {
  const auto panel = ConnectPanel();
  Connection(1).KeepAliveCount = 3;
  panel->Send("F5");
  Tick();
  EXPECT_EQ(panel->TakeWritten(), "F4");
  EXPECT_EQ(Connection(1).KeepAliveCount, 0);
  timer_.ElapseAll();
  model_.LinkStatus[0] = 0;
  Connection(1).KeepAliveCount = 3;
  panel->Send("F5");
  Tick();
  EXPECT_EQ(panel->TakeWritten(), "F1");
  EXPECT_EQ(Connection(1).KeepAliveCount, 3);
}

TEST_F(PanelProtocolTest, RequestForTheMap) {
  const auto panel = ConnectPanel();
  model_.CrosspointMap.At(8, 1) = 1;
  EXPECT_EQ(Request(*panel, "F2 00 01 00 00 00 00 00 00 01 FF"),
            "F6 00 08 00 00 00 00 00 00 00 00 00 00 00 00 00 00 00 00 00 00 00 00 00 00 00 00 "
            "01 00 00 00 00 09 FF");
}

TEST_F(PanelProtocolTest, RequestForLabels) {
  AddStations();
  const auto panel = ConnectPanel();
  EXPECT_EQ(Request(*panel, "F2 00 02 00 00 00 00 00 00 02 FF"),
            "FC 0A 08 08 00 00 00 "
            "49 6E 20 31 20 20 20 20 00 00 49 6E 20 32 20 20 20 20 01 00 "
            "49 6E 20 33 20 20 20 20 02 00 49 6E 20 34 20 20 20 20 03 00 "
            "49 6E 20 35 20 20 20 20 04 00 49 6E 20 36 20 20 20 20 05 00 "
            "49 6E 20 37 20 20 20 20 06 00 49 6E 20 38 20 20 20 20 07 00 "
            "12 FF");
  EXPECT_EQ(Request(*panel, "F2 00 04 00 00 00 00 00 00 04 FF").substr(0, 3 * 17),
            "FC 14 08 08 00 00 00 53 74 61 20 31 20 20 20 00 00 ");
}

TEST_F(PanelProtocolTest, RequestForProgrammingIsTwoFrames) {
  AddStations();
  const auto panel = ConnectPanel();
  panel->Send("F2 00 40 00 00 00 00 00 00 40 FF");
  Tick();
  EXPECT_EQ(panel->TakeWritten(),
            "FB 00 08 00 00 00 01 00 02 00 03 00 04 00 05 00 06 00 07 00 08 00 2C FF");
  EXPECT_TRUE(Connection(1).ButtonsPending);
  timer_.Elapse();
  const std::string buttons = panel->TakeWritten();
  EXPECT_EQ(buttons.substr(0, 3 * 14), "FD 00 08 00 00 00 20 00 02 00 7F 7F 00 00 ");
  EXPECT_EQ(buttons.size(), 3U * (8 + 8 * 32 * 6 + 2) - 1);
  EXPECT_FALSE(Connection(1).ButtonsPending);
}

TEST_F(PanelProtocolTest, SeveralBitsAreAnsweredInOrder) {
  AddStations();
  const auto panel = ConnectPanel();
  panel->Send("F2 00 7F 00 00 00 00 00 00 7F FF");
  Tick();
  std::string types;
  for (;;) {
    const std::string frame = panel->TakeWritten();
    if (!frame.empty()) types += frame.substr(0, 5) + "; ";
    if (!timer_.IsRunning()) break;
    timer_.Elapse();
  }
  EXPECT_EQ(types, "F6 00; FC 0A; FC 14; FB 00; FD 00; ");
}

TEST_F(PanelProtocolTest, TheWholeAnswerToARequestComesBeforeTheNextOne) {
  AddStations();
  const auto panel = ConnectPanel();
  panel->Send("F2 00 07 00 00 00 00 00 00 07 FF F2 00 43 00 00 00 00 00 00 43 FF");
  Ticks(2);
  EXPECT_EQ(FrameTypes(*panel), "F6 FC FC F6 FC FB FD ");
}

TEST_F(PanelProtocolTest, WhatIsForAllDoesNotChangeTheOrderOfAnAnswer) {
  AddStations();
  const auto panel = ConnectPanel();
  gateway_.ForwardLabels(10);
  gateway_.ForwardProgramming();
  panel->Send("F2 00 47 00 00 00 00 00 00 47 FF");
  Tick();
  gateway_.ForwardProgramming();
  gateway_.ForwardLabels(20);
  EXPECT_EQ(FrameTypes(*panel), "FC FB FD F6 FC FC FB FD ");
}

TEST_F(PanelProtocolTest, ARequestWhoseTableCannotBeReadDoesNotHoldUpTheNext) {
  const auto panel = ConnectPanel();
  panel->Send("F2 00 06 00 00 00 00 00 00 06 FF F2 00 41 00 00 00 00 00 00 41 FF");
  panel->Send("F2 00 02 00 00 00 00 00 00 02 FF");
  Ticks(3);
  EXPECT_EQ(FrameTypes(*panel), "F6 FB ");
  EXPECT_THAT(reporter_.reports, SizeIs(4));
  AddStations();
  EXPECT_EQ(Request(*panel, "F2 00 04 00 00 00 00 00 00 04 FF").substr(0, 5), "FC 14");
  EXPECT_EQ(FrameTypes(*panel), "") << "once";
}

// To find out that a table cannot be read may take a look at the whole database.
TEST_F(PanelProtocolTest, NoMoreThanOneTableThatCannotBeReadIsTriedBetweenTwoPauses) {
  const auto panel = ConnectPanel();
  panel->Send("F2 00 01 00 00 00 00 00 00 01 FF");
  panel->Send(FromHex(test::Times(200, "F2 00 02 00 00 00 00 00 00 02 FF")));
  Ticks(201);
  EXPECT_EQ(panel->TakeWritten().substr(0, 5), "F6 00");
  for (std::size_t tried = 0; tried < 200; ++tried) {
    ASSERT_THAT(reporter_.reports, SizeIs(tried));
    timer_.Elapse();
  }
  EXPECT_THAT(reporter_.reports, SizeIs(200));
  timer_.Elapse();
  EXPECT_FALSE(timer_.IsRunning());
}

TEST_F(PanelProtocolTest, ATableForAllThatCannotBeReadIsTriedAndPausedForOnce) {
  for (int i = 0; i < 5; ++i) ConnectPanel();
  timer_.now = 0;
  gateway_.ForwardLabels(20);
  timer_.ElapseAll();
  EXPECT_THAT(reporter_.reports, SizeIs(1));
  EXPECT_EQ(timer_.now, 75);
}

TEST_F(PanelProtocolTest, ARequestWhoseTurnComesWithoutTheLinkIsForgotten) {
  const auto panel = ConnectPanel();
  panel->Send("F2 00 01 00 00 00 00 00 00 01 FF F2 00 01 00 00 00 00 00 00 01 FF");
  panel->Send("F2 00 01 00 00 00 00 00 00 01 FF");
  Ticks(3);
  model_.LinkStatus[0] = 0;
  // The answer to the second is on its way since the first has gone out.
  EXPECT_EQ(FrameTypes(*panel), "F6 F6 ");
  model_.LinkStatus[0] = 1;
  EXPECT_EQ(FrameTypes(*panel), "");
}

TEST_F(PanelProtocolTest, RequestsWithoutEndWaitInTheSocket) {
  AddStations();
  const auto panel = ConnectPanel();
  const auto other = ConnectPanel();
  panel->Send(FromHex(test::Times(8000, "F2 00 47 00 00 00 00 00 00 47 FF")));
  for (int tick = 0; tick < 20000; ++tick) {
    Tick();
    ASSERT_LE(Connection(1).Undecoded(), 65536U);
    ASSERT_LE(Queue().Size(), 6U);
    if (tick % 15 == 0) timer_.Elapse();
  }
  EXPECT_FALSE(panel->incoming.empty());
  panel->TakeWritten();
  other->Send("F5");
  Tick();
  timer_.Elapse();
  EXPECT_EQ(other->TakeWritten(), "F4");
}

TEST_F(PanelProtocolTest, TenPollsInOneWriteGetTenAnswers) {
  const auto panel = ConnectPanel();
  panel->Send("F5 F5 F5 F5 F5 F5 F5 F5 F5 F5");
  Ticks(10);
  timer_.ElapseAll();
  EXPECT_EQ(panel->TakeWritten(), "F4 F4 F4 F4 F4 F4 F4 F4 F4 F4");
}

TEST_F(PanelProtocolTest, AnAnswerThatHadToWaitSaysHowTheLinkIsThen) {
  const auto panel = ConnectPanel();
  panel->Send("F5 F5 F5");
  Ticks(3);
  timer_.Elapse();
  model_.LinkStatus[0] = 0;
  timer_.ElapseAll();
  EXPECT_EQ(panel->TakeWritten(), "F4 F4 F1");
}

TEST_F(PanelProtocolTest, EveryRequestIsAnsweredAlsoWhileAnAnswerStillWaits) {
  AddStations();
  const auto panel = ConnectPanel();
  for (int i = 0; i < 20; ++i) panel->Send("F2 00 47 00 00 00 00 00 00 47 FF");
  Ticks(20);
  EXPECT_LE(Queue().Size(), 5U);
  EXPECT_TRUE(Connection(1).AlphasPending);
  EXPECT_TRUE(Connection(1).ButtonsPending);
  std::map<std::string, int> frames;
  std::string lastType;
  for (;;) {
    const std::string frame = panel->TakeWritten();
    if (!frame.empty()) {
      const std::string type = frame.substr(0, 5);
      ++frames[type];
      // The list of stations and the programming stay next to each other.
      EXPECT_EQ(type == "FD 00", lastType == "FB 00");
      lastType = type;
    }
    if (!timer_.IsRunning()) break;
    timer_.Elapse();
  }
  EXPECT_THAT(frames, ElementsAre(testing::Pair("F6 00", 20), testing::Pair("FB 00", 20),
                                  testing::Pair("FC 0A", 20), testing::Pair("FC 14", 20),
                                  testing::Pair("FD 00", 20)));
  EXPECT_FALSE(Connection(1).AlphasPending);
  EXPECT_FALSE(Connection(1).ButtonsPending);
}

TEST_F(PanelProtocolTest, ATableSaysWhatHoldsWhenItsTurnComes) {
  AddStations();
  const auto first = ConnectPanel();
  const auto second = ConnectPanel();
  first->Send("F2 00 04 00 00 00 00 00 00 04 FF");
  second->Send("F2 00 44 00 00 00 00 00 00 44 FF");
  Tick();
  database_.Set(1, "Label", "New");
  database_.Set(1, "B1 Type", 255);
  timer_.ElapseAll();
  EXPECT_EQ(first->TakeWritten().substr(0, 3 * 17),
            "FC 14 08 08 00 00 00 53 74 61 20 31 20 20 20 00 00 ");
  const std::string tables = second->TakeWritten();
  EXPECT_EQ(tables.substr(0, 3 * 17), "FC 14 08 08 00 00 00 4E 65 77 20 20 20 20 20 00 00 ");
  EXPECT_EQ(tables.substr(3 * (89 + 24), 3 * 14), "FD 00 08 00 00 00 20 00 03 00 7F 7F 00 00 ");
}

TEST_F(PanelProtocolTest, WhatAPanelAskedForGoesWithIt) {
  AddStations();
  auto panel = ConnectPanel();
  for (int i = 0; i < 20; ++i) panel->Send("F2 00 47 00 00 00 00 00 00 47 FF");
  Ticks(20);
  panel->Close();
  timer_.ElapseAll();
  panel = ConnectPanel();
  EXPECT_EQ(Request(*panel, "F2 00 04 00 00 00 00 00 00 04 FF").size(),
            3U * (7 + 8 * 10 + 2) - 1);  // one table
}

TEST_F(PanelProtocolTest, ADroppedPanelsTablesHoldUpNoneOfTheNextOne) {
  AddStations();
  const auto slow = ConnectPanel();
  slow->reads = false;
  slow->unsent = 1048576;
  slow->Send("F2 00 46 00 00 00 00 00 00 46 FF");  // dropped with the first of the answers
  Tick();
  ASSERT_FALSE(Connection(1).Connected);
  auto panel = std::make_shared<test::FakePeer>();
  gateway_.Accept(std::make_unique<test::FakeClientSocket>(panel));
  panel->Send("81 35 35 FF F2 00 04 00 00 00 00 00 00 04 FF");
  Ticks(2);
  timer_.ElapseAll();
  EXPECT_EQ(panel->TakeWritten().substr(0, 3 * 11), "81 00 00 FF FC 14 08 08 00 00 00 ");
}

TEST_F(PanelProtocolTest, ADroppedPanelsAnswerIsNoneForTheNextOne) {
  AddStations();
  const auto slow = ConnectPanel();
  slow->reads = false;
  slow->unsent = 1048576;
  slow->Send("F2 00 42 00 00 00 00 00 00 42 FF");  // dropped with the labels, before the buttons
  Tick();
  ASSERT_FALSE(Connection(1).Connected);
  EXPECT_EQ(Queue().Size(), 0U);
  auto panel = std::make_shared<test::FakePeer>();
  gateway_.Accept(std::make_unique<test::FakeClientSocket>(panel));
  panel->Send("81 35 35 FF F2 00 04 00 00 00 00 00 00 04 FF");
  Ticks(2);
  timer_.ElapseAll();
  EXPECT_EQ(panel->TakeWritten().substr(0, 3 * 11), "81 00 00 FF FC 14 08 08 00 00 00 ");
  EXPECT_FALSE(Connection(1).AlphasPending);
}

TEST_F(PanelProtocolTest, PendingFlagsAreClearedWhenTheTableHasGone) {
  AddStations();
  const auto panel = ConnectPanel();
  panel->Send("F2 00 66 00 00 00 00 00 00 66 FF");
  Tick();
  EXPECT_TRUE(Connection(1).AlphasPending);  // one of the two is out
  EXPECT_TRUE(Connection(1).Option20Pending);
  EXPECT_TRUE(Connection(1).ButtonsPending);
  timer_.Elapse();
  EXPECT_FALSE(Connection(1).AlphasPending);
  EXPECT_TRUE(Connection(1).ButtonsPending);
  timer_.ElapseAll();
  EXPECT_FALSE(Connection(1).ButtonsPending);
  EXPECT_TRUE(Connection(1).Option20Pending);
}

TEST_F(PanelProtocolTest, BroadcastsLeaveThePendingFlagsAlone) {
  AddStations();
  const auto panel = ConnectPanel();
  Connection(1).AlphasPending = Connection(1).ButtonsPending = true;
  gateway_.ForwardLabels(20);
  gateway_.ForwardProgramming();
  timer_.ElapseAll();
  EXPECT_TRUE(Connection(1).AlphasPending);
  EXPECT_TRUE(Connection(1).ButtonsPending);
}

TEST_F(PanelProtocolTest, OptionTwentyOnlySetsItsFlag) {
  const auto panel = ConnectPanel();
  EXPECT_EQ(Request(*panel, "F2 00 20 00 00 00 00 00 00 20 FF"), "");
  EXPECT_TRUE(Connection(1).Option20Pending);
}

TEST_F(PanelProtocolTest, UnusedBitsDoNothing) {
  const auto panel = ConnectPanel();
  EXPECT_EQ(Request(*panel, "F2 00 18 00 00 00 00 00 00 18 FF"), "");
  EXPECT_EQ(Request(*panel, "F2 7F 00 7F 7F 7F 7F 7F 7F 79 FF"), "");
}

TEST_F(PanelProtocolTest, NothingIsRequestedWhileTheLinkIsDown) {
  const auto panel = ConnectPanel();
  model_.LinkStatus[0] = 0;
  EXPECT_EQ(Request(*panel, "F2 00 07 00 00 00 00 00 00 07 FF"), "");
  EXPECT_EQ(Request(*panel, "F2 00 60 00 00 00 00 00 00 60 FF"), "");
  EXPECT_FALSE(Connection(1).AlphasPending);
  EXPECT_FALSE(Connection(1).Option20Pending);
  EXPECT_FALSE(Connection(1).ButtonsPending);
}

TEST_F(PanelProtocolTest, BadRequestsAreIgnored) {
  const auto panel = ConnectPanel();
  EXPECT_EQ(Request(*panel, "F2 00 01 00 00 00 00 00 00 02 FF"), "");
  EXPECT_EQ(Request(*panel, "F2 00 01 00 00 00 00 00 01 FF"), "");
  EXPECT_EQ(Request(*panel, "F2 00 01 00 00 00 00 00 00 00 01 FF"), "");
  EXPECT_EQ(Request(*panel, "F2 FF"), "");
  EXPECT_THAT(reporter_.reports, IsEmpty());
}

TEST_F(PanelProtocolTest, ATableThatCannotBeReadIsReported) {
  const auto panel = ConnectPanel();
  EXPECT_EQ(Request(*panel, "F2 00 02 00 00 00 00 00 00 02 FF"), "");  // no stations at all
  EXPECT_TRUE(Connection(1).AlphasPending);
  // The list of stations needs none.
  EXPECT_EQ(Request(*panel, "F2 00 40 00 00 00 00 00 00 40 FF"),
            "FB 00 08 00 00 00 01 00 02 00 03 00 04 00 05 00 06 00 07 00 08 00 2C FF");
  ASSERT_THAT(reporter_.reports, SizeIs(2));
  EXPECT_THAT(reporter_.reports,
              Each(testing::StartsWith("critical|Error Processing|Error in Error Sending Alpha "
                                       "Table\rError # 3021 - ")));
}

TEST_F(PanelProtocolTest, ATableThatCannotBeReadAnyMoreHoldsUpNothing) {
  AddStations();
  const auto panel = ConnectPanel();
  panel->Send("F5 F2 00 47 00 00 00 00 00 00 47 FF");
  Ticks(2);
  EXPECT_EQ(panel->TakeWritten(), "F4");
  database_.Delete(8);
  timer_.now = 0;
  timer_.Elapse();
  EXPECT_EQ(panel->TakeWritten().substr(0, 5), "F6 00");
  EXPECT_THAT(reporter_.reports, IsEmpty());
  timer_.ElapseAll();
  EXPECT_EQ(panel->TakeWritten().substr(0, 5), "FB 00");
  EXPECT_EQ(timer_.now, 6 * 75);
  // Both label tables and the programming, once each.
  EXPECT_THAT(reporter_.reports, SizeIs(3));
  EXPECT_TRUE(Connection(1).AlphasPending);
  EXPECT_TRUE(Connection(1).ButtonsPending);
}

TEST_F(PanelProtocolTest, WithoutADatabaseTablesAreReported) {
  const auto panel = ConnectPanel();
  ASSERT_TRUE(database_.Files().SaveAndClose().ok());
  EXPECT_EQ(Request(*panel, "F2 00 04 00 00 00 00 00 00 04 FF"), "");
  EXPECT_THAT(reporter_.reports,
              ElementsAre("critical|Error Processing|Error in Error Sending Alpha Table"
                          "\rError # 3021 - The configuration database is not open"));
}

TEST_F(PanelProtocolTest, NoTableThatLacksStationsIsSent) {
  // The records of stations 11 to 15 stood on a page that is zeros now.
  test::TemporaryFolder folder;
  ASSERT_TRUE(db::CreateDatabase(folder / "Tesk.mdb").ok());
  test::ZeroPageOf(folder / "Tesk.mdb", "Sta. 012");
  db::DatabaseFiles damaged(folder / "Tesk.mdb", folder / "WorkingDb.md$");
  ASSERT_TRUE(damaged.Open().ok());
  const auto panel = ConnectPanel();
  PanelSenders senders(model_, damaged, Queue(), reporter_);
  model_.ChannelCount = 16;
  senders.SendAlphaTableToClients(kStationLabels, 1);
  senders.SendStationProgrammingToClients(1);
  timer_.ElapseAll();
  EXPECT_EQ(panel->TakeWritten().substr(0, 5), "FB 00") << "the list of stations alone";
  const std::string lacking =
      "critical|Error Processing|Error in Error Sending Alpha Table"
      "\rError # 3049 - The database is damaged, stations cannot be read: 11 to 15";
  EXPECT_THAT(reporter_.reports, ElementsAre(lacking, lacking));

  // What is whole is sent.
  model_.ChannelCount = 8;
  senders.SendAlphaTableToClients(kStationLabels, 1);
  timer_.ElapseAll();
  EXPECT_EQ(panel->TakeWritten().substr(0, 5), "FC 14");
}

TEST_F(PanelProtocolTest, ChannelsThatAreNotThereAreReported) {
  gateway_.Senders().SendCrosspointMapToClients(9, 1, 9999);
  EXPECT_THAT(reporter_.reports,
              ElementsAre("critical|Error Processing|Error in Error Sending Crosspoint Map"
                          "\rError # 9 - There is no such channel"));
}

TEST_F(PanelProtocolTest, TheOperatorsRecordStaysTheCurrentOne) {
  AddStations();
  database_.GoTo(5);
  const auto panel = ConnectPanel();
  Request(*panel, "F2 00 46 00 00 00 00 00 00 46 FF");
  EXPECT_EQ(database_.CurrentStation(), 5);
}

}  // namespace
}  // namespace gateway
