// SPDX-License-Identifier: MIT
//
// How many pages a database takes: rows and long values fill the pages that have room.

#include <gtest/gtest.h>

#include <cstdint>
#include <memory>
#include <string>

#include "db/jet/audit.h"
#include "db/jet/database.h"
#include "db/schema.h"

namespace {

// One table of plain rows, one of memos.
class DensityTest : public testing::Test {
 protected:
  void SetUp() override {
    ASSERT_TRUE(jet::Database::CreateInMemory(&database_).ok());
    const jet::TableSpec rows{
        .name = "Rows",
        .fields = {{.name = "Number"},
                   {.name = "A", .type = jet::FieldType::Text, .size = 255, .compressed = false},
                   {.name = "B", .type = jet::FieldType::Text, .size = 255, .compressed = false}}};
    const jet::TableSpec memos{
        .name = "Memos",
        .fields = {{.name = "Number"}, {.name = "Memo", .type = jet::FieldType::Memo}}};
    ASSERT_TRUE(database_->CreateTable(rows).ok());
    ASSERT_TRUE(database_->CreateTable(memos).ok());
  }

  std::uint32_t Pages() const { return database_->GetStore().GetPager().PageCount(); }

  std::unique_ptr<jet::RecordSet> Table(const char* name) {
    std::unique_ptr<jet::RecordSet> records;
    EXPECT_TRUE(database_->OpenTable(name, &records).ok());
    return records;
  }

  // A row of 1021 bytes: three to a page, 1013 bytes stay free on each.
  static void AddRow(jet::RecordSet& rows, int number) {
    ASSERT_TRUE(rows.AddNew().ok());
    ASSERT_TRUE(rows.Set("Number", number).ok());
    ASSERT_TRUE(rows.Set("A", std::string(252, 'a')).ok());
    ASSERT_TRUE(rows.Set("B", std::string(252, 'b')).ok());
    ASSERT_TRUE(rows.Update().ok());
  }

  static void AddMemo(jet::RecordSet& memos, int number, std::size_t characters) {
    ASSERT_TRUE(memos.AddNew().ok());
    ASSERT_TRUE(memos.Set("Number", number).ok());
    ASSERT_TRUE(memos.Set("Memo", std::string(characters, 'm')).ok());
    ASSERT_TRUE(memos.Update().ok());
  }

  void ExpectSound() {
    jet::Findings findings;
    ASSERT_TRUE(jet::Audit(database_->GetStore(), &findings).ok());
    for (const jet::Finding& finding : findings) {
      EXPECT_FALSE(finding.IsProblem()) << finding.text << ", page " << finding.page;
    }
  }

  std::unique_ptr<jet::Database> database_;
};

// A file of the same content that other software wrote has 229 pages.
TEST(DefaultDatabase, IsNotLargerThanThatOfOthers) {
  std::unique_ptr<jet::Database> database;
  ASSERT_TRUE(jet::Database::CreateInMemory(&database).ok());
  ASSERT_TRUE(db::CreateTables(*database).ok());
  EXPECT_LE(database->GetStore().GetPager().PageCount(), 229U);
}

// Rows that leave a good part of every page free, too little for another row, do not make
// later rows stand alone.
TEST_F(DensityTest, RowsShareThePagesAddedLast) {
  const std::uint32_t before = Pages();
  const auto rows = Table("Rows");
  for (int i = 0; i < 300; ++i) AddRow(*rows, i);
  EXPECT_EQ(Pages() - before, 100U);
  ExpectSound();
}

// 1100 bytes each: three to a page, 776 bytes stay free on each.
TEST_F(DensityTest, LongValuesShareThePagesAddedLast) {
  const std::uint32_t before = Pages();
  const auto memos = Table("Memos");
  for (int i = 0; i < 300; ++i) AddMemo(*memos, i, 550);
  const std::uint32_t rowPages = 2;  // 300 rows of 23 bytes
  EXPECT_EQ(Pages() - before, 100U + rowPages);
  ExpectSound();
}

TEST_F(DensityTest, RoomOfDeletedRowsIsFilledAgain) {
  const auto rows = Table("Rows");
  for (int i = 0; i < 300; ++i) AddRow(*rows, i);
  const std::uint32_t full = Pages();
  for (int round = 0; round < 5; ++round) {
    for (int i = 100; i < 200; i += 7) {
      ASSERT_TRUE(rows->FindFirst("Number", i).ok());
      ASSERT_FALSE(rows->NoMatch());
      ASSERT_TRUE(rows->Delete().ok());
    }
    for (int i = 100; i < 200; i += 7) AddRow(*rows, i);
    EXPECT_EQ(Pages(), full);
  }
  EXPECT_EQ(rows->RecordCount(), 300);
  ExpectSound();
}

TEST_F(DensityTest, RoomOfReplacedLongValuesIsFilledAgain) {
  const auto memos = Table("Memos");
  for (int i = 0; i < 300; ++i) AddMemo(*memos, i, 550);
  const std::uint32_t full = Pages();
  for (int round = 0; round < 5; ++round) {
    for (const std::size_t characters : {0, 550}) {
      for (int i = 100; i < 200; i += 7) {
        ASSERT_TRUE(memos->FindFirst("Number", i).ok());
        ASSERT_TRUE(memos->Edit().ok());
        ASSERT_TRUE(memos
                        ->Set("Memo", characters == 0 ? jet::Value()
                                                      : jet::Value(std::string(characters, 'n')))
                        .ok());
        ASSERT_TRUE(memos->Update().ok());
      }
    }
    EXPECT_EQ(Pages(), full);
  }
  ExpectSound();
}

}  // namespace
