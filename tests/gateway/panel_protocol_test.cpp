// SPDX-License-Identifier: MIT

#include "gateway/panel_protocol.h"

#include "tests/gateway/gateway_fixture.h"
#include "tests/support/hex.h"

namespace gateway {
namespace {

using test::Hex;
using testing::IsEmpty;

class PanelProtocolTest : public GatewayTest {
 protected:
  // What is left of the panel's bytes, and what the switcher's line was sent, after one tick.
  std::string LeftAfterTick(int slot = 1) {
    Tick();
    return Hex(Connection(slot).RxData.View());
  }
};

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

}  // namespace
}  // namespace gateway
