// SPDX-License-Identifier: MIT

#include "db/keep_position.h"

#include <gtest/gtest.h>

#include <memory>

#include "db/jet/database.h"
#include "db/schema.h"

namespace db {
namespace {

class KeepPositionTest : public testing::Test {
 protected:
  void SetUp() override {
    ASSERT_TRUE(jet::Database::CreateInMemory(&database_).ok());
    ASSERT_TRUE(CreateTables(*database_).ok());
    ASSERT_TRUE(database_->OpenTable("Stations", &stations_).ok());
    ASSERT_TRUE(stations_->SetIndex("StationNum").ok());
  }

  int StationNum() {
    jet::Value value;
    EXPECT_TRUE(stations_->Get("StationNum", &value).ok());
    return value.Int();
  }

  std::unique_ptr<jet::Database> database_;
  std::unique_ptr<jet::RecordSet> stations_;
};

TEST_F(KeepPositionTest, GoesBackToTheRecord) {
  ASSERT_TRUE(stations_->Seek(17).ok());
  {
    const KeepPosition keep(*stations_);
    ASSERT_TRUE(stations_->MoveLast().ok());
    EXPECT_EQ(StationNum(), 128);
  }
  EXPECT_EQ(StationNum(), 17);
}

TEST_F(KeepPositionTest, GoesBackBehindTheLastRecord) {
  ASSERT_TRUE(stations_->MoveLast().ok());
  ASSERT_TRUE(stations_->MoveNext().ok());
  {
    const KeepPosition keep(*stations_);
    ASSERT_TRUE(stations_->MoveFirst().ok());
  }
  EXPECT_TRUE(stations_->Eof());
}

}  // namespace
}  // namespace db
