// SPDX-License-Identifier: MIT

#include "model/flag_string.h"

#include <gtest/gtest.h>

namespace model {
namespace {

TEST(FlagString, OnlyTheDigitOneIsSet) {
  EXPECT_TRUE(FlagIsSet("010", 2));
  EXPECT_FALSE(FlagIsSet("010", 1));
  EXPECT_FALSE(FlagIsSet("x2 ", 1));
}

TEST(FlagString, MembersOutsideTheTextAreClear) {
  EXPECT_FALSE(FlagIsSet("1", 0));
  EXPECT_FALSE(FlagIsSet("1", -1));
  EXPECT_FALSE(FlagIsSet("1", 2));
  EXPECT_FALSE(FlagIsSet("", 1));
}

TEST(FlagString, GroupHasItsFirstMemberInBitZero) {
  EXPECT_EQ(FlagGroup("10000001", 1), 129);
  EXPECT_EQ(FlagGroup("0000000011000000", 9), 3);
}

TEST(FlagString, GroupAtTheEndTakesWhatIsThere) {
  EXPECT_EQ(FlagGroup("111", 1), 7);
  EXPECT_EQ(FlagGroup("111", 9), 0);
  EXPECT_EQ(FlagGroup("1?1", 1), 5);
}

}  // namespace
}  // namespace model
