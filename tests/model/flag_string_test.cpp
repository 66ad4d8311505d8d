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

TEST(FirstFlag, IsTheLowestThatIsSet) {
  EXPECT_EQ(FirstFlag("00100100", 8), 3);
  EXPECT_EQ(FirstFlag("1", 64), 1);
  EXPECT_EQ(FirstFlag("00000001", 7), 0) << "beyond the targets";
  EXPECT_EQ(FirstFlag("0000x2 0", 8), 0);
  EXPECT_EQ(FirstFlag("", 64), 0);
}

TEST(WithFlag, ChangesOneFlag) {
  EXPECT_EQ(WithFlag("00000000", 3, true, 8), "00100000");
  EXPECT_EQ(WithFlag("00100001", 3, false, 8), "00000001");
  EXPECT_EQ(WithFlag("00100001", 3, true, 8), "00100001");
}

TEST(WithFlag, FillsUpWhatIsShort) {
  EXPECT_EQ(WithFlag("", 1, false, 4), "0000");
  EXPECT_EQ(WithFlag("1", 3, true, 8), "10100000");
  EXPECT_EQ(WithFlag("11", 8, true, 8), "11000001");
}

TEST(WithFlag, KeepsWhatStandsBehindTheMembers) {
  EXPECT_EQ(WithFlag("0000"
                     "1x1",
                     2, true, 4),
            "0100"
            "1x1");
}

TEST(WithFlag, OtherCharactersAreClear) {
  EXPECT_EQ(WithFlag("1x 2", 3, true, 4), "1010");
  EXPECT_EQ(WithFlag("\xC3\xBC"
                     "1\xE2\x82\xAC"
                     "1",
                     1, false, 4),
            "0101")
      << "two of many bytes";
  EXPECT_EQ(WithFlag("0\xC3\xBC"
                     "0\xC3\xBC",
                     1, true, 3),
            "100\xC3\xBC")
      << "one kept behind";
}

}  // namespace
}  // namespace model
