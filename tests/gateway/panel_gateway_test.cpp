// SPDX-License-Identifier: MIT

#include "gateway/panel_gateway.h"

#include <algorithm>
#include <deque>
#include <map>
#include <random>
#include <vector>

#include "tests/gateway/gateway_fixture.h"
#include "tests/support/hex.h"

namespace gateway {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;
using testing::Le;

using PanelGatewayTest = GatewayTest;

TEST_F(PanelGatewayTest, ATickWithoutBytesHasNoWork) {
  const auto panel = ConnectPanel();
  EXPECT_FALSE(Tick());
  panel->Send("41");
  EXPECT_TRUE(Tick());
  EXPECT_FALSE(Tick());
}

TEST_F(PanelGatewayTest, EveryTickCounts) {
  Clients().TcpIdleTicks = 0;
  Ticks(2);
  EXPECT_EQ(Clients().TcpIdleTicks, 2);
}

TEST_F(PanelGatewayTest, WhatPanelsDoIsToldAsItHappens) {
  const auto first = Connect();
  first->Send("81 0A 0A FF");
  Tick();
  const auto second = Connect();
  second->Send("81 0A 0A FF");
  Tick();
  second->Send("FE 24 00 05 00 07 00 30 FF");
  Tick();
  first->Close();
  second->Send("81 0A 0A FF 81 14 14 FF");  // the same again, and a type that is not served
  Ticks(2);
  EXPECT_THAT(events_.lines,
              ElementsAre("1 10.0.0.7 connected", "1 10.0.0.7 identified 10",
                          "2 10.0.0.7 connected", "2 10.0.0.7 identified 10",
                          "2 10.0.0.7 took 6 8 2", "1 10.0.0.7 gone", "2 10.0.0.7 identified 20"));
}

TEST_F(PanelGatewayTest, ATakeThatFailedOrWaitsHasNotHappened) {
  const auto panel = ConnectPanel();
  events_.lines.clear();
  port_.writesUntilFailure = 3;
  panel->Send("FE 20 00 05 00 07 00 2C FF");
  Tick();
  port_.writesUntilFailure = -1;
  port_.unsent = 256;
  panel->Send("FE 20 00 06 00 07 00 2D FF");
  Tick();
  EXPECT_THAT(events_.lines, IsEmpty());
  port_.unsent = 0;
  Tick();
  EXPECT_THAT(events_.lines, ElementsAre("1 10.0.0.7 took 7 8 0"));
}

TEST_F(PanelGatewayTest, APanelThatIsDroppedGoes) {
  const auto panel = ConnectPanel();
  events_.lines.clear();
  Clients().Drop(1, DropReason::DoesNotRead);
  EXPECT_THAT(events_.lines, ElementsAre("1 10.0.0.7 dropped", "1 10.0.0.7 gone"));
}

TEST_F(PanelGatewayTest, AllPanelsGoWhenTheConsoleEnds) {
  ConnectPanel();
  Connect();
  events_.lines.clear();
  gateway_.CloseAll();
  EXPECT_THAT(events_.lines, ElementsAre("1 10.0.0.7 gone", "2 10.0.0.7 gone"));
}

TEST_F(PanelGatewayTest, RowsGoToEverySlotIdentifiedOrNot) {
  const auto panel = ConnectPanel();
  const auto stranger = Connect();
  stranger->TakeWritten();
  model_.CrosspointMap.At(2, 1) = 1;
  gateway_.CrosspointRowChanged(2, 0);
  timer_.ElapseAll();
  EXPECT_EQ(panel->TakeWritten(), "F6 00 01 00 01 00 01 00 00 00 00 03 FF");
  EXPECT_EQ(stranger->TakeWritten(), "F6 00 01 00 01 00 01 00 00 00 00 03 FF");
}

TEST_F(PanelGatewayTest, WithoutPanelsNothingIsBuiltOrWaitedFor) {
  const auto panel = ConnectPanel();
  panel->Close();
  gateway_.CrosspointRowChanged(2, 0);
  gateway_.LabelsChanged(20);  // there are no stations: it would be reported
  gateway_.ButtonsChanged(1);
  EXPECT_FALSE(timer_.IsRunning());
  EXPECT_THAT(reporter_.reports, IsEmpty());
}

TEST_F(PanelGatewayTest, LabelsAndProgrammingGoToAll) {
  AddStations();
  const auto first = ConnectPanel();
  const auto second = ConnectPanel();
  gateway_.LabelsChanged(20);
  gateway_.Senders().SendAlphaTableToClients(10, 9999);
  gateway_.ButtonsChanged(1);
  std::string order;
  for (;;) {
    for (const auto& [name, peer] : {std::pair{"1", first}, {"2", second}}) {
      const std::string frame = peer->TakeWritten();
      if (!frame.empty()) order += std::string(name) + ": " + frame.substr(0, 5) + "; ";
    }
    if (!timer_.IsRunning()) break;
    timer_.Elapse();
  }
  EXPECT_EQ(order,
            "1: FC 14; 2: FC 14; 1: FC 0A; 2: FC 0A; 1: FB 00; 2: FB 00; 1: FD 00; 2: FD 00; ");
}

TEST_F(PanelGatewayTest, RandomBytesMakeNoTakeAndNoReport) {
  const auto panel = ConnectPanel();
  const auto stranger = Connect();
  std::mt19937 random(20020417);
  for (int round = 0; round < 2000; ++round) {
    Bytes noise(1 + random() % 64);
    // A lone take code waits for its end and is reported as such: that is another test.
    for (std::uint8_t& byte : noise) {
      do byte = static_cast<std::uint8_t>(random());
      while (byte == 0xFE);
    }
    panel->Send(noise);
    stranger->Send(noise);
    Ticks(30);
    timer_.Elapse();
    ASSERT_THAT(Queue().Size(), Le(8U));
  }
  EXPECT_EQ(port_.TakeWritten(), "");
  EXPECT_THAT(reporter_.reports, IsEmpty());
}

TEST_F(PanelGatewayTest, AnEndlessFrameIsBoundedAndTheOthersAreServed) {
  const auto hostile = ConnectPanel();
  const auto panel = ConnectPanel();
  Bytes chunk(4096, 0x11);
  chunk[0] = 0x80;
  int rounds = 0;
  while (Connection(1).Connected && rounds < 1000) {
    hostile->Send(chunk);
    panel->Send("F5");
    Tick();
    timer_.ElapseAll();
    ++rounds;
    ASSERT_LE(Connection(1).RxData.size(), 65536U);
  }
  EXPECT_EQ(rounds, 16);
  EXPECT_TRUE(hostile->closedByConsole);
  EXPECT_THAT(events_.dropped, ElementsAre(std::pair("10.0.0.7", DropReason::EndlessFrame)));
  EXPECT_EQ(panel->TakeWritten().size(), 3U * 16 - 1);
  EXPECT_EQ(Clients().ClientCount(), 1);
}

TEST_F(PanelGatewayTest, AFrameThatFillsTheBufferAndEndsIsOne) {
  const auto panel = ConnectPanel();
  Bytes frame(65536, 0x11);
  frame.front() = 0x80;
  frame.back() = 0xFF;
  panel->Send(frame);
  panel->Send("F5");
  Ticks(2);
  EXPECT_EQ(panel->TakeWritten(), "F4");
  EXPECT_THAT(events_.dropped, IsEmpty());
}

TEST_F(PanelGatewayTest, BytesThatBeginNoFrameAreNoFrameWithoutAnEnd) {
  const auto panel = ConnectPanel();
  panel->Send(Bytes(100000, 0x11));
  Ticks(300);
  EXPECT_TRUE(Connection(1).Connected);
  EXPECT_LE(Connection(1).RxData.size(), 65536U);
}

TEST_F(PanelGatewayTest, ThousandsOfConnectionsLeaveNothingBehind) {
  const auto panel = ConnectPanel();
  for (int i = 0; i < 5000; ++i) {
    auto peer = std::make_shared<test::FakePeer>();
    gateway_.Accept(std::make_unique<test::FakeClientSocket>(peer));
    peer->Close();
  }
  EXPECT_EQ(Clients().SocketCount(), 2);
  EXPECT_EQ(Clients().ClientCount(), 1);
  EXPECT_THAT(Queue().Size(), Le(1U));
  gateway_.CrosspointRowChanged(1, 0);
  timer_.ElapseAll();
  EXPECT_EQ(panel->TakeWritten(), "F6 00 01 00 00 00 00 00 00 01 FF");
}

// Some ninety connections a second, each of which is asked what it is, rows without a pause and
// tables for everybody; eight panels poll every two seconds.
TEST_F(PanelGatewayTest, EveryPollIsAnsweredWithinASecondWhateverElseWaits) {
  AddStations();
  std::vector<std::shared_ptr<test::FakePeer>> panels;
  for (int i = 0; i < 8; ++i) {
    panels.push_back(ConnectPanel());
    panels.back()->Send("F2 00 47 00 00 00 00 00 00 47 FF");
  }
  std::vector<int> polled(panels.size(), -1);  // when; -1 when its answer has come
  int longest = 0;
  int answers = 0;
  std::deque<std::shared_ptr<test::FakePeer>> crowd;
  timer_.now = 0;
  for (int pause = 0; pause < 800; ++pause) {
    for (int i = 0; i < 7; ++i) {
      crowd.push_back(std::make_shared<test::FakePeer>());
      gateway_.Accept(std::make_unique<test::FakeClientSocket>(crowd.back()));
    }
    while (crowd.size() > 60) {
      if (crowd.front()->connected) crowd.front()->Close();
      crowd.pop_front();
    }
    gateway_.CrosspointRowChanged(1 + pause % 8, 0);
    if (pause % 100 == 0) gateway_.LabelsChanged(20);
    for (std::size_t i = 0; i < panels.size(); ++i) {
      if (polled[i] < 0 && pause % 27 == static_cast<int>(i % 3)) {
        panels[i]->Send("F5");
        polled[i] = timer_.now;
      }
    }
    Ticks(15);
    timer_.Elapse();
    for (std::size_t i = 0; i < panels.size(); ++i) {
      if (polled[i] < 0 || panels[i]->written.empty() || panels[i]->written.back() != 0xF4)
        continue;
      longest = std::max(longest, timer_.now - polled[i]);
      polled[i] = -1;
      ++answers;
    }
  }
  EXPECT_LE(longest, 1000);
  EXPECT_GE(answers, 8 * 28);
  // Nor are the tables and rows forgotten for it: each panel has had everything that it asked for
  // and a row now and then.
  for (const auto& panel : panels) {
    std::map<std::uint8_t, int> frames;
    for (const std::uint8_t byte : panel->written) {
      if (byte >= 0x80 && byte < 0xFF) ++frames[byte];
    }
    EXPECT_GE(frames[0xFC], 2);
    EXPECT_EQ(frames[0xFB], 1);
    EXPECT_EQ(frames[0xFD], 1);
    EXPECT_GE(frames[0xF6], 3);
  }
}

TEST_F(PanelGatewayTest, RequestsThatPourInDoNotStarveTheOthers) {
  AddStations();
  const auto greedy = ConnectPanel();
  const auto panel = ConnectPanel();
  for (int i = 0; i < 200; ++i) {
    greedy->Send("F2 00 47 00 00 00 00 00 00 47 FF");
    Tick();
  }
  timer_.now = 0;
  gateway_.CrosspointRowChanged(1, 0);
  while (panel->written.empty() && timer_.IsRunning()) timer_.Elapse();
  EXPECT_EQ(panel->TakeWritten(), "F6 00 01 00 00 00 00 00 00 01 FF");
  EXPECT_LE(timer_.now, 10 * 75);
}

}  // namespace
}  // namespace gateway
