// SPDX-License-Identifier: MIT

#include "views/rules/import_file.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "stations/carry_out.h"
#include "tests/support/recording_changes.h"
#include "tests/support/small_database.h"
#include "views/rules/export_sheets.h"

namespace rules {
namespace {

using test::kNoFlags;
using testing::ElementsAre;
using testing::IsEmpty;

std::string At(const std::vector<int>& members) {
  std::string flags = kNoFlags;
  for (const int member : members) flags[static_cast<std::size_t>(member - 1)] = '1';
  return flags;
}

const char* NameOf(ImportFault::Reason reason) {
  constexpr const char* kNames[] = {
      "not text",          "no rows",          "open quotes",     "too many cells", "too many rows",
      "unknown caption",   "repeated caption", "missing caption", "cell count",     "no station",
      "repeated station",  "no button",        "not a choice",    "label text",     "unreadable",
      "unknown operation", "unknown target",   "ambiguous target"};
  return kNames[static_cast<int>(reason)];
}

// Three stations with two buttons each.
class ImportFileTest : public testing::Test {
 protected:
  ImportFileTest() {
    model_.StationCount = 3;
    model_.ButtonCount = 2;
    model_.ChkBoxCount = 64;
    for (int station = 1; station <= 4; ++station) {
      database_.AddStation(station, {{"Label", "OUT " + std::to_string(station)},
                                     {"InLabel", "IN " + std::to_string(station)},
                                     {"Hidden", 0},
                                     {"SysInput", "HRJ(1)"},
                                     {"SysOutput", ""},
                                     {"B1 Type", 0},
                                     {"B1 First", 2},
                                     {"B1 Prog", At({2})},
                                     {"B2 Type", 254},
                                     {"B2 First", 1},
                                     {"B2 Prog", kNoFlags}});
    }
  }

  ImportPlan Plan(std::string_view bytes) {
    ImportPlan plan;
    EXPECT_TRUE(PlanImport(bytes, *database_.Files().Stations(), model_, &plan).ok());
    return plan;
  }

  // "line.column reason: text".
  std::vector<std::string> Faults(std::string_view bytes) {
    const ImportPlan plan = Plan(bytes);
    EXPECT_TRUE(plan.faults.empty() || plan.changes.empty());
    std::vector<std::string> words;
    for (const ImportFault& fault : plan.faults) {
      words.push_back(std::to_string(fault.line) + "." + std::to_string(fault.column) + " " +
                      NameOf(fault.reason) + ": " + fault.text);
    }
    return words;
  }

  // What is announced when the plan is carried out.
  std::vector<std::string> Store(std::string_view bytes) {
    const ImportPlan plan = Plan(bytes);
    EXPECT_THAT(plan.faults, IsEmpty());
    EXPECT_TRUE(stations::CarryOut(*database_.Files().Stations(), plan.changes,
                                   stations::Direction::Again, {changes_, stations::Origin::File})
                    .ok());
    return heard_.Take();
  }

  std::string ExportedLabels() {
    Sheet sheet;
    EXPECT_TRUE(ReadLabelSheet(*database_.Files().Stations(), &sheet).ok());
    return ToCsv(sheet);
  }
  std::string ExportedProgramming() {
    std::vector<KeySheet> sheets;
    EXPECT_TRUE(ReadKeySheets(*database_.Files().Stations(), model_, &sheets).ok());
    return ToCsv(ProgrammingSheet(sheets));
  }

  model::SystemModel model_;
  test::SmallDatabase database_;
  stations::Changes changes_;
  test::RecordingChanges heard_{changes_};
};

TEST_F(ImportFileTest, WhatWasExportedIsNoDifference) {
  database_.Set(1, "Label", jet::Value());
  database_.Set(1, "Hidden", jet::Value());
  database_.Set(2, "Label", "R\xC3\xA9gie");
  database_.Set(2, "Notes", "two\r\nlines, \"quoted\"; and more");
  database_.Set(3, "Label", "OUT 4");  // as another
  database_.Set(1, "B1 Prog", At({3, 4, 7}));
  database_.Set(1, "B1 First", 60);  // as other programs may leave it
  database_.Set(2, "B1 Type", 77);
  database_.Set(2, "B2 Type", 0);  // an operation without a target
  database_.Set(3, "B1 Type", 3);
  database_.Set(3, "B1 Prog", std::string(64, '1') + "1");
  database_.Set(3, "B2 Prog", At({5}));  // inactive, with a target left
  const std::string labels = ExportedLabels();
  EXPECT_EQ(Plan(labels).rows, 4);
  EXPECT_THAT(Store(labels), IsEmpty());
  const std::string programming = ExportedProgramming();
  EXPECT_EQ(Plan(programming).rows, 6);
  EXPECT_EQ(Plan(programming).readOnlyCount, 0);
  EXPECT_THAT(Store(programming), IsEmpty());
}

TEST_F(ImportFileTest, LabelsOfEveryColumn) {
  EXPECT_THAT(
      Store("Station,Station Label,Input Label,Hidden,System Input,System Output,Station Notes\r\n"
            "2,CAM 2,MIC 2,Yes,HRJ(2),Out,\"By the lift\r\nor not\"\r\n"),
      ElementsAre("file 2: Label OUT 2 > CAM 2, InLabel IN 2 > MIC 2, Hidden 0 > 1, SysInput "
                  "HRJ(1) > HRJ(2), SysOutput  > Out, Notes null > By the lift\r\nor not"));
  EXPECT_EQ(heard_.times, 1);
}

TEST_F(ImportFileTest, AnyColumnsInAnyOrderSeparatorAndCodePage) {
  EXPECT_THAT(Store("station label;STATION;\n\"R\xE9gie\";3;\n;;\nCAM;1;\n"),
              ElementsAre("file 1: Label OUT 1 > CAM", "file 3: Label OUT 3 > R\xC3\xA9gie"));
  EXPECT_THAT(Store("Hidden\tStation\nyes\t4\n"), ElementsAre("file 4: Hidden 0 > 1"))
      << "labels go beyond the stations with a panel";
}

TEST_F(ImportFileTest, LabelsThatDoNotFitAreNamedWithTheirPlace) {
  EXPECT_THAT(
      Faults("Station,Station Label,Hidden\n1,123456789,No\n2,A\tB,Perhaps\n"
             "3,\xC5\x81,No\n1,X,No\n9,X,No\nx,X,No\n4,X\n"),
      ElementsAre("2.2 label text: 123456789", "3.2 label text: A\tB", "3.3 not a choice: Perhaps",
                  "4.2 label text: \xC5\x81", "5.1 repeated station: 1", "6.1 no station: 9",
                  "7.1 no station: x", "8.0 cell count: "));
}

TEST_F(ImportFileTest, ProgrammingOfEveryKind) {
  EXPECT_THAT(
      Store("Station,Station Label,Button,Operation,First Target,Targets\r\n"
            "1,whatever,1,GROUP,whatever,\"OUT 1, OUT 3\"\r\n"
            "1,,2,listen,,IN 3\r\n"
            "2,,1,EXTRN,,Chan 05\r\n"
            "3,,1,P-Listen,,#4\r\n"),
      ElementsAre(
          "file 1: B1 Prog " + At({2}) + " > " + At({1, 3}) +
              ", B1 First 2 > 1, B1 Type 0 > 255, B2 Prog " + kNoFlags + " > " + At({3}) +
              ", B2 First 1 > 3, B2 Type 254 > 1",
          "file 2: B1 Prog " + At({2}) + " > " + At({5}) + ", B1 First 2 > 5, B1 Type 0 > 3",
          "file 3: B1 Prog " + At({2}) + " > " + At({4}) + ", B1 First 2 > 4, B1 Type 0 > 2"));
}

TEST_F(ImportFileTest, AButtonWithoutATargetIsInactive) {
  EXPECT_THAT(Store("Station,Button,Operation,Targets\n1,1,TALK,\n"),
              ElementsAre("file 1: B1 Prog " + At({2}) + " > " + kNoFlags +
                          ", B1 First 2 > 1, B1 Type 0 > 254"));
}

TEST_F(ImportFileTest, ProgrammingThatDoesNotFitIsNamedWithItsPlace) {
  database_.Set(2, "Label", "OUT 3");
  database_.Set(2, "B2 Type", 77);
  EXPECT_THAT(Faults("Station,Button,Operation,Targets\n"
                     "4,1,TALK,OUT 1\n"
                     "1,3,TALK,OUT 1\n"
                     "1,1,SHOUT,OUT 1\n"
                     "1,2,TALK,\"OUT 1, OUT 9\"\n"
                     "2,1,TALK,OUT 3\n"
                     "2,1,TALK,OUT 1\n"
                     "3,1,NULL (77),\n"
                     "2,2,NULL (77),OUT 1\n"),
              ElementsAre("2.1 no station: 4", "3.2 no button: 3", "4.3 unknown operation: SHOUT",
                          "5.4 unknown target: OUT 9", "6.4 ambiguous target: OUT 3",
                          "7.2 repeated station: 1", "8.3 unknown operation: NULL (77)",
                          "9.4 unknown target: OUT 1"));
}

TEST_F(ImportFileTest, AFileThatIsNoneOfBothIsRefused) {
  EXPECT_THAT(Faults(std::string_view("S\0t\0", 4)), ElementsAre("0.0 not text: "));
  EXPECT_THAT(Faults(""), ElementsAre("0.0 no rows: "));
  EXPECT_THAT(Faults("Station,Station Label\r\n"), ElementsAre("0.0 no rows: "));
  EXPECT_THAT(Faults("Station,Station Label\n1,\"A\n2,B\n"), ElementsAre("2.0 open quotes: "));
  EXPECT_THAT(Faults("Output,Label\n1,A\n"),
              ElementsAre("1.1 unknown caption: Output", "1.2 unknown caption: Label",
                          "1.0 missing caption: Station"));
  EXPECT_THAT(Faults("Station\n1\n"), ElementsAre("1.0 missing caption: Station Label"));
  EXPECT_THAT(Faults("Station,Button\n1,1\n"),
              ElementsAre("1.0 missing caption: Operation", "1.0 missing caption: Targets"));
  EXPECT_THAT(Faults("Station,Station Label,station label\n1,A,B\n"),
              ElementsAre("1.3 repeated caption: station label"));
  EXPECT_THAT(Faults("Station,Button,Operation,Targets,Hidden\n1,1,TALK,,No\n"),
              ElementsAre("1.5 unknown caption: Hidden"));
  EXPECT_THAT(Faults("Station,Station Label,Targets\n1,A,\n"),
              ElementsAre("1.3 unknown caption: Targets"));
}

TEST_F(ImportFileTest, OfManyFaultsTheFirstHundredAreKeptAndAllAreCounted) {
  std::string file = "Station,Hidden\n";
  for (int row = 0; row < 250; ++row) file += "7,No\n";
  const ImportPlan plan = Plan(file);
  EXPECT_EQ(plan.faults.size(), 100u);
  EXPECT_EQ(plan.faultCount, 250);
}

TEST_F(ImportFileTest, AFileOfAnotherKindIsNotReadToItsEnd) {
  EXPECT_THAT(Faults(std::string(1 << 20, ',')), ElementsAre("1.0 too many cells: "));
  std::string rows = "Station,Hidden\n";
  for (int row = 0; row < 100'000; ++row) rows += "x\n";
  EXPECT_THAT(Faults(rows), ElementsAre("2007.0 too many rows: "));
}

TEST_F(ImportFileTest, SpacesAroundAWordAreNoPartOfIt) {
  EXPECT_THAT(Store(" Station ,Hidden \n 2 , yes \n"), ElementsAre("file 2: Hidden 0 > 1"));
  EXPECT_THAT(Store("Station, Button , Operation,Targets\n2, 1 , LISTEN , IN 3 \n"),
              testing::SizeIs(1));
}

TEST_F(ImportFileTest, CellsThatAreOnlyToBeReadAreCountedWhenTheySaySomethingElse) {
  const std::string captions = "Station,Station Label,Button,Operation,First Target,Targets\n";
  EXPECT_EQ(Plan(captions + "1,OUT 1,1,TALK,OUT 2,OUT 2\n").readOnlyCount, 0);
  EXPECT_EQ(Plan(captions + "1,OUT 1,1,TALK,OUT 2,OUT 3\n").readOnlyCount, 0) << "as it is";
  EXPECT_EQ(Plan(captions + "1,OUT 1,1,TALK,OUT 3,OUT 3\n").readOnlyCount, 0) << "as it becomes";
  const ImportPlan plan = Plan(captions + "1,OUT 1,1,TALK,OUT 1,OUT 3\n2,CAM,1,TALK,OUT 2,OUT 2\n");
  EXPECT_EQ(plan.readOnlyCount, 2);
  EXPECT_EQ(plan.readOnly.line, 2);
  EXPECT_EQ(plan.readOnly.caption, "First Target");
  EXPECT_EQ(plan.readOnly.text, "OUT 1");
}

TEST_F(ImportFileTest, LabelsOfTargetsThatCannotBeReadAreAFault) {
  test::SmallDatabase without(test::StationsWithout("InLabel"));
  without.AddStation(1, {{"Label", "A"}, {"B1 Type", 0}, {"B1 First", 1}, {"B1 Prog", "1"}});
  ImportPlan plan;
  ASSERT_TRUE(PlanImport("Station,Button,Operation,Targets\n1,1,LISTEN,\n",
                         *without.Files().Stations(), model_, &plan)
                  .ok());
  ASSERT_EQ(plan.faults.size(), 1u);
  EXPECT_EQ(plan.faults[0].reason, ImportFault::Reason::Unreadable);
}

TEST_F(ImportFileTest, AFieldThatIsNotThereIsAFault) {
  test::SmallDatabase without(test::StationsWithout("SysInput"));
  without.AddStation(1, {{"Label", "A"}});
  ImportPlan plan;
  ASSERT_TRUE(
      PlanImport("Station,System Input\n1,X\n", *without.Files().Stations(), model_, &plan).ok());
  ASSERT_EQ(plan.faults.size(), 1u);
  EXPECT_EQ(plan.faults[0].reason, ImportFault::Reason::Unreadable);
}

}  // namespace
}  // namespace rules
