// SPDX-License-Identifier: MIT

#include "app/log/channel_labels.h"

#include <gtest/gtest.h>

#include "stations/record.h"
#include "tests/support/small_database.h"

namespace app {
namespace {

class ChannelLabelsTest : public testing::Test {
 protected:
  ChannelLabelsTest() { model_.ChannelCount = 8; }

  model::SystemModel model_;
  test::SmallDatabase database_;
  stations::Changes changes_;
  ChannelLabels labels_{{.model = model_,
                         .database = [this] { return database_.Files().Database(); },
                         .changes = changes_}};
};

TEST_F(ChannelLabelsTest, AreThoseOfTheStationsWithTheirNumbers) {
  database_.AddStation(7, {{"Label", "seventh"}, {"InLabel", "in 7"}});
  database_.AddStation(3, {{"Label", "third "}, {"InLabel", "in 3"}});
  EXPECT_EQ(labels_.Output(3), QStringLiteral("third"));
  EXPECT_EQ(labels_.Output(7), QStringLiteral("seventh"));
  EXPECT_EQ(labels_.Input(7), QStringLiteral("in 7"));
  EXPECT_EQ(labels_.Output(1), QStringLiteral("Out 1"));
}

TEST_F(ChannelLabelsTest, WithoutALabelThereIsTheNumber) {
  database_.AddStation(1, {{"Label", ""}});
  database_.AddStation(2, {{"Label", "   "}, {"InLabel", "in"}});
  EXPECT_EQ(labels_.Output(1), QStringLiteral("Out 1"));
  EXPECT_EQ(labels_.Input(1), QStringLiteral("In 1"));
  EXPECT_EQ(labels_.Output(2), QStringLiteral("Out 2"));
  EXPECT_EQ(labels_.Output(5), QStringLiteral("Out 5")) << "a channel without a record";
  EXPECT_EQ(labels_.Input(300), QStringLiteral("In 300")) << "no channel at all";
  EXPECT_EQ(labels_.Input(0), QStringLiteral("In 0"));
}

TEST_F(ChannelLabelsTest, AreReadAnewWhenOneHasChanged) {
  database_.AddStation(1, {{"Label", "old"}, {"InLabel", "in"}});
  EXPECT_EQ(labels_.Output(1), QStringLiteral("old"));
  database_.GoTo(1);
  for (const auto& [field, label] : {std::pair("Label", "new"), {"InLabel", "line"}}) {
    stations::Record record(*database_.Files().Stations());
    record.Set(field, label);
    ASSERT_TRUE(record.Commit({changes_, stations::Origin::Switcher}).ok());
  }
  EXPECT_EQ(labels_.Output(1), QStringLiteral("new"));
  EXPECT_EQ(labels_.Input(1), QStringLiteral("line"));
}

TEST_F(ChannelLabelsTest, LeaveTheSharedRecordSetAlone) {
  database_.AddStation(1, {{"Label", "one"}});
  database_.AddStation(2, {{"Label", "two"}});
  database_.GoTo(2);
  jet::RecordSet& shared = *database_.Files().Stations();
  ASSERT_TRUE(shared.Edit().ok());
  EXPECT_EQ(labels_.Output(1), QStringLiteral("one"));
  EXPECT_TRUE(shared.IsChanging());
  EXPECT_EQ(database_.CurrentStation(), 2);
}

TEST_F(ChannelLabelsTest, OfADatabaseThatOpensLaterAreRead) {
  jet::Database* database = nullptr;
  ChannelLabels labels(
      {.model = model_, .database = [&] { return database; }, .changes = changes_});
  EXPECT_EQ(labels.Output(1), QStringLiteral("Out 1"));
  database_.AddStation(1, {{"Label", "one"}});
  database = database_.Files().Database();
  EXPECT_EQ(labels.Output(1), QStringLiteral("one"));
}

}  // namespace
}  // namespace app
