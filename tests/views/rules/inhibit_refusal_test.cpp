// SPDX-License-Identifier: MIT

#include "views/rules/inhibit_refusal.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace rules {
namespace {

using stations::Change;
using stations::Direction;
using stations::Origin;

class InhibitRefusalTest : public testing::Test {
 protected:
  InhibitRefusalTest() {
    model_.ApplyFixedValues();
    model_.ChannelCount = 8;
    model_.AllocateMap();
    model_.CrosspointMap.At(3, 2) = 1;
  }

  bool IsRefused(int output, const jet::Value& before, const jet::Value& after,
                 Direction direction = Direction::Again) const {
    const std::vector<Change> changes = {
        {Origin::Operator, 1, {{"Label", "00000000", "11111111"}}},
        {Origin::Operator, output, {{"Label", "A", "B"}, {"Inhibits", before, after}}}};
    return WouldInhibitCrosspoint(changes, direction, model_);
  }

  model::SystemModel model_;
};

TEST_F(InhibitRefusalTest, AnInhibitThatComesOnAMadeCrosspointIsRefused) {
  EXPECT_TRUE(IsRefused(3, "00000000", "01000000"));
  EXPECT_TRUE(IsRefused(3, jet::Value(), "01"));
  EXPECT_FALSE(IsRefused(3, "01000000", "00000000"));
  EXPECT_TRUE(IsRefused(3, "01000000", "00000000", Direction::Back));
  EXPECT_FALSE(IsRefused(3, "00000000", "01000000", Direction::Back));
}

TEST_F(InhibitRefusalTest, WhereNoneIsMadeOrItStoodAlreadyItIsNot) {
  EXPECT_FALSE(IsRefused(3, "00000000", "10111111"));
  EXPECT_FALSE(IsRefused(2, "00000000", "01000000"));
  EXPECT_FALSE(IsRefused(3, "01000000", "01000001"));
}

TEST_F(InhibitRefusalTest, StationsWithoutAnOutputAreNotOfTheMap) {
  EXPECT_FALSE(IsRefused(9, "00000000", "11111111"));
  model_.CrosspointMap.At(3, 8) = 1;
  EXPECT_FALSE(IsRefused(0, "00000000", "11111111"));
}

}  // namespace
}  // namespace rules
