// SPDX-License-Identifier: MIT

#include "app/panel_forwarding.h"

#include "tests/gateway/gateway_fixture.h"
#include "tests/support/hex.h"
#include "tests/support/recording_switcher_events.h"

namespace app {
namespace {

using testing::ElementsAre;

// Keeps, in one list, what the views are told and what a panel is sent.
class PanelForwardingTest : public gateway::GatewayTest {
 protected:
  class Views : public test::RecordingSwitcherEvents {
   public:
    explicit Views(std::vector<std::string>& list) : seen_(list) {}
    void CrosspointRowChanged(int output, int mode) override {
      seen_.push_back("view row " + std::to_string(output) + " mode " + std::to_string(mode));
    }
    void LabelsChanged(int selector) override {
      seen_.push_back("view labels " + std::to_string(selector));
    }
    void ButtonsChanged(int station) override {
      seen_.push_back("view buttons " + std::to_string(station));
    }

   private:
    std::vector<std::string>& seen_;
  };

  // A panel's socket that writes into the list.
  class Socket : public test::FakeClientSocket {
   public:
    explicit Socket(std::vector<std::string>& list)
        : FakeClientSocket(std::make_shared<test::FakePeer>()), seen_(list) {}
    model::Status Write(std::span<const std::uint8_t> bytes) override {
      seen_.push_back("panel " + test::Hex(bytes.first(2)));
      return {};
    }

   private:
    std::vector<std::string>& seen_;
  };

  void ConnectAPanel() {
    gateway_.Accept(std::make_unique<Socket>(seen_));
    timer_.ElapseAll();
    seen_.clear();
  }

  std::vector<std::string> seen_;
  Views views_{seen_};
  PanelForwarding forwarding_{views_, gateway_};
};

TEST_F(PanelForwardingTest, ARowGoesToTheMapAndThenToThePanels) {
  ConnectAPanel();
  forwarding_.CrosspointRowChanged(5, 1);
  EXPECT_THAT(seen_, ElementsAre("view row 5 mode 1", "panel F6 00"));
}

TEST_F(PanelForwardingTest, LabelsOfStationsGoOutAsStations) {
  AddStations();
  ConnectAPanel();
  forwarding_.LabelsChanged(20);
  timer_.ElapseAll();
  EXPECT_THAT(seen_, ElementsAre("view labels 20", "panel FC 14"));
}

TEST_F(PanelForwardingTest, LabelsOfInputsFollowThoseOfTheStations) {
  AddStations();
  ConnectAPanel();
  forwarding_.LabelsChanged(10);
  timer_.ElapseAll();
  EXPECT_THAT(seen_, ElementsAre("view labels 10", "panel FC 14", "panel FC 0A"));
}

TEST_F(PanelForwardingTest, ProgrammingGoesToThePanels) {
  AddStations();
  ConnectAPanel();
  forwarding_.ButtonsChanged(3);
  timer_.ElapseAll();
  EXPECT_THAT(seen_, ElementsAre("view buttons 3", "panel FB 00", "panel FD 00"));
}

TEST_F(PanelForwardingTest, WithoutPanelsOnlyTheViewsAreTold) {
  forwarding_.CrosspointRowChanged(5, 0);
  forwarding_.LabelsChanged(10);
  forwarding_.ButtonsChanged(3);
  EXPECT_THAT(seen_, ElementsAre("view row 5 mode 0", "view labels 10", "view buttons 3"));
  EXPECT_THAT(reporter_.reports, testing::IsEmpty());
}

TEST_F(PanelForwardingTest, WhatPanelsDoNotShowGoesToTheViewsAlone) {
  ConnectAPanel();
  forwarding_.GainsChanged();
  forwarding_.TallyChanged();
  forwarding_.InhibitsChanged(1);
  forwarding_.RelaysChanged(2);
  forwarding_.OptosChanged();
  timer_.ElapseAll();
  EXPECT_THAT(views_.seen, testing::SizeIs(5));
  EXPECT_THAT(seen_, testing::IsEmpty());
}

}  // namespace
}  // namespace app
