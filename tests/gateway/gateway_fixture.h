// SPDX-License-Identifier: MIT

#ifndef TESTS_GATEWAY_GATEWAY_FIXTURE_H_
#define TESTS_GATEWAY_GATEWAY_FIXTURE_H_

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <memory>
#include <set>
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

// Counts the starts of the decode timer.
class CountingDecodeTimer : public DecodeTimer {
 public:
  void StartDecodeTimer() override { ++starts; }

  int starts = 0;
};

// Keeps what happens to panels, a line each: "2 10.0.0.7 took 6 8 0".
class RecordingPanelEvents : public PanelEvents {
 public:
  void PanelConnected(const PanelName& panel) override { Add(panel, "connected"); }
  void PanelIdentified(const PanelName& panel, int type) override {
    Add(panel, "identified " + std::to_string(type));
  }
  void PanelTook(const PanelName& panel, const PanelTake& take) override {
    Add(panel, "took " + std::to_string(take.destination) + " " + std::to_string(take.source) +
                   " " + std::to_string(take.action));
  }
  void PanelMayNotTake(const PanelName& panel, const PanelTake& take) override {
    Add(panel, "may not take " + std::to_string(take.destination));
  }
  void PanelTakeIgnored(const PanelName& panel, const PanelTake& take) override {
    Add(panel, "ignored " + std::to_string(take.destination) + " " + std::to_string(take.source));
  }
  void PanelDropped(const PanelName& panel, DropReason reason) override {
    dropped.emplace_back(panel.address, reason);
    Add(panel, "dropped");
  }
  void PanelGone(const PanelName& panel) override { Add(panel, "gone"); }

  std::vector<std::string> lines;
  std::vector<std::pair<std::string, DropReason>> dropped;

 private:
  void Add(const PanelName& panel, const std::string& what) {
    lines.push_back(std::to_string(panel.slot) + " " + panel.address + " " + what);
  }
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
    gateway_.BeginTick();
    return gateway_.DecodeTick();
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
  CountingDecodeTimer decodeTimer_;
  RecordingPanelEvents events_;
  switcher::LiveCommands commands_{{.model = model_, .port = port_, .reporter = reporter_}};
  std::chrono::milliseconds untilPoll_{500};
  switcher::LineShare line_{port_, [this] { return untilPoll_; }};
  std::set<std::string> mayNotTake_;  // addresses
  model::Locks locks_;
  PanelGateway gateway_{
      {.model = model_,
       .locks = locks_,
       .files = database_.Files(),
       .commands = commands_,
       .line = line_,
       .timer = timer_,
       .decodeTimer = decodeTimer_,
       .events = events_,
       .reporter = reporter_,
       .mayTake = [this](const std::string& address) { return !mayNotTake_.contains(address); }}};
};

}  // namespace gateway

#endif  // TESTS_GATEWAY_GATEWAY_FIXTURE_H_
