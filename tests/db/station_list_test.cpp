// SPDX-License-Identifier: MIT

#include "db/station_list.h"

#include <gtest/gtest.h>

namespace db {
namespace {

TEST(StationList, NamesRangesOfThreeAndMoreByTheirEnds) {
  EXPECT_EQ(StationList({}), "");
  EXPECT_EQ(StationList({7}), "7");
  EXPECT_EQ(StationList({9, 10}), "9, 10");
  EXPECT_EQ(StationList({9, 10, 11}), "9 to 11");
  EXPECT_EQ(StationList({1, 2, 4, 5, 6, 8}), "1, 2, 4 to 6, 8");
}

}  // namespace
}  // namespace db
