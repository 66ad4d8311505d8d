// SPDX-License-Identifier: MIT

#include "views/rules/store_fields.h"

#include <gtest/gtest.h>

#include <string>

#include "tests/support/small_database.h"

namespace rules {
namespace {

class StoreFieldsTest : public testing::Test {
 protected:
  StoreFieldsTest() {
    database_.AddStation(1, {{"Label", "MIC"}, {"OptoType", 3}});
    EXPECT_TRUE(Stations().MoveFirst().ok());
  }

  jet::RecordSet& Stations() { return *database_.Files().Stations(); }

  std::string Label() {
    jet::Value value;
    EXPECT_TRUE(Stations().Get("Label", &value).ok());
    return value.Text();
  }

  int OptoType() {
    jet::Value value;
    EXPECT_TRUE(Stations().Get("OptoType", &value).ok());
    return value.Int();
  }

  test::SmallDatabase database_;
};

TEST_F(StoreFieldsTest, AllAreStored) {
  bool stored = false;
  ASSERT_TRUE(StoreFields(Stations(), {{"Label", "MIC"}, {"OptoType", 4}}, &stored).ok());
  EXPECT_TRUE(stored);
  EXPECT_EQ(OptoType(), 4);
  ASSERT_TRUE(StoreFields(Stations(), {{"Label", "LINE"}}).ok());
  EXPECT_EQ(Label(), "LINE");
}

TEST_F(StoreFieldsTest, WhatIsThereAlreadyIsNotWritten) {
  bool stored = true;
  ASSERT_TRUE(StoreFields(Stations(), {{"Label", "MIC"}, {"OptoType", 3}}, &stored).ok());
  EXPECT_FALSE(stored);
}

TEST_F(StoreFieldsTest, OneThatDoesNotFitKeepsAllFromBeingStored) {
  bool stored = true;
  EXPECT_FALSE(
      StoreFields(Stations(), {{"OptoType", 4}, {"Label", std::string(300, 'x')}}, &stored).ok());
  EXPECT_FALSE(stored);
  EXPECT_EQ(OptoType(), 3);
  EXPECT_EQ(Label(), "MIC");
  EXPECT_FALSE(Stations().Update().ok()) << "no change is left begun";
}

TEST_F(StoreFieldsTest, AFieldThatIsNotThereIsAFailure) {
  bool stored = true;
  EXPECT_FALSE(StoreFields(Stations(), {{"OptoType", 4}, {"Nothing", 1}}, &stored).ok());
  EXPECT_FALSE(stored);
  EXPECT_EQ(OptoType(), 3);
}

}  // namespace
}  // namespace rules
