// SPDX-License-Identifier: MIT

#include "gateway/take_frame.h"

#include <gtest/gtest.h>

#include "tests/support/hex.h"

namespace gateway {
namespace {

using test::FromHex;

TEST(ParseTakeFrame, Literal) {
  const auto take = ParseTakeFrame(FromHex("FE 20 00 05 00 07 00 2C FF"));
  ASSERT_TRUE(take);
  EXPECT_EQ(*take, (PanelTake{.destination = 6, .source = 8, .action = 0}));
  EXPECT_EQ(ParseTakeFrame(FromHex("FE 25 02 7F 01 00 01 28 FF")),
            (PanelTake{.destination = 256, .source = 129, .action = 142}));
  EXPECT_EQ(ParseTakeFrame(FromHex("FE 24 00 00 02 7F 7F 24 FF")),
            (PanelTake{.destination = 257, .source = 16384, .action = 2}));
}

TEST(ParseTakeFrame, Refusals) {
  for (const char* const frame : {
           "",                               // nothing
           "FE FF",                          //
           "FE 20 00 05 00 07 00 2D FF",     // checksum
           "FE 20 00 05 00 07 2C FF",        // short
           "FE 20 00 05 00 07 00 00 2C FF",  // long
           "FE 20 00 85 00 07 00 2C FF",     // a byte that is no data
           "FE 24 00 05 FE 01 00 28 FF",     // another frame's start inside
       }) {
    EXPECT_FALSE(ParseTakeFrame(FromHex(frame))) << frame;
  }
}

TEST(ActionOfCommand, KnownCodesAndTheFallback) {
  EXPECT_EQ(ActionOfCommand(32), 0);
  EXPECT_EQ(ActionOfCommand(33), 136);
  EXPECT_EQ(ActionOfCommand(36), 2);
  EXPECT_EQ(ActionOfCommand(37), 138);
  EXPECT_EQ(ActionOfCommand(161), 132);
  EXPECT_EQ(ActionOfCommand(165), 134);
  EXPECT_EQ(ActionOfCommand(289), 140);
  EXPECT_EQ(ActionOfCommand(293), 142);
  for (const int other : {0, 1, 31, 34, 35, 38, 160, 162, 288, 290, 16383}) {
    EXPECT_EQ(ActionOfCommand(other), 0) << other;
  }
}

}  // namespace
}  // namespace gateway
