// SPDX-License-Identifier: MIT
//
// Tables from the switcher, as they reach the configuration database.

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <span>
#include <string>
#include <vector>

#include "stations/change.h"
#include "switcher/decoder.h"
#include "switcher/table.h"
#include "switcher/wire/message_table.h"
#include "tests/support/hex.h"
#include "tests/support/message_codecs.h"
#include "tests/support/recording_reporter.h"
#include "tests/support/recording_switcher_events.h"
#include "tests/support/small_database.h"

namespace switcher {
namespace {

using test::FromHex;
using test::Times;
using testing::ElementsAre;
using testing::IsEmpty;

class TableDecoderTest : public testing::Test {
 protected:
  explicit TableDecoderTest(const jet::TableSpec& stations = db::StationsSpec())
      : database_(stations) {
    model_.ApplyFixedValues();
    model_.ChannelCount = 16;
    model_.StationCount = 16;
    model_.RetrieveActive = true;
    decoder_.SetHistory(&events_);
  }

  // Decodes and returns what was announced.
  std::vector<std::string> Decode(std::string_view hex) {
    events_.seen.clear();
    decoder_.Decode(FromHex(hex));
    return events_.seen;
  }

  // A flag string as it is stored: filled up with "0" to 64 characters.
  static std::string Filled(std::string flags) {
    flags.resize(64, '0');
    return flags;
  }

  // What a failure of the database shows.
  static std::string Failure(const std::string& line, const std::string& error) {
    return "critical|Serial Communications Error|" + line + "\r\rError # " + error;
  }

  model::SystemModel model_;
  test::SmallDatabase database_;
  test::RecordingReporter reporter_;
  test::RecordingSwitcherEvents events_;
  stations::Changes changes_;
  Decoder decoder_{{.model = model_,
                    .database = [this] { return database_.Files().Database(); },
                    .reporter = reporter_,
                    .changes = changes_,
                    .observers = {events_}}};
};

using InhibitDecoderTest = TableDecoderTest;

TEST_F(InhibitDecoderTest, FlagsReplaceTheFirstCharactersOfTheField) {
  database_.AddStation(2, {{"Inhibits", "0110000000000000xyz"}});
  EXPECT_THAT(Decode("F5 01 00 01 01 00 01 02 FF"),
              ElementsAre("Output 2 Inhibit Map|9|OK", "inhibits 2"));
  EXPECT_EQ(database_.Field(2, "Inhibits"), Filled("1000000100000001xyz"));
  EXPECT_THAT(reporter_.reports, IsEmpty());
}

TEST_F(InhibitDecoderTest, NullAndShortFieldsAreFilledUpToSixtyFour) {
  database_.AddStation(1, {});
  database_.AddStation(2, {{"Inhibits", "01"}});
  Decode("F5 00 00 01 00 00 00 01 FF");
  Decode("F5 01 00 01 00 00 00 02 FF");
  EXPECT_EQ(database_.Field(1, "Inhibits"), Filled("1"));
  EXPECT_EQ(database_.Field(2, "Inhibits"), Filled("1"));
}

TEST_F(InhibitDecoderTest, LongerFieldsKeepTheirLength) {
  model_.ChannelCount = 72;
  database_.AddStation(1, {});
  database_.AddStation(2, {{"Inhibits", std::string(70, '1') + "xyz"}});
  Decode("F5 00 00 01 00 " + Times(7, "00 00") + "01 00 02 FF");
  Decode("F5 01 00 01 00 " + Times(7, "00 00") + "01 00 03 FF");
  EXPECT_EQ(database_.Field(1, "Inhibits"), Filled("1") + "10000000");
  EXPECT_EQ(database_.Field(2, "Inhibits"), Filled("1") + "10000000z");
}

TEST_F(InhibitDecoderTest, WhatStandsBehindIsKeptByCharacter) {
  database_.AddStation(1, {{"Inhibits", "000000000000000\u00E9\u20AC1"}});
  Decode("F5 00 00 00 00 00 00 00 FF");
  EXPECT_EQ(database_.Field(1, "Inhibits"), "0000000000000000\u20AC1" + std::string(46, '0'));
}

TEST_F(InhibitDecoderTest, RefusedRowsWriteNothing) {
  database_.AddStation(2, {{"Inhibits", "old"}});
  EXPECT_THAT(Decode("F5 01 00 01 01 00 01 03 FF"),
              ElementsAre("Output 2 Inhibit Map|9|Failed Csum"));
  EXPECT_THAT(Decode("F5 01 00 01 01 00 01 02 00"),
              ElementsAre("Output 2 Inhibit Map|9|Missing EOM"));
  EXPECT_THAT(Decode("F5 01 00 01 01 00 01 03 00"),
              ElementsAre("Output 2 Inhibit Map|9|Failed Csum"));
  EXPECT_THAT(Decode("F5 01 00 01 01 00 01 FF"), ElementsAre("Output 2 Inhibit Map|8|Size Error"));
  EXPECT_THAT(Decode("F5 01 00 01 01 00 01 00 02 FF"),
              ElementsAre("Output 2 Inhibit Map|10|Size Error"));
  EXPECT_THAT(Decode("F5 10 00 01 01 00 01 12 FF"),
              ElementsAre("Output 17 Inhibit Map|9|Channel Error"));
  EXPECT_THAT(Decode("F5 FF"), ElementsAre("Output 0 Inhibit Map|2|Size Error"));
  EXPECT_EQ(database_.Field(2, "Inhibits"), "old");
  EXPECT_THAT(reporter_.reports, IsEmpty());
}

TEST_F(InhibitDecoderTest, AnOutputWithoutARecordIsPassedOver) {
  EXPECT_THAT(Decode("F5 01 00 01 01 00 01 02 FF"), ElementsAre("Output 2 Inhibit Map|9|OK"));
  EXPECT_THAT(reporter_.reports, IsEmpty());
}

TEST_F(InhibitDecoderTest, ChannelsThatAreNoMultipleOfEightAreRefused) {
  database_.AddStation(1, {{"Inhibits", "old"}});
  model_.ChannelCount = 12;
  EXPECT_THAT(Decode("F5 00 00 01 00 01 FF"), ElementsAre("Output 1 Inhibit Map|7|Size Error"));
  EXPECT_EQ(database_.Field(1, "Inhibits"), "old");
}

TEST_F(InhibitDecoderTest, NothingIsLoggedOutsideARetrieval) {
  database_.AddStation(1, {});
  model_.RetrieveActive = false;
  EXPECT_THAT(Decode("F5 00 00 01 00 00 00 01 FF"), ElementsAre("inhibits 1"));
  EXPECT_EQ(database_.Field(1, "Inhibits"), Filled("1"));
}

TEST_F(InhibitDecoderTest, TheSharedRecordSetAndAChangeBegunInItStay) {
  database_.AddStation(1, {{"Label", "old"}, {"Inhibits", "0"}});
  database_.AddStation(2, {{"Inhibits", "0"}});
  database_.GoTo(1);
  jet::RecordSet& shared = *database_.Files().Stations();
  ASSERT_TRUE(shared.Edit().ok());
  ASSERT_TRUE(shared.Set("Label", "new").ok());
  Decode("F5 00 00 01 00 00 00 01 FF");  // also into the record that is being edited
  Decode("F5 01 00 02 00 00 00 03 FF");
  EXPECT_EQ(database_.CurrentStation(), 1);
  ASSERT_TRUE(shared.IsChanging());
  ASSERT_TRUE(shared.Update().ok());
  EXPECT_EQ(database_.Field(1, "Label"), "new");
  EXPECT_EQ(database_.Field(1, "Inhibits"), Filled("1"));
  EXPECT_EQ(database_.Field(2, "Inhibits"), Filled("01"));
}

using RelayDecoderTest = TableDecoderTest;

TEST_F(RelayDecoderTest, SixtyFourRelays) {
  database_.AddStation(2, {{"Relays", std::string(64, '1')}});
  EXPECT_THAT(Decode("F4 01 00 01 01 " + Times(6, "00 00") + "00 01 02 FF"),
              ElementsAre("Output 2 Relay Assignments|21|OK", "relays 2"));
  EXPECT_EQ(database_.Field(2, "Relays"),
            "1000000100000000000000000000000000000000000000000000000000000001");
}

TEST_F(RelayDecoderTest, FewerRelaysAreFilledUpToSixtyFour) {
  model_.RelayCount = 8;
  database_.AddStation(2, {});
  Decode("F4 01 00 03 00 04 FF");
  EXPECT_EQ(database_.Field(2, "Relays"), Filled("11"));
}

TEST_F(RelayDecoderTest, RefusedRowsWriteNothing) {
  database_.AddStation(2, {{"Relays", "old"}});
  const std::string row = "F4 01 00 " + Times(8, "01 00");
  EXPECT_THAT(Decode(row + "08 FF"), ElementsAre("Output 2 Relay Assignments|21|Failed Csum"));
  EXPECT_THAT(Decode(row + "09 00"), ElementsAre("Output 2 Relay Assignments|21|Missing EOM"));
  EXPECT_THAT(Decode(row + "FF"), ElementsAre("Output 2 Relay Assignments|20|Size Error"));
  EXPECT_THAT(Decode("F4 10 00 " + Times(8, "00 00") + "10 FF"),
              ElementsAre("Output 17 Relay Assignments|21|Channel Error"));
  EXPECT_EQ(database_.Field(2, "Relays"), "old");
  EXPECT_THAT(Decode(row + "09 FF"), ElementsAre("Output 2 Relay Assignments|21|OK", "relays 2"));
}

TEST_F(RelayDecoderTest, AnOutputWithoutARecordIsPassedOver) {
  EXPECT_THAT(Decode("F4 01 00 " + Times(8, "00 00") + "01 FF"),
              ElementsAre("Output 2 Relay Assignments|21|OK"));
}

class ButtonDecoderTest : public TableDecoderTest {
 protected:
  ButtonDecoderTest() { model_.ButtonCount = 2; }

  // Station 3: button 1 group, first 1, stations 1, 8 and 16; button 2 priority listen, first
  // 129, station 9.
  static constexpr char kMessage[] =
      "FB 02 00 7F 01 01 00 02 00 01 01 01 01 00 01 00 00 01 00 07 FF";
};

TEST_F(ButtonDecoderTest, TypesFirstsAndTargets) {
  database_.AddStation(3, {{"B2 Prog", "1111111111111111tail"}, {"B3 Type", 9}});
  EXPECT_THAT(Decode(kMessage), ElementsAre("Station 3 Button Data|21|OK", "buttons 3"));
  EXPECT_EQ(database_.Field(3, "B1 Type"), "255");
  EXPECT_EQ(database_.Field(3, "B1 First"), "1");
  EXPECT_EQ(database_.Field(3, "B1 Prog"), Filled("1000000100000001"));
  EXPECT_EQ(database_.Field(3, "B2 Type"), "2");
  EXPECT_EQ(database_.Field(3, "B2 First"), "129");
  EXPECT_EQ(database_.Field(3, "B2 Prog"), Filled("0000000010000000tail"));
  EXPECT_EQ(database_.Field(3, "B3 Type"), "9");
}

TEST_F(ButtonDecoderTest, StationsBehindTheLastWholeGroupAreKept) {
  // Twenty stations travel as two groups: 17 to 20 are not in the message.
  model_.StationCount = 20;
  database_.AddStation(3, {{"B1 Prog", "11111111111111111111"}});
  Decode(kMessage);
  EXPECT_EQ(database_.Field(3, "B1 Prog"), Filled("10000001000000011111"));
}

TEST_F(ButtonDecoderTest, LessThanEightStationsHaveNoGroups) {
  model_.StationCount = 4;
  database_.AddStation(3, {{"B1 Prog", "1010"}});
  EXPECT_THAT(Decode("FB 02 00 01 00 02 00 03 00 04 00 0C FF"),
              ElementsAre("Station 3 Button Data|13|OK", "buttons 3"));
  EXPECT_EQ(database_.Field(3, "B2 First"), "4");
  EXPECT_EQ(database_.Field(3, "B1 Prog"), Filled("1010"));
}

TEST_F(ButtonDecoderTest, RefusedDataWriteNothing) {
  database_.AddStation(3, {{"B1 Type", 77}});
  const std::string inside = "FB 02 00 7F 01 01 00 02 00 01 01 01 01 00 01 00 00 01 00 ";
  EXPECT_THAT(Decode(inside + "08 FF"), ElementsAre("Station 3 Button Data|21|Failed Csum"));
  EXPECT_THAT(Decode(inside + "07 00"), ElementsAre("Station 3 Button Data|21|Missing EOM"));
  EXPECT_THAT(Decode(inside + "FF"), ElementsAre("Station 3 Button Data|20|Size Error"));
  EXPECT_THAT(Decode(inside + "00 07 FF"), ElementsAre("Station 3 Button Data|22|Size Error"));
  model_.StationCount = 2;
  EXPECT_THAT(Decode("FB 02 00 00 00 00 00 00 00 00 00 02 FF"),
              ElementsAre("Station 3 Button Data|13|Channel Error"));
  EXPECT_EQ(database_.Field(3, "B1 Type"), "77");
  EXPECT_EQ(database_.Field(3, "B1 First"), "null");
}

TEST_F(ButtonDecoderTest, ValuesAboveEightBitsKeepTheirLowEight) {
  database_.AddStation(3, {});
  // The type of button 1 is 3 * 128 + 1 = 385: the low eight bits are 129, 385 is summed.
  EXPECT_THAT(Decode("FB 02 00 01 03 00 00 00 00 00 00 00 00 00 00 00 00 00 00 03 FF"),
              ElementsAre("Station 3 Button Data|21|OK", "buttons 3"));
  EXPECT_EQ(database_.Field(3, "B1 Type"), "129");
}

TEST_F(ButtonDecoderTest, AStationWithoutARecordIsPassedOver) {
  EXPECT_THAT(Decode(kMessage), ElementsAre("Station 3 Button Data|21|OK"));
  EXPECT_THAT(reporter_.reports, IsEmpty());
}

class OptoDecoderTest : public TableDecoderTest {
 protected:
  OptoDecoderTest() { model_.OptoCount = 2; }

  const std::string inside_ = "E1 7E 01 01 00 01 00 01 00 " + Times(7, "00 00") +
                              "00 00 02 01 02 00 " + Times(7, "00 00") + "00 01 ";
};

TEST_F(OptoDecoderTest, OptosGoToTheRecordsInTheOrderOfTheirNumbers) {
  database_.AddStation(7, {{"OptoStations", std::string(64, '1') + "tail"}});
  database_.AddStation(3, {});
  database_.AddStation(9, {{"OptoType", 55}});
  EXPECT_THAT(Decode(inside_ + "05 FF"), ElementsAre("Opto Programming Data|47|OK", "optos"));
  EXPECT_EQ(database_.Field(3, "OptoType"), "254");
  EXPECT_EQ(database_.Field(3, "OptoChannel"), "1");
  EXPECT_EQ(database_.Field(3, "OptoFirst"), "1");
  EXPECT_EQ(database_.Field(3, "OptoStations"), "1" + std::string(63, '0'));
  EXPECT_EQ(database_.Field(7, "OptoType"), "0");
  EXPECT_EQ(database_.Field(7, "OptoChannel"), "130");
  EXPECT_EQ(database_.Field(7, "OptoFirst"), "2");
  EXPECT_EQ(database_.Field(7, "OptoStations"), std::string(63, '0') + "1tail");
  EXPECT_EQ(database_.Field(9, "OptoType"), "55");
}

TEST_F(OptoDecoderTest, OptosWithoutARecordArePassedOver) {
  database_.AddStation(3, {});
  EXPECT_THAT(Decode(inside_ + "05 FF"), ElementsAre("Opto Programming Data|47|OK", "optos"));
  EXPECT_EQ(database_.Field(3, "OptoType"), "254");
  database_.Delete(3);
  EXPECT_THAT(Decode(inside_ + "05 FF"), ElementsAre("Opto Programming Data|47|OK"));
  EXPECT_THAT(reporter_.reports, IsEmpty());
}

TEST_F(OptoDecoderTest, RefusedDataWriteNothing) {
  database_.AddStation(1, {{"OptoType", 55}});
  EXPECT_THAT(Decode(inside_ + "06 FF"), ElementsAre("Opto Programming Data|47|Failed Csum"));
  EXPECT_THAT(Decode(inside_ + "05 00"), ElementsAre("Opto Programming Data|47|Missing EOM"));
  EXPECT_THAT(Decode(inside_ + "FF"), ElementsAre("Opto Programming Data|46|Size Error"));
  EXPECT_THAT(Decode(inside_ + "00 05 FF"), ElementsAre("Opto Programming Data|48|Size Error"));
  EXPECT_EQ(database_.Field(1, "OptoType"), "55");
}

// A database that cannot take a table.  Each message would be accepted.
struct RefusedTable {
  const char* field;  // one that it needs; for tables of several, the last that is written
  const char* line;
  const char* history;
  std::string message;
};

const RefusedTable kRefusedTables[] = {
    {"Hidden", "Error Storing Alpha Table", "Alpha Labels|12|",
     "F9 14 61 20 20 20 20 20 20 20 55 FF"},
    {"Inhibits", "Error Storing Inhibits Table", "Output 1 Inhibit Map|9|",
     "F5 00 00 01 00 00 00 01 FF"},
    {"Relays", "Error Storing Relays Table", "Output 1 Relay Assignments|21|",
     "F4 00 00 " + Times(8, "00 00") + "00 FF"},
    {"B1 Prog", "Error Storing Button Table", "Station 1 Button Data|13|",
     "FB 00 00 01 00 01 00 00 00 00 00 02 FF"},
    {"OptoStations", "Error Storing Opto Programming Data", "Opto Programming Data|25|",
     "E1 01 00 01 00 01 00 " + Times(8, "00 00") + "03 FF"},
};

class FailingStoreTest : public TableDecoderTest {
 protected:
  FailingStoreTest() {
    model_.ButtonCount = 1;
    model_.OptoCount = 1;
    model_.LabelCount = 1;
  }
};

TEST_F(FailingStoreTest, AClosedDatabaseIsReportedOnce) {
  ASSERT_TRUE(database_.Files().SaveAndClose().ok());
  for (const RefusedTable& table : kRefusedTables) {
    reporter_.reports.clear();
    EXPECT_THAT(Decode(table.message), ElementsAre(table.history));
    EXPECT_THAT(reporter_.reports,
                ElementsAre(Failure(table.line, "3021 - The configuration database is not open")));
  }
}

TEST_F(FailingStoreTest, ALackingFieldIsReportedOnceAndNothingIsStored) {
  for (const RefusedTable& table : kRefusedTables) {
    SCOPED_TRACE(table.line);
    test::SmallDatabase lacking(test::StationsWithout(table.field));
    lacking.AddStation(1, {{"Label", "old"}, {"B1 Type", 77}, {"OptoType", 77}});
    Decoder decoder({.model = model_,
                     .database = [&] { return lacking.Files().Database(); },
                     .reporter = reporter_,
                     .changes = changes_,
                     .observers = {events_}});
    decoder.SetHistory(&events_);
    reporter_.reports.clear();
    events_.seen.clear();
    decoder.Decode(FromHex(table.message));
    EXPECT_THAT(events_.seen, ElementsAre(table.history));
    EXPECT_THAT(reporter_.reports,
                ElementsAre(Failure(table.line, "3265 - Table \"Stations\" has no field \"" +
                                                    std::string(table.field) + "\"")));
    EXPECT_EQ(lacking.Field(1, "Label"), "old");
    EXPECT_EQ(lacking.Field(1, "B1 Type"), "77");
    EXPECT_EQ(lacking.Field(1, "OptoType"), "77");
  }
}

TEST_F(FailingStoreTest, RefusedTablesDoNotTouchAClosedDatabase) {
  ASSERT_TRUE(database_.Files().SaveAndClose().ok());
  EXPECT_THAT(Decode("F5 00 00 01 00 00 00 02 FF"),
              ElementsAre("Output 1 Inhibit Map|9|Failed Csum"));
  EXPECT_THAT(reporter_.reports, IsEmpty());
}

// Keeps what was announced.
class KeptChanges : public stations::ChangeObserver {
 public:
  using ChangeObserver::ChangeObserver;

  void Changed(std::span<const stations::Change> changes) override {
    seen.insert(seen.end(), changes.begin(), changes.end());
  }

  std::vector<stations::Change> seen;
};

TEST_F(TableDecoderTest, EveryFieldThatIsStoredIsOneOfTheTable) {
  for (int station = 1; station <= 16; ++station) database_.AddStation(station, {});
  model_.LabelCount = 16;
  KeptChanges changes(changes_);
  for (const MessageKind& kind : kMessages) {
    if (kind.use != MessageUse::Table || !kind.FromSwitcher()) continue;
    const Bytes message = test::ExampleMessage(kind.code, {.channels = 16,
                                                           .stations = 16,
                                                           .labels = 16,
                                                           .buttons = model_.ButtonCount,
                                                           .optos = model_.OptoCount,
                                                           .relays = model_.RelayCount,
                                                           .targets = 16});
    changes.seen.clear();
    decoder_.Decode(message);
    ASSERT_FALSE(changes.seen.empty()) << kind.name;
    for (const stations::Change& change : changes.seen) {
      for (const stations::FieldChange& field : change.fields) {
        EXPECT_TRUE(db::IsFieldOf(PartOf(message)->table, field.field)) << field.field;
        EXPECT_TRUE(HowCarried(field.field).has_value()) << field.field;
      }
    }
  }
}

}  // namespace
}  // namespace switcher
