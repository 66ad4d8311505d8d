// SPDX-License-Identifier: MIT
//
// Relays, buttons and optos on their way to the switcher, and what all senders have in common.

#include <gmock/gmock.h>

#include "tests/support/hex.h"
#include "tests/switcher/senders_fixture.h"

namespace switcher {
namespace {

using test::Times;

using testing::ElementsAre;
using testing::IsEmpty;

std::string Flags(int count, std::initializer_list<int> set) {
  std::string flags(static_cast<std::size_t>(count), '0');
  for (const int member : set) flags[static_cast<std::size_t>(member - 1)] = '1';
  return flags;
}

using RelaySenderTest = SendersTest;

TEST_F(RelaySenderTest, SixtyFourRelaysWhateverTheChannels) {
  database_.AddStation(2, {{"Relays", Flags(64, {1, 8, 64})}});
  Send(Table::Relays, 2);
  EXPECT_EQ(port_.TakeWritten(), "F4 01 00 01 01 " + Times(6, "00 00") + "00 01 02 FF");
  EXPECT_EQ(values_, 9);
  EXPECT_TRUE(model_.SendBusy);
  EXPECT_EQ(port_.sendThreshold, 1);
}

TEST_F(RelaySenderTest, AllOutputsThatHaveARecord) {
  model_.ChannelCount = 3;
  database_.AddStation(1, {});
  database_.AddStation(3, {{"Relays", "1"}});
  database_.AddStation(4, {{"Relays", "1"}});  // beyond the channels
  Send(Table::Relays);
  EXPECT_EQ(port_.TakeWritten(), "F4 00 00 " + Times(8, "00 00") + "00 FF " + "F4 02 00 01 00 " +
                                     Times(7, "00 00") + "03 FF");
  EXPECT_THAT(reporter_.reports, IsEmpty());
}

TEST_F(RelaySenderTest, FailureHasTheWordsOfTheInhibits) {
  database_.AddStation(1, {});
  port_.writesUntilFailure = 0;
  Send(Table::Relays, 1);
  EXPECT_THAT(reporter_.reports, ElementsAre(Failure("Error Sending Inhibits Table",
                                                     "8020 - The line takes no bytes")));
  EXPECT_TRUE(model_.SendBusy);
  EXPECT_EQ(port_.sendThreshold, 1);
}

TEST_F(RelaySenderTest, ACharacterBeyondAsciiIsOneMember) {
  database_.AddStation(1, {{"Relays", "\u00E91\u20AC1"}});
  Send(Table::Relays, 1);
  EXPECT_EQ(port_.TakeWritten(), "F4 00 00 0A 00 " + Times(7, "00 00") + "0A FF");
}

class ButtonSenderTest : public SendersTest {
 protected:
  ButtonSenderTest() { model_.ButtonCount = 2; }
};

TEST_F(ButtonSenderTest, TypesAndFirstsThenTheGroups) {
  database_.AddStation(3, {{"B1 Type", 255},
                           {"B1 First", 1},
                           {"B1 Prog", Flags(16, {1, 8, 16})},
                           {"B2 Type", 2},
                           {"B2 First", 129},
                           {"B2 Prog", Flags(16, {9})}});
  Send(Table::Buttons, 3);
  EXPECT_EQ(port_.TakeWritten(), "FB 02 00 7F 01 01 00 02 00 01 01 01 01 00 01 00 00 01 00 07 FF");
  EXPECT_EQ(values_, 9);
}

TEST_F(ButtonSenderTest, GroupsGoByTheLengthOfEachText) {
  database_.AddStation(1, {{"B1 Type", 0},
                           {"B1 First", 0},
                           {"B1 Prog", "000000001"},
                           {"B2 Type", 3},
                           {"B2 First", 4},
                           {"B2 Prog", ""}});
  Send(Table::Buttons, 1);
  EXPECT_EQ(port_.TakeWritten(), "FB 00 00 00 00 00 00 03 00 04 00 00 00 01 00 08 FF");
}

TEST_F(ButtonSenderTest, ValuesTravelWithEightBits) {
  // 300 is 44 beyond 256; -1 has all bits.
  database_.AddStation(1, {{"B1 Type", 300}, {"B1 First", -1}});
  Send(Table::Buttons, 1);
  EXPECT_EQ(port_.TakeWritten(), "FB 00 00 2C 00 7F 01 00 00 00 00 2B FF");
}

TEST_F(ButtonSenderTest, AllStationsUpToTheStationCount) {
  model_.ButtonCount = 1;
  model_.StationCount = 3;
  for (const int station : {1, 3, 4}) {
    database_.AddStation(station, {{"B1 Type", station}, {"B1 First", 0}, {"B1 Prog", "00000000"}});
  }
  Send(Table::Buttons);
  EXPECT_EQ(port_.TakeWritten(),
            "FB 00 00 01 00 00 00 00 00 01 FF FB 02 00 03 00 00 00 00 00 05 FF");
}

TEST_F(ButtonSenderTest, AStationWithoutARecordSendsAndReportsNothing) {
  Send(Table::Buttons, 5);
  EXPECT_EQ(port_.TakeWritten(), "");
  EXPECT_THAT(reporter_.reports, IsEmpty());
  EXPECT_EQ(values_, 0);
  // The port says at once that it has drained, and the poll goes on.
  EXPECT_TRUE(model_.SendBusy);
  EXPECT_EQ(port_.sendThreshold, 1);
}

TEST_F(ButtonSenderTest, AFailingLineInTheSecondMessage) {
  model_.ButtonCount = 1;
  for (const int station : {1, 2, 3}) database_.AddStation(station, {});
  port_.writesUntilFailure = 9 + 3;
  Send(Table::Buttons);
  EXPECT_EQ(port_.TakeWritten(), "FB 00 00 00 00 00 00 00 FF FB 01 00");
  EXPECT_EQ(values_, 3 + 1);
  EXPECT_THAT(reporter_.reports,
              ElementsAre(Failure("Error Sending Button Table", "8020 - The line takes no bytes")));
}

TEST_F(ButtonSenderTest, StepsSendOneMessageEachAndStopAtAFailure) {
  model_.ButtonCount = 1;
  model_.StationCount = 4;
  for (const int station : {1, 3}) database_.AddStation(station, {});
  Transmission buttons = senders_.Make({.table = Table::Buttons});
  EXPECT_TRUE(buttons.Step());
  EXPECT_EQ(port_.TakeWritten(), "FB 00 00 00 00 00 00 00 FF");
  model_.SendBusy = false;  // an earlier message's event comes in between
  EXPECT_TRUE(buttons.Step());
  EXPECT_EQ(port_.TakeWritten(), "FB 02 00 00 00 00 00 02 FF");
  EXPECT_TRUE(model_.SendBusy);
  EXPECT_FALSE(buttons.Step());  // nothing was left
  EXPECT_EQ(port_.TakeWritten(), "");
  EXPECT_EQ(port_.sendThreshold, 1);

  port_.Close();
  Transmission failing = senders_.Make({.table = Table::Buttons});
  EXPECT_FALSE(failing.Step());
  EXPECT_FALSE(failing.Step());
  EXPECT_EQ(reporter_.reports.size(), 1U);
}

TEST_F(ButtonSenderTest, AMessageIsReadWholeBeforeItsFirstByte) {
  // The second button of a database of one.
  test::SmallDatabase lacking(test::StationsWithout("B2 First"));
  lacking.AddStation(1, {});
  TableSenders senders(
      {.model = model_, .files = lacking.Files(), .port = port_, .reporter = reporter_});
  senders.Make({.table = Table::Buttons, .station = 1}).Run();
  EXPECT_EQ(port_.TakeWritten(), "");
  EXPECT_THAT(reporter_.reports,
              ElementsAre(Failure("Error Sending Button Table",
                                  "3265 - Table \"Stations\" has no field \"B2 First\"")));
}

class OptoSenderTest : public SendersTest {
 protected:
  OptoSenderTest() { model_.OptoCount = 2; }
};

TEST_F(OptoSenderTest, RecordsInTheOrderOfTheirNumbersFromTheFirst) {
  database_.AddStation(
      7,
      {{"OptoType", 0}, {"OptoChannel", 130}, {"OptoFirst", 2}, {"OptoStations", Flags(64, {64})}});
  database_.AddStation(
      3,
      {{"OptoType", 254}, {"OptoChannel", 1}, {"OptoFirst", 1}, {"OptoStations", Flags(64, {1})}});
  database_.AddStation(9, {{"OptoType", 1}});
  database_.GoTo(9);
  Send(Table::Optos);
  EXPECT_EQ(port_.TakeWritten(), "E1 7E 01 01 00 01 00 01 00 " + Times(7, "00 00") +
                                     "00 00 02 01 02 00 " + Times(7, "00 00") + "00 01 05 FF");
  EXPECT_EQ(values_, 22);
  EXPECT_EQ(database_.CurrentStation(), 9);
}

TEST_F(OptoSenderTest, GroupsGoByTheLengthOfEachText) {
  database_.AddStation(1, {{"OptoType", 1}, {"OptoChannel", 2}, {"OptoFirst", 3}});
  database_.AddStation(2, {{"OptoStations", "101"}});
  Send(Table::Optos);
  EXPECT_EQ(port_.TakeWritten(), "E1 01 00 02 00 03 00 00 00 00 00 00 00 05 00 0B FF");
}

TEST_F(OptoSenderTest, TooFewRecordsSendNothingAndAreReported) {
  database_.AddStation(1, {});
  Send(Table::Optos);
  EXPECT_EQ(port_.TakeWritten(), "");
  EXPECT_THAT(reporter_.reports, ElementsAre(Failure("Error Sending Opto Programming Data",
                                                     "3021 - There is no current record")));
}

// What each table's failure is called.
struct NamedTable {
  const char* line;
  Table table;
};

constexpr NamedTable kNamedTables[] = {
    {"Error Sending Alpha Table", Table::OutputLabels},
    {"Error Sending Alpha Table", Table::InputLabels},
    {"Error Sending Inhibits Table", Table::Inhibits},
    {"Error Sending Inhibits Table", Table::Relays},
    {"Error Sending Button Table", Table::Buttons},
    {"Error Sending Opto Programming Data", Table::Optos},
};

using AllSendersTest = SendersTest;

TEST_F(AllSendersTest, AClosedDatabaseIsReported) {
  ASSERT_TRUE(database_.Files().SaveAndClose().ok());
  for (const auto& [line, table] : kNamedTables) {
    reporter_.reports.clear();
    EXPECT_FALSE(Send(table));
    EXPECT_THAT(reporter_.reports,
                ElementsAre(Failure(line, "3021 - The configuration database is not open")));
  }
  EXPECT_EQ(port_.TakeWritten(), "");
}

TEST_F(AllSendersTest, AClosedPortIsReported) {
  database_.AddStation(1, {});
  model_.LabelCount = 1;
  model_.OptoCount = 1;
  port_.Close();
  for (const auto& [line, table] : kNamedTables) {
    reporter_.reports.clear();
    EXPECT_FALSE(Send(table));
    EXPECT_THAT(reporter_.reports, ElementsAre(Failure(line, "8018 - The port is not open")));
  }
}

TEST_F(AllSendersTest, TheSharedRecordSetAndAChangeBegunInItStay) {
  for (const int station : {1, 2, 3}) database_.AddStation(station, {{"Label", "old"}});
  model_.LabelCount = 3;
  model_.OptoCount = 3;
  database_.GoTo(2);
  jet::RecordSet& shared = *database_.Files().Stations();
  ASSERT_TRUE(shared.Edit().ok());
  ASSERT_TRUE(shared.Set("Label", "new").ok());
  for (const auto& [line, table] : kNamedTables) {
    EXPECT_TRUE(Send(table));
    EXPECT_NE(port_.TakeWritten(), "") << line;
    EXPECT_EQ(database_.CurrentStation(), 2) << line;
    EXPECT_TRUE(shared.IsChanging()) << line;
  }
  ASSERT_TRUE(shared.Update().ok());
  EXPECT_EQ(database_.Field(2, "Label"), "new");
}

TEST_F(AllSendersTest, NobodyNeedsToWatch) {
  database_.AddStation(1, {});
  model_.OptoCount = 1;
  EXPECT_EQ(senders_.Make({.table = Table::Optos}).Run(), 1);
  EXPECT_EQ(port_.TakeWritten(), "E1 00 00 00 00 00 00 00 FF");
  EXPECT_EQ(values_, 0);
}

}  // namespace
}  // namespace switcher
