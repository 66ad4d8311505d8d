// SPDX-License-Identifier: MIT

#include "switcher/known_map.h"

#include <gtest/gtest.h>

#include "switcher/link.h"
#include "tests/support/fake_serial_port.h"
#include "tests/support/recording_reporter.h"

namespace switcher {
namespace {

// The link of a system of eight channels; whoever shows its state tells the map of it, too.
class KnownMapTest : public testing::Test, private LinkDisplay {
 protected:
  KnownMapTest() {
    model_.ChannelCount = 8;
    model_.AllocateMap();
    model_.TallySeen = true;
  }

  void SetUp() override { ASSERT_TRUE(link_.OpenPort().ok()); }

  void Receive(std::string_view hex) {
    port_.Deliver(hex);
    while (link_.DecodeTick()) {
    }
  }

  // Rows from `first` to `last`, each without a source.
  void ReportRows(int first, int last) {
    for (int output = first; output <= last; ++output) {
      const std::string number = "0" + std::to_string(output - 1);
      Receive("F3 " + number + " 00 00 00 00 00 " + number + " FF");
    }
  }

  std::string Poll() {
    link_.PollTick();
    return port_.TakeWritten();
  }

  // Three keep-alive polls without an answer; the port stays open.
  void FallSilent() {
    for (int second = 0; second < 4; ++second) Poll();
    ASSERT_EQ(model_.LinkStatus[0], 0);
    ASSERT_TRUE(port_.IsOpen());
  }

  model::SystemModel model_;
  KnownMap map_{model_};
  test::FakeSerialPort port_;
  test::RecordingReporter reporter_;
  stations::Changes changes_;
  Decoder decoder_{{.model = model_,
                    .database = [] { return nullptr; },
                    .reporter = reporter_,
                    .changes = changes_,
                    .observers = {map_}}};
  Link link_{{.model = model_, .port = port_, .decoder = decoder_, .display = *this}};

 private:
  void ShowLinkText(std::string_view /*text*/) override { map_.LinkChanged(); }
  void StartDecodeTimer() override {}
  void ShowBlockedCode(std::optional<std::uint8_t> /*code*/) override {}
};

TEST_F(KnownMapTest, IsKnownWhenEveryRowWasReported) {
  EXPECT_FALSE(map_.IsKnown());
  ReportRows(1, 7);
  EXPECT_FALSE(map_.IsKnown());
  ReportRows(8, 8);
  EXPECT_TRUE(map_.IsKnown());
}

// The last row alone completes the map for the poll.
TEST_F(KnownMapTest, TheLastRowAloneIsNotTheMap) {
  ReportRows(8, 8);
  EXPECT_TRUE(model_.XmapComplete);
  EXPECT_FALSE(map_.IsKnown());
}

TEST_F(KnownMapTest, ASilenceWithTheOpenPortMakesItUnknown) {
  ReportRows(1, 8);
  FallSilent();
  EXPECT_TRUE(model_.XmapComplete);
  EXPECT_FALSE(map_.IsKnown());
  // It answers again, and the poll goes on as ever: nobody asks for the map.
  Receive("EB");
  EXPECT_EQ(model_.LinkStatus[0], 1);
  EXPECT_EQ(Poll(), "ED");
  EXPECT_FALSE(map_.IsKnown());
  // The operator does.
  model_.XmapComplete = false;
  EXPECT_EQ(Poll(), "E5");
  ReportRows(1, 8);
  EXPECT_TRUE(map_.IsKnown());
}

// Its first byte brings the link up only when it has been decoded.
TEST_F(KnownMapTest, TheRowThatBringsTheLinkUpCounts) {
  ReportRows(1, 8);
  FallSilent();
  ReportRows(1, 8);
  EXPECT_TRUE(map_.IsKnown());
}

TEST_F(KnownMapTest, ARowThatWasSpoiledIsUnknownUntilItComesRight) {
  ReportRows(1, 8);
  Receive("F3 02 00 00 00 01 00 02 FF");  // checksum
  EXPECT_FALSE(map_.IsKnown());
  ReportRows(4, 8);
  EXPECT_TRUE(model_.XmapComplete);
  EXPECT_FALSE(map_.IsKnown());
  ReportRows(3, 3);
  EXPECT_TRUE(map_.IsKnown());
}

// What is not a row of the map spoils none.
TEST_F(KnownMapTest, WhatNamesNoRowSpoilsNone) {
  ReportRows(1, 8);
  Receive("F3 08 00 00 00 00 00 08 FF");  // output 9
  EXPECT_TRUE(map_.IsKnown());
}

TEST_F(KnownMapTest, AClosedPortMakesItUnknown) {
  ReportRows(1, 8);
  port_.Vanish();
  EXPECT_FALSE(map_.IsKnown());
}

}  // namespace
}  // namespace switcher
