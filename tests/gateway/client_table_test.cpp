// SPDX-License-Identifier: MIT

#include "gateway/client_table.h"

#include "tests/gateway/gateway_fixture.h"
#include "tests/support/hex.h"

namespace gateway {
namespace {

using test::Hex;
using testing::ElementsAre;
using testing::IsEmpty;

using ClientTableTest = GatewayTest;

TEST_F(ClientTableTest, ANewClientIsAskedWhatItIs) {
  const auto peer = Connect();
  EXPECT_EQ(peer->TakeWritten(), "81 00 00 FF");
  EXPECT_EQ(Clients().SocketCount(), 1);
  EXPECT_EQ(Clients().ClientCount(), 1);
  EXPECT_TRUE(Connection(1).Connected);
  EXPECT_FALSE(Connection(1).Identified);
  EXPECT_EQ(Connection(1).PeerIP, "10.0.0.7");
  EXPECT_EQ(Connection(1).ConnType, 0);
  EXPECT_EQ(Connection(1).KeepAliveCount, 0);
  EXPECT_THAT(events_.lines, ElementsAre("1 10.0.0.7 connected"));
}

TEST_F(ClientTableTest, TheLowestFreeSlotIsUsedAgain) {
  const auto first = Connect();
  const auto second = Connect();
  const auto third = Connect();
  EXPECT_EQ(third->slot, 3);
  first->Close();
  second->Close();
  EXPECT_EQ(Clients().ClientCount(), 1);
  EXPECT_EQ(Clients().SocketCount(), 3);
  EXPECT_EQ(Connect()->slot, 1);
  EXPECT_EQ(Connect()->slot, 2);
  EXPECT_EQ(Connect()->slot, 4);
  EXPECT_EQ(Clients().SocketCount(), 4);
  EXPECT_EQ(Clients().ClientCount(), 4);
}

TEST_F(ClientTableTest, ClosingEmptiesTheRecordButNotThePendingFlags) {
  const auto peer = ConnectPanel();
  ClientConnection& connection = Connection(1);
  connection.AlphasPending = connection.Option20Pending = connection.ButtonsPending = true;
  connection.KeepAliveCount = 5;
  peer->Send("F2 00");
  peer->Close();
  EXPECT_FALSE(connection.Connected);
  EXPECT_FALSE(connection.Identified);
  EXPECT_EQ(connection.PeerIP, "");
  EXPECT_EQ(connection.ConnType, 0);
  EXPECT_EQ(connection.KeepAliveCount, 0);
  EXPECT_THAT(connection.RxData, IsEmpty());
  EXPECT_TRUE(connection.AlphasPending);
  EXPECT_TRUE(connection.Option20Pending);
  EXPECT_TRUE(connection.ButtonsPending);
  EXPECT_TRUE(peer->closedByConsole);
  EXPECT_EQ(Clients().ClientCount(), 0);
}

TEST_F(ClientTableTest, ClosingTwiceCountsOnce) {
  const auto peer = Connect();
  peer->Close();
  peer->Close();
  EXPECT_EQ(Clients().ClientCount(), 0);
}

TEST_F(ClientTableTest, AConnectionThatWentWithoutAWordMakesRoom) {
  const auto peer = ConnectPanel();
  peer->connected = false;
  EXPECT_EQ(Connect()->slot, 1);
  EXPECT_EQ(Clients().ClientCount(), 1);
  EXPECT_FALSE(Connection(1).Identified);
}

TEST_F(ClientTableTest, DataIsKeptInTheOrderOfItsArrival) {
  const auto peer = Connect();
  peer->incoming.push_back({0x81});
  peer->Send("35");
  peer->Send("35 FF");
  EXPECT_EQ(Hex(Connection(1).RxData.View()), "81 35 35 FF");
}

TEST_F(ClientTableTest, AReadTakesOneByteMoreThanTheEventSays) {
  const auto peer = Connect();
  peer->incoming.push_back(test::FromHex("81 35 35 FF"));
  // Four bytes are there, one is announced: two reads of two bytes.
  peer->events->DataArrived(1, 1);
  EXPECT_EQ(Hex(Connection(1).RxData.View()), "81 35 35 FF");
}

TEST_F(ClientTableTest, DataStartsTheDecodeTimerAndResetsTheIdleCount) {
  const auto peer = Connect();
  Clients().TcpIdleTicks = 100;
  const int starts = decodeTimer_.starts;
  peer->Send("81");
  EXPECT_EQ(decodeTimer_.starts, starts + 1);
  EXPECT_EQ(Clients().TcpIdleTicks, 0);
}

TEST_F(ClientTableTest, AnEventWithoutDataStartsNothing) {
  const auto peer = Connect();
  Clients().TcpIdleTicks = 100;
  const int starts = decodeTimer_.starts;
  peer->events->DataArrived(1, 0);
  EXPECT_EQ(decodeTimer_.starts, starts);
  EXPECT_EQ(Clients().TcpIdleTicks, 100);
}

TEST_F(ClientTableTest, AReadThatEndsWithTheConnectionStartsNothing) {
  const auto peer = Connect();
  const int starts = decodeTimer_.starts;
  peer->connected = false;
  peer->Send("81 35");
  EXPECT_EQ(decodeTimer_.starts, starts);
  EXPECT_EQ(Hex(Connection(1).RxData.View()), "81 35");
}

TEST_F(ClientTableTest, AFailedReadIsReported) {
  const auto peer = Connect();
  const int starts = decodeTimer_.starts;
  peer->failsReads = true;
  peer->Send("81 35 35 FF");
  EXPECT_THAT(reporter_.reports,
              ElementsAre("critical|Error Processing|Error in Error Interpreting TCP Message Data"
                          "\rError # 10054 - The connection is broken"));
  EXPECT_EQ(decodeTimer_.starts, starts);
}

TEST_F(ClientTableTest, AFullReceiveBufferIsReadOnWhenThereIsRoom) {
  const auto peer = ConnectPanel();
  // Frames of four bytes that are read and discarded, and a poll behind them.
  peer->Send(test::FromHex(test::Times(20000, "80 11 22 FF") + "F5"));
  EXPECT_EQ(Connection(1).RxData.size(), 65536U);
  EXPECT_TRUE(Tick());
  EXPECT_EQ(Connection(1).RxData.size(), 65532U);
  EXPECT_TRUE(Tick());
  EXPECT_EQ(Connection(1).RxData.size(), 65532U);
  while (Tick()) EXPECT_LE(Connection(1).RxData.size(), 65536U);
  EXPECT_EQ(peer->TakeWritten(), "F4");
  EXPECT_THAT(events_.dropped, IsEmpty());
}

TEST_F(ClientTableTest, AFullBufferThatNothingIsLeftBehindIsReadOnInVain) {
  const auto peer = ConnectPanel();
  peer->Send(test::FromHex(test::Times(16384, "80 11 22 FF")));
  Ticks(2);
  EXPECT_EQ(Connection(1).RxData.size(), 65528U);
  EXPECT_THAT(reporter_.reports, IsEmpty());
}

TEST_F(ClientTableTest, IdentificationByAcceptedTypes) {
  const auto peer = Connect();
  peer->Send("81 3C 3C FF");  // 60
  Tick();
  EXPECT_TRUE(Connection(1).Identified);
  EXPECT_EQ(Connection(1).ConnType, 60);
  EXPECT_EQ(events_.lines.back(), "1 10.0.0.7 identified 60");
  peer->Send("81 0A 0A FF");  // 10
  Tick();
  EXPECT_TRUE(Connection(1).Identified);
  EXPECT_EQ(Connection(1).ConnType, 10);
  EXPECT_EQ(events_.lines.back(), "1 10.0.0.7 identified 10");
}

TEST_F(ClientTableTest, ARefusedTypeTakesTheIdentificationBack) {
  const auto peer = ConnectPanel();
  peer->Send("81 14 14 FF");  // 20
  Tick();
  EXPECT_FALSE(Connection(1).Identified);
  EXPECT_EQ(Connection(1).ConnType, 20);
  EXPECT_TRUE(Connection(1).Connected);
  EXPECT_EQ(peer->TakeWritten(), "");
}

TEST_F(ClientTableTest, AReplyWithAWrongChecksumChangesNothing) {
  const auto peer = ConnectPanel();
  peer->Send("81 14 15 FF");
  Tick();
  EXPECT_TRUE(Connection(1).Identified);
  EXPECT_EQ(Connection(1).ConnType, 53);
}

TEST_F(ClientTableTest, AReplyThatSaysNothingChangesNothing) {
  const auto peer = ConnectPanel();
  peer->Send("81 FF 81 33 FF");  // no data: what stands before the end is no checksum of it
  Ticks(2);
  EXPECT_THAT(Connection(1).RxData, IsEmpty());
  EXPECT_TRUE(Connection(1).Identified);
  EXPECT_EQ(Connection(1).ConnType, 53);
}

TEST_F(ClientTableTest, AReplyOfAnyLengthCounts) {
  const auto peer = Connect();
  peer->Send("81 33 01 02 36 FF");
  Tick();
  EXPECT_TRUE(Connection(1).Identified);
  EXPECT_EQ(Connection(1).ConnType, 51);
}

TEST_F(ClientTableTest, ALaterClientOfASlotIsNotTheFormerOne) {
  const auto first = ConnectPanel();
  const auto number = Clients().ConnectionNumber(1);
  first->Close();
  Connect();
  EXPECT_NE(Clients().ConnectionNumber(1), number);
}

TEST_F(ClientTableTest, AFullTableDropsWhoNeverSaidWhatItIs) {
  std::vector<std::shared_ptr<test::FakePeer>> panels;
  for (int i = 0; i < 126; ++i) panels.push_back(ConnectPanel());
  const auto silent = Connect();
  const auto silentToo = Connect();
  EXPECT_EQ(Clients().SocketCount(), 128);
  const auto panel = ConnectPanel();
  EXPECT_EQ(panel->slot, 127);
  EXPECT_TRUE(silent->closedByConsole);
  EXPECT_FALSE(silentToo->closedByConsole);
  EXPECT_EQ(ConnectPanel()->slot, 128);
  EXPECT_TRUE(silentToo->closedByConsole);
  EXPECT_EQ(Clients().ClientCount(), 128);
}

TEST_F(ClientTableTest, AFullTableOfPanelsTakesNobody) {
  for (int i = 0; i < 128; ++i) ConnectPanel();
  const auto late = Connect();
  EXPECT_TRUE(late->closedByConsole);
  EXPECT_EQ(late->TakeWritten(), "");
  EXPECT_EQ(Clients().SocketCount(), 128);
  EXPECT_EQ(Clients().ClientCount(), 128);
}

TEST_F(ClientTableTest, ClosingAllClosesEveryConnection) {
  const auto first = ConnectPanel();
  const auto second = Connect();
  gateway_.CloseAll();
  EXPECT_TRUE(first->closedByConsole);
  EXPECT_TRUE(second->closedByConsole);
  EXPECT_EQ(Clients().ClientCount(), 0);
  EXPECT_FALSE(timer_.IsRunning());
}

}  // namespace
}  // namespace gateway
