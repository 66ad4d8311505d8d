// SPDX-License-Identifier: MIT

#include "model/padded.h"

#include <gtest/gtest.h>

namespace {

TEST(Padded, PutsZerosBeforeASmallNumberOnly) {
  EXPECT_EQ(model::Padded(7, 2), "07");
  EXPECT_EQ(model::Padded(7, 3), "007");
  EXPECT_EQ(model::Padded(64, 2), "64");
  EXPECT_EQ(model::Padded(256, 2), "256");
  EXPECT_EQ(model::Padded(0, 3), "000");
}

}  // namespace
