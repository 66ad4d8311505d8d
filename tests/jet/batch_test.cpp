// SPDX-License-Identifier: MIT
//
// Many changes as one: all in the file, or none.

#include <gtest/gtest.h>

#include <memory>
#include <vector>

#include "tests/jet/record_fixture.h"

namespace {

using jet::Database;
using test::Fails;
using test::Int;
using test::Ints;
using test::IsOk;
using test::Text;
using Numbers = std::vector<int>;

class BatchTest : public test::RecordTest {
 protected:
  void SetUp() override {
    RecordTest::SetUp();
    Add(1, "one");
    Add(2, "two");
    Add(3, "three");
  }
  void Rename(const char* name) {
    ASSERT_THAT(records_->Edit(), IsOk());
    ASSERT_THAT(records_->Set("Name", name), IsOk());
    ASSERT_THAT(records_->Update(), IsOk());
  }
  Numbers InFile() {
    const auto database = test::Open(disk_, jet::Access::ReadOnly);
    return Ints(*test::OpenTable(*database, "T"), "Num");
  }
};

TEST_F(BatchTest, NothingIsWrittenBeforeTheCommit) {
  const auto before = disk_.content;
  {
    Database::Batch batch(*database_);
    for (int i = 10; i < 60; ++i) Add(i, "more");
    GoTo(2);
    ASSERT_THAT(records_->Delete(), IsOk());
    EXPECT_EQ(records_->RecordCount(), 52);
    EXPECT_EQ(disk_.content, before);
    ASSERT_THAT(batch.Commit(), IsOk());
    EXPECT_NE(disk_.content, before);
  }
  EXPECT_EQ(records_->RecordCount(), 52);
  EXPECT_EQ(InFile().size(), 52U);
  EXPECT_EQ(test::Problems(*database_), "");
}

TEST_F(BatchTest, IsOfTheDatabaseOfARecordSet) {
  const auto before = disk_.content;
  {
    const Database::Batch dropped(*records_);
    GoTo(1);
    Rename("uno");
    EXPECT_EQ(Text(*records_, "Name"), "uno");
  }
  GoTo(1);
  EXPECT_EQ(Text(*records_, "Name"), "one");
  EXPECT_EQ(disk_.content, before);
  Database::Batch batch(*records_);
  Rename("uno");
  ASSERT_THAT(batch.Commit(), IsOk());
  EXPECT_EQ(Text(*records_, "Name"), "uno");
  EXPECT_NE(disk_.content, before);
}

TEST_F(BatchTest, WithoutACommitNothingHasHappened) {
  const auto before = disk_.content;
  {
    Database::Batch batch(*database_);
    for (int i = 10; i < 300; ++i) Add(i, "more");
    GoTo(1);
    Rename("first");
    GoTo(2);
    ASSERT_THAT(records_->Delete(), IsOk());
  }
  EXPECT_EQ(disk_.content, before);
  EXPECT_EQ(test::Problems(*database_), "");
  EXPECT_EQ(records_->RecordCount(), 3);
  EXPECT_EQ(Ints(*records_, "Num"), (Numbers{1, 2, 3}));
  GoTo(1);
  EXPECT_EQ(Text(*records_, "Name"), "one");
  Add(4, "four");
  EXPECT_EQ(InFile(), (Numbers{1, 2, 3, 4}));
  EXPECT_EQ(test::Problems(*database_), "");
}

TEST_F(BatchTest, DroppedDeletionsAreUndoneForEverySet) {
  const auto other = OpenT();
  ASSERT_THAT(other->SetIndex("Num"), IsOk());
  ASSERT_THAT(other->Seek(2), IsOk());
  std::unique_ptr<jet::RecordSet> ordered;
  ASSERT_THAT(database_->OpenOrdered("T", std::vector<std::string_view>{"Num"}, &ordered), IsOk());
  const jet::Bookmark mark = other->Mark();
  {
    Database::Batch batch(*database_);
    GoTo(2);
    ASSERT_THAT(records_->Delete(), IsOk());
    EXPECT_FALSE(other->HasRecord());
    EXPECT_EQ(Ints(*ordered, "Num"), (Numbers{1, 3}));
  }
  ASSERT_TRUE(other->HasRecord());
  EXPECT_EQ(Int(*other, "Num"), 2);
  EXPECT_EQ(Ints(*ordered, "Num"), (Numbers{1, 2, 3}));
  ASSERT_THAT(other->MoveNext(), IsOk());
  EXPECT_EQ(Int(*other, "Num"), 3);
  ASSERT_THAT(other->GoTo(mark), IsOk());
  EXPECT_EQ(Int(*other, "Num"), 2);
}

TEST_F(BatchTest, DroppedRecordsAreGoneForEverySet) {
  const auto other = OpenT();
  {
    Database::Batch batch(*database_);
    Add(9, "nine");
    ASSERT_THAT(other->FindFirst("Num", 9), IsOk());
    EXPECT_TRUE(other->HasRecord());
  }
  EXPECT_FALSE(other->HasRecord());
  EXPECT_FALSE(records_->HasRecord());
  Add(8, "eight");
  EXPECT_FALSE(other->HasRecord()) << "the new record stands where the dropped one stood";
}

TEST_F(BatchTest, DroppedTablesAreGone) {
  std::unique_ptr<jet::RecordSet> records;
  {
    Database::Batch batch(*database_);
    ASSERT_THAT(database_->CreateTable({"U", {{.name = "N"}}}), IsOk());
    EXPECT_EQ(database_->TableNames(), (std::vector<std::string>{"T", "U"}));
    records = test::OpenTable(*database_, "U");
    ASSERT_THAT(records->AddNew(), IsOk());
    ASSERT_THAT(records->Set("N", 5), IsOk());
    ASSERT_THAT(records->Update(), IsOk());
  }
  EXPECT_EQ(database_->TableNames(), std::vector<std::string>{"T"});
  EXPECT_FALSE(records->HasRecord());
  EXPECT_THAT(records->MoveFirst(), Fails(3078, "Table \"U\" is not there any more"));
  EXPECT_EQ(test::Problems(*database_), "");
  ASSERT_THAT(database_->CreateTable({"U", {{.name = "M"}}}), IsOk());
  EXPECT_EQ(test::OpenTable(*database_, "U")->FieldNames(), std::vector<std::string>{"M"});
}

// A set on it sees nothing of a table that is made anew in its place.
TEST_F(BatchTest, ADroppedTableStaysDropped) {
  std::unique_ptr<jet::RecordSet> records;
  {
    Database::Batch batch(*database_);
    ASSERT_THAT(database_->CreateTable({"U", {{.name = "N"}, {.name = "M"}}}), IsOk());
    records = test::OpenTable(*database_, "U");
  }
  ASSERT_THAT(database_->CreateTable({"U", {{.name = "N"}}}), IsOk());
  const auto fresh = test::OpenTable(*database_, "U");
  ASSERT_THAT(fresh->AddNew(), IsOk());
  ASSERT_THAT(fresh->Set("N", 5), IsOk());
  ASSERT_THAT(fresh->Update(), IsOk());
  EXPECT_THAT(records->MoveFirst(), Fails(3078, "Table \"U\" is not there any more"));
  jet::Value value;
  EXPECT_THAT(records->Get("M", &value), Fails(3021, "There is no current record"));
  EXPECT_EQ(records->RecordCount(), -1);
  ASSERT_THAT(records->AddNew(), IsOk());
  ASSERT_THAT(records->Set("M", 5), IsOk());
  EXPECT_THAT(records->Update(), Fails(3078, "Table \"U\" is not there any more"));
  EXPECT_EQ(Ints(*fresh, "N"), Numbers{5});
}

TEST_F(BatchTest, DroppedIndexesAreGone) {
  {
    Database::Batch batch(*database_);
    ASSERT_THAT(database_->CreateIndex("T", {.name = "Free", .fields = {"Free"}}), IsOk());
    ASSERT_THAT(records_->SetIndex("Free"), IsOk());
    ASSERT_THAT(records_->SetIndex(""), IsOk());
  }
  EXPECT_THAT(records_->SetIndex("Free"), Fails(3265, "Table \"T\" has no index \"Free\""));
  EXPECT_EQ(test::Problems(*database_), "");
  Add(4, "four");
  EXPECT_EQ(test::Problems(*database_), "");
}

// The set still stands in the order of an index that was never made.
TEST_F(BatchTest, ADroppedIndexLeavesItsSetsInNoDanger) {
  {
    Database::Batch batch(*database_);
    ASSERT_THAT(database_->CreateIndex("T", {.name = "Free", .fields = {"Free"}}), IsOk());
    ASSERT_THAT(records_->SetIndex("Free"), IsOk());
    ASSERT_THAT(records_->MoveFirst(), IsOk());
  }
  EXPECT_EQ(records_->IndexName(), "Free");
  const std::vector<jet::Status> outcomes = {records_->MoveNext(), records_->MoveFirst(),
                                             records_->Seek("x"), records_->MoveLast()};
  for (const jet::Status& status : outcomes) EXPECT_EQ(status.Number(), 3265) << status.Text();
  ASSERT_THAT(records_->SetIndex("Num"), IsOk());
  EXPECT_EQ(Ints(*records_, "Num"), (Numbers{1, 2, 3}));
}

TEST_F(BatchTest, AFailedChangeInsideLeavesTheOthers) {
  Database::Batch batch(*database_);
  Add(4, "four");
  ASSERT_THAT(records_->AddNew(), IsOk());
  ASSERT_THAT(records_->Set("Num", 1), IsOk());
  EXPECT_EQ(records_->Update().Number(), 3022);
  records_->CancelUpdate();
  Add(5, "five");
  ASSERT_THAT(batch.Commit(), IsOk());
  EXPECT_EQ(InFile(), (Numbers{1, 2, 3, 4, 5}));
  EXPECT_EQ(test::Problems(*database_), "");
}

TEST_F(BatchTest, MayBeCommittedEmptyAndFollowedByAnother) {
  Database::Batch first(*database_);
  EXPECT_THAT(first.Commit(), IsOk());
  EXPECT_THAT(first.Commit(), IsOk()) << "it is over";
  Database::Batch second(*database_);
  Add(4, "four");
  EXPECT_THAT(second.Commit(), IsOk());
  EXPECT_EQ(InFile(), (Numbers{1, 2, 3, 4}));
}

}  // namespace
