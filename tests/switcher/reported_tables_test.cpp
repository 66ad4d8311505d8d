// SPDX-License-Identifier: MIT

#include "switcher/comparison/reported_tables.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <memory>
#include <string>
#include <vector>

#include "tests/support/hex.h"
#include "tests/support/small_database.h"

namespace switcher {
namespace {

using test::FromHex;
using testing::ElementsAre;
using testing::IsEmpty;

class ReportedTablesTest : public testing::Test {
 protected:
  ReportedTablesTest() {
    model_.ApplyFixedValues();
    model_.ChannelCount = 16;
    model_.StationCount = 16;
    model_.LabelCount = 2;
    database_.AddStation(1, {{"Label", "CAM 1"}, {"InLabel", "MIC 1"}, {"Hidden", 0}});
    database_.AddStation(2, {{"Label", "CAM 2"}, {"InLabel", "MIC 2"}, {"Hidden", 1}});
  }

  void Copy() {
    const model::Status status =
        ReportedTables::Copy(*database_.Files().Database(), model_, &tables_);
    ASSERT_TRUE(status.ok()) << status.Description();
  }

  void Take(std::string_view hex) { tables_->Take(FromHex(hex)); }

  static std::string InWords(const jet::Value& value) {
    return value.GetKind() == jet::Value::Kind::Int ? std::to_string(value.Int()) : value.Text();
  }

  // "2 Label CAM 2 > CAM 3".
  std::vector<std::string> Differences() {
    std::vector<std::string> seen;
    for (const stations::Change& change : tables_->Differences()) {
      for (const stations::FieldChange& field : change.fields) {
        seen.push_back(std::to_string(change.station) + " " + field.field + " " +
                       InWords(field.before) + " > " + InWords(field.after));
      }
    }
    return seen;
  }

  model::SystemModel model_;
  test::SmallDatabase database_;
  std::unique_ptr<ReportedTables> tables_;
};

TEST_F(ReportedTablesTest, NamesWhatAMessageIsOf) {
  const auto partOf = [](std::string_view hex) { return ReportedTables::PartOf(FromHex(hex)); };
  EXPECT_EQ(partOf("F5 01 00 00 00 00 00 01 FF"), (TablePart{Table::Inhibits, 2}));
  EXPECT_EQ(partOf("F4 0F 00 00 00 FF"), (TablePart{Table::Relays, 16}));
  EXPECT_EQ(partOf("FB 7F 01 00 FF"), (TablePart{Table::Buttons, 256}));
  EXPECT_EQ(partOf("F9 14 41 FF"), (TablePart{Table::OutputLabels}));
  EXPECT_EQ(partOf("F9 0A 41 FF"), (TablePart{Table::InputLabels}));
  EXPECT_EQ(partOf("F9"), (TablePart{Table::OutputLabels}));
  EXPECT_EQ(partOf("E1 FF"), (TablePart{Table::Optos}));
}

TEST_F(ReportedTablesTest, WhatIsReportedGoesIntoTheCopyOnly) {
  Copy();
  Take("F5 01 00 01 01 00 01 02 FF");
  EXPECT_THAT(Differences(), ElementsAre("2 Inhibits  > 1000000100000001" + std::string(48, '0')));
  EXPECT_THAT(tables_->Accepted(), ElementsAre(TablePart{Table::Inhibits, 2}));
  EXPECT_EQ(database_.Field(2, "Inhibits"), "null");
}

TEST_F(ReportedTablesTest, WhatIsTheSameInAMessageIsNoDifference) {
  database_.Set(1, "Inhibits", "1");
  database_.Set(2, "InLabel", "MIC 2   ");
  Copy();
  Take("F5 00 00 01 00 00 00 01 FF");
  // The input labels MIC 1, MIC 2; 2 is hidden, which the mark in place of its first letter says.
  Take("F9 0A 4D 49 43 20 31 20 20 20 7B 49 43 20 32 20 20 20 4D FF");
  EXPECT_THAT(tables_->Refused(), IsEmpty());
  EXPECT_THAT(Differences(), IsEmpty());
}

TEST_F(ReportedTablesTest, LabelsDifferOneByOne) {
  Copy();
  // CAM 1, and CAM 3 in the place of the hidden CAM 2.
  Take("F9 14 43 41 4D 20 31 20 20 20 43 41 4D 20 33 20 20 20 1A FF");
  EXPECT_THAT(tables_->Refused(), IsEmpty());
  EXPECT_THAT(Differences(), ElementsAre("2 Label CAM 2 > CAM 3", "2 Hidden 1 > 0"));
}

TEST_F(ReportedTablesTest, AMessageThatIsRefusedIsNamedUntilOneIsAccepted) {
  Copy();
  Take("F5 01 00 01 01 00 01 03 FF");
  ASSERT_EQ(tables_->Refused().size(), 1U);
  EXPECT_EQ(tables_->Refused()[0].part, (TablePart{Table::Inhibits, 2}));
  EXPECT_EQ(tables_->Refused()[0].status, DecodeStatus::ChecksumFailed);
  EXPECT_THAT(tables_->Accepted(), IsEmpty());
  EXPECT_THAT(Differences(), IsEmpty());
  Take("F5 01 00 01 01 00 01 02 FF");
  EXPECT_THAT(tables_->Refused(), IsEmpty());
  EXPECT_THAT(tables_->Accepted(), ElementsAre(TablePart{Table::Inhibits, 2}));
  Take("F5 01 00 01 01 00 01 03 FF");
  EXPECT_THAT(tables_->Refused(), IsEmpty()) << "what was accepted still holds";
}

TEST_F(ReportedTablesTest, WhatIsRefusedAgainIsNamedOnce) {
  Copy();
  Take("F5 01 00 01 01 00 01 03 FF");
  Take("F5 01 00 01 01 00 01 04 FF");
  EXPECT_EQ(tables_->Refused().size(), 1U);
}

TEST_F(ReportedTablesTest, OfTwoReportsTheLaterOneCounts) {
  database_.Set(1, "Inhibits", std::string(64, '0'));
  Copy();
  Take("F5 00 00 01 00 00 00 01 FF");
  Take("F5 00 00 00 00 00 00 00 FF");
  EXPECT_THAT(Differences(), IsEmpty());
  EXPECT_THAT(tables_->Accepted(), ElementsAre(TablePart{Table::Inhibits, 1}));
}

// The labels of more stations than there are records: a box in a retrieval, a refusal here.
TEST_F(ReportedTablesTest, LabelsForAStationThatIsNotHereAreRefused) {
  model_.LabelCount = 3;
  Copy();
  Take("F9 0A 4D 49 43 20 31 20 20 20 7B 49 43 20 32 20 20 20 41 20 20 20 20 20 20 20 6E FF");
  ASSERT_EQ(tables_->Refused().size(), 1U);
  EXPECT_EQ(tables_->Refused()[0].status, DecodeStatus::WrongChannel);
}

}  // namespace
}  // namespace switcher
