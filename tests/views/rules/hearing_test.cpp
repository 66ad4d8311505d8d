// SPDX-License-Identifier: MIT

#include "views/rules/hearing.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace rules {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

TEST(Hearing, NamesBothEndsByTheMarksOfTheMap) {
  model::SystemModel model;
  model.ChannelCount = 8;
  model.AllocateMap();
  XmapGrid grid(model);
  grid.Clear();
  grid.SetMark(2, 1, Mark::Crosspoint);
  grid.SetMark(2, 8, Mark::Crosspoint);
  grid.SetMark(2, 3, Mark::Inhibit);
  grid.SetMark(5, 8, Mark::Priority);
  const Hearing second = HeardBy(grid, 2);
  EXPECT_THAT(second.ordinary, ElementsAre(1, 8));
  EXPECT_THAT(second.byPriority, IsEmpty());
  EXPECT_EQ(HeardBy(grid, 1), Hearing());
  const Hearing eighth = HearersOf(grid, 8);
  EXPECT_THAT(eighth.ordinary, ElementsAre(2));
  EXPECT_THAT(eighth.byPriority, ElementsAre(5));
  EXPECT_EQ(HearersOf(grid, 3), Hearing()) << "an inhibit is not heard";
}

}  // namespace
}  // namespace rules
