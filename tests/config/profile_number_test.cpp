// SPDX-License-Identifier: MIT

#include "config/profile_number.h"

#include <gtest/gtest.h>

#include <cstdint>
#include <string>

namespace config {
namespace {

std::int64_t Short(std::string_view text) { return ProfileNumber(text, INT16_MIN, INT16_MAX); }

TEST(ProfileNumber, TakesTheLeadingNumber) {
  EXPECT_EQ(Short("4"), 4);
  EXPECT_EQ(Short("  12 ports"), 12);
  EXPECT_EQ(Short("+7"), 7);
  EXPECT_EQ(Short("-3x"), -3);
  EXPECT_EQ(Short("1e2"), 100);
  EXPECT_EQ(Short("1e"), 1);
  EXPECT_EQ(Short("1 2"), 1);
}

TEST(ProfileNumber, NoNumberInFrontIsZero) {
  for (const char* text : {"", " ", "-", "+", ".", "x1", "inf", "nan", "--1", "$5", "-.e1"}) {
    EXPECT_EQ(Short(text), 0) << text;
  }
}

TEST(ProfileNumber, HalvesGoToTheEvenNeighbour) {
  EXPECT_EQ(Short("0.5"), 0);
  EXPECT_EQ(Short("1.5"), 2);
  EXPECT_EQ(Short("2.5"), 2);
  EXPECT_EQ(Short("-1.5"), -2);
  EXPECT_EQ(Short(".6"), 1);
  EXPECT_EQ(Short("2.51"), 3);
}

TEST(ProfileNumber, BeyondTheFieldIsTheNearerLimit) {
  EXPECT_EQ(Short("32767"), 32767);
  EXPECT_EQ(Short("32768"), 32767);
  EXPECT_EQ(Short("-40000"), -32768);
  EXPECT_EQ(Short("1e999"), 32767);
  EXPECT_EQ(Short("-1e999"), -32768);
  EXPECT_EQ(Short("1e-999"), 0);
  EXPECT_EQ(Short(std::string(400, '9')), 32767);
  EXPECT_EQ(Short("0." + std::string(400, '0') + "1"), 0);
}

}  // namespace
}  // namespace config
