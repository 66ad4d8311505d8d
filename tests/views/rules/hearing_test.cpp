// SPDX-License-Identifier: MIT

#include "views/rules/hearing.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace rules {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

TEST(Hearing, NamesBothEndsOfWhatIsMade) {
  model::SystemModel model;
  model.ChannelCount = 8;
  model.AllocateMap();
  XmapGrid grid(model);
  grid.Clear();
  model.CrosspointMap.At(2, 1) = 1;
  model.CrosspointMap.At(2, 8) = 1;
  grid.SetMark(2, 3, Mark::Inhibit);
  model.CrosspointMap.At(5, 8) = 1;
  model.ChannelStatus[5] = 1;
  const Hearing second = HeardBy(grid, 2);
  EXPECT_THAT(second.ordinary, ElementsAre(1, 8));
  EXPECT_THAT(second.byPriority, IsEmpty());
  EXPECT_EQ(HeardBy(grid, 1), Hearing());
  const Hearing eighth = HearersOf(grid, 8);
  EXPECT_THAT(eighth.ordinary, ElementsAre(2));
  EXPECT_THAT(eighth.byPriority, ElementsAre(5));
  EXPECT_EQ(HearersOf(grid, 3), Hearing()) << "an inhibit is not heard";
}

TEST(Hearing, AnInhibitHidesNothingThatIsHeard) {
  model::SystemModel model;
  model.ChannelCount = 8;
  model.AllocateMap();
  XmapGrid grid(model);
  grid.Clear();
  model.CrosspointMap.At(2, 3) = 1;
  model.CrosspointMap.At(2, 4) = 1;
  model.ChannelStatus[2] = 1;
  grid.SetMark(2, 3, Mark::Inhibit);
  EXPECT_THAT(HeardBy(grid, 2).byPriority, ElementsAre(3, 4));
  EXPECT_THAT(HearersOf(grid, 3).byPriority, ElementsAre(2));
}

TEST(Hearing, ACallOfTheDemoModeIsKnownByItsMark) {
  model::SystemModel model;
  model.ChannelCount = 8;
  model.AllocateMap();
  XmapGrid grid(model);
  grid.Clear();
  model.CrosspointMap.At(2, 3) = 1;
  grid.SetMark(2, 3, Mark::Priority);
  EXPECT_THAT(HeardBy(grid, 2).byPriority, ElementsAre(3));
}

}  // namespace
}  // namespace rules
