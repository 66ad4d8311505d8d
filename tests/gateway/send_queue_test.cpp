// SPDX-License-Identifier: MIT

#include "gateway/send_queue.h"

#include "tests/gateway/gateway_fixture.h"
#include "tests/support/hex.h"

namespace gateway {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

using Kind = MessageId::Kind;

Message Plain(const Bytes& bytes) { return FixedMessage({}, bytes); }
Message Table(int kind, const Bytes& bytes) {
  return FixedMessage({.kind = Kind::Labels, .first = kind, .count = 0}, bytes);
}
Message Row(int channel, const Bytes& bytes) {
  return FixedMessage({.kind = Kind::Row, .first = channel, .count = 1}, bytes);
}
Message WholeMap(const Bytes& bytes) {
  return FixedMessage({.kind = Kind::Map, .first = 1, .count = 8}, bytes);
}
Message KeepAlive(std::uint8_t answer) {
  return FixedMessage({.kind = Kind::KeepAlive, .first = 0, .count = 0}, {answer});
}

// Calls a function when a message is done with.
class Done : public SendQueueEvents {
 public:
  using Handler = std::function<void(int slot, MessageId id, bool sent)>;
  explicit Done(Handler handler) : handler_(std::move(handler)) {}
  void MessageDone(int slot, MessageId id, bool sent) override { handler_(slot, id, sent); }

 private:
  const Handler handler_;
};

class SendQueueTest : public GatewayTest {
 protected:
  // So many connected clients that have nothing to read any more.
  void ConnectClients(int count) {
    for (int i = 0; i < count; ++i) {
      peers_.push_back(Connect());
      peers_.back()->TakeWritten();
    }
    timer_.now = 0;
  }

  // Lets all pauses pass; "0: slot 1 AA, 75: slot 2 AA": when who was sent what.
  std::string Log() {
    std::string log;
    for (;;) {
      for (std::size_t i = 0; i < peers_.size(); ++i) {
        const std::string written = peers_[i]->TakeWritten();
        if (written.empty()) continue;
        if (!log.empty()) log += ", ";
        log += std::to_string(timer_.now) + ": slot " + std::to_string(i + 1) + " " + written;
      }
      if (!timer_.IsRunning()) return log;
      timer_.Elapse();
    }
  }

  std::vector<std::shared_ptr<test::FakePeer>> peers_;
};

TEST_F(SendQueueTest, TheFirstMessageGoesAtOnceAndTheNextAfterThePause) {
  ConnectClients(2);
  Queue().SendToClient(Plain({0xAA}), 2);
  Queue().SendToClient(Plain({0xBB}), 1);
  Queue().SendToClient(Plain({0xCC}), 2);
  EXPECT_EQ(Log(), "0: slot 2 AA, 75: slot 1 BB, 150: slot 2 CC");
  EXPECT_EQ(timer_.now, 225);
}

TEST_F(SendQueueTest, ToAllInAscendingOrder) {
  ConnectClients(3);
  Queue().SendToClient(Plain({0xAA}), 9999);
  Queue().SendToClient(Plain({0xBB}), 9999);
  EXPECT_EQ(Log(),
            "0: slot 1 AA, 75: slot 2 AA, 150: slot 3 AA, "
            "225: slot 1 BB, 300: slot 2 BB, 375: slot 3 BB");
}

TEST_F(SendQueueTest, SlotsWithoutAConnectionCostThePause) {
  ConnectClients(5);
  peers_[0]->Close();
  peers_[2]->Close();
  peers_[3]->Close();
  Queue().SendToClient(Plain({0xAA}), 9999);
  EXPECT_EQ(Log(), "75: slot 2 AA, 300: slot 5 AA");
  EXPECT_EQ(timer_.now, 375);
}

TEST_F(SendQueueTest, LongMessagesGoInPieces) {
  ConnectClients(2);
  Bytes message(16384, 0x11);
  message.resize(2 * 16384, 0x22);
  message.push_back(0x33);
  Queue().SendToClient(Plain(message), 1);
  Queue().SendToClient(Plain({0xAA}), 2);
  EXPECT_EQ(peers_[0]->written, Bytes(16384, 0x11));
  peers_[0]->written.clear();
  timer_.Elapse();
  EXPECT_EQ(peers_[0]->written, Bytes(16384, 0x22));
  peers_[0]->written.clear();
  EXPECT_EQ(Log(), "150: slot 1 33, 225: slot 2 AA");
}

TEST_F(SendQueueTest, AMessageOfExactlyOnePieceIsOnePiece) {
  ConnectClients(1);
  Queue().SendToClient(Plain(Bytes(16384, 0x11)), 1);
  EXPECT_EQ(peers_[0]->TakeWritten().size(), 3U * 16384 - 1);
  timer_.Elapse();
  EXPECT_FALSE(timer_.IsRunning());
}

TEST_F(SendQueueTest, ALongMessageToNobodyCostsAllItsPauses) {
  ConnectClients(1);
  peers_[0]->Close();
  Queue().SendToClient(Plain(Bytes(16385, 0x11)), 9999);
  EXPECT_EQ(Log(), "");
  EXPECT_EQ(timer_.now, 150);
}

TEST_F(SendQueueTest, EverySendResetsTheIdleCount) {
  ConnectClients(2);
  Clients().TcpIdleTicks = 100;
  Queue().SendToClient(Plain({0xAA}), 9999);
  EXPECT_EQ(Clients().TcpIdleTicks, 0);
  Clients().TcpIdleTicks = 100;
  timer_.Elapse();
  EXPECT_EQ(Clients().TcpIdleTicks, 0);
}

TEST_F(SendQueueTest, EveryPieceResetsTheIdleCount) {
  ConnectClients(1);
  Queue().SendToClient(Plain(Bytes(20000, 0x11)), 1);
  Clients().TcpIdleTicks = 100;
  timer_.Elapse();
  EXPECT_EQ(Clients().TcpIdleTicks, 0);
}

TEST_F(SendQueueTest, AWaitingRowIsReplacedByANewerOneOfTheSameChannel) {
  ConnectClients(2);
  Queue().SendToClient(Row(5, {0x01}), 9999);
  Queue().SendToClient(Row(6, {0x02}), 9999);
  Queue().SendToClient(Row(5, {0x03}), 9999);  // slot 1 has been sent the first already
  EXPECT_EQ(Log(), "0: slot 1 01, 75: slot 2 03, 150: slot 1 02, 225: slot 2 02, 300: slot 1 03");
}

TEST_F(SendQueueTest, ARowIsSentAsItWasWhenItCameWhateverIsRefusedSince) {
  ConnectClients(1);
  Queue().SendToClient(Plain({0xAA}), 1);
  model_.CrosspointMap.At(2, 3) = 1;
  gateway_.CrosspointRowChanged(2, 0);
  model_.CrosspointMap.At(2, 3) = 0;  // what a row leaves that is refused for its checksum
  model_.CrosspointMap.At(2, 8) = 1;
  model_.ChannelStatus[2] = 1;
  EXPECT_EQ(Log(), "0: slot 1 AA, 75: slot 1 F6 00 01 00 01 00 01 00 00 02 00 05 FF");
}

TEST_F(SendQueueTest, ANewerRowTakesThePlaceOfOneThatWaits) {
  ConnectClients(1);
  Queue().SendToClient(Plain({0xAA}), 1);
  gateway_.CrosspointRowChanged(2, 0);
  gateway_.CrosspointRowChanged(1, 0);
  model_.CrosspointMap.At(2, 3) = 1;
  gateway_.CrosspointRowChanged(2, 0);
  EXPECT_EQ(Log(),
            "0: slot 1 AA, 75: slot 1 F6 00 01 00 01 00 01 00 00 02 00 05 FF, "
            "150: slot 1 F6 00 01 00 00 00 00 00 00 01 FF");
}

TEST_F(SendQueueTest, TheWholeMapIsSentAsItWasWhenItWasAskedFor) {
  ConnectClients(1);
  Queue().SendToClient(Plain({0xAA}), 1);
  gateway_.Senders().SendCrosspointMapToClients(1, 8, 1);
  model_.CrosspointMap.At(2, 8) = 1;
  EXPECT_EQ(Log(),
            "0: slot 1 AA, 75: slot 1 F6 00 08 00 00 00 00 00 00 00 00 00 00 00 00 00 00 00 00 00 "
            "00 00 00 00 00 00 00 00 00 00 08 FF");
}

// Ahead of the map it would say less than the panel hears then.
TEST_F(SendQueueTest, ARowThatWaitedAheadOfAMapGoesBehindItWhenItChanges) {
  ConnectClients(1);
  Queue().SendToClient(Plain({0xAA}), 1);
  Queue().SendToClient(Row(5, {0x05}), 9999);
  Queue().SendToClient(Row(6, {0x06}), 9999);
  Queue().SendToClient(WholeMap({0x10}), 1);
  Queue().SendToClient(Row(7, {0x07}), 9999);
  Queue().SendToClient(Row(5, {0x55}), 9999);
  Queue().SendToClient(Row(7, {0x77}), 9999);
  EXPECT_EQ(Log(), "0: slot 1 AA, 75: slot 1 06, 150: slot 1 10, 225: slot 1 77, 300: slot 1 55");
}

TEST_F(SendQueueTest, AWaitingTableIsReplacedByANewerOneForAll) {
  ConnectClients(1);
  Queue().SendToClient(Plain({0xAA}), 1);
  for (std::uint8_t i = 1; i <= 100; ++i) {
    Queue().SendToClient(Table(10, {i}), 9999);
    Queue().SendToClient(Table(20, {i}), 9999);
  }
  EXPECT_EQ(Queue().Size(), 2U);
  EXPECT_EQ(Log(), "0: slot 1 AA, 75: slot 1 64, 150: slot 1 64");
}

TEST_F(SendQueueTest, MessagesThatBelongTogetherStayTogether) {
  ConnectClients(1);
  const auto pair = [](std::uint8_t first, std::uint8_t second) {
    return std::vector<Message>{
        FixedMessage({.kind = Kind::StationList, .first = 0, .count = 0}, {first}),
        FixedMessage({.kind = Kind::ButtonProgramming, .first = 0, .count = 0}, {second})};
  };
  Queue().SendToClient(pair(0x01, 0x02), 9999);  // the first of them is out
  Queue().SendToClient(pair(0x03, 0x04), 9999);
  Queue().SendToClient(pair(0x05, 0x06), 9999);
  EXPECT_EQ(Log(), "0: slot 1 01, 75: slot 1 02, 150: slot 1 05, 225: slot 1 06");
}

TEST_F(SendQueueTest, WhatAPanelAskedForKeepsItsOrderAndIsKeptUpToDate) {
  ConnectClients(2);
  Queue().SendToClient(Plain({0xAA}), 1);
  Queue().SendToClient(Table(10, {0x01}), 9999);
  Queue().SendToClient(Table(20, {0x02}), 1);
  Queue().SendToClient(Table(10, {0x03}), 1);  // replaces nothing
  Queue().SendToClient(Table(10, {0x04}), 9999);
  EXPECT_EQ(Log(), "0: slot 1 AA, 75: slot 1 01, 150: slot 2 04, 225: slot 1 02, 300: slot 1 04");
}

TEST_F(SendQueueTest, AnAnswerThatSomethingForAllHasReplacedIsDoneWithAllTheSame) {
  ConnectClients(1);
  std::string done;
  Done observer([&](int, MessageId id, bool) { done += std::to_string(id.first) + ";"; });
  Queue().AddObserver(observer);
  Queue().SendToClient(Plain({0xAA}), 1);
  Queue().SendToClient(Table(10, {0x01}), 1);
  Queue().SendToClient(Table(10, {0x02}), 9999);
  EXPECT_EQ(Log(), "0: slot 1 AA, 75: slot 1 02");
  EXPECT_EQ(done, "0;10;");
}

TEST_F(SendQueueTest, ToAllThePartsGoOneAfterTheOther) {
  ConnectClients(2);
  Queue().SendToClient({Plain({0x01}), Plain({0x02})}, 9999);
  EXPECT_EQ(Log(), "0: slot 1 01, 75: slot 2 01, 150: slot 1 02, 225: slot 2 02");
}

TEST_F(SendQueueTest, KeepAliveAnswersGoAheadOfWhatElseWaits) {
  ConnectClients(3);
  Queue().SendToClient(Row(1, {0x01}), 1);
  Queue().SendToClient(Row(2, {0x02}), 1);
  Queue().SendToClient(Table(10, {0x03}), 1);
  Queue().SendToClient(Table(20, {0x04}), 2);
  Queue().SendToClient(KeepAlive(0xF4), 2);
  Queue().SendToClient(KeepAlive(0xF4), 3);
  EXPECT_EQ(Log(),
            "0: slot 1 01, 75: slot 2 F4, 150: slot 3 F4, 225: slot 1 02, 300: slot 1 03, "
            "375: slot 2 04");
}

TEST_F(SendQueueTest, AnAnswerGoesOutBetweenThePiecesOfSomebodyElsesTable) {
  ConnectClients(2);
  Queue().SendToClient(Table(10, Bytes(3 * 16384, 0x11)), 1);
  peers_[0]->written.clear();
  Queue().SendToClient(KeepAlive(0xF4), 2);
  timer_.Elapse();
  EXPECT_EQ(peers_[1]->TakeWritten(), "F4");
  EXPECT_EQ(peers_[0]->TakeWritten(), "");
  timer_.Elapse();
  EXPECT_EQ(peers_[0]->written.size(), 16384U);
}

TEST_F(SendQueueTest, TheWholeMapIsATable) {
  ConnectClients(2);
  Queue().SendToClient(Plain({0xAA}), 1);
  gateway_.Senders().SendCrosspointMapToClients(1, 8, 1);
  Queue().SendToClient(KeepAlive(0xF4), 2);
  timer_.Elapse();
  EXPECT_EQ(peers_[1]->TakeWritten(), "F4");
}

TEST_F(SendQueueTest, AKeepAliveAnswerDoesNotCutIntoATable) {
  ConnectClients(1);
  Bytes message(16384, 0x11);
  message.push_back(0x22);
  Queue().SendToClient(Table(10, message), 1);
  peers_[0]->written.clear();
  Queue().SendToClient(KeepAlive(0xF4), 1);
  EXPECT_EQ(Log(), "75: slot 1 22, 150: slot 1 F4");
}

TEST_F(SendQueueTest, EveryPollHasItsAnswerAndSixtyFourWait) {
  ConnectClients(2);
  Queue().SendToClient(Plain({0xAA}), 1);
  for (int i = 0; i < 10; ++i) Queue().SendToClient(KeepAlive(0xF4), 1);
  for (int i = 0; i < 100; ++i) Queue().SendToClient(KeepAlive(0xF4), 2);
  EXPECT_EQ(Queue().Size(), 74U);
  timer_.ElapseAll();
  EXPECT_EQ(peers_[0]->TakeWritten(), "AA F4 F4 F4 F4 F4 F4 F4 F4 F4 F4");
  EXPECT_EQ(peers_[1]->written.size(), 64U);
}

TEST_F(SendQueueTest, PanelsAreAnsweredInTurn) {
  ConnectClients(3);
  Queue().SendToClient(Plain({0xAA}), 1);
  for (const int slot : {1, 1, 1, 2, 3}) Queue().SendToClient(KeepAlive(0xF4), slot);
  EXPECT_EQ(Log(),
            "0: slot 1 AA, 75: slot 1 F4, 150: slot 2 F4, 225: slot 3 F4, 300: slot 1 F4, "
            "375: slot 1 F4");
}

TEST_F(SendQueueTest, APanelThatPollsWithoutAPauseHasEverySecondMessageAtMost) {
  ConnectClients(2);
  Queue().SendToClient(Plain({0xAA}), 1);
  for (int i = 0; i < 5; ++i) Queue().SendToClient(KeepAlive(0xF4), 2);
  for (std::uint8_t channel = 1; channel <= 3; ++channel) {
    Queue().SendToClient(Row(channel, {channel}), 1);
  }
  EXPECT_EQ(Log(),
            "0: slot 1 AA, 75: slot 2 F4, 150: slot 1 01, 225: slot 2 F4, 300: slot 1 02, "
            "375: slot 2 F4, 450: slot 1 03, 525: slot 2 F4, 600: slot 2 F4");
}

TEST_F(SendQueueTest, ManyPollsLeaveEveryNinthMessageToWhatElseWaits) {
  ConnectClients(20);
  Queue().SendToClient(Plain({0xAA}), 1);
  for (int slot = 1; slot <= 20; ++slot) {
    for (int i = 0; i < 3; ++i) Queue().SendToClient(KeepAlive(0xF4), slot);
  }
  for (std::uint8_t channel = 1; channel <= 3; ++channel) {
    Queue().SendToClient(Row(channel, {channel}), 1);
  }
  const std::string log = Log();
  for (const char* const row : {"675: slot 1 01,", "1350: slot 1 02,", "2025: slot 1 03,"}) {
    EXPECT_THAT(log, testing::HasSubstr(row));
  }
}

TEST_F(SendQueueTest, WhatWasForAClientThatWentIsForgotten) {
  ConnectClients(2);
  Queue().SendToClient(Plain({0xAA}), 2);
  Queue().SendToClient(Table(10, {0x10}), 1);
  Queue().SendToClient(Table(20, {0x20}), 2);
  peers_[0]->Close();
  EXPECT_EQ(Log(), "0: slot 2 AA, 75: slot 2 20");
}

TEST_F(SendQueueTest, TheRestOfATableIsForgottenWithItsClient) {
  ConnectClients(2);
  Queue().SendToClient(Table(10, Bytes(100000, 0x10)), 1);
  Queue().SendToClient(Plain({0xAA}), 2);
  peers_[0]->written.clear();
  peers_[0]->Close();
  EXPECT_EQ(Log(), "75: slot 2 AA");
}

TEST_F(SendQueueTest, ANewClientOfASlotGetsNothingOfTheFormerOnes) {
  ConnectClients(2);
  Queue().SendToClient(Plain({0xAA}), 2);
  Queue().SendToClient(Row(5, {0x05}), 9999);
  Queue().SendToClient(Table(10, {0x10}), 1);
  peers_[0]->Close();
  peers_[0] = std::make_shared<test::FakePeer>();
  gateway_.Accept(std::make_unique<test::FakeClientSocket>(peers_[0]));
  EXPECT_EQ(Log(), "0: slot 2 AA, 75: slot 1 81 00 00 FF, 225: slot 2 05");
}

TEST_F(SendQueueTest, ANewClientIsAskedFirstAndThenToldTheRow) {
  ConnectClients(2);
  Queue().SendToClient(Plain({0xAA}), 2);
  Queue().SendToClient(Row(5, {0x05}), 9999);
  peers_[0]->Close();
  peers_[0] = std::make_shared<test::FakePeer>();
  gateway_.Accept(std::make_unique<test::FakeClientSocket>(peers_[0]));
  Queue().SendToClient(Row(5, {0x06}), 9999);
  EXPECT_EQ(Log(), "0: slot 2 AA, 75: slot 1 81 00 00 FF, 150: slot 2 06, 225: slot 1 06");
}

TEST_F(SendQueueTest, ANewClientIsAskedBeforeTheRowsOfTheOthers) {
  ConnectClients(2);
  for (int channel = 1; channel <= 8; ++channel) gateway_.CrosspointRowChanged(channel, 0);
  peers_.push_back(std::make_shared<test::FakePeer>());
  gateway_.Accept(std::make_unique<test::FakeClientSocket>(peers_.back()));
  peers_[0]->TakeWritten();
  timer_.Elapse();
  EXPECT_EQ(peers_[2]->TakeWritten(), "81 00 00 FF");
  EXPECT_EQ(timer_.now, 75);
  EXPECT_EQ(peers_[0]->TakeWritten(), "");
  EXPECT_EQ(peers_[1]->TakeWritten(), "");
  timer_.Elapse();
  EXPECT_EQ(peers_[1]->TakeWritten(), "F6 00 01 00 00 00 00 00 00 01 FF");
}

TEST_F(SendQueueTest, ConnectionsCannotHoldUpRowsForEver) {
  ConnectClients(1);
  Queue().SendToClient(Plain({0xAA}), 1);
  for (std::uint8_t channel = 1; channel <= 3; ++channel) {
    Queue().SendToClient(Row(channel, {channel}), 1);
  }
  for (int i = 0; i < 6; ++i) {
    peers_.push_back(std::make_shared<test::FakePeer>());
    gateway_.Accept(std::make_unique<test::FakeClientSocket>(peers_.back()));
  }
  EXPECT_EQ(Log(),
            "0: slot 1 AA, 75: slot 2 81 00 00 FF, 150: slot 1 01, 225: slot 3 81 00 00 FF, "
            "300: slot 1 02, 375: slot 4 81 00 00 FF, 450: slot 1 03, 525: slot 5 81 00 00 FF, "
            "600: slot 6 81 00 00 FF, 675: slot 7 81 00 00 FF");
}

TEST_F(SendQueueTest, TheQueueStaysBoundedWhileRowsPourIn) {
  ConnectClients(4);
  for (int round = 0; round < 100; ++round) {
    for (int channel = 1; channel <= 8; ++channel) {
      gateway_.CrosspointRowChanged(channel, 0);
      Queue().SendToClient(KeepAlive(0xF4), 1 + round % 4);
    }
  }
  EXPECT_LE(Queue().Size(), 4U * 8 + 4 * 64);
}

TEST_F(SendQueueTest, AClientThatDoesNotReadIsDropped) {
  ConnectClients(2);
  peers_[0]->reads = false;
  for (int i = 0; i < 64; ++i) {
    Queue().SendToClient(Plain(Bytes(16384, 0x11)), 1);
    timer_.ElapseAll();
  }
  EXPECT_EQ(peers_[0]->unsent, 1048576U);
  EXPECT_FALSE(peers_[0]->closedByConsole);
  Queue().SendToClient(Plain({0x22}), 1);
  Queue().SendToClient(Plain({0x33}), 1);
  Queue().SendToClient(Plain({0xAA}), 2);
  EXPECT_TRUE(peers_[0]->closedByConsole);
  EXPECT_EQ(Clients().ClientCount(), 1);
  timer_.ElapseAll();
  EXPECT_EQ(peers_[1]->TakeWritten(), "AA");
  EXPECT_THAT(reporter_.reports, IsEmpty());
  EXPECT_THAT(events_.dropped, ElementsAre(std::pair("10.0.0.7", DropReason::DoesNotRead)));
}

TEST_F(SendQueueTest, AFailedWriteIsReportedAndTheOthersGoOn) {
  ConnectClients(2);
  peers_[0]->failsWrites = true;
  Queue().SendToClient(Plain(Bytes(40000, 0x11)), 1);
  Queue().SendToClient(Plain({0xAA}), 2);
  EXPECT_THAT(reporter_.reports,
              ElementsAre("critical|Error Processing|Error in Error Sending Message to IP"
                          "\rError # 10054 - The connection is broken"));
  EXPECT_EQ(Log(), "75: slot 2 AA");
}

TEST_F(SendQueueTest, TellsWhenAMessageForOneSlotIsDoneWith) {
  ConnectClients(2);
  std::string done;
  Done observer([&](int slot, MessageId id, bool sent) {
    done += "slot " + std::to_string(slot) + " kind " + std::to_string(id.first) +
            (sent ? " sent; " : " not sent; ");
  });
  Queue().AddObserver(observer);
  Queue().SendToClient(Table(1, Bytes(20000, 0x11)), 1);
  Queue().SendToClient(Table(2, {0x10}), 9999);
  Queue().SendToClient(Table(3, {}), 2);
  peers_[1]->failsWrites = true;
  Queue().SendToClient(Table(4, {0x20}), 2);
  EXPECT_EQ(done, "");
  timer_.Elapse();
  EXPECT_EQ(done, "slot 1 kind 1 sent; ");
  timer_.ElapseAll();
  EXPECT_EQ(done, "slot 1 kind 1 sent; slot 2 kind 3 not sent; slot 2 kind 4 not sent; ");
}

TEST_F(SendQueueTest, AMessageWhoseConnectionEndsWhileItIsWrittenIsNotDone) {
  ConnectClients(1);
  int done = 0;
  Done observer([&](int, MessageId, bool) { ++done; });
  Queue().AddObserver(observer);
  peers_[0]->closesAtWrite = true;
  Queue().SendToClient(Plain({0xAA}), 1);
  timer_.ElapseAll();
  EXPECT_EQ(Clients().ClientCount(), 0);
  EXPECT_EQ(done, 0);
}

TEST_F(SendQueueTest, NothingForOneSlotWaitsThatHasNoConnection) {
  ConnectClients(2);
  peers_[0]->Close();
  Queue().SendToClient(Plain({0xAA}), 1);
  EXPECT_EQ(Queue().Size(), 0U);
  EXPECT_FALSE(timer_.IsRunning());
}

// As many connections as there may be have been and gone, and one panel is left.
TEST_F(SendQueueTest, AFloodThatIsOverCostsAMessageForAllSixteenPausesAtMost) {
  ConnectClients(127);
  for (std::size_t i = 0; i < 126; ++i) peers_[i]->Close();
  EXPECT_EQ(Clients().SocketCount(), 127);
  Queue().SendToClient(Row(1, {0x01}), 9999);
  Queue().SendToClient(Row(2, {0x02}), 9999);
  EXPECT_EQ(Log(), "1200: slot 127 01, 2475: slot 127 02");
  EXPECT_EQ(timer_.now, 2550);
}

TEST_F(SendQueueTest, WhatWaitedForAFloodCostsNoMoreWhenItIsOver) {
  ConnectClients(127);
  Queue().SendToClient(Plain({0xAA}), 127);
  Queue().SendToClient(Row(1, {0x01}), 9999);
  Queue().SendToClient(Row(2, {0x02}), 9999);
  for (std::size_t i = 0; i < 126; ++i) peers_[i]->Close();
  EXPECT_EQ(Log(), "0: slot 127 AA, 1275: slot 127 01, 2550: slot 127 02");
}

TEST_F(SendQueueTest, APauseForNobodyIsThatOfAllPieces) {
  ConnectClients(21);
  for (std::size_t i = 0; i < 20; ++i) peers_[i]->Close();
  Queue().SendToClient(Plain(Bytes(16385, 0x11)), 9999);
  while (peers_[20]->written.empty() && timer_.IsRunning()) timer_.Elapse();
  EXPECT_EQ(timer_.now, 2 * 16 * 75);
}

}  // namespace
}  // namespace gateway
