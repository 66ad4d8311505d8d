// SPDX-License-Identifier: MIT

#include "gateway/qt_sockets.h"

#include <sys/resource.h>
#include <sys/socket.h>
#include <unistd.h>

#include <QCoreApplication>
#include <QDeadlineTimer>
#include <QElapsedTimer>
#include <QHostAddress>
#include <QTimer>
#include <algorithm>
#include <chrono>
#include <functional>
#include <memory>
#include <set>
#include <thread>
#include <vector>

#include "tests/gateway/gateway_fixture.h"
#include "tests/support/free_port.h"
#include "tests/support/hex.h"
#include "tests/support/raw_panel.h"

namespace gateway {
namespace {

using test::FreePort;

class ListenerTest : public testing::Test {
 protected:
  int argc_ = 0;
  QCoreApplication application_{argc_, nullptr};
  Listener listener_;
};

TEST_F(ListenerTest, HoldsThePort) {
  const int port = FreePort();
  ASSERT_TRUE(listener_.Start(port).ok());
  EXPECT_TRUE(listener_.IsListening());
  Listener second;
  const model::Status status = second.Start(port);
  EXPECT_EQ(status.Number(), kPortInUse);
  EXPECT_NE(status.Description(), "");
  EXPECT_FALSE(second.IsListening());
}

TEST_F(ListenerTest, GivesThePortBack) {
  const int port = FreePort();
  ASSERT_TRUE(listener_.Start(port).ok());
  listener_.Stop();
  Listener second;
  EXPECT_TRUE(second.Start(port).ok());
}

TEST_F(ListenerTest, ListensOnOneAddressIfItIsToldTo) {
  const int port = FreePort();
  listener_.SetAddress(QHostAddress(QStringLiteral("127.0.0.2")));
  ASSERT_TRUE(listener_.Start(port).ok());
  QTcpSocket panel;
  panel.connectToHost(QHostAddress(QHostAddress::LocalHost), static_cast<quint16>(port));
  EXPECT_FALSE(panel.waitForConnected(2000));
  QTcpSocket other;
  other.connectToHost(QHostAddress(QStringLiteral("127.0.0.2")), static_cast<quint16>(port));
  EXPECT_TRUE(other.waitForConnected(2000));
  // One that this computer does not have.
  listener_.SetAddress(QHostAddress(QStringLiteral("203.0.113.9")));
  EXPECT_FALSE(listener_.Start(port).ok());
}

// Two that come together after a while are let in together.  Where the machine does something else
// in between they are not, but not each time.
TEST_F(ListenerTest, AfterAWhileThereIsNothingToRestFrom) {
  const int port = FreePort();
  ASSERT_TRUE(listener_.Start(port).ok());
  bool areTogether = false;
  for (int attempt = 0; attempt < 20 && !areTogether; ++attempt) {
    int accepted = 0;
    int inOneGo = 0;
    listener_.SetAcceptHandler([&](const std::unique_ptr<ClientSocket>& /*client*/) {
      if (++accepted == 1) QTimer::singleShot(0, &application_, [&] { inOneGo = accepted; });
    });
    const test::RawPanel first(port);
    const test::RawPanel second(port);
    const QDeadlineTimer patience(10'000);
    while ((accepted < 2 || inOneGo == 0) && !patience.hasExpired()) {
      QCoreApplication::processEvents();
    }
    ASSERT_EQ(accepted, 2);
    areTogether = inOneGo == 2;
    std::this_thread::sleep_for(std::chrono::milliseconds(10));
  }
  EXPECT_TRUE(areTogether);
}

// A flood of connections is let in a little at a time, and everything else comes between.
TEST_F(ListenerTest, ManyAreAcceptedInTurns) {
  const int port = FreePort();
  ASSERT_TRUE(listener_.Start(port).ok());
  std::vector<std::unique_ptr<ClientSocket>> accepted;
  listener_.SetAcceptHandler([&](std::unique_ptr<ClientSocket> client) {
    std::this_thread::sleep_for(std::chrono::milliseconds(1));
    accepted.push_back(std::move(client));
  });
  std::vector<test::RawPanel> crowd;
  for (int i = 0; i < 100; ++i) crowd.emplace_back(port);
  std::size_t most = 0;
  while (accepted.size() < crowd.size()) {
    const std::size_t before = accepted.size();
    QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents);
    most = std::max(most, accepted.size() - before);
  }
  EXPECT_LE(most, 16U);
}

// Who sends and leaves before he is accepted is heard of all the same.
TEST_F(ListenerTest, WhatComesBeforeAcceptingIsTold) {
  class Counter : public ClientSocketEvents {
   public:
    void DataArrived(int slot, std::size_t /*byteCount*/) override { heard.insert(slot); }
    void PeerClosed(int slot) override { gone.insert(slot); }
    std::set<int> heard;
    std::set<int> gone;
  };
  const int port = FreePort();
  ASSERT_TRUE(listener_.Start(port).ok());
  Counter counter;
  std::vector<std::unique_ptr<ClientSocket>> accepted;
  listener_.SetAcceptHandler([&](std::unique_ptr<ClientSocket> client) {
    std::this_thread::sleep_for(std::chrono::milliseconds(4));
    client->SetEvents(&counter, static_cast<int>(accepted.size()));
    accepted.push_back(std::move(client));
  });
  for (int i = 0; i < 40; ++i) test::RawPanel(port).Send("F5");
  QElapsedTimer patience;
  patience.start();
  while (counter.gone.size() < 40 && patience.elapsed() < 60000) {
    QCoreApplication::processEvents(QEventLoop::AllEvents, 5);
  }
  EXPECT_EQ(counter.heard.size(), 40U);
  EXPECT_EQ(counter.gone.size(), 40U);
}

TEST_F(ListenerTest, PortsThatDoNotExistAreErrors) {
  EXPECT_FALSE(listener_.Start(0).ok());
  EXPECT_FALSE(listener_.Start(-1).ok());
  EXPECT_FALSE(listener_.Start(65536).ok());
  EXPECT_FALSE(listener_.Start(2147483647).ok());
  EXPECT_FALSE(listener_.IsListening());
}

TEST_F(ListenerTest, WithoutAGatewayAPanelIsTurnedAwayAtOnce) {
  const int port = FreePort();
  ASSERT_TRUE(listener_.Start(port).ok());
  QTcpSocket panel;
  panel.connectToHost(QHostAddress(QHostAddress::LocalHost), static_cast<quint16>(port));
  ASSERT_TRUE(panel.waitForConnected(2000));
  QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents);
  if (panel.state() != QAbstractSocket::UnconnectedState) {
    EXPECT_TRUE(panel.waitForDisconnected(2000));
  }
  EXPECT_EQ(panel.state(), QAbstractSocket::UnconnectedState);
}

// The gateway with real sockets.  Its pauses pass at once, or, with byTheClock_, as they
// should; it decodes every 5 ms while a test waits.
class QtSocketsTest : public GatewayTest {
 protected:
  void SetUp() override {
    GatewayTest::SetUp();
    listener_.SetAcceptHandler(
        [this](std::unique_ptr<ClientSocket> socket) { Gateway().Accept(std::move(socket)); });
    port_ = FreePort();
    ASSERT_TRUE(listener_.Start(port_).ok());
  }

  PanelGateway& Gateway() { return byTheClock_ ? clockGateway_ : gateway_; }

  // Handles events until the condition holds; whether it did in time.
  bool WaitFor(const std::function<bool()>& condition, int milliseconds = 10000) {
    QElapsedTimer time;
    time.start();
    while (!condition()) {
      if (time.elapsed() > milliseconds) return false;
      QCoreApplication::processEvents(QEventLoop::AllEvents, 5);
      timer_.Elapse();
      if (sinceTick_.isValid() && sinceTick_.elapsed() < 5) continue;
      sinceTick_.start();
      Gateway().BeginTick();
      Gateway().DecodeTick();
    }
    return true;
  }

  std::unique_ptr<QTcpSocket> NewSocket() {
    auto socket = std::make_unique<QTcpSocket>();
    socket->connectToHost(QHostAddress(QHostAddress::LocalHost), static_cast<quint16>(port_));
    return socket;
  }

  // What the panel has got, once it is at least so many bytes.
  std::string Receive(QTcpSocket& panel, qint64 atLeast) {
    WaitFor([&] { return panel.bytesAvailable() >= atLeast; });
    const QByteArray bytes = panel.readAll();
    return test::Hex({reinterpret_cast<const std::uint8_t*>(bytes.data()),
                      static_cast<std::size_t>(bytes.size())});
  }

  static void Send(QTcpSocket& panel, std::string_view hex) {
    const Bytes bytes = test::FromHex(hex);
    panel.write(reinterpret_cast<const char*>(bytes.data()), static_cast<qint64>(bytes.size()));
  }

  // A connected panel that has said what it is.
  std::unique_ptr<QTcpSocket> NewPanel() {
    auto panel = NewSocket();
    EXPECT_EQ(Receive(*panel, 4), "81 00 00 FF");
    const int slot = Gateway().Clients().SocketCount();
    Send(*panel, "81 35 35 FF F5");
    EXPECT_EQ(Receive(*panel, 1), "F4") << "slot " << slot;
    return panel;
  }

  bool IsGone(const QTcpSocket& panel) {
    return WaitFor([&] { return panel.state() == QAbstractSocket::UnconnectedState; });
  }

  int argc_ = 0;
  QCoreApplication application_{argc_, nullptr};
  Listener listener_;
  int port_ = 0;
  bool byTheClock_ = false;
  QElapsedTimer sinceTick_;
  QtPauseTimer clock_;
  PanelGateway clockGateway_{{.model = model_,
                              .locks = locks_,
                              .files = database_.Files(),
                              .commands = commands_,
                              .line = line_,
                              .timer = clock_,
                              .decodeTimer = decodeTimer_,
                              .events = events_,
                              .reporter = reporter_}};
};

TEST_F(QtSocketsTest, APanelIsAskedIdentifiedAndServed) {
  const auto panel = NewPanel();
  EXPECT_EQ(Gateway().Clients().Connection(1).PeerIP, "127.0.0.1");
  EXPECT_EQ(Gateway().Clients().Connection(1).ConnType, 53);
  model_.CrosspointMap.At(2, 1) = 1;
  Gateway().CrosspointRowChanged(2, 0);
  EXPECT_EQ(Receive(*panel, 13), "F6 00 01 00 01 00 01 00 00 00 00 03 FF");
}

TEST_F(QtSocketsTest, AFrameMayComeByteByByte) {
  const auto panel = NewPanel();
  for (const char* const byte :
       {"F2", "00", "01", "00", "00", "00", "00", "00", "00", "01", "FF"}) {
    Send(*panel, byte);
    panel->flush();
    QCoreApplication::processEvents(QEventLoop::AllEvents, 5);
  }
  EXPECT_EQ(Receive(*panel, 32).substr(0, 3 * 6), "F6 00 08 00 00 00 ");
}

TEST_F(QtSocketsTest, APanelThatClosesFreesItsSlot) {
  auto panel = NewPanel();
  panel->disconnectFromHost();
  EXPECT_TRUE(WaitFor([&] { return Gateway().Clients().ClientCount() == 0; }));
  const auto next = NewPanel();
  EXPECT_EQ(Gateway().Clients().SocketCount(), 1);
}

TEST_F(QtSocketsTest, ClosingAllIsSeenByThePanels) {
  const auto first = NewPanel();
  const auto second = NewPanel();
  Gateway().CloseAll();
  EXPECT_TRUE(IsGone(*first));
  EXPECT_TRUE(IsGone(*second));
}

TEST_F(QtSocketsTest, APauseIsNeverShorterThanItShouldBe) {
  using Clock = std::chrono::steady_clock;
  constexpr std::chrono::milliseconds kPause{7};
  std::vector<Clock::duration> pauses;
  std::function<void()> pause;
  Clock::time_point began;
  pause = [&] {
    began = Clock::now();
    clock_.Start(kPause, [&] {
      pauses.push_back(Clock::now() - began);
      pause();
    });
  };
  pause();
  ASSERT_TRUE(WaitFor([&] { return pauses.size() == 50; }));
  clock_.Stop();
  EXPECT_THAT(pauses, testing::Each(testing::Ge(kPause)));
}

TEST_F(QtSocketsTest, APauseThatIsBegunAnewOrStoppedDoesNotEnd) {
  int first = 0;
  int second = 0;
  clock_.Start(std::chrono::milliseconds(2), [&] { ++first; });
  clock_.Start(std::chrono::milliseconds(4), [&] { ++second; });
  ASSERT_TRUE(WaitFor([&] { return second > 0; }));
  clock_.Start(std::chrono::milliseconds(2), [&] { ++first; });
  clock_.Stop();
  EXPECT_FALSE(WaitFor([&] { return first > 0; }, 20));
  EXPECT_EQ(second, 1);
}

TEST_F(QtSocketsTest, ABroadcastCostsThePauseOfEverySlot) {
  byTheClock_ = true;
  std::vector<std::unique_ptr<QTcpSocket>> panels;
  for (int i = 0; i < 5; ++i) panels.push_back(NewPanel());
  for (const int gone : {0, 2, 3}) panels[static_cast<std::size_t>(gone)]->abort();
  ASSERT_TRUE(WaitFor([&] { return Gateway().Clients().ClientCount() == 2; }));
  QElapsedTimer time;
  time.start();
  // The pause that the last keep-alive answer began may still run.
  Gateway().CrosspointRowChanged(1, 0);
  Gateway().CrosspointRowChanged(2, 0);
  EXPECT_EQ(Receive(*panels[1], 22).size(), 3U * 22 - 1);
  EXPECT_GE(time.elapsed(), 6 * 75);
  EXPECT_EQ(Receive(*panels[4], 22).size(), 3U * 22 - 1);
  EXPECT_GE(time.elapsed(), 9 * 75);
}

TEST_F(QtSocketsTest, SixtyFourPanelsAtOnce) {
  std::vector<std::unique_ptr<QTcpSocket>> panels;
  for (int i = 0; i < 64; ++i) panels.push_back(NewSocket());
  for (const auto& panel : panels) EXPECT_EQ(Receive(*panel, 4), "81 00 00 FF");
  for (const auto& panel : panels) Send(*panel, "81 33 33 FF F2 00 01 00 00 00 00 00 00 01 FF");
  for (const auto& panel : panels) EXPECT_EQ(Receive(*panel, 32).size(), 3U * 32 - 1);
  EXPECT_EQ(Gateway().Clients().ClientCount(), 64);
  model_.CrosspointMap.At(8, 8) = 1;
  Gateway().CrosspointRowChanged(8, 0);
  for (const auto& panel : panels) {
    EXPECT_EQ(Receive(*panel, 13), "F6 00 01 00 07 00 01 00 00 07 00 10 FF");
  }
}

TEST_F(QtSocketsTest, AResetInTheMiddleOfATableHarmsNobodyElse) {
  const auto panel = NewPanel();
  const auto hostile = NewPanel();
  Gateway().Queue().SendToClient(FixedMessage({}, Bytes(200000, 0x11)), 2);
  Gateway().CrosspointRowChanged(1, 0);
  QCoreApplication::processEvents(QEventLoop::AllEvents, 5);
  // Closing with a linger time of zero resets the connection.
  const linger reset{.l_onoff = 1, .l_linger = 0};
  setsockopt(static_cast<int>(hostile->socketDescriptor()), SOL_SOCKET, SO_LINGER, &reset,
             sizeof reset);
  hostile->abort();
  EXPECT_TRUE(WaitFor([&] { return Gateway().Clients().ClientCount() == 1; }));
  EXPECT_EQ(Receive(*panel, 11), "F6 00 01 00 00 00 00 00 00 01 FF");
  EXPECT_THAT(reporter_.reports, testing::IsEmpty());
}

TEST_F(QtSocketsTest, APanelThatDoesNotReadIsDroppedAndTheOthersAreServed) {
  const auto panel = NewPanel();
  const auto slow = NewPanel();
  slow->setReadBufferSize(1);
  setsockopt(static_cast<int>(slow->socketDescriptor()), SOL_SOCKET, SO_RCVBUF, &argc_,
             sizeof argc_);
  for (int i = 0; i < 400; ++i) {
    Gateway().Queue().SendToClient(FixedMessage({}, Bytes(16384, 0x11)), 2);
  }
  EXPECT_TRUE(WaitFor([&] { return Gateway().Clients().ClientCount() == 1; }));
  EXPECT_THAT(events_.dropped,
              testing::ElementsAre(std::pair("127.0.0.1", DropReason::DoesNotRead)));
  Gateway().CrosspointRowChanged(1, 0);
  EXPECT_EQ(Receive(*panel, 11), "F6 00 01 00 00 00 00 00 00 01 FF");
}

TEST_F(QtSocketsTest, APanelThatSendsTooMuchIsDropped) {
  const auto panel = NewPanel();
  const auto hostile = NewPanel();
  hostile->write(QByteArray(1 << 20, '\x80'));
  EXPECT_TRUE(WaitFor([&] { return Gateway().Clients().ClientCount() == 1; }));
  EXPECT_TRUE(IsGone(*hostile));
  Send(*panel, "F5");
  EXPECT_EQ(Receive(*panel, 1), "F4");
}

TEST_F(QtSocketsTest, ThousandsOfConnectionsComeAndGo) {
  const auto panel = NewPanel();
  for (int round = 0; round < 40; ++round) {
    std::vector<std::unique_ptr<QTcpSocket>> crowd;
    for (int i = 0; i < 50; ++i) crowd.push_back(NewSocket());
    WaitFor([&] { return crowd.back()->state() == QAbstractSocket::ConnectedState; });
  }
  EXPECT_TRUE(WaitFor([&] { return Gateway().Clients().ClientCount() == 1; }));
  EXPECT_LE(Gateway().Clients().SocketCount(), 128);
  Send(*panel, "F5");
  EXPECT_EQ(Receive(*panel, 1), "F4");
}

TEST_F(QtSocketsTest, AHalfClosedConnectionEnds) {
  const auto panel = NewPanel();
  shutdown(static_cast<int>(panel->socketDescriptor()), SHUT_WR);
  EXPECT_TRUE(WaitFor([&] { return Gateway().Clients().ClientCount() == 0; }));
  EXPECT_TRUE(IsGone(*panel));
}

TEST_F(QtSocketsTest, PanelsAreAcceptedAgainOnceThereAreFiles) {
  const auto panel = NewPanel();
  rlimit files{};
  ASSERT_EQ(getrlimit(RLIMIT_NOFILE, &files), 0);
  auto late = NewSocket();
  ASSERT_TRUE(WaitFor([&] { return late->state() == QAbstractSocket::ConnectedState; }));
  ASSERT_EQ(Receive(*late, 4), "81 00 00 FF");
  // The sockets of this test and their ends in the gateway share the process's files: one more
  // file, and there is none left for the far end.
  auto refused = std::make_unique<QTcpSocket>();
  refused->connectToHost(QHostAddress(QHostAddress::LocalHost), static_cast<quint16>(port_));
  const int next = dup(0);
  close(next);
  rlimit few = files;
  few.rlim_cur = static_cast<rlim_t>(next);
  ASSERT_EQ(setrlimit(RLIMIT_NOFILE, &few), 0);
  const bool accepted = WaitFor([&] { return Gateway().Clients().ClientCount() == 3; }, 300);
  ASSERT_EQ(setrlimit(RLIMIT_NOFILE, &files), 0);
  EXPECT_FALSE(accepted);
  EXPECT_TRUE(WaitFor([&] { return Gateway().Clients().ClientCount() == 3; }));
  EXPECT_EQ(Receive(*refused, 4), "81 00 00 FF");
}

}  // namespace
}  // namespace gateway
