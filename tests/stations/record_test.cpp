// SPDX-License-Identifier: MIT

#include "stations/record.h"

#include <gtest/gtest.h>

#include <string>

#include "tests/support/small_database.h"

namespace stations {
namespace {

class RecordTest : public testing::Test {
 protected:
  RecordTest() {
    database_.AddStation(1, {{"Label", "MIC"}, {"OptoType", 3}, {"Relays", "1x 1"}});
    EXPECT_TRUE(Stations().MoveFirst().ok());
  }

  jet::RecordSet& Stations() { return *database_.Files().Stations(); }

  std::string Label() { return Record(Stations()).Text("Label"); }
  int OptoType() { return Record(Stations()).Number("OptoType"); }

  test::SmallDatabase database_;
};

TEST_F(RecordTest, ReadsFieldsAsWhatTheyAre) {
  Record record(Stations());
  EXPECT_EQ(record.Text("Label"), "MIC");
  EXPECT_EQ(record.Number("OptoType"), 3);
  EXPECT_EQ(record.Flags("Relays"), "1001");
  EXPECT_TRUE(record.Get("Notes").IsNull());
  EXPECT_EQ(record.Text("Notes"), "");
  EXPECT_TRUE(record.Outcome().ok());
}

TEST_F(RecordTest, AFieldThatIsNotThereReadsAsNullAndTheOthersAreReadAllTheSame) {
  Record record(Stations());
  EXPECT_EQ(record.Number("Nothing", 17), 17);
  EXPECT_EQ(record.Number("Nothing"), 0);
  EXPECT_EQ(record.Text("Label"), "MIC");
  EXPECT_EQ(record.Outcome().Number(), 3265);
}

TEST_F(RecordTest, TheFirstFailureIsKept) {
  ASSERT_TRUE(Stations().MoveLast().ok());
  ASSERT_TRUE(Stations().MoveNext().ok());
  Record record(Stations());
  EXPECT_EQ(record.Text("Label"), "");
  EXPECT_EQ(record.Text("Nothing"), "");
  EXPECT_EQ(record.Outcome().Number(), 3021) << "no current record";
}

TEST_F(RecordTest, AllChangesAreStored) {
  bool stored = false;
  Record record(Stations());
  record.Set("Label", "LINE");
  record.Set("OptoType", 4);
  EXPECT_EQ(Label(), "MIC") << "before the commit";
  ASSERT_TRUE(record.Commit(&stored).ok());
  EXPECT_TRUE(stored);
  EXPECT_EQ(Label(), "LINE");
  EXPECT_EQ(OptoType(), 4);
}

TEST_F(RecordTest, WhatIsThereAlreadyIsNotWritten) {
  bool stored = true;
  Record record(Stations());
  record.Set("Label", "MIC");
  record.Set("OptoType", 3);
  ASSERT_TRUE(record.Commit(&stored).ok());
  EXPECT_FALSE(stored);
}

TEST_F(RecordTest, OneThatDoesNotFitKeepsAllFromBeingStored) {
  bool stored = true;
  Record record(Stations());
  record.Set("OptoType", 4);
  record.Set("Label", std::string(300, 'x'));
  EXPECT_FALSE(record.Commit(&stored).ok());
  EXPECT_FALSE(stored);
  EXPECT_EQ(OptoType(), 3);
  EXPECT_EQ(Label(), "MIC");
  EXPECT_FALSE(Stations().Update().ok()) << "no change is left begun";
}

TEST_F(RecordTest, AChangeOfAFieldThatIsNotThereIsAFailure) {
  bool stored = true;
  Record record(Stations());
  record.Set("OptoType", 4);
  record.Set("Nothing", 1);
  EXPECT_EQ(record.Commit(&stored).Number(), 3265);
  EXPECT_FALSE(stored);
  EXPECT_EQ(OptoType(), 3);
}

TEST_F(RecordTest, NothingIsStoredThatMayBeMadeOfWhatCouldNotBeRead) {
  bool stored = true;
  Record record(Stations());
  record.Set("OptoType", record.Number("Nothing"));
  EXPECT_EQ(record.Commit(&stored).Number(), 3265);
  EXPECT_FALSE(stored);
  EXPECT_EQ(OptoType(), 3);
}

}  // namespace
}  // namespace stations
