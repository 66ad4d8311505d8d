// SPDX-License-Identifier: MIT

#include "views/rules/last_take.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <initializer_list>

namespace rules {
namespace {

using switcher::TakeAction;
using testing::ElementsAre;
using testing::IsEmpty;

using Kind = TakeBack::Kind;
using Step = TakeBack::Step;

class LastTakeTest : public testing::Test {
 protected:
  LastTakeTest() {
    model_.ChannelCount = 8;
    model_.AllocateMap();
    grid_.Clear();
  }

  void SetRow(int output, std::initializer_list<int> inputs, int status = 0) {
    for (int input = 1; input <= 8; ++input) model_.CrosspointMap.At(output, input) = 0;
    for (const int input : inputs) model_.CrosspointMap.At(output, input) = 1;
    model_.ChannelStatus[output] = static_cast<std::uint8_t>(status);
  }
  // The switcher reports a row.
  void Report(int output, std::initializer_list<int> inputs, int status = 0) {
    SetRow(output, inputs, status);
    (void)grid_.UpdateXmap(output, status);
    last_.Reported(output);
  }

  Kind Decide() { return last_.Decide(grid_).kind; }

  model::SystemModel model_;
  XmapGrid grid_{model_};
  LastTake last_{model_};
};

TEST_F(LastTakeTest, OneSourceComesBackByATake) {
  SetRow(6, {8});
  last_.Sent(6, 3, /*isMapKnown=*/true);
  Report(6, {3});
  const TakeBack back = last_.Decide(grid_);
  EXPECT_EQ(back.kind, Kind::Possible);
  EXPECT_EQ(back.output, 6);
  EXPECT_THAT(back.before, ElementsAre(8));
  EXPECT_THAT(back.steps, ElementsAre(Step{8, TakeAction::Take}));
}

TEST_F(LastTakeTest, SeveralSourcesAreConnectedAndThenTheTakenOneBroken) {
  SetRow(6, {2, 3, 8});
  last_.Sent(6, 5, /*isMapKnown=*/true);
  Report(6, {5});
  EXPECT_THAT(last_.Decide(grid_).steps,
              ElementsAre(Step{2, TakeAction::MakeSum}, Step{3, TakeAction::MakeSum},
                          Step{8, TakeAction::MakeSum}, Step{5, TakeAction::BreakSum}));
}

TEST_F(LastTakeTest, ARowWithMoreThanTheTakenSourceIsSomebodyElsesToo) {
  SetRow(6, {3, 8});
  last_.Sent(6, 5, /*isMapKnown=*/true);
  Report(6, {3, 5});
  EXPECT_EQ(Decide(), Kind::Changed) << "a take leaves its own source alone";
}

TEST_F(LastTakeTest, WhatWasHeardBeforeAnUnknownMapWasReportedCannotComeBack) {
  SetRow(6, {8});
  last_.Sent(6, 3, /*isMapKnown=*/false);
  EXPECT_EQ(Decide(), Kind::BeforeUnknown);
  Report(6, {3});
  EXPECT_EQ(Decide(), Kind::BeforeUnknown);
}

TEST_F(LastTakeTest, ATakeThatWasNotMadeInTimeIsNobodysAnyMore) {
  SetRow(6, {8});
  last_.Sent(6, 3, /*isMapKnown=*/true);
  Report(6, {8});
  last_.Lapse();
  EXPECT_EQ(Decide(), Kind::NoTake);
  Report(6, {3});
  EXPECT_EQ(Decide(), Kind::NoTake) << "made by another";
}

TEST_F(LastTakeTest, ATakeThatWasMadeStays) {
  SetRow(6, {8});
  last_.Sent(6, 3, /*isMapKnown=*/true);
  Report(6, {3});
  last_.Lapse();
  EXPECT_EQ(Decide(), Kind::Possible);
}

TEST_F(LastTakeTest, OfTwoQuickTakesTheSecondGoesBackToTheFirst) {
  SetRow(6, {8});
  last_.Sent(6, 3, /*isMapKnown=*/true);
  last_.Sent(6, 4, /*isMapKnown=*/true);
  Report(6, {3});
  EXPECT_EQ(Decide(), Kind::Unreported);
  Report(6, {4});
  EXPECT_THAT(last_.Decide(grid_).before, ElementsAre(3));
}

TEST_F(LastTakeTest, ACallThatComesBeforeTheTakeIsMadeIsNotBroughtBack) {
  SetRow(6, {8});
  last_.Sent(6, 3, /*isMapKnown=*/true);
  Report(6, {7}, 1);
  Report(6, {3});
  EXPECT_EQ(Decide(), Kind::ByPriority);
}

TEST_F(LastTakeTest, EachStepIsMadeBeforeTheNext) {
  SetRow(6, {2, 8});
  last_.Sent(6, 5, /*isMapKnown=*/true);
  Report(6, {5});
  const auto next = [this] { return last_.Decide(grid_).steps; };
  last_.StepSent(next().front());
  EXPECT_EQ(Decide(), Kind::Unreported);
  Report(6, {2, 5});
  EXPECT_THAT(next(), ElementsAre(Step{8, TakeAction::MakeSum}, Step{5, TakeAction::BreakSum}));
  last_.StepSent(next().front());
  last_.Lapse();
  EXPECT_THAT(next(), ElementsAre(Step{8, TakeAction::MakeSum}, Step{5, TakeAction::BreakSum}))
      << "it can be sent again";
  last_.StepSent(next().front());
  Report(6, {2, 5, 8});
  last_.StepSent(next().front());
  Report(6, {2, 8});
  EXPECT_EQ(Decide(), Kind::NoTake) << "all is as before";
}

TEST_F(LastTakeTest, ARowThatChangesBetweenTwoStepsIsRefused) {
  SetRow(6, {2, 8});
  last_.Sent(6, 5, /*isMapKnown=*/true);
  Report(6, {5});
  last_.StepSent(last_.Decide(grid_).steps.front());
  Report(6, {4});
  EXPECT_EQ(Decide(), Kind::Changed);
}

TEST_F(LastTakeTest, OfAnOutputThatHeardNothingTheTakenSourceIsBroken) {
  last_.Sent(6, 5, /*isMapKnown=*/true);
  Report(6, {5});
  const TakeBack back = last_.Decide(grid_);
  EXPECT_THAT(back.before, IsEmpty());
  EXPECT_THAT(back.steps, ElementsAre(Step{5, TakeAction::BreakSum}));
}

TEST_F(LastTakeTest, NothingWasTaken) {
  EXPECT_EQ(Decide(), Kind::NoTake);
  Report(6, {5});
  EXPECT_EQ(Decide(), Kind::NoTake);
  last_.Sent(6, 4, /*isMapKnown=*/true);
  Report(6, {4});
  last_.StepSent(last_.Decide(grid_).steps.front());
  Report(6, {5});
  EXPECT_EQ(Decide(), Kind::NoTake) << "it was taken back";
}

TEST_F(LastTakeTest, BeforeTheReportItIsRefused) {
  SetRow(6, {8});
  last_.Sent(6, 3, /*isMapKnown=*/true);
  EXPECT_EQ(Decide(), Kind::Unreported);
  Report(5, {3});
  EXPECT_EQ(Decide(), Kind::Unreported) << "another row";
  Report(6, {8});
  EXPECT_EQ(Decide(), Kind::Unreported) << "the row as it was before the take";
  Report(6, {3});
  EXPECT_EQ(Decide(), Kind::Possible);
}

TEST_F(LastTakeTest, ARowThatHasChangedSinceIsRefused) {
  SetRow(6, {8});
  last_.Sent(6, 3, /*isMapKnown=*/true);
  Report(6, {3});
  Report(6, {3});
  EXPECT_EQ(Decide(), Kind::Possible) << "reported again as it is";
  Report(6, {3, 4});
  EXPECT_EQ(Decide(), Kind::Changed);
  Report(6, {3});
  EXPECT_EQ(Decide(), Kind::Changed) << "somebody was there meanwhile";
}

TEST_F(LastTakeTest, AReportThatWasRefusedChangesTheRowToo) {
  SetRow(6, {8});
  last_.Sent(6, 3, /*isMapKnown=*/true);
  Report(6, {3});
  SetRow(6, {});
  EXPECT_EQ(Decide(), Kind::Changed);
}

TEST_F(LastTakeTest, ARowOfPriorityIsRefused) {
  SetRow(6, {8}, 1);
  last_.Sent(6, 3, /*isMapKnown=*/true);
  Report(6, {3});
  EXPECT_EQ(Decide(), Kind::ByPriority) << "no take brings back a call";
  SetRow(7, {8});
  last_.Sent(7, 3, /*isMapKnown=*/true);
  Report(7, {3});
  EXPECT_EQ(Decide(), Kind::Possible);
  Report(7, {3}, 1);
  EXPECT_EQ(Decide(), Kind::ByPriority);
}

TEST_F(LastTakeTest, WhatIsInhibitedNowIsRefused) {
  SetRow(6, {8});
  last_.Sent(6, 3, /*isMapKnown=*/true);
  Report(6, {3});
  grid_.SetMark(6, 8, Mark::Inhibit);
  EXPECT_EQ(Decide(), Kind::Inhibited);
}

TEST_F(LastTakeTest, ANewTakeComesInPlaceOfTheOneBefore) {
  SetRow(6, {8});
  last_.Sent(6, 3, /*isMapKnown=*/true);
  Report(6, {3});
  last_.Sent(6, 4, /*isMapKnown=*/true);
  EXPECT_EQ(Decide(), Kind::Unreported);
  Report(6, {4});
  EXPECT_THAT(last_.Decide(grid_).before, ElementsAre(3));
}

TEST_F(LastTakeTest, TheWholeMapIsAReportToo) {
  SetRow(6, {8});
  last_.Sent(6, 3, /*isMapKnown=*/true);
  SetRow(6, {3});
  last_.Reported(model::kAll);
  EXPECT_EQ(Decide(), Kind::Possible);
}

TEST_F(LastTakeTest, AMapOfAnotherSizeHasNothingOfIt) {
  last_.Sent(6, 3, /*isMapKnown=*/true);
  Report(6, {3});
  model_.ChannelCount = 4;
  model_.AllocateMap();
  EXPECT_EQ(Decide(), Kind::NoTake);
}

}  // namespace
}  // namespace rules
