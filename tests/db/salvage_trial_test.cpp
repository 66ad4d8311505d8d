// SPDX-License-Identifier: MIT

#include "tests/db/salvage_trial.h"

#include <gmock/gmock.h>

#include <string>

namespace {

// Which pages of long values were written to each other's place nobody can tell where they are
// built alike; what is copied or changed inside a value is as little to be seen.
bool CanBeTold(const std::string& damage) {
  return damage != "two pages swapped" && damage != "a page over another";
}

// A sample of the long run, of the database as the program makes it.
TEST(SalvageTrialTest, WhatIsInTheFileIsInTheNewOne) {
  constexpr int kOfEachWay = 1;
  for (const test::TrialFigures& figures : test::RunSalvageTrial(12 * kOfEachWay, 3)) {
    SCOPED_TRACE(figures.damage);
    EXPECT_EQ(figures.files, kOfEachWay);
    EXPECT_GT(figures.rowsThere, 0);
    EXPECT_EQ(figures.rowsSalvaged, figures.rowsThere);
    EXPECT_GT(figures.valuesThere, 0);
    if (CanBeTold(figures.damage)) {
      EXPECT_EQ(figures.valuesSalvaged, figures.valuesThere);
      EXPECT_THAT(figures.overlooked, testing::IsEmpty());
    }
    EXPECT_EQ(figures.invented, 0);
    EXPECT_EQ(figures.unsound, 0);
    EXPECT_EQ(figures.silent, 0);
  }
}

}  // namespace
