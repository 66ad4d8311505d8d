// SPDX-License-Identifier: MIT
//
// The label tables on their way to the switcher: 0xF7, then 0xF9.

#include <gmock/gmock.h>

#include "tests/switcher/senders_fixture.h"

namespace switcher {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

class LabelSenderTest : public SendersTest {
 protected:
  LabelSenderTest() : SendersTest(test::StationsWithTextSize("Label", 20)) {}

  // Adds a station, shown, with an output and an input label.
  void Add(int stationNum, const char* label, const char* inLabel = "") {
    database_.AddStation(stationNum, {{"Hidden", 0}, {"Label", label}, {"InLabel", inLabel}});
    ++model_.LabelCount;
  }

  // The message of the texts when there is but one label.
  std::string OnlyText(const char* label) {
    Add(1, label);
    Send(Table::OutputLabels);
    const std::string sent = port_.TakeWritten();
    const std::string order = "F7 14 00 00 00 14 FF ";
    EXPECT_EQ(sent.substr(0, order.size()), order);
    return sent.substr(order.size());
  }
};

TEST_F(LabelSenderTest, LabelsGoInTheGeneralSortOrderAndTiesByStation) {
  Add(1, "beta");
  Add(3, "alpha");
  Add(4, "Zulu");
  Add(2, "Alpha");  // later in the table than station 3, but before it on the wire
  Send(Table::OutputLabels);
  EXPECT_EQ(port_.TakeWritten(),
            "F7 14 00 01 00 02 00 00 00 03 00 1A FF "
            "F9 14 41 6C 70 68 61 20 20 20 "
            "61 6C 70 68 61 20 20 20 "
            "62 65 74 61 20 20 20 20 "
            "5A 75 6C 75 20 20 20 20 0C FF");
  EXPECT_TRUE(model_.SendBusy);
  EXPECT_EQ(port_.sendThreshold, 1);
  EXPECT_EQ(values_, 5 + 33);
  EXPECT_THAT(reporter_.reports, IsEmpty());
}

TEST_F(LabelSenderTest, SelectorTenSendsTheInputLabelsInTheirOwnOrder) {
  Add(1, "a", "In B");
  Add(130, "b", "In A");
  Send(Table::InputLabels);
  EXPECT_EQ(port_.TakeWritten(),
            "F7 0A 00 01 01 00 00 0B FF "
            "F9 0A 49 6E 20 41 20 20 20 20 49 6E 20 42 20 20 20 20 3B FF");
}

TEST_F(LabelSenderTest, AHiddenStationIsMarkedButSortedByItsLabel) {
  Add(1, "MIC", "MIC");
  Add(2, "Amp", "Amp");
  database_.Set(1, "Hidden", 1);
  Send(Table::OutputLabels);
  EXPECT_EQ(port_.TakeWritten(),
            "F7 14 00 01 00 00 00 15 FF "
            "F9 14 41 6D 70 20 20 20 20 20 7B 49 43 20 20 20 20 20 79 FF");
  Send(Table::InputLabels);
  EXPECT_EQ(port_.TakeWritten(),
            "F7 0A 00 01 00 00 00 0B FF "
            "F9 0A 41 6D 70 20 20 20 20 20 7B 49 43 20 20 20 20 20 6F FF");
}

TEST_F(LabelSenderTest, OnlyOneHides) {
  Add(1, "MIC");
  database_.Set(1, "Hidden", 2);
  Send(Table::OutputLabels);
  EXPECT_EQ(port_.TakeWritten(), "F7 14 00 00 00 14 FF F9 14 4D 49 43 20 20 20 20 20 0D FF");
  database_.Set(1, "Hidden", -1);
  Send(Table::OutputLabels);
  EXPECT_EQ(port_.TakeWritten(), "F7 14 00 00 00 14 FF F9 14 4D 49 43 20 20 20 20 20 0D FF");
}

TEST_F(LabelSenderTest, AHiddenEmptyLabelIsTheMarkAndSpaces) {
  database_.AddStation(1, {{"Hidden", 1}, {"Label", ""}});
  model_.LabelCount = 1;
  Send(Table::OutputLabels);
  EXPECT_EQ(port_.TakeWritten(), "F7 14 00 00 00 14 FF F9 14 7B 20 20 20 20 20 20 20 6F FF");
}

TEST_F(LabelSenderTest, LongLabelsAreCutAtEight) {
  EXPECT_EQ(OnlyText("abcdefghij"), "F9 14 61 62 63 64 65 66 67 68 38 FF");
}

TEST_F(LabelSenderTest, CharactersGoAsBytesOfTheCodePage) {
  // U-umlaut, euro sign, and a letter that the code page does not have: its low byte.
  EXPECT_EQ(OnlyText("\u00DC\u20AC\u03A9"), "F9 14 DC 80 A9 20 20 20 20 20 39 FF");
}

TEST_F(LabelSenderTest, TheLastCharacterOfTheCodePageGoesAsItIs) {
  // 20 + 255 + 7 * 32 = 499.
  EXPECT_EQ(OnlyText("\u00FF"), "F9 14 FF 20 20 20 20 20 20 20 73 FF");
}

TEST_F(LabelSenderTest, NullLabelsAreEmptyAndNullIsShown) {
  database_.AddStation(1, {});
  model_.LabelCount = 1;
  Send(Table::OutputLabels);
  EXPECT_EQ(port_.TakeWritten(), "F7 14 00 00 00 14 FF F9 14 20 20 20 20 20 20 20 20 14 FF");
}

TEST_F(LabelSenderTest, OnlyLabelCountRecordsGo) {
  Add(1, "c");
  Add(2, "b");
  Add(3, "a");
  model_.LabelCount = 1;
  Send(Table::OutputLabels);
  EXPECT_EQ(port_.TakeWritten(), "F7 14 00 02 00 16 FF F9 14 61 20 20 20 20 20 20 20 55 FF");
}

TEST_F(LabelSenderTest, TooFewRecordsSendNothingAndAreReported) {
  Add(1, "only");
  model_.LabelCount = 2;
  Send(Table::OutputLabels);
  EXPECT_EQ(port_.TakeWritten(), "");
  EXPECT_THAT(reporter_.reports, ElementsAre(Failure("Error Sending Alpha Table",
                                                     "3021 - There is no current record")));
  // The line is free: the poll goes on when the port says so.
  EXPECT_TRUE(model_.SendBusy);
  EXPECT_EQ(port_.sendThreshold, 1);
  EXPECT_EQ(values_, 0);
}

TEST_F(LabelSenderTest, OneStepIsOneMessageAndBothAreOfOneMoment) {
  Add(1, "b");
  Add(2, "a");
  Transmission labels = senders_.Make({.table = Table::OutputLabels});
  EXPECT_FALSE(model_.SendBusy);
  EXPECT_TRUE(labels.Step());
  EXPECT_EQ(port_.TakeWritten(), "F7 14 00 01 00 00 00 15 FF");
  EXPECT_TRUE(model_.SendBusy);
  EXPECT_EQ(port_.sendThreshold, 0);
  database_.Set(2, "Label", "z");
  EXPECT_FALSE(labels.Step());
  EXPECT_EQ(port_.TakeWritten(), "F9 14 61 20 20 20 20 20 20 20 62 20 20 20 20 20 20 20 17 FF");
  EXPECT_EQ(port_.sendThreshold, 1);
  EXPECT_FALSE(labels.Step());
  EXPECT_EQ(port_.TakeWritten(), "");
}

TEST_F(LabelSenderTest, AFailingLineEndsThePair) {
  Add(1, "a");
  port_.writesUntilFailure = 4;
  Send(Table::OutputLabels);
  EXPECT_EQ(port_.TakeWritten(), "F7 14 00 00");
  EXPECT_EQ(values_, 1);  // the second value was cut in its middle
  EXPECT_THAT(reporter_.reports,
              ElementsAre(Failure("Error Sending Alpha Table", "8020 - The line takes no bytes")));
}

TEST_F(LabelSenderTest, NoLabelsAreTwoShortMessages) {
  Send(Table::InputLabels);
  EXPECT_EQ(port_.TakeWritten(), "F7 0A 00 0A FF F9 0A 0A FF");
}

}  // namespace
}  // namespace switcher
