// SPDX-License-Identifier: MIT
//
// The disk fills up or breaks in the middle of a write: the change is dropped as a whole, and
// the file holds what it held before.

#include <gtest/gtest.h>

#include <memory>
#include <string>
#include <vector>

#include "tests/jet/jet_support.h"

namespace {

using test::Fails;
using test::IsOk;
using test::Texts;
using Strings = std::vector<std::string>;

class WriteFailureTest : public testing::Test {
 protected:
  void SetUp() override { Begin(); }

  void Begin() {
    disk_ = std::make_unique<test::MemoryDisk>(test::SampleBytes("tesk_jet4"));
    before_ = disk_->content;
    database_ = test::Open(*disk_);
    records_ = test::OpenTable(*database_, "Stations");
    ASSERT_THAT(records_->SetIndex("StationNum"), IsOk());
    labels_ = Texts(*records_, "Label");
  }

  // Many pages change, and some are new.
  jet::Status ChangeMuch() {
    jet::Database::Batch batch(*database_);
    for (int number = 1; number <= 128; ++number) {
      EXPECT_THAT(records_->Seek(number), IsOk());
      EXPECT_THAT(records_->Edit(), IsOk());
      EXPECT_THAT(records_->Set("Label", "L" + std::to_string(number)), IsOk());
      EXPECT_THAT(records_->Set("Inhibits", std::string(900, 'i')), IsOk());
      EXPECT_THAT(records_->Update(), IsOk());
    }
    return batch.Commit();
  }

  // Sound, and with the old contents.
  void ExpectOld(jet::Database& database) {
    EXPECT_EQ(test::Problems(database), "");
    const auto records = test::OpenTable(database, "Stations");
    ASSERT_THAT(records->SetIndex("StationNum"), IsOk());
    EXPECT_EQ(Texts(*records, "Label"), labels_);
  }

  std::unique_ptr<test::MemoryDisk> disk_;
  std::vector<std::uint8_t> before_;
  std::unique_ptr<jet::Database> database_;
  std::unique_ptr<jet::RecordSet> records_;
  Strings labels_;
};

TEST_F(WriteFailureTest, OfAnyWriteLeavesTheOldFile) {
  ASSERT_THAT(ChangeMuch(), IsOk());
  const int writes = disk_->writes;
  ASSERT_GT(writes, 10);
  for (int good = 0; good < writes; ++good) {
    SCOPED_TRACE(good);
    Begin();
    disk_->writesUntilFull = good;
    disk_->fullFor = 1;
    const jet::Status status = ChangeMuch();
    EXPECT_EQ(status.Number(), 3026);
    EXPECT_EQ(status.Text(), "The disk is full");
    EXPECT_NE(status.Page(), jet::kNoPage);
    EXPECT_EQ(disk_->content, before_) << "put back";
    ExpectOld(*database_);
    ASSERT_FALSE(HasFailure());
  }
}

// Not even what was overwritten can be put back: the program still has the old contents, and
// the next write that succeeds brings the file in order.
TEST_F(WriteFailureTest, ThatGoesOnIsMadeGoodLater) {
  ASSERT_THAT(ChangeMuch(), IsOk());
  const int writes = disk_->writes;
  for (int good = 0; good < writes; good += 3) {
    SCOPED_TRACE(good);
    Begin();
    disk_->writesUntilFull = good;
    disk_->truncateFails = true;
    const jet::Status status = ChangeMuch();
    EXPECT_EQ(status.Text(), "The disk is full, nor could the pages before it be restored");
    EXPECT_EQ(status.Number(), 3026);
    ExpectOld(*database_);
    EXPECT_EQ(ChangeMuch().Number(), 3026);
    ExpectOld(*database_);
    disk_->writesUntilFull = -1;
    disk_->truncateFails = false;
    ASSERT_THAT(records_->Seek(5), IsOk());
    ASSERT_THAT(records_->Edit(), IsOk());
    ASSERT_THAT(records_->Set("Label", "five"), IsOk());
    ASSERT_THAT(records_->Update(), IsOk());
    labels_[4] = "five";
    ExpectOld(*database_);
    const auto reopened = test::Open(*disk_);
    ExpectOld(*reopened);
    ASSERT_FALSE(HasFailure());
  }
}

// Nothing is written after the failure: the file that is left is put in order on its own.
TEST_F(WriteFailureTest, IsMadeGoodWithoutAnotherWrite) {
  ASSERT_THAT(ChangeMuch(), IsOk());
  const int writes = disk_->writes;
  const int rounds = test::Repeated(24);
  for (int round = 0; round < rounds; ++round) {
    const int good = round * writes / rounds;
    SCOPED_TRACE(good);
    Begin();
    disk_->writesUntilFull = good;
    disk_->truncateFails = true;
    EXPECT_EQ(ChangeMuch().Number(), 3026);
    EXPECT_FALSE(database_->Settle().ok()) << "the disk is full still";
    disk_->writesUntilFull = -1;
    disk_->truncateFails = false;
    EXPECT_THAT(database_->Settle(), IsOk());
    EXPECT_EQ(disk_->content, before_);
    const auto reopened = test::Open(*disk_);
    ExpectOld(*reopened);
    ASSERT_FALSE(HasFailure());
  }
}

TEST_F(WriteFailureTest, OfOneRecordLeavesTheChangeOpen) {
  ASSERT_THAT(records_->Seek(3), IsOk());
  ASSERT_THAT(records_->Edit(), IsOk());
  ASSERT_THAT(records_->Set("Label", "three"), IsOk());
  disk_->writesUntilFull = 0;
  disk_->fullFor = 1;
  const jet::Status status = records_->Update();
  EXPECT_EQ(status.Number(), 3026) << status.Text();
  EXPECT_TRUE(records_->IsChanging());
  EXPECT_EQ(disk_->content, before_);
  ASSERT_THAT(records_->Update(), IsOk()) << "there is room again";
  EXPECT_EQ(test::Text(*records_, "Label"), "three");
  const auto reopened = test::Open(*disk_);
  EXPECT_EQ(test::Problems(*reopened), "");
}

TEST_F(WriteFailureTest, OfACreatedTableLeavesNone) {
  disk_->writesUntilFull = 0;
  disk_->fullFor = 1;
  EXPECT_EQ(database_->CreateTable({"New", {{.name = "N"}}}).Number(), 3026);
  EXPECT_EQ(database_->TableNames(), (Strings{"DbInfo", "Stations"}));
  std::unique_ptr<jet::RecordSet> records;
  EXPECT_THAT(database_->OpenTable("New", &records), Fails(3078, "There is no table \"New\""));
  EXPECT_EQ(disk_->content, before_);
  EXPECT_THAT(database_->CreateTable({"New", {{.name = "N"}}}), IsOk());
  EXPECT_EQ(test::Problems(*database_), "");
}

TEST_F(WriteFailureTest, OfACreatedFileIsReported) {
  for (int good = 0; good < 1; ++good) {
    test::MemoryDisk disk;
    disk.writesUntilFull = good;
    std::unique_ptr<jet::Database> database;
    const jet::Status status = jet::Database::Create(disk.NewFile(), &database);
    EXPECT_EQ(status.Number(), 3026) << status.Text();
    EXPECT_EQ(database, nullptr);
  }
}

TEST_F(WriteFailureTest, OfAReadIsReportedEachTime) {
  for (int good = 0; good < 20; ++good) {
    test::MemoryDisk disk(before_);
    disk.readsUntilFailure = good;
    std::unique_ptr<jet::Database> database;
    const jet::Status opened =
        jet::Database::Open(disk.NewFile(), jet::Access::ReadWrite, &database);
    if (!opened.ok()) {
      EXPECT_EQ(opened.Number(), 3043) << opened.Text();
      continue;
    }
    std::unique_ptr<jet::RecordSet> records;
    jet::Status status = database->OpenTable("Stations", &records);
    while (status.ok() && records->HasRecord()) {
      jet::Value value;
      for (int i = 0; status.ok() && i < records->FieldCount(); ++i) {
        status = records->Get(i, &value);
      }
      if (status.ok()) status = records->MoveNext();
    }
    if (status.ok()) {
      EXPECT_TRUE(records->Eof());
      EXPECT_GT(good, 8) << "all pages were read";
    } else {
      EXPECT_EQ(status.Number(), 3043) << status.Text();
    }
    EXPECT_EQ(disk.content, before_);
  }
}

}  // namespace
