// SPDX-License-Identifier: MIT
//
// The open gateway with real sockets of this computer.

#include "app/network/open_gateway.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <QLabel>
#include <QTcpServer>
#include <QTcpSocket>
#include <QTest>
#include <string>
#include <vector>

#include "app/shell/main_window.h"
#include "stations/record.h"
#include "tests/app/patience.h"
#include "tests/support/fake_serial_port.h"
#include "tests/support/free_port.h"
#include "tests/support/hex.h"
#include "tests/support/recording_reporter.h"
#include "tests/support/small_database.h"

namespace app {
namespace {

using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;

constexpr char kRootAsked[] =
    "FE 00 0E 00 01 C0 01 02 1F 02 60 0B 6B 09 A0 07 62 05 A0 03 02 01 20 B4 EC FF";
constexpr char kConnect[] =
    "FE 00 0E 00 01 C0 01 02 1F 02 60 23 6B 21 A0 1F 71 1D A0 04 0D 02 01 02 A5 15 30 13 A0 11 70 "
    "0F A0 03 02 01 05 A1 03 0D 01 03 A2 03 02 01 01 8E 96 FF";

class OpenGatewayTest : public testing::Test {
 protected:
  OpenGatewayTest() {
    model_.ChannelCount = 8;
    model_.AllocateMap();
    model_.LinkStatus = {1, 1, 0};
    model_.XmapComplete = true;
    for (int output = 1; output <= 8; ++output) knownMap_.CrosspointRowChanged(output, 0);
    for (int i = 1; i <= 8; ++i) {
      const std::string number = std::to_string(i);
      database_.AddStation(i, {{"Label", "CAM " + number}, {"InLabel", "MIC " + number}});
    }
    EXPECT_TRUE(port_.Open(1).ok());
    window_.show();
  }

  // What the installer has written, with this port in place of PORT.
  void Begin(std::string lines) {
    number_ = test::FreePort();
    const std::size_t at = lines.find("PORT");
    if (at != std::string::npos) lines.replace(at, 4, std::to_string(number_));
    gateway_ = std::make_unique<OpenGateway>(OpenGateway::Services{
        .access = ReadOpenGatewayAccess(config::IniFile("[OPEN GATEWAY]\n" + lines)),
        .model = model_,
        .database = [this] { return database_.Files().Database(); },
        .changes = changes_,
        .locks = locks_,
        .port = port_,
        .knownMap = knownMap_,
        .line = line_,
        .labels = labels_,
        .hints = window_.Hints(),
        .flood = flood_,
        .reporter = reporter_,
        .gainsChanged = [] {}});
    const auto note = [this](const QString& text) { lines_.push_back(text.toStdString()); };
    QObject::connect(gateway_.get(), &OpenGateway::Happened, note);
    QObject::connect(gateway_.get(), &OpenGateway::HappenedAgain, note);
    QObject::connect(gateway_.get(), &OpenGateway::PeersChanged, &window_.Status(),
                     &StatusBar::SetControllers);
    gateway_->Begin();
  }

  void Connect(QTcpSocket& socket) {
    socket.connectToHost(QHostAddress(QHostAddress::LocalHost), static_cast<quint16>(number_));
  }
  void Send(QTcpSocket& socket, std::string_view hex) {
    const auto bytes = test::FromHex(hex);
    socket.write(reinterpret_cast<const char*>(bytes.data()), static_cast<qint64>(bytes.size()));
  }

  QLabel* Aid() const { return window_.findChild<QLabel*>(QStringLiteral("aidControllers")); }

  CommandTable commands_;
  MainWindow window_{commands_};
  model::SystemModel model_;
  switcher::KnownMap knownMap_{model_};
  test::SmallDatabase database_;
  stations::Changes changes_;
  model::Locks locks_;
  test::FakeSerialPort port_;
  test::RecordingReporter reporter_;
  switcher::LineShare line_{port_, [] { return std::chrono::milliseconds(500); }};
  ChannelLabels labels_{{.model = model_,
                         .database = [this] { return database_.Files().Database(); },
                         .changes = changes_}};
  ConnectionFlood flood_{window_.Hints()};
  int number_ = 0;
  std::vector<std::string> lines_;
  std::unique_ptr<OpenGateway> gateway_;
};

TEST_F(OpenGatewayTest, IsOffUnlessItIsWanted) {
  Begin("Takes=Yes\n");
  EXPECT_FALSE(gateway_->IsListening());
  EXPECT_FALSE(Aid()->isVisible());
  EXPECT_THAT(lines_, IsEmpty());
}

// The switcher fell silent while the port was open: the poll would go on as if nothing had been.
TEST_F(OpenGatewayTest, BehindASilenceTheMapIsAskedForWhereControllersMayTake) {
  const auto silence = [this] {
    for (const std::uint8_t connected : {0, 1}) {
      model_.LinkStatus[0] = connected;
      knownMap_.LinkChanged();
      gateway_->LinkChanged();
    }
  };
  Begin("Port=PORT\n");
  silence();
  EXPECT_TRUE(model_.XmapComplete);
  EXPECT_THAT(lines_, IsEmpty());
  Begin("Port=PORT\nTakes=Yes\n");
  model_.LinkStatus[0] = 0;
  gateway_->LinkChanged();
  EXPECT_TRUE(model_.XmapComplete);
  silence();
  EXPECT_FALSE(model_.XmapComplete);
  EXPECT_THAT(lines_, ElementsAre("The map is asked for, so that controllers may take again"));
  // Whose rows were reported since is not asked for again.
  model_.XmapComplete = true;
  for (int output = 1; output <= 8; ++output) knownMap_.CrosspointRowChanged(output, 0);
  gateway_->LinkChanged();
  EXPECT_TRUE(model_.XmapComplete);
  EXPECT_EQ(lines_.size(), 1u);
}

TEST_F(OpenGatewayTest, AnswersAndNamesWhoIsConnected) {
  Begin("Port=PORT\n");
  EXPECT_TRUE(Aid()->isVisible());
  EXPECT_EQ(Aid()->text(), QStringLiteral("Controllers 0"));
  EXPECT_EQ(Aid()->toolTip(), QStringLiteral("No controller is on the open gateway"));
  QTcpSocket socket;
  Connect(socket);
  Send(socket, kRootAsked);
  ASSERT_TRUE(QTest::qWaitFor([&] { return socket.bytesAvailable() >= 66; }, kPatience));
  EXPECT_EQ(Aid()->text(), QStringLiteral("Controllers 1"));
  EXPECT_EQ(Aid()->toolTip(), QStringLiteral("Controller 1, 127.0.0.1"));
  Send(socket, kConnect);
  ASSERT_TRUE(QTest::qWaitFor([&] { return lines_.size() == 2; }, kPatience));
  socket.abort();
  ASSERT_TRUE(QTest::qWaitFor([&] { return lines_.size() == 3; }, kPatience));
  EXPECT_THAT(lines_, ElementsAre("Controller 1, 127.0.0.1: connected",
                                  "Controller 1, 127.0.0.1: connect CAM 6 < MIC 4 refused, only "
                                  "reading is allowed",
                                  "Controller 1, 127.0.0.1: gone"));
  EXPECT_EQ(port_.TakeWritten(), "");
  EXPECT_EQ(Aid()->text(), QStringLiteral("Controllers 0"));
}

TEST_F(OpenGatewayTest, TakesAreInTheLog) {
  Begin("Port=PORT\nTakes=Yes\n");
  QTcpSocket socket;
  Connect(socket);
  Send(socket, kConnect);
  ASSERT_TRUE(QTest::qWaitFor([&] { return lines_.size() == 2; }, kPatience));
  EXPECT_EQ(lines_[1], "Controller 1, 127.0.0.1: take CAM 6 < MIC 4 (Sum)");
  EXPECT_EQ(port_.TakeWritten(), "FD 02 00 03 00 05 00 0A FF");
  EXPECT_FALSE(window_.Hints().Has(Hint::OpenTakes));
  gateway_->Close();
  ASSERT_TRUE(QTest::qWaitFor([&] { return socket.state() == QAbstractSocket::UnconnectedState; },
                              kPatience));
}

TEST_F(OpenGatewayTest, WhoIsNotAllowedIsTurnedAway) {
  Begin("Port=PORT\nAllow=192.0.2.7\n");
  QTcpSocket socket;
  Connect(socket);
  ASSERT_TRUE(QTest::qWaitFor([&] { return !lines_.empty(); }, kPatience));
  ASSERT_TRUE(QTest::qWaitFor([&] { return socket.state() == QAbstractSocket::UnconnectedState; },
                              kPatience));
  EXPECT_THAT(lines_, ElementsAre("Controller 127.0.0.1 was not admitted"));
}

TEST_F(OpenGatewayTest, WhatIsNotUnderstoodAdmitsNobody) {
  Begin("Port=PORT\nAllow=10.1\n");
  EXPECT_FALSE(gateway_->IsListening());
  EXPECT_TRUE(window_.Hints().Has(Hint::OpenGatewayClosed));
  EXPECT_THAT(lines_, ElementsAre("The open gateway admits nobody: OPEN GATEWAY in Orvotesk.ini is "
                                  "not understood (Allow=10.1)."));
}

// The gain of input 4, whose label looks like a place of the text, to −12 dB.
TEST_F(OpenGatewayTest, ALabelStandsInTheLogAsItIs) {
  database_.GoTo(4);
  stations::Record record(*database_.Files().Stations());
  record.Set("InLabel", "MIC%3");
  ASSERT_TRUE(record.Commit({changes_, stations::Origin::Operator}).ok());
  Begin("Port=PORT\nTakes=Yes\n");
  QTcpSocket socket;
  Connect(socket);
  Send(socket,
       "FE 00 0E 00 01 C0 01 02 1F 02 60 1D 6B 1B A0 19 69 17 A0 07 0D 05 01 04 02 03 01 A1 0C 31 "
       "0A A2 03 02 01 F4 AD 03 02 01 01 0E E3 FF");
  ASSERT_TRUE(QTest::qWaitFor([&] { return lines_.size() == 2; }, kPatience));
  EXPECT_EQ(lines_[1], "Controller 1, 127.0.0.1: gain of MIC%3 set to −12 dB");
}

// It is tried again until the port is free.
TEST_F(OpenGatewayTest, ListensWhenItCan) {
  QTcpServer other;
  ASSERT_TRUE(other.listen(QHostAddress::LocalHost, 0));
  number_ = other.serverPort();
  Begin("Port=" + std::to_string(other.serverPort()) + "\n");
  ASSERT_TRUE(window_.Hints().Has(Hint::OpenGatewayClosed));
  number_ = other.serverPort();
  other.close();
  ASSERT_TRUE(
      QTest::qWaitFor([&] { return !window_.Hints().Has(Hint::OpenGatewayClosed); }, kPatience));
  QTcpSocket socket;
  Connect(socket);
  EXPECT_TRUE(socket.waitForConnected(2000));
  EXPECT_EQ(lines_[1], "The open gateway listens on port " + std::to_string(number_) + " now");
}

TEST_F(OpenGatewayTest, APortThatIsTakenIsSaid) {
  QTcpServer other;
  Begin("Takes=No\n");
  ASSERT_TRUE(other.listen(QHostAddress::LocalHost, 0));
  Begin("Port=" + std::to_string(other.serverPort()) + "\n");
  EXPECT_TRUE(window_.Hints().Has(Hint::OpenGatewayClosed));
  ASSERT_EQ(lines_.size(), 1U);
  EXPECT_EQ(lines_[0], "The open gateway cannot listen on port " +
                           std::to_string(other.serverPort()) +
                           ": The bound address is already in use. It is tried again.");
}

// A computer without IPv6 does not have the address: that is said, as of any port that cannot be
// had.
TEST_F(OpenGatewayTest, ListensOnAnAddressOfIpv6OrSaysThatItCannot) {
  const bool hasIpv6 = QTcpServer().listen(QHostAddress::LocalHostIPv6);
  Begin("Port=PORT\nListen=::1\nAllow=::1/128\nTakes=Yes\n");
  EXPECT_FALSE(window_.Hints().Has(Hint::OpenTakes)) << "it is the loopback address, too";
  EXPECT_EQ(gateway_->IsListening(), hasIpv6);
  EXPECT_EQ(window_.Hints().Has(Hint::OpenGatewayClosed), !hasIpv6);
  if (!hasIpv6) {
    const std::string said = "The open gateway cannot listen on port " + std::to_string(number_);
    EXPECT_THAT(lines_, ElementsAre(HasSubstr(said)));
    return;
  }
  QTcpSocket socket;
  socket.connectToHost(QHostAddress(QHostAddress::LocalHostIPv6), static_cast<quint16>(number_));
  ASSERT_TRUE(QTest::qWaitFor([&] { return !lines_.empty(); }, kPatience));
  EXPECT_THAT(lines_, ElementsAre("Controller 1, ::1: connected"));
}

// Each of them says something, so none of them makes room.
TEST_F(OpenGatewayTest, SoManyAreServed) {
  Begin("Port=PORT\n");
  std::vector<std::unique_ptr<QTcpSocket>> many;
  for (int i = 0; i < 32; ++i) {
    Connect(*many.emplace_back(std::make_unique<QTcpSocket>()));
    Send(*many.back(), kRootAsked);
    ASSERT_TRUE(QTest::qWaitFor([&] { return many.back()->bytesAvailable() >= 66; }, kPatience));
  }
  QTcpSocket tooMany;
  Connect(tooMany);
  ASSERT_TRUE(QTest::qWaitFor([&] { return lines_.size() == 33; }, kPatience));
  EXPECT_EQ(lines_.back(), "Controller 127.0.0.1 was turned away: all connections are taken");
}

TEST_F(OpenGatewayTest, OneThatSaysNothingMakesRoom) {
  Begin("Port=PORT\n");
  std::vector<std::unique_ptr<QTcpSocket>> mute;
  for (int i = 0; i < 33; ++i) {
    Connect(*mute.emplace_back(std::make_unique<QTcpSocket>()));
    ASSERT_TRUE(QTest::qWaitFor([&] { return static_cast<int>(lines_.size()) > i; }, kPatience));
  }
  EXPECT_EQ(lines_[32],
            "Controller 1, 127.0.0.1: dropped, it said nothing and another one needs its place");
  EXPECT_EQ(lines_[33], "Controller 1, 127.0.0.1: gone");
}

TEST_F(OpenGatewayTest, ConnectionsWithoutEndAreHintedAt) {
  Begin("Port=PORT\nAllow=192.0.2.7\n");
  for (int i = 0; i < ConnectionFlood::kMost; ++i) flood_.Note("192.0.2.66");
  EXPECT_FALSE(window_.Hints().Has(Hint::ConnectionFlood));
  QTcpSocket socket;
  Connect(socket);
  ASSERT_TRUE(
      QTest::qWaitFor([&] { return window_.Hints().Has(Hint::ConnectionFlood); }, kPatience));
}

TEST_F(OpenGatewayTest, TakesFromOtherComputersAreHintedAt) {
  Begin("Port=PORT\nListen=0.0.0.0\nTakes=Yes\n");
  EXPECT_TRUE(window_.Hints().Has(Hint::OpenTakes));
}

TEST_F(OpenGatewayTest, SeeingFromOtherComputersIsNot) {
  Begin("Port=PORT\nListen=0.0.0.0\n");
  EXPECT_FALSE(window_.Hints().Has(Hint::OpenTakes));
}

}  // namespace
}  // namespace app
