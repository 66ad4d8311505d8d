// SPDX-License-Identifier: MIT

#ifndef TESTS_SUPPORT_COMPARISON_SYSTEM_H_
#define TESTS_SUPPORT_COMPARISON_SYSTEM_H_

#include <gtest/gtest.h>

#include <map>
#include <string>
#include <utility>
#include <vector>

#include "switcher/comparison/comparison.h"
#include "switcher/decoder.h"
#include "switcher/link.h"
#include "tests/support/fake_serial_port.h"
#include "tests/support/hex.h"
#include "tests/support/recording_changes.h"
#include "tests/support/recording_reporter.h"
#include "tests/support/recording_switcher_events.h"
#include "tests/support/silent_link_display.h"
#include "tests/support/small_database.h"

namespace test {

// The whole answer of a switcher of eight channels, stations and relays, one label, one button and
// one opto, in the order in which it sends it.  It differs from the database in the label of
// station 1, the inhibits of output 2 and the button of station 1.
inline const std::vector<std::string>& Answer() {
  static const std::vector<std::string> kAnswer{
      "F9 14 43 41 4D 20 31 20 20 20 16 FF",  // CAM 1
      "F9 0A 4D 49 43 20 31 20 20 20 14 FF",  // MIC 1
      "F5 00 00 00 00 00 FF",
      "F4 00 00 00 00 00 FF",
      "F5 01 00 01 00 02 FF",  // input 1 to output 2
      "F4 01 00 00 00 01 FF",
      "F5 02 00 00 00 02 FF",
      "F4 02 00 00 00 02 FF",
      "F5 03 00 00 00 03 FF",
      "F4 03 00 00 00 03 FF",
      "F5 04 00 00 00 04 FF",
      "F4 04 00 00 00 04 FF",
      "F5 05 00 00 00 05 FF",
      "F4 05 00 00 00 05 FF",
      "F5 06 00 00 00 06 FF",
      "F4 06 00 00 00 06 FF",
      "F5 07 00 00 00 07 FF",
      "F4 07 00 00 00 07 FF",
      "E1 " + Times(11, "00 00") + "00 FF",
      "FB 00 00 00 00 01 00 01 00 02 FF",  // TALK to station 1
      "FB 01 00 7F 01 00 00 00 00 00 FF",
      "FB 02 00 7F 01 00 00 00 00 01 FF",
      "FB 03 00 7F 01 00 00 00 00 02 FF",
      "FB 04 00 7F 01 00 00 00 00 03 FF",
      "FB 05 00 7F 01 00 00 00 00 04 FF",
      "FB 06 00 7F 01 00 00 00 00 05 FF",
      "FB 07 00 7F 01 00 00 00 00 06 FF",
  };
  return kAnswer;
}

// That switcher's console: a small database and an open line.
class ComparisonSystem : public testing::Test, public switcher::PollSwitch {
 protected:
  ComparisonSystem() {
    model_.ChannelCount = 8;
    model_.StationCount = 8;
    model_.LabelCount = 1;
    model_.ButtonCount = 1;
    model_.RelayCount = 8;
    model_.OptoCount = 1;
    model_.AllocateMap();
    database_.AddStation(1, {{"Label", "Sta. 001"},
                             {"InLabel", "MIC 1"},
                             {"Hidden", 0},
                             {"Inhibits", kNoFlags},
                             {"Relays", kNoFlags},
                             {"B1 Type", 255},
                             {"B1 First", 0},
                             {"B1 Prog", kNoFlags},
                             {"OptoType", 0},
                             {"OptoChannel", 0},
                             {"OptoFirst", 0},
                             {"OptoStations", kNoFlags}});
    database_.AddStation(2, {{"Inhibits", kNoFlags}, {"B1 Type", 255}});
  }

  void SetUp() override { ASSERT_TRUE(port_.Open(1).ok()); }

  void SetPolling(bool on) override { seen_.emplace_back(on ? "poll on" : "poll off"); }

  // These arrive and are decoded.
  void Deliver(const std::string& hex) {
    port_.Deliver(hex);
    while (link_.DecodeTick()) {
    }
  }
  // Messages `first` to before `last` of the answer.
  void Deliver(std::size_t first, std::size_t last) {
    for (std::size_t i = first; i < last; ++i) Deliver(Answer()[i]);
  }
  void DeliverAll() { Deliver(0, Answer().size()); }

  // Nothing of the switcher's has reached the database.
  void ExpectUntouched() {
    EXPECT_EQ(database_.Field(1, "Label"), "Sta. 001");
    EXPECT_EQ(database_.Field(2, "Inhibits"), kNoFlags);
    EXPECT_EQ(database_.Field(1, "B1 Type"), "255");
    EXPECT_TRUE(changes_.seen.empty());
    EXPECT_TRUE(events_.seen.empty());
    EXPECT_TRUE(events_.refused.empty());
    EXPECT_TRUE(reporter_.reports.empty());
    EXPECT_FALSE(model_.RetrieveActive);
  }

  // What is sent unasked reaches the database again.
  void ExpectTheDecoderIsBack() {
    Deliver("F5 01 00 02 00 03 FF");
    EXPECT_EQ(database_.Field(2, "Inhibits"), "01" + std::string(62, '0'));
  }

  switcher::Comparison::Services ComparisonServices() {
    return {.model = model_,
            .database = [this] { return isOpen_ ? database_.Files().Database() : nullptr; },
            .port = port_,
            .link = link_,
            .poll = *this,
            .reporter = reporter_,
            .noteHeld = [this](const switcher::TablePart& part,
                               switcher::Digest digest) { held_[part] = digest; }};
  }

  model::SystemModel model_;
  SmallDatabase database_;
  bool isOpen_ = true;
  RecordingSwitcherEvents events_;
  FakeSerialPort port_;
  RecordingReporter reporter_;
  model::Locks locks_;
  stations::Changes stream_{locks_};
  RecordingChanges changes_{stream_};
  switcher::Decoder decoder_{{.model = model_,
                              .database = [this] { return database_.Files().Database(); },
                              .reporter = reporter_,
                              .changes = stream_,
                              .observers = {events_}}};
  SilentLinkDisplay linkDisplay_;
  switcher::Link link_{
      {.model = model_, .port = port_, .decoder = decoder_, .display = linkDisplay_}};
  std::map<switcher::TablePart, switcher::Digest> held_;  // what the switcher is known to hold
  std::vector<std::string> seen_;                         // of what happened, in order
};

}  // namespace test

#endif  // TESTS_SUPPORT_COMPARISON_SYSTEM_H_
