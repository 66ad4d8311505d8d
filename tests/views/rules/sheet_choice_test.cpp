// SPDX-License-Identifier: MIT

#include "views/rules/sheet_choice.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace rules {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

TEST(SheetChoice, TheStationThatIsWorkedAtIsProposed) {
  EXPECT_EQ(ProposedChoice({.current = 5, .all = {1, 2, 5}}), SheetChoice::This);
  EXPECT_EQ(ProposedChoice({.current = 0, .all = {1, 2, 5}}), SheetChoice::All) << "none";
  EXPECT_EQ(ProposedChoice({.current = 66, .all = {1, 2, 5}}), SheetChoice::All)
      << "a record without a panel";
}

TEST(SheetChoice, OneSomeOrAll) {
  const SheetStations stations{.current = 2, .ticked = {1, 5}, .all = {1, 2, 4, 5}};
  EXPECT_THAT(StationsOf(SheetChoice::This, stations), ElementsAre(2));
  EXPECT_THAT(StationsOf(SheetChoice::Chosen, stations), ElementsAre(1, 5));
  EXPECT_THAT(StationsOf(SheetChoice::All, stations), ElementsAre(1, 2, 4, 5));
}

TEST(SheetChoice, AStationWithoutASheetIsNone) {
  const SheetStations stations{.current = 3, .ticked = {3, 4}, .all = {1, 4}};
  EXPECT_THAT(StationsOf(SheetChoice::This, stations), IsEmpty());
  EXPECT_THAT(StationsOf(SheetChoice::Chosen, stations), ElementsAre(4));
  EXPECT_THAT(StationsOf(SheetChoice::All, {.current = 3, .ticked = {3}}), IsEmpty());
}

}  // namespace
}  // namespace rules
