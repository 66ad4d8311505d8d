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

// A take is nine bytes, and the port makes a sender wait that has 256 ahead of it.
TEST_F(LineShareTest, PanelsHaveTheLineWhileAWholeTakeHasRoom) {
  EXPECT_TRUE(share_.HasRoom());
  port_.unsent = 247;
  EXPECT_TRUE(share_.HasRoom());
  port_.unsent = 248;
  EXPECT_FALSE(share_.HasRoom());
}

TEST_F(LineShareTest, ThePollGoesFirst) {
  port_.unsent = 144;  // 25 ms, and 26.6 with the take
  untilPoll_ = 47ms;
  EXPECT_TRUE(share_.HasRoom());
  untilPoll_ = 46ms;
  EXPECT_FALSE(share_.HasRoom());
  port_.unsent = 0;
  untilPoll_ = 22ms;
  EXPECT_TRUE(share_.HasRoom());
  untilPoll_ = 21ms;
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
