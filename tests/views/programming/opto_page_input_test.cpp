// SPDX-License-Identifier: MIT
//
// The page of the optos on databases that are not as the program makes them, and the file that
// its edits leave behind.

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <QJsonDocument>
#include <QJsonObject>
#include <QTest>

#include "db/schema.h"
#include "tests/support/run_program.h"
#include "tests/support/small_database.h"
#include "tests/support/temporary_folder.h"
#include "tests/views/programming/opto_console.h"

namespace views {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;
using testing::StartsWith;

constexpr char kReadFailure[] = "critical|Control Error|Error Reading Opto Programming Data\r\r";
constexpr char kStoreFailure[] = "critical|Control Error|Error Storing Opto Programming Data\r\r";

void Check(const jet::Status& status) {
  if (!status.ok()) throw std::runtime_error(status.Description());
}

class OptoPageInputTest : public testing::Test {
 protected:
  // A database with `count` stations, whose fields are null.
  void UseStations(const jet::TableSpec& spec, int count) {
    console_.stations.reset();
    Check(jet::Database::CreateInMemory(&console_.database));
    Check(console_.database->CreateTable(spec));
    Check(console_.database->CreateIndex(
        db::kStationsTable,
        {.name = db::kStationNumIndex, .fields = {"StationNum"}, .primary = true}));
    Check(console_.database->OpenTable(db::kStationsTable, &console_.stations));
    Check(console_.stations->SetIndex(db::kStationNumIndex));
    for (int station = 1; station <= count; ++station) {
      Check(console_.stations->AddNew());
      Check(console_.stations->Set("StationNum", station));
      Check(console_.stations->Update());
    }
    Check(console_.stations->MoveFirst());
  }

  test::OptoConsole console_;
};

TEST_F(OptoPageInputTest, NullFieldsAreShownAsTheyAreSent) {
  UseStations(db::StationsSpec(), 64);
  console_.Open();
  EXPECT_THAT(console_.SelectedOptions(), ElementsAre(0));
  EXPECT_THAT(console_.Ticked(), IsEmpty());
  EXPECT_EQ(console_.BoxCaption(5), "Sta. 005");
  EXPECT_EQ(console_.ChannelItem(5), "Sta. 005");
  EXPECT_EQ(console_.Channels().currentIndex(), -1);
  EXPECT_THAT(console_.reporter.reports, IsEmpty());
  console_.Box(4).click();
  EXPECT_EQ(console_.Text(1, "OptoStations"), test::Flags({5}));
  EXPECT_EQ(console_.Number(1, "OptoFirst"), 5);
}

TEST_F(OptoPageInputTest, FewStationsLeaveAllTargetsAndChannels) {
  UseStations(db::StationsSpec(), 8);
  console_.model.StationCount = 8;
  console_.SetField(8, "Label", "STUDIO");
  console_.SetField(8, "InLabel", "MIC");
  console_.SetField(1, "OptoChannel", 40);
  console_.Open();
  EXPECT_EQ(console_.BoxCaption(8), "STUDIO");
  EXPECT_EQ(console_.BoxCaption(9), "Sta. 009");
  ASSERT_EQ(console_.Channels().count(), 64);
  EXPECT_EQ(console_.ChannelItem(8), "MIC");
  EXPECT_EQ(console_.ChannelItem(64), "Sta. 064");
  EXPECT_EQ(console_.Channels().currentIndex(), 39) << "the channel is seen without its station";
  EXPECT_THAT(console_.reporter.reports, IsEmpty());
}

TEST_F(OptoPageInputTest, StationCountDoesNotShortenTheList) {
  for (const std::int16_t count : {0, 8, 200}) {
    console_.model.StationCount = count;
    console_.Open();
    ASSERT_EQ(console_.Channels().count(), 64) << count;
    EXPECT_EQ(console_.ChannelItem(64), "Inpt 064") << count;
  }
}

TEST_F(OptoPageInputTest, OddFlagStringsAreReadAndBecomeWellFormed) {
  const struct {
    jet::Value stored;
    std::vector<int> ticked;
    std::string after;  // with target 9
  } cases[] = {
      {jet::Value(), {}, test::Flags({9})},
      {"", {}, test::Flags({9})},
      {"01", {2}, test::Flags({2, 9})},
      {"1x 2é1", {1, 6}, test::Flags({1, 6, 9})},
      {test::Flags({64}) + "1 tail", {64}, test::Flags({9, 64}) + "1 tail"},
      {std::string(64, 'x') + std::string(3000, '1'),
       {},
       test::Flags({9}) + std::string(3000, '1')},
  };
  console_.Open();
  for (const auto& one : cases) {
    console_.SetField(1, "OptoStations", one.stored);
    console_.Load(1);
    EXPECT_EQ(console_.Ticked(), one.ticked);
    EXPECT_EQ(console_.Text(1, "OptoStations"), one.stored.Text()) << "only shown";
    console_.Box(8).click();
    EXPECT_EQ(console_.Text(1, "OptoStations"), one.after);
  }
  EXPECT_EQ(console_.Stored(2), "1|2|7|7") << "the neighbour";
}

TEST_F(OptoPageInputTest, WithoutARecordThePageIsEmptyAndSaysSoOnce) {
  UseStations(db::StationsSpec(), 0);
  console_.Open();
  for (int i = 0; i < 3; ++i) {
    console_.Refresh(&OptoPage::UpdateOptoSelections);
    console_.Refresh(&OptoPage::SelectChannel);
    console_.Refresh(&OptoPage::UpdateOptoOptionButtons);
  }
  EXPECT_THAT(console_.SelectedOptions(), IsEmpty());
  EXPECT_THAT(console_.Ticked(), IsEmpty());
  EXPECT_EQ(console_.BoxCaption(1), "Chan 01");
  EXPECT_EQ(console_.Channels().currentIndex(), -1);
  ASSERT_EQ(console_.reporter.reports.size(), 1u);
  EXPECT_THAT(console_.reporter.reports[0], StartsWith(std::string(kReadFailure) + "Error # 3021"));
}

TEST_F(OptoPageInputTest, WhatWasNotStoredIsDrawnBackAndReportedEachTime) {
  console_.Open();
  ASSERT_TRUE(console_.stations->MoveLast().ok());
  ASSERT_TRUE(console_.stations->MoveNext().ok());
  console_.Box(9).click();
  EXPECT_THAT(console_.Ticked(), IsEmpty());
  console_.Option(255).click();
  EXPECT_THAT(console_.SelectedOptions(), IsEmpty());
  console_.Channels().setCurrentIndex(5);
  EXPECT_EQ(console_.Channels().currentIndex(), -1);
  ASSERT_EQ(console_.reporter.reports.size(), 3u);
  for (const std::string& report : console_.reporter.reports) {
    EXPECT_THAT(report, StartsWith(std::string(kStoreFailure) + "Error # 3021"));
  }
  EXPECT_THAT(console_.edited, IsEmpty());
  EXPECT_THAT(console_.notes, IsEmpty());
  EXPECT_TRUE(console_.stations->Eof());
}

TEST_F(OptoPageInputTest, TargetsThatDoNotFitAreNotDrawn) {
  jet::TableSpec spec = test::StationsWithout("OptoStations");
  spec.fields.push_back({.name = "OptoStations", .type = jet::FieldType::Text, .size = 10});
  UseStations(spec, 3);
  console_.SetField(1, "OptoStations", "0100000000");
  console_.Open();
  console_.Box(4).click();
  EXPECT_THAT(console_.Ticked(), ElementsAre(2));
  EXPECT_EQ(console_.Text(1, "OptoStations"), "0100000000");
  ASSERT_EQ(console_.reporter.reports.size(), 1u);
  EXPECT_THAT(console_.reporter.reports[0],
              StartsWith(std::string(kStoreFailure) + "Error # 3163"));
  EXPECT_FALSE(console_.stations->IsChanging());
}

TEST_F(OptoPageInputTest, WithoutAFieldTheOthersAreShownAndTheFailureIsToldOnce) {
  UseStations(test::StationsWithout("OptoType"), 64);
  console_.SetField(2, "OptoStations", test::Flags({4}));
  console_.SetField(2, "OptoChannel", 6);
  console_.Open();
  for (const int opto : {1, 2, 1, 2}) console_.Load(opto);
  EXPECT_THAT(console_.Ticked(), ElementsAre(4));
  EXPECT_EQ(console_.Channels().currentIndex(), 5);
  EXPECT_THAT(console_.SelectedOptions(), IsEmpty());
  ASSERT_EQ(console_.reporter.reports.size(), 1u);
  EXPECT_THAT(console_.reporter.reports[0], StartsWith(std::string(kReadFailure) + "Error # 3265"));
}

TEST_F(OptoPageInputTest, WithoutLabelsTheBoxesAreNumbered) {
  UseStations(test::StationsWithout("InLabel"), 64);
  console_.SetField(1, "OptoType", 1);
  console_.Open();
  EXPECT_EQ(console_.BoxCaption(3), "Sta. 003");
  EXPECT_EQ(console_.reporter.reports.size(), 1u);
  console_.Option(2).click();
  EXPECT_EQ(console_.reporter.reports.size(), 2u) << "one for what the operator did";
}

TEST_F(OptoPageInputTest, WithoutADatabaseNothingCrashes) {
  console_.databaseIsOpen = false;
  console_.Open();
  console_.Box(3).click();
  console_.Option(1).click();
  EXPECT_THAT(console_.Ticked(), IsEmpty());
  EXPECT_THAT(console_.SelectedOptions(), IsEmpty());
  ASSERT_EQ(console_.reporter.reports.size(), 3u);
  EXPECT_THAT(console_.reporter.reports[0], StartsWith(kReadFailure));
  EXPECT_THAT(console_.reporter.reports[1], StartsWith(kStoreFailure));
  EXPECT_THAT(console_.reporter.reports[2], StartsWith(kStoreFailure));
  console_.databaseIsOpen = true;
  console_.Load(1);
  EXPECT_THAT(console_.Ticked(), ElementsAre(3, 5));
  EXPECT_THAT(console_.SelectedOptions(), ElementsAre(0));
  EXPECT_EQ(console_.BoxCaption(64), "Sta. 064");
}

// Other software finds in the file what the operator has set, and nothing else changed.
TEST_F(OptoPageInputTest, EditsAreInTheFile) {
  ASSERT_EQ(test::RunProgram("mdb-ver", {"--version"}).exitCode, 0) << "mdbtools are needed";
  const test::TemporaryFolder folder;
  const std::filesystem::path path = folder / "Tesk.mdb";
  ASSERT_TRUE(db::CreateDatabase(path).ok());
  const auto records = [&path] {
    const test::ProgramResult json = test::RunProgram("mdb-json", {path.string(), "Stations"});
    EXPECT_EQ(json.exitCode, 0) << json.errors;
    std::map<int, QJsonObject> byStation;
    for (const QByteArray& line : QByteArray::fromStdString(json.output).split('\n')) {
      const QJsonObject record = QJsonDocument::fromJson(line).object();
      if (!record.isEmpty()) byStation[record[QStringLiteral("StationNum")].toInt()] = record;
    }
    return byStation;
  };
  const std::map<int, QJsonObject> before = records();
  ASSERT_EQ(before.size(), 128u);

  console_.stations.reset();
  Check(jet::Database::Open(path, jet::Access::ReadWrite, &console_.database));
  Check(console_.database->OpenTable(db::kStationsTable, &console_.stations));
  Check(console_.stations->SetIndex(db::kStationNumIndex));
  console_.Open();
  console_.Load(9);
  console_.Option(2).click();
  console_.Box(1).click();
  console_.Box(63).click();
  console_.Channels().setCurrentIndex(29);
  console_.Load(10);
  console_.Option(0).click();
  console_.Box(9).click();
  EXPECT_THAT(console_.edited, ElementsAre(9, 9, 9, 9, 10, 10));
  console_.stations.reset();
  console_.database.reset();

  std::map<int, QJsonObject> expected = before;
  expected[9][QStringLiteral("OptoType")] = 2;
  expected[9][QStringLiteral("OptoChannel")] = 30;
  expected[9][QStringLiteral("OptoFirst")] = 2;
  expected[9][QStringLiteral("OptoStations")] =
      QStringLiteral("0100000010000000000000000000000000000000000000000000000000000001");
  expected[10][QStringLiteral("OptoFirst")] = 1;
  expected[10][QStringLiteral("OptoStations")] =
      QStringLiteral("0000000000000000000000000000000000000000000000000000000000000000");
  EXPECT_TRUE(expected[10][QStringLiteral("OptoType")] == 254);
  const std::map<int, QJsonObject> after = records();
  ASSERT_EQ(after.size(), expected.size());
  for (const auto& [station, record] : expected) {
    EXPECT_TRUE(after.at(station) == record)
        << station << ": " << QJsonDocument(after.at(station)).toJson().toStdString();
  }
}

}  // namespace
}  // namespace views
