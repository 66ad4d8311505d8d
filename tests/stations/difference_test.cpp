// SPDX-License-Identifier: MIT

#include "stations/difference.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <memory>
#include <string>
#include <vector>

#include "db/schema.h"
#include "db/station_fields.h"
#include "stations/carry_out.h"
#include "stations/open_stations.h"

namespace stations {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

std::unique_ptr<jet::Database> NewDatabase(const jet::TableSpec& stations = db::StationsSpec()) {
  std::unique_ptr<jet::Database> database;
  EXPECT_TRUE(jet::Database::CreateInMemory(&database).ok());
  const std::vector<jet::IndexSpec> indexes{
      {.name = db::kStationNumIndex, .fields = {"StationNum"}, .primary = true}};
  EXPECT_TRUE(database->CreateTable(db::DbInfoSpec()).ok());
  EXPECT_TRUE(database->CreateTable(stations, indexes).ok());
  std::unique_ptr<jet::RecordSet> records;
  EXPECT_TRUE(database->OpenTable(db::kDbInfoTable, &records).ok());
  EXPECT_TRUE(records->AddNew().ok());
  EXPECT_TRUE(records->Set("ChannelCount", 8).ok());
  EXPECT_TRUE(records->Set("LabelCount", 3).ok());
  EXPECT_TRUE(records->Update().ok());
  EXPECT_TRUE(database->OpenTable(db::kStationsTable, &records).ok());
  // Stored in another order than that of their numbers.
  for (const int station : {3, 1, 2}) {
    EXPECT_TRUE(records->AddNew().ok());
    EXPECT_TRUE(records->Set("StationNum", station).ok());
    EXPECT_TRUE(records->Set("Label", "Sta. " + std::to_string(station)).ok());
    EXPECT_TRUE(records->Set("Hidden", 0).ok());
    EXPECT_TRUE(records->Update().ok());
  }
  return database;
}

class DifferenceTest : public testing::Test {
 protected:
  static void Set(jet::Database& database, int station, std::string_view field,
                  const jet::Value& value) {
    std::unique_ptr<jet::RecordSet> records;
    ASSERT_TRUE(OpenStation(database, station, &records).ok());
    ASSERT_NE(records, nullptr);
    ASSERT_TRUE(records->Edit().ok());
    ASSERT_TRUE(records->Set(field, value).ok());
    ASSERT_TRUE(records->Update().ok());
  }

  static void SetCount(jet::Database& database, std::string_view count, const jet::Value& value) {
    std::unique_ptr<jet::RecordSet> info;
    ASSERT_TRUE(database.OpenTable(db::kDbInfoTable, &info).ok());
    ASSERT_TRUE(info->Edit().ok());
    ASSERT_TRUE(info->Set(count, value).ok());
    ASSERT_TRUE(info->Update().ok());
  }

  static void Delete(jet::Database& database, int station) {
    std::unique_ptr<jet::RecordSet> records;
    ASSERT_TRUE(OpenStation(database, station, &records).ok());
    ASSERT_TRUE(records->Delete().ok());
  }

  static std::string InWords(const jet::Value& value) {
    if (value.IsNull()) return "null";
    if (value.GetKind() == jet::Value::Kind::Int) return std::to_string(value.Int());
    return "'" + value.Text() + "'";
  }

  std::vector<std::string> Differences(jet::Database& here, jet::Database& there) {
    EXPECT_TRUE(Difference(here, there, &changes_).ok());
    std::vector<std::string> words;
    for (const Change& change : changes_) {
      for (const FieldChange& field : change.fields) {
        words.push_back(std::to_string(change.station) + " " + field.field + ": " +
                        InWords(field.before) + " > " + InWords(field.after));
      }
    }
    return words;
  }

  std::string Refusal() {
    const model::Status status = Difference(*here_, *there_, &changes_);
    EXPECT_EQ(status.Number(), 3251);
    EXPECT_THAT(changes_, IsEmpty());
    return status.Description();
  }

  std::unique_ptr<jet::Database> here_ = NewDatabase();
  std::unique_ptr<jet::Database> there_ = NewDatabase();
  std::vector<Change> changes_;
};

TEST_F(DifferenceTest, EqualDatabasesDoNotDiffer) {
  EXPECT_THAT(Differences(*here_, *there_), IsEmpty());
}

TEST_F(DifferenceTest, EveryFieldThatDiffersIsAChangeByStation) {
  Set(*there_, 3, "Label", "CAM 3");
  Set(*there_, 1, "B2 Prog", "0100");
  Set(*there_, 1, "Label", "");
  Set(*here_, 1, "Notes", "gone there");
  Set(*there_, 1, "Hidden", jet::Value());
  EXPECT_THAT(
      Differences(*here_, *there_),
      ElementsAre("1 Hidden: 0 > null", "1 Label: 'Sta. 1' > ''", "1 Notes: 'gone there' > null",
                  "1 B2 Prog: null > '0100'", "3 Label: 'Sta. 3' > 'CAM 3'"));
  EXPECT_EQ(changes_.size(), 2u);
}

TEST_F(DifferenceTest, AppliedItLeavesNoDifference) {
  Set(*there_, 3, "Label", "CAM 3");
  Set(*there_, 1, "B2 Type", 1);
  Differences(*here_, *there_);
  Changes stream;
  ASSERT_TRUE(CarryOut(*here_, changes_, Direction::Again, {stream, Origin::Operator}).ok());
  EXPECT_THAT(Differences(*here_, *there_), IsEmpty());
}

TEST_F(DifferenceTest, AFieldThatOneOfThemDoesNotHaveIsPassedOver) {
  jet::TableSpec spec = db::StationsSpec();
  std::erase_if(spec.fields, [](const jet::FieldSpec& field) { return field.name == "Notes"; });
  const std::unique_ptr<jet::Database> old = NewDatabase(spec);
  Set(*here_, 1, "Notes", "new");
  Set(*old, 1, "Label", "OLD");
  EXPECT_THAT(Differences(*here_, *old), ElementsAre("1 Label: 'Sta. 1' > 'OLD'"));
  EXPECT_THAT(Differences(*old, *here_), ElementsAre("1 Label: 'OLD' > 'Sta. 1'"));
}

TEST_F(DifferenceTest, OtherCountsAreAnotherSystem) {
  SetCount(*there_, "ChannelCount", 16);
  EXPECT_EQ(Refusal(), "It is of another system: ChannelCount is 16 there and 8 here");
  SetCount(*there_, "ChannelCount", jet::Value());
  EXPECT_EQ(Refusal(), "It is of another system: ChannelCount is nothing there and 8 here");
}

TEST_F(DifferenceTest, OtherStationsAreAnotherSystem) {
  Delete(*there_, 2);
  EXPECT_EQ(Refusal(), "It is of another system: these stations are not there: 2");
  Delete(*here_, 2);
  Delete(*here_, 3);
  EXPECT_EQ(Refusal(), "It is of another system: these stations are not here: 3");
  Delete(*here_, 1);
  EXPECT_EQ(Refusal(), "It is of another system: these stations are not here: 1, 3");
}

}  // namespace
}  // namespace stations
