// SPDX-License-Identifier: MIT

#include "db/station_list.h"

#include <gtest/gtest.h>

namespace db {
namespace {

TEST(StationList, NamesRunsByTheirEnds) {
  EXPECT_EQ(StationList({}), "");
  EXPECT_EQ(StationList({7}), "7");
  EXPECT_EQ(StationList({1, 2}), "1, 2");
  EXPECT_EQ(StationList({1, 11, 12, 13, 20}), "1, 11 to 13, 20");
}

}  // namespace
}  // namespace db
