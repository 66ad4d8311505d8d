// SPDX-License-Identifier: MIT

#include "views/rules/target_flags.h"

#include <gtest/gtest.h>

namespace rules {
namespace {

TEST(WithMember, ChangesOneFlag) {
  EXPECT_EQ(WithMember("00000000", 3, true, 8), "00100000");
  EXPECT_EQ(WithMember("00100001", 3, false, 8), "00000001");
  EXPECT_EQ(WithMember("00100001", 3, true, 8), "00100001");
}

TEST(WithMember, FillsUpWhatIsShort) {
  EXPECT_EQ(WithMember("", 1, false, 4), "0000");
  EXPECT_EQ(WithMember("1", 3, true, 8), "10100000");
  EXPECT_EQ(WithMember("11", 8, true, 8), "11000001");
}

TEST(WithMember, KeepsWhatStandsBehindTheMembers) {
  EXPECT_EQ(WithMember("0000"
                       "1x1",
                       2, true, 4),
            "0100"
            "1x1");
}

TEST(WithMember, OtherCharactersAreClear) {
  EXPECT_EQ(WithMember("1x 2", 3, true, 4), "1010");
  EXPECT_EQ(WithMember("\xC3\xBC"
                       "1\xE2\x82\xAC"
                       "1",
                       1, false, 4),
            "0101")
      << "two of many bytes";
  EXPECT_EQ(WithMember("0\xC3\xBC"
                       "0\xC3\xBC",
                       1, true, 3),
            "100\xC3\xBC")
      << "one kept behind";
}

}  // namespace
}  // namespace rules
