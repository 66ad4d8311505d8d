// SPDX-License-Identifier: MIT
//
// Texts and inhibits read from the table of stations.

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <memory>

#include "db/jet/database.h"
#include "db/schema.h"
#include "stations/inhibits.h"
#include "stations/texts.h"

namespace stations {
namespace {

using testing::ElementsAre;

class StationRecordsTest : public testing::Test {
 protected:
  void SetUp() override {
    ASSERT_TRUE(jet::Database::CreateInMemory(&database_).ok());
    ASSERT_TRUE(database_->CreateTable(db::StationsSpec()).ok());
    ASSERT_TRUE(
        database_
            ->CreateIndex(db::kStationsTable,
                          {.name = db::kStationNumIndex, .fields = {"StationNum"}, .primary = true})
            .ok());
    ASSERT_TRUE(database_->OpenTable(db::kStationsTable, &stations_).ok());
    ASSERT_TRUE(stations_->SetIndex(db::kStationNumIndex).ok());
    Add(7, "seven", "0100");
    Add(2, "two", jet::Value());
    Add(4, jet::Value(), "1");
    ASSERT_TRUE(stations_->MoveFirst().ok());
  }

  void Add(int stationNum, const jet::Value& label, const jet::Value& inhibits) {
    ASSERT_TRUE(stations_->AddNew().ok());
    ASSERT_TRUE(stations_->Set("StationNum", stationNum).ok());
    ASSERT_TRUE(stations_->Set("Label", label).ok());
    ASSERT_TRUE(stations_->Set("Inhibits", inhibits).ok());
    ASSERT_TRUE(stations_->Update().ok());
  }

  std::unique_ptr<jet::Database> database_;
  std::unique_ptr<jet::RecordSet> stations_;
  Changes changes_;
  const Author author_{changes_, Origin::Operator};
};

TEST_F(StationRecordsTest, TextsComeInTheOrderOfTheIndex) {
  std::vector<std::optional<std::string>> texts;
  ASSERT_TRUE(ReadTexts(*stations_, "Label", 3, &texts).ok());
  EXPECT_THAT(texts, ElementsAre("two", std::nullopt, "seven"));
  ASSERT_TRUE(ReadTexts(*stations_, "Inhibits", 2, &texts).ok());
  EXPECT_THAT(texts, ElementsAre(std::nullopt, "1"));
  ASSERT_TRUE(ReadTexts(*stations_, "Label", 0, &texts).ok());
  EXPECT_THAT(texts, ElementsAre());
}

TEST_F(StationRecordsTest, MissingRecordsAreAFailureAfterWhatWasRead) {
  std::vector<std::optional<std::string>> texts;
  const model::Status status = ReadTexts(*stations_, "Label", 4, &texts);
  EXPECT_FALSE(status.ok());
  EXPECT_EQ(status.Number(), 3021);
  EXPECT_THAT(texts, ElementsAre("two", std::nullopt, "seven"));
}

TEST_F(StationRecordsTest, MissingFieldIsAFailure) {
  std::vector<std::optional<std::string>> texts;
  EXPECT_EQ(ReadTexts(*stations_, "NoSuchField", 1, &texts).Number(), 3265);
  EXPECT_THAT(texts, ElementsAre());
}

TEST_F(StationRecordsTest, InhibitsAreFoundByNumber) {
  std::optional<std::string> flags;
  ASSERT_TRUE(FindInhibits(*stations_, 7, &flags).ok());
  EXPECT_EQ(flags, "0100");
  ASSERT_TRUE(FindInhibits(*stations_, 2, &flags).ok());
  EXPECT_EQ(flags, "") << "null";
  ASSERT_TRUE(FindInhibits(*stations_, 3, &flags).ok());
  EXPECT_EQ(flags, std::nullopt);
}

TEST_F(StationRecordsTest, InhibitsAreStoredInTheRecordFound) {
  std::optional<std::string> flags;
  ASSERT_TRUE(FindInhibits(*stations_, 4, &flags).ok());
  ASSERT_TRUE(StoreInhibits(*stations_, "0110", author_).ok());
  std::vector<std::optional<std::string>> texts;
  ASSERT_TRUE(ReadTexts(*stations_, "Inhibits", 3, &texts).ok());
  EXPECT_THAT(texts, ElementsAre(std::nullopt, "0110", "0100"));
}

TEST_F(StationRecordsTest, StoringWithoutARecordFails) {
  std::optional<std::string> flags;
  ASSERT_TRUE(FindInhibits(*stations_, 3, &flags).ok());
  EXPECT_EQ(StoreInhibits(*stations_, "1", author_).Number(), 3021);
}

}  // namespace
}  // namespace stations
