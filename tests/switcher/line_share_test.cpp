// SPDX-License-Identifier: MIT
//
// How far the line is behind, and what panels may have of it.

#include "switcher/line_share.h"

#include <gtest/gtest.h>

#include "switcher/line_pace.h"
#include "tests/support/fake_serial_port.h"

namespace switcher {
namespace {

using namespace std::chrono_literals;

TEST(LinePaceTest, ALineSendsFiveThousandSevenHundredAndSixtyBytesASecond) {
  const LinePace::Time start(1h);
  LinePace pace;
  EXPECT_EQ(pace.Behind(start), 0U);
  pace.Add(288, start);
  EXPECT_EQ(pace.Behind(start), 288U);
  EXPECT_EQ(pace.Behind(start + 25ms), 144U);
  EXPECT_EQ(pace.Behind(start + 49ms), 6U);
  EXPECT_EQ(pace.Behind(start + 50ms), 0U);
}

TEST(LinePaceTest, AByteThatIsHalfSentIsNot) {
  const LinePace::Time start(1h);
  LinePace pace;
  pace.Add(2, start);
  EXPECT_EQ(pace.Behind(start + 100us), 2U);
  EXPECT_EQ(pace.Behind(start + 200us), 1U);
  EXPECT_EQ(pace.Behind(start + 348us), 0U);
}

TEST(LinePaceTest, BytesFollowThoseThatWait) {
  const LinePace::Time start(1h);
  LinePace pace;
  pace.Add(144, start);
  pace.Add(144, start + 15ms);
  EXPECT_EQ(pace.Behind(start + 25ms), 144U);
  pace.Add(9, start + 1s);
  EXPECT_EQ(pace.Behind(start + 1s), 9U);
}

TEST(LinePaceTest, WhatIsNoLineIsNotWaitedForLong) {
  const LinePace::Time start(1h);
  LinePace pace;
  for (int i = 0; i < 100000; ++i) pace.Add(1, start);
  EXPECT_EQ(pace.Behind(start), 512U);
  EXPECT_EQ(pace.Behind(start + 100ms), 0U);
}

TEST(LinePaceTest, ANewLineOwesNothing) {
  const LinePace::Time start(1h);
  LinePace pace;
  pace.Add(100, start);
  pace.Reset();
  EXPECT_EQ(pace.Behind(start), 0U);
}

class LineShareTest : public testing::Test {
 protected:
  test::FakeSerialPort port_;
  std::chrono::milliseconds untilPoll_ = 500ms;
  LineShare share_{port_, [this] { return untilPoll_; }};
};

TEST_F(LineShareTest, PanelsHaveTheLineWhileLittleWaits) {
  EXPECT_TRUE(share_.HasRoom());
  port_.unsent = 255;
  EXPECT_TRUE(share_.HasRoom());
  port_.unsent = 256;
  EXPECT_FALSE(share_.HasRoom());
}

TEST_F(LineShareTest, ThePollGoesFirst) {
  port_.unsent = 144;  // 25 ms
  untilPoll_ = 46ms;
  EXPECT_TRUE(share_.HasRoom());
  untilPoll_ = 45ms;
  EXPECT_FALSE(share_.HasRoom());
  port_.unsent = 0;
  EXPECT_TRUE(share_.HasRoom());
  untilPoll_ = 20ms;
  EXPECT_FALSE(share_.HasRoom());
  untilPoll_ = 0ms;
  EXPECT_FALSE(share_.HasRoom()) << "it is due";
}

TEST_F(LineShareTest, WithoutAPollNothingIsWaitedFor) {
  untilPoll_ = -1ms;
  EXPECT_TRUE(share_.HasRoom());
}

}  // namespace
}  // namespace switcher
