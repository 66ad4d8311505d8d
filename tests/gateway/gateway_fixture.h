// SPDX-License-Identifier: MIT

#ifndef TESTS_GATEWAY_GATEWAY_FIXTURE_H_
#define TESTS_GATEWAY_GATEWAY_FIXTURE_H_

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "gateway/panel_gateway.h"
#include "tests/support/fake_client_socket.h"
#include "tests/support/fake_pause_timer.h"
#include "tests/support/fake_serial_port.h"
#include "tests/support/recording_reporter.h"
#include "tests/support/small_database.h"

namespace gateway {

// Keeps what the gateway shows.
class RecordingDisplay : public GatewayDisplay {
 public:
  void StartDecodeTimer() override { ++timerStarts; }
  void ShowPanels(const std::vector<std::string>& shown) override { panels = shown; }
  void ShowPanelDropped(const std::string& address, gateway::DropReason reason) override {
    dropped.emplace_back(address, reason);
  }

  int timerStarts = 0;
  std::vector<std::string> panels;
  std::vector<std::pair<std::string, gateway::DropReason>> dropped;
};

// The gateway of a system of eight channels between fake panels and a fake line, with the link
// to the switcher up.
class GatewayTest : public testing::Test {
 protected:
  GatewayTest() {
    model_.ChannelCount = 8;
    model_.AllocateMap();
    model_.LinkStatus = {1, 1, 0};
  }

  void SetUp() override { ASSERT_TRUE(port_.Open(1).ok()); }

  // A new connection.  The request for it has gone out and its pause is over.
  std::shared_ptr<test::FakePeer> Connect() {
    auto peer = std::make_shared<test::FakePeer>();
    gateway_.Accept(std::make_unique<test::FakeClientSocket>(peer));
    timer_.ElapseAll();
    return peer;
  }

  // A panel that has said what it is.
  std::shared_ptr<test::FakePeer> ConnectPanel() {
    auto peer = Connect();
    peer->Send("81 35 35 FF");
    Tick();
    EXPECT_EQ(peer->TakeWritten(), "81 00 00 FF");
    return peer;
  }

  // A decode tick without anything from the switcher; whether there was work.
  bool Tick() {
    return gateway_.DecodeTick([] { return false; });
  }
  void Ticks(int count) {
    for (int i = 0; i < count; ++i) Tick();
  }

  ClientConnection& Connection(int slot) { return gateway_.Clients().Connection(slot); }
  ClientTable& Clients() { return gateway_.Clients(); }
  SendQueue& Queue() { return gateway_.Queue(); }

  // Eight stations, "Sta 1" to "Sta 8", with inputs "In 1" to "In 8".
  void AddStations() {
    for (int i = 1; i <= 8; ++i) {
      database_.AddStation(
          i, {{"Label", "Sta " + std::to_string(i)}, {"InLabel", "In " + std::to_string(i)}});
    }
  }

  model::SystemModel model_;
  test::SmallDatabase database_;
  test::FakeSerialPort port_;
  test::RecordingReporter reporter_;
  test::FakePauseTimer timer_;
  RecordingDisplay display_;
  switcher::LiveCommands commands_{model_, port_, reporter_};
  std::chrono::milliseconds untilPoll_{500};
  switcher::LineShare line_{port_, [this] { return untilPoll_; }};
  PanelGateway gateway_{{.model = model_,
                         .files = database_.Files(),
                         .commands = commands_,
                         .line = line_,
                         .timer = timer_,
                         .display = display_,
                         .reporter = reporter_}};
};

}  // namespace gateway

#endif  // TESTS_GATEWAY_GATEWAY_FIXTURE_H_
