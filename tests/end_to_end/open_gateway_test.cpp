// SPDX-License-Identifier: MIT
//
// The open gateway of the real console on the real simulated switcher, byte by byte, and who is let
// in on the network.

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cerrno>
#include <memory>
#include <random>
#include <string>
#include <vector>

#include "tests/end_to_end/console_process.h"
#include "tests/gateway/ember/conversation.h"
#include "tests/support/fake_console.h"
#include "tests/support/hex.h"
#include "tests/support/panel_process.h"
#include "tests/support/simulator_process.h"
#include "tests/support/socket_peer.h"

namespace test {
namespace {

using testing::HasSubstr;

constexpr char kConsumerAlive[] = "FE 00 0E 01 01 94 E4 FF";
constexpr char kConsumerAliveAnswer[] = "FE 00 0E 02 01 FD DC CE FF";

std::size_t SizeOf(std::string_view hex) { return FromHex(hex).size(); }

class OpenGatewayProcessTest : public testing::Test {
 protected:
  // Starts the console with these sections, PORT being a free port, and waits for the whole map.
  void Start(std::string sections) {
    const std::size_t at = sections.find("PORT");
    if (at != std::string::npos) sections.replace(at, 4, std::to_string(port_));
    folder_.WriteSettings(simulator_.Terminal(), "IP Port=" + std::to_string(panelPort_) +
                                                     "\r\nSoftpanel Support=Yes\r\n" + sections);
    console_ = std::make_unique<ConsoleProcess>(folder_);
    ASSERT_TRUE(console_->IsUp());
    ASSERT_TRUE(simulator_.WaitForLine("rx poll tally"));
  }

  SimulatorProcess simulator_{{"--baud", "0", "--log"}};
  ConsoleFolder folder_;
  const int port_ = FakeConsole().Port();
  const int panelPort_ = FakeConsole().Port();
  std::unique_ptr<ConsoleProcess> console_;
};

TEST_F(OpenGatewayProcessTest, IsNotThereUnlessItIsWanted) {
  Start("");
  SocketPeer consumer;
  EXPECT_FALSE(consumer.Connect(port_));
}

TEST_F(OpenGatewayProcessTest, ATakeGoesRound) {
  Start("\r\n[OPEN GATEWAY]\r\nPort=PORT\r\nTakes=Yes\r\n");
  SocketPeer consumer;
  ASSERT_TRUE(consumer.Connect(port_));
  consumer.Send(kRootAsked);
  EXPECT_EQ(consumer.Receive(SizeOf(kRootAnswered)), kRootAnswered);
  consumer.Send(kAbsolute);
  EXPECT_EQ(simulator_.WaitForLine("rx take"), "rx take output 6 source 8 action 3");
  EXPECT_EQ(consumer.Receive(SizeOf(kAbsoluteReported)), kAbsoluteReported);
  consumer.Send(kConnectInhibited);
  EXPECT_EQ(consumer.Receive(SizeOf(kConnectRefused)), kConnectRefused);
  consumer.Send(kConnect);
  EXPECT_EQ(simulator_.WaitForLine("rx take"), "rx take output 6 source 4 action 2");
  EXPECT_EQ(consumer.Receive(SizeOf(kConnectReported)), kConnectReported);
  EXPECT_EQ(console_->Property("aidControllers", "text").toString().toStdString(), "Controllers 1");
  EXPECT_EQ(console_->Property("aidControllers", "toolTip").toString().toStdString(),
            "Controller 1, 127.0.0.1");
}

// Those that never read, send what comes to their mind or leave in the middle spoil it for nobody.
TEST_F(OpenGatewayProcessTest, BadOnesSpoilNothing) {
  Start("\r\n[OPEN GATEWAY]\r\nPort=PORT\r\nTakes=Yes\r\n");
  std::mt19937 random(7);
  std::vector<std::unique_ptr<SocketPeer>> bad;
  for (int i = 0; i < 8; ++i) {
    auto& peer = bad.emplace_back(std::make_unique<SocketPeer>());
    ASSERT_TRUE(peer->Connect(port_));
    peer->Send(kMatrixAsked);
    std::vector<std::uint8_t> noise(20000);
    for (std::uint8_t& byte : noise) byte = static_cast<std::uint8_t>(random());
    peer->SendBytes(noise);
    peer->Send(kAbsolute + std::string(" FE 00 0E"));
    if (i % 2 == 0) peer->Reset();
  }
  SocketPeer good;
  ASSERT_TRUE(good.Connect(port_));
  for (int i = 0; i < 20; ++i) {
    good.Send(kConsumerAlive);
    ASSERT_EQ(good.Receive(SizeOf(kConsumerAliveAnswer)), kConsumerAliveAnswer);
  }
  EXPECT_EQ(console_->LinkText(), kConnected);
}

TEST_F(OpenGatewayProcessTest, ASectionThatIsNotUnderstoodAdmitsNobody) {
  Start(
      "\r\n[OPEN GATEWAY]\r\nPort=PORT\r\nTakes=Perhaps\r\n"
      "[PANEL ACCESS]\r\nTakesFrom=panels\r\n");
  SocketPeer consumer;
  EXPECT_FALSE(consumer.Connect(port_));
  SocketPeer panel;
  ASSERT_TRUE(panel.Connect(panelPort_));
  EXPECT_TRUE(panel.WaitForClose());
}

// It sees everything; what it takes does not reach the line.
TEST_F(OpenGatewayProcessTest, APanelThatMayNotTakeIsServed) {
  Start("\r\n[PANEL ACCESS]\r\nAllow=127.0.0.0/8\r\nTakesFrom=192.0.2.7\r\n");
  PanelProcess take(panelPort_, {"take", "6", "8", "take"});
  EXPECT_NE(take.Wait(), 0);
  PanelProcess map(panelPort_, {"map"});
  EXPECT_EQ(map.Wait(), 0) << map.Errors();
  EXPECT_THAT(simulator_.Command("row 6"), HasSubstr("sources none"));
}

// On a computer without IPv6 the console says of both that they cannot come, and does the rest.
TEST_F(OpenGatewayProcessTest, PanelsAndControllersComeByIpv6WhereItIs) {
  SocketPeer nobody;
  ASSERT_FALSE(nobody.ConnectByIpv6(panelPort_));
  const bool hasIpv6 = errno == ECONNREFUSED;
  Start(
      "\r\n[PANEL ACCESS]\r\nListen=::1\r\nAllow=::1\r\n"
      "[OPEN GATEWAY]\r\nPort=PORT\r\nListen=::1\r\n");
  if (!hasIpv6) {
    ASSERT_TRUE(ConsoleProcess::WaitFor([&] { return !console_->Boxes().empty(); }));
    console_->CloseBox();
    const auto log = [this] { return ReadFile(folder_ / "Teskctl.log"); };
    EXPECT_TRUE(ConsoleProcess::WaitFor([&] {
      return log().find("The open gateway cannot listen on port " + std::to_string(port_)) !=
             std::string::npos;
    }));
    EXPECT_THAT(log(), HasSubstr("No network panel can connect yet: ::1 is no address"));
    EXPECT_TRUE(console_->IsShown("aidHintStrip"));
    EXPECT_EQ(console_->LinkText(), kConnected);
    return;
  }
  SocketPeer panel;
  EXPECT_FALSE(panel.Connect(panelPort_));
  ASSERT_TRUE(panel.ConnectByIpv6(panelPort_));
  EXPECT_EQ(panel.Receive(4), "81 00 00 FF");
  SocketPeer consumer;
  ASSERT_TRUE(consumer.ConnectByIpv6(port_));
  consumer.Send(kRootAsked);
  EXPECT_EQ(consumer.Receive(SizeOf(kRootAnswered)), kRootAnswered);
}

// As when the interface of its address comes up later than the console.
TEST_F(OpenGatewayProcessTest, PanelsAreListenedForWhenItIsPossible) {
  FakeConsole other;
  const int taken = other.Port();
  folder_.WriteSettings(
      simulator_.Terminal(),
      "IP Port=" + std::to_string(taken) +
          "\r\nSoftpanel Support=Yes\r\n\r\n[PANEL ACCESS]\r\nListen=127.0.0.1\r\n");
  console_ = std::make_unique<ConsoleProcess>(folder_);
  ASSERT_TRUE(ConsoleProcess::WaitFor([&] { return !console_->Boxes().empty(); }));
  console_->CloseBox();
  EXPECT_FALSE(console_->IsShown("aidPanels"));
  const auto isSaid = [this] {
    return console_->IsShown("aidHintStrip") &&
           console_->Property("aidHintText", "toolTip")
               .toString()
               .startsWith(u"No network panel can connect yet");
  };
  EXPECT_TRUE(ConsoleProcess::WaitFor(isSaid));
  other.StopListening();
  SocketPeer panel;
  ASSERT_TRUE(ConsoleProcess::WaitFor([&] { return panel.Connect(taken); }));
  EXPECT_EQ(panel.Receive(4), "81 00 00 FF");
  EXPECT_EQ(console_->Property("aidPanels", "text").toString().toStdString(), "Panels 1");
  EXPECT_FALSE(isSaid());
}

TEST_F(OpenGatewayProcessTest, APanelThatIsNotAllowedIsTurnedAway) {
  Start("\r\n[PANEL ACCESS]\r\nAllow=192.0.2.0/24\r\n");
  SocketPeer panel;
  ASSERT_TRUE(panel.Connect(panelPort_));
  EXPECT_TRUE(panel.WaitForClose());
}

}  // namespace
}  // namespace test
