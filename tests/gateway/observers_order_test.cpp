// SPDX-License-Identifier: MIT

// What the switcher reports goes to those who observe the decoder in their order: as the program
// wires it, first to the views and then to all panels.

#include "switcher/decoder.h"
#include "tests/gateway/gateway_fixture.h"
#include "tests/support/hex.h"
#include "tests/support/recording_switcher_events.h"

namespace gateway {
namespace {

using testing::ElementsAre;

// Keeps, in one list, what the views are told and what a panel is sent.
class ObserversOrderTest : public GatewayTest {
 protected:
  ObserversOrderTest() {
    model_.StationCount = 8;
    model_.LabelCount = 8;
    model_.ButtonCount = 1;
    model_.RelayCount = 8;
  }

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

  void Decode(const std::string& hex) { decoder_.Decode(test::FromHex(hex)); }

  // A table of eight empty labels.
  void DecodeLabels(const std::string& selector) {
    std::string spaces;
    for (int i = 0; i < 64; ++i) spaces += " 20";
    Decode("F9 " + selector + spaces + " " + selector + " FF");
  }

  void ConnectAPanel() {
    gateway_.Accept(std::make_unique<Socket>(seen_));
    timer_.ElapseAll();
    seen_.clear();
  }

  std::vector<std::string> seen_;
  Views views_{seen_};
  stations::Changes changes_;
  switcher::Decoder decoder_{{.model = model_,
                              .database = [this] { return database_.Files().Database(); },
                              .reporter = reporter_,
                              .changes = changes_,
                              .observers = {views_, gateway_}}};
};

TEST_F(ObserversOrderTest, ARowGoesToTheMapAndThenToThePanels) {
  ConnectAPanel();
  Decode("F3 04 00 01 00 00 00 05 FF");
  EXPECT_THAT(seen_, ElementsAre("view row 5 mode 1", "panel F6 00"));
}

TEST_F(ObserversOrderTest, LabelsOfStationsGoOutAsStations) {
  AddStations();
  ConnectAPanel();
  DecodeLabels("14");
  timer_.ElapseAll();
  EXPECT_THAT(seen_, ElementsAre("view labels 20", "panel FC 14"));
}

TEST_F(ObserversOrderTest, LabelsOfInputsFollowThoseOfTheStations) {
  AddStations();
  ConnectAPanel();
  DecodeLabels("0A");
  timer_.ElapseAll();
  EXPECT_THAT(seen_, ElementsAre("view labels 10", "panel FC 14", "panel FC 0A"));
}

TEST_F(ObserversOrderTest, ProgrammingGoesToThePanels) {
  AddStations();
  ConnectAPanel();
  Decode("FB 02 00 00 00 01 00 00 00 03 FF");
  timer_.ElapseAll();
  EXPECT_THAT(seen_, ElementsAre("view buttons 3", "panel FB 00", "panel FD 00"));
}

TEST_F(ObserversOrderTest, WithoutPanelsOnlyTheViewsAreTold) {
  AddStations();
  Decode("F3 04 00 00 00 00 00 04 FF");
  DecodeLabels("0A");
  Decode("FB 02 00 00 00 01 00 00 00 03 FF");
  EXPECT_THAT(seen_, ElementsAre("view row 5 mode 0", "view labels 10", "view buttons 3"));
  EXPECT_THAT(reporter_.reports, testing::IsEmpty());
}

TEST_F(ObserversOrderTest, WhatPanelsDoNotShowGoesToTheViewsAlone) {
  AddStations();
  ConnectAPanel();
  Decode("E2 64 64 64 64 64 64 64 64 20 FF");
  std::string points;
  for (int i = 0; i < 128; ++i) points += " 00";
  Decode("E4" + points + " 00 FF");
  Decode("F5 00 00 00 00 00 FF");
  Decode("F4 01 00 00 00 01 FF");
  model_.OptoCount = 1;
  Decode("E1 00 00 00 00 00 00 00 00 00 00 00 00 00 00 00 00 00 00 00 00 00 00 00 FF");
  timer_.ElapseAll();
  EXPECT_THAT(views_.seen, ElementsAre("gains", "tally", "inhibits 1", "relays 2", "optos"));
  EXPECT_THAT(seen_, testing::IsEmpty());
}

TEST_F(ObserversOrderTest, WhatIsRefusedGoesToNoPanel) {
  ConnectAPanel();
  Decode("F3 04 00 01 00 00 00 06 FF");
  timer_.ElapseAll();
  EXPECT_THAT(views_.refused, ElementsAre("Output 5 Crosspoint Map|1"));
  EXPECT_THAT(seen_, testing::IsEmpty());
}

}  // namespace
}  // namespace gateway
