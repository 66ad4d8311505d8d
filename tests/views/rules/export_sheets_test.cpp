// SPDX-License-Identifier: MIT

#include "views/rules/export_sheets.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "tests/support/small_database.h"

namespace rules {
namespace {

using testing::ElementsAre;
using testing::SizeIs;

class ExportSheetsTest : public testing::Test {
 protected:
  ExportSheetsTest() {
    model_.ApplyFixedValues();
    model_.StationCount = 3;
    model_.ChannelCount = 3;
    model_.AllocateMap();
    database_.AddStation(1, {{"Hidden", 0},
                             {"Label", "Studio A"},
                             {"InLabel", "Mic, 1"},
                             {"SysInput", "HRJ(1) - Ch 1"},
                             {"SysOutput", "QDV(1) - Ch A"},
                             {"Notes", "the \"red\" one"},
                             {"B1 Type", 0},
                             {"B1 First", 3},
                             {"B1 Prog", "001"},
                             {"B2 Type", 1},
                             {"B2 First", 1},
                             {"B2 Prog", "101"},
                             {"B3 Type", 3},
                             {"B3 First", 2},
                             {"B3 Prog", "01"},
                             {"B4 Type", 254},
                             {"B4 First", 1},
                             {"B4 Prog", "1"}});
    database_.AddStation(3, {{"Hidden", 1}, {"Label", "Régie"}, {"InLabel", "Inpt 003"}});
    database_.AddStation(66, {{"Hidden", 2}, {"Label", "Ext. 002"}});
  }

  jet::RecordSet& Stations() { return *database_.Files().Stations(); }

  model::SystemModel model_;
  test::SmallDatabase database_;
};

TEST_F(ExportSheetsTest, LabelsAreARowForEveryRecord) {
  Sheet sheet;
  ASSERT_TRUE(ReadLabelSheet(Stations(), &sheet).ok());
  EXPECT_THAT(sheet.captions, ElementsAre("Station", "Station Label", "Input Label", "Hidden",
                                          "System Input", "System Output", "Station Notes"));
  ASSERT_THAT(sheet.rows, SizeIs(3));
  EXPECT_THAT(sheet.rows[0], ElementsAre("1", "Studio A", "Mic, 1", "No", "HRJ(1) - Ch 1",
                                         "QDV(1) - Ch A", "the \"red\" one"));
  EXPECT_THAT(sheet.rows[1], ElementsAre("3", "Régie", "Inpt 003", "Yes", "", "", ""));
}

TEST_F(ExportSheetsTest, HiddenIsWhatTheGridShows) {
  database_.AddStation(67, {{"Hidden", jet::Value()}});
  Sheet sheet;
  ASSERT_TRUE(ReadLabelSheet(Stations(), &sheet).ok());
  ASSERT_THAT(sheet.rows, SizeIs(4));
  EXPECT_THAT(sheet.rows[2], ElementsAre("66", "Ext. 002", "", "2", "", "", ""));
  EXPECT_THAT(sheet.rows[3], ElementsAre("67", "", "", "", "", "", ""));
}

TEST_F(ExportSheetsTest, KeysTellWhatTheyDo) {
  std::vector<KeySheet> sheets;
  ASSERT_TRUE(ReadKeySheets(Stations(), model_, &sheets).ok());
  ASSERT_THAT(sheets, SizeIs(2)) << "station 2 has no record";
  EXPECT_EQ(sheets[0].station, 1);
  EXPECT_EQ(sheets[1].station, 3);
  EXPECT_EQ(sheets[0].label, "Studio A");
  EXPECT_EQ(TitleOf(sheets[0]), "1  Studio A  (Mic, 1)");
  sheets[0].inputLabel.clear();
  EXPECT_EQ(TitleOf(sheets[0]), "1  Studio A");
  ASSERT_THAT(sheets[0].keys, SizeIs(32));
  EXPECT_EQ(sheets[0].keys[0].caption, "Régie");
  EXPECT_EQ(sheets[0].keys[1].caption, "Mic, 1") << "who listens, listens to an input";
  EXPECT_EQ(sheets[0].keys[3].caption, "INACTIVE");
  EXPECT_EQ(sheets[0].keys[2].type, 3);
  EXPECT_EQ(sheets[0].keys[2].caption, "Ext. 002");
  EXPECT_EQ(sheets[0].keys[2].targets, "Chan 02");
}

TEST_F(ExportSheetsTest, KeysOfChosenStations) {
  std::vector<KeySheet> sheets;
  constexpr int kWanted[] = {3, 2};
  ASSERT_TRUE(ReadKeySheets(Stations(), model_, kWanted, &sheets).ok());
  ASSERT_THAT(sheets, SizeIs(1)) << "station 2 has no record";
  EXPECT_EQ(sheets[0].station, 3);
  EXPECT_THAT(sheets[0].keys, SizeIs(32));
}

TEST(Csv, QuotesWhatWouldEndACell) {
  const Sheet sheet{
      .captions = {"Station", "Notes"},
      .rows = {{"1", "a, b"}, {"2", "the \"red\" one"}, {"3", "two\r\nlines"}, {"4", ""}}};
  EXPECT_EQ(ToCsv(sheet),
            "\xEF\xBB\xBF"
            "Station,Notes\r\n"
            "1,\"a, b\"\r\n"
            "2,\"the \"\"red\"\" one\"\r\n"
            "3,\"two\r\nlines\"\r\n"
            "4,\r\n");
}

TEST_F(ExportSheetsTest, TheMapIsInWords) {
  XmapGrid grid(model_);
  grid.Clear();
  const std::vector<std::optional<std::string>> outputs{"Studio A", "B", "C"};
  const std::vector<std::optional<std::string>> inputs{"Mic", "Line", "Phone"};
  grid.UpdateOutputLabels(outputs);
  grid.UpdateInputLabels(inputs);
  grid.SetMark(1, 2, Mark::Crosspoint);
  grid.SetMark(2, 2, Mark::Inhibit);
  grid.SetMark(3, 1, Mark::Priority);
  const Sheet sheet = MapSheet(grid);
  EXPECT_THAT(sheet.captions, ElementsAre("Output", "Label", "01 Mic", "02 Line", "03 Phone"));
  EXPECT_THAT(sheet.rows, ElementsAre(ElementsAre("01", "Studio A", "", "crosspoint", ""),
                                      ElementsAre("02", "B", "", "inhibit", ""),
                                      ElementsAre("03", "C", "priority", "", "")));
}

}  // namespace
}  // namespace rules
