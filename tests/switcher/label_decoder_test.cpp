// SPDX-License-Identifier: MIT
//
// Labels from the switcher: 0xF9, in the order of the stations.

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "switcher/decoder.h"
#include "tests/support/hex.h"
#include "tests/support/recording_reporter.h"
#include "tests/support/recording_switcher_events.h"
#include "tests/support/small_database.h"

namespace switcher {
namespace {

using test::FromHex;
using testing::ElementsAre;
using testing::IsEmpty;

class LabelDecoderTest : public testing::Test {
 protected:
  LabelDecoderTest() {
    model_.LabelCount = 2;
    model_.RetrieveActive = true;
    decoder_.SetHistory(&events_);
  }

  // A station, shown, with an output and an input label.
  void Add(int stationNum, const char* label, const char* inLabel = "in") {
    database_.AddStation(stationNum, {{"Hidden", 0}, {"Label", label}, {"InLabel", inLabel}});
  }

  // Decodes and returns what was announced.
  std::vector<std::string> Decode(std::string_view hex) {
    events_.seen.clear();
    decoder_.Decode(FromHex(hex));
    return events_.seen;
  }

  std::string Label(int station) { return database_.Field(station, "Label"); }
  std::string InLabel(int station) { return database_.Field(station, "InLabel"); }
  std::string Hidden(int station) { return database_.Field(station, "Hidden"); }

  model::SystemModel model_;
  test::SmallDatabase database_;
  test::RecordingReporter reporter_;
  test::RecordingSwitcherEvents events_;
  Decoder decoder_{{.model = model_,
                    .database = [this] { return database_.Files().Database(); },
                    .reporter = reporter_,
                    .observers = {events_}}};
};

TEST_F(LabelDecoderTest, LabelsGoToTheStationsInTheOrderOfTheirNumbers) {
  Add(2, "old");
  Add(1, "old");
  EXPECT_THAT(Decode("F9 14 61 62 20 20 20 20 20 20 53 74 61 2E 20 30 30 32 1F FF"),
              ElementsAre("Alpha Labels|20|OK", "labels 20"));
  EXPECT_EQ(Label(1), "ab");
  EXPECT_EQ(Label(2), "Sta. 002");
  EXPECT_EQ(InLabel(1), "in");
  EXPECT_THAT(reporter_.reports, IsEmpty());
}

TEST_F(LabelDecoderTest, SelectorTenIsTheInputLabelsAndHidesNobody) {
  model_.LabelCount = 1;
  Add(1, "out");
  database_.Set(1, "Hidden", 1);
  EXPECT_THAT(Decode("F9 0A 61 20 20 20 20 20 20 20 4B FF"),
              ElementsAre("Alpha Labels|12|OK", "labels 10"));
  EXPECT_EQ(Label(1), "out");
  EXPECT_EQ(InLabel(1), "a");
  EXPECT_EQ(Hidden(1), "1");
}

TEST_F(LabelDecoderTest, AnyOtherHeaderIsTheOutputLabelsAndHidesNobody) {
  model_.LabelCount = 1;
  Add(1, "out");
  EXPECT_THAT(Decode("F9 00 7B 20 20 20 20 20 20 61 1C FF"),
              ElementsAre("Alpha Labels|12|OK", "labels 0"));
  EXPECT_EQ(Label(1), "{      a");
  EXPECT_EQ(Hidden(1), "0");
}

// Its checksum is right: the header has lost nothing that counts.
TEST_F(LabelDecoderTest, AHeaderAboveSevenBitsIsRefused) {
  model_.LabelCount = 1;
  Add(1, "out");
  EXPECT_THAT(Decode("F9 94 61 20 20 20 20 20 20 20 55 FF"),
              ElementsAre("Alpha Labels|12|Channel Error"));
  EXPECT_THAT(Decode("F9 80 61 20 20 20 20 20 20 20 41 FF"),
              ElementsAre("Alpha Labels|12|Channel Error"));
  EXPECT_EQ(Label(1), "out");
  EXPECT_THAT(Decode("F9 7F 61 20 20 20 20 20 20 20 40 FF"),
              ElementsAre("Alpha Labels|12|OK", "labels 127"));
  EXPECT_EQ(Label(1), "a");
  EXPECT_THAT(reporter_.reports, IsEmpty());
}

TEST_F(LabelDecoderTest, AMarkedLabelHidesAndKeepsTheLabelThatItStandsFor) {
  Add(1, "MIC");
  Add(2, "MIC");
  Decode("F9 14 7B 49 43 20 20 20 20 20 7B 49 44 20 20 20 20 20 63 FF");
  EXPECT_EQ(Label(1), "MIC");
  EXPECT_EQ(Hidden(1), "1");
  EXPECT_EQ(Label(2), "{ID");
  EXPECT_EQ(Hidden(2), "1");
}

TEST_F(LabelDecoderTest, AMarkAloneKeepsAnEmptyAndANullLabel) {
  Add(1, "");
  database_.AddStation(2, {});
  Decode("F9 14 7B 20 20 20 20 20 20 20 7B 20 20 20 20 20 20 20 4A FF");
  EXPECT_EQ(Label(1), "");
  EXPECT_EQ(Hidden(1), "1");
  EXPECT_EQ(Label(2), "null");
  EXPECT_EQ(Hidden(2), "1");
}

TEST_F(LabelDecoderTest, AMarkedInputLabelKeepsTheOneThatItStandsFor) {
  model_.LabelCount = 1;
  Add(1, "out", "MIC");
  Decode("F9 0A 7B 49 43 20 20 20 20 20 31 FF");
  EXPECT_EQ(InLabel(1), "MIC");
  EXPECT_EQ(Hidden(1), "0");
}

TEST_F(LabelDecoderTest, ALabelWithoutTheMarkShows) {
  model_.LabelCount = 1;
  Add(1, "MIC");
  database_.Set(1, "Hidden", 1);
  Decode("F9 14 4D 49 43 20 20 20 20 20 0D FF");
  EXPECT_EQ(Label(1), "MIC");
  EXPECT_EQ(Hidden(1), "0");
}

TEST_F(LabelDecoderTest, TrailingSpacesAreNotStoredOthersAre) {
  Add(1, "old");
  Add(2, "old");
  Decode("F9 14 20 61 20 62 20 20 20 20 20 20 20 20 20 20 20 20 17 FF");
  EXPECT_EQ(Label(1), " a b");
  EXPECT_EQ(Label(2), "");
}

TEST_F(LabelDecoderTest, BytesAreCharactersOfTheCodePage) {
  model_.LabelCount = 1;
  Add(1, "old");
  // U-umlaut, euro sign, e-acute.
  Decode("F9 14 DC 80 E9 20 20 20 20 20 79 FF");
  EXPECT_EQ(Label(1), "\u00DC\u20AC\u00E9");
}

TEST_F(LabelDecoderTest, AStationWithoutARecordEndsItAndIsReported) {
  model_.LabelCount = 3;
  Add(1, "old");
  Add(3, "old");
  EXPECT_THAT(Decode("F9 14 61 20 20 20 20 20 20 20 62 20 20 20 20 20 20 20 "
                     "63 20 20 20 20 20 20 20 5A FF"),
              ElementsAre("Alpha Labels|28|Channel Error", "labels 20"));
  EXPECT_THAT(reporter_.reports,
              ElementsAre("critical|Serial Communications Error|"
                          "Error in format of received Alpha Label message (Channel Not Found).\n"
                          "This message only partially saved."));
  EXPECT_EQ(Label(1), "a");
  EXPECT_EQ(Label(3), "old");
}

TEST_F(LabelDecoderTest, WithoutTheFirstStationNothingIsStored) {
  Add(2, "old");
  EXPECT_THAT(Decode("F9 14 61 20 20 20 20 20 20 20 62 20 20 20 20 20 20 20 17 FF"),
              ElementsAre("Alpha Labels|20|Channel Error"));
  EXPECT_EQ(Label(2), "old");
  EXPECT_EQ(reporter_.reports.size(), 1U);
}

TEST_F(LabelDecoderTest, RefusedLabelsWriteNothing) {
  Add(1, "old");
  Add(2, "old");
  const std::string inside = "F9 14 61 20 20 20 20 20 20 20 62 20 20 20 20 20 20 20 ";
  EXPECT_THAT(Decode(inside + "18 FF"), ElementsAre("Alpha Labels|20|Failed Csum"));
  EXPECT_THAT(Decode(inside + "17 00"), ElementsAre("Alpha Labels|20|Missing EOM"));
  EXPECT_THAT(Decode(inside + "18 00"), ElementsAre("Alpha Labels|20|Failed Csum"));
  EXPECT_THAT(Decode(inside + "FF"), ElementsAre("Alpha Labels|19|Size Error"));
  EXPECT_THAT(Decode(inside + "00 17 FF"), ElementsAre("Alpha Labels|21|Size Error"));
  EXPECT_EQ(Label(1), "old");
  EXPECT_EQ(Label(2), "old");
  EXPECT_THAT(reporter_.reports, IsEmpty());
}

TEST_F(LabelDecoderTest, TheSharedRecordSetStandsWhereItStood) {
  Add(1, "old");
  Add(2, "old");
  database_.GoTo(2);
  Decode("F9 14 61 20 20 20 20 20 20 20 62 20 20 20 20 20 20 20 17 FF");
  EXPECT_EQ(database_.CurrentStation(), 2);
  EXPECT_EQ(Label(2), "b");
}

TEST_F(LabelDecoderTest, AFieldThatIsTooShortStoresNothingAndIsReported) {
  test::SmallDatabase narrow(test::StationsWithTextSize("Label", 4));
  narrow.AddStation(1, {{"Label", "old"}});
  narrow.AddStation(2, {{"Label", "old"}});
  Decoder decoder({.model = model_,
                   .database = [&] { return narrow.Files().Database(); },
                   .reporter = reporter_,
                   .observers = {events_}});
  decoder.SetHistory(&events_);
  decoder.Decode(FromHex("F9 14 61 20 20 20 20 20 20 20 53 74 61 2E 20 30 30 32 5D FF"));
  EXPECT_THAT(events_.seen, ElementsAre("Alpha Labels|20|"));
  ASSERT_EQ(reporter_.reports.size(), 1U);
  EXPECT_EQ(reporter_.reports[0].rfind(
                "critical|Serial Communications Error|Error Storing Alpha Table\r\rError # ", 0),
            0U);
  EXPECT_EQ(narrow.Field(1, "Label"), "old");
  EXPECT_EQ(narrow.Field(2, "Label"), "old");
}

}  // namespace
}  // namespace switcher
