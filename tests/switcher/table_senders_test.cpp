// SPDX-License-Identifier: MIT

#include "switcher/table_senders.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <optional>
#include <string>

#include "db/schema.h"
#include "tests/support/damaged_file.h"
#include "tests/support/download_system.h"

namespace switcher {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

class SendInhibitsTest : public test::DownloadSystem {
 protected:
  void SetInhibits(int stationNum, const jet::Value& inhibits) {
    jet::RecordSet& stations = *files_.Stations();
    ASSERT_TRUE(stations.Seek(stationNum).ok());
    ASSERT_TRUE(stations.Edit().ok());
    ASSERT_TRUE(stations.Set("Inhibits", inhibits).ok());
    ASSERT_TRUE(stations.Update().ok());
  }

  std::optional<int> Send(Table table, int station = model::kAll) {
    return senders_.Make({.table = table, .station = station}).Run();
  }

  int CurrentStation() {
    jet::Value number;
    EXPECT_TRUE(files_.Stations()->Get("StationNum", &number).ok());
    return number.Int();
  }
};

TEST_F(SendInhibitsTest, OneStationIsOneMessage) {
  SetInhibits(2, "1000000100000001");
  EXPECT_TRUE(Send(Table::Inhibits, 2));
  EXPECT_EQ(port_.TakeWritten(), "F5 01 00 01 01 00 01 02 FF");
  EXPECT_TRUE(model_.SendBusy);
  EXPECT_EQ(port_.sendThreshold, 1);
  EXPECT_THAT(reporter_.reports, IsEmpty());
}

TEST_F(SendInhibitsTest, AllStationsUpToTheChannelCount) {
  model_.ChannelCount = 8;
  Send(Table::Inhibits);
  EXPECT_EQ(port_.TakeWritten(),
            "F5 00 00 01 00 01 FF "
            "F5 01 00 02 00 03 FF "
            "F5 02 00 04 00 06 FF "
            "F5 03 00 08 00 0B FF "
            "F5 04 00 10 00 14 FF "
            "F5 05 00 20 00 25 FF "
            "F5 06 00 40 00 46 FF "
            "F5 07 00 00 01 07 FF");
}

TEST_F(SendInhibitsTest, AStationWithoutARecordIsSkipped) {
  model_.ChannelCount = 8;
  ASSERT_TRUE(files_.Stations()->Seek(3).ok());
  ASSERT_TRUE(files_.Stations()->Delete().ok());
  Send(Table::Inhibits, 3);
  EXPECT_EQ(port_.TakeWritten(), "");
  Send(Table::Inhibits);
  EXPECT_EQ(port_.TakeWritten().substr(0, 3 * 14 + 2),
            "F5 00 00 01 00 01 FF F5 01 00 02 00 03 FF F5");
  EXPECT_THAT(reporter_.reports, IsEmpty());
}

TEST_F(SendInhibitsTest, NullAndShortTextsInhibitNothing) {
  SetInhibits(1, jet::Value());
  Send(Table::Inhibits, 1);
  EXPECT_EQ(port_.TakeWritten(), "F5 00 00 00 00 00 00 00 FF");
  SetInhibits(1, "01");
  Send(Table::Inhibits, 1);
  EXPECT_EQ(port_.TakeWritten(), "F5 00 00 02 00 00 00 02 FF");
}

TEST_F(SendInhibitsTest, TheRecordSetStandsWhereItStood) {
  ASSERT_TRUE(files_.Stations()->Seek(42).ok());
  Send(Table::Inhibits);
  EXPECT_EQ(CurrentStation(), 42);
}

TEST_F(SendInhibitsTest, AFailingLineIsReportedAndEndsTheSending) {
  port_.writesUntilFailure = 12;
  ASSERT_TRUE(files_.Stations()->Seek(42).ok());
  EXPECT_FALSE(Send(Table::Inhibits));
  EXPECT_EQ(port_.TakeWritten(), "F5 00 00 01 00 00 00 01 FF F5 01 00");
  EXPECT_THAT(reporter_.reports,
              ElementsAre("critical|Serial Communications Error|Error Sending Inhibits Table"
                          "\r\rError # 8020 - The line takes no bytes"));
  EXPECT_TRUE(model_.SendBusy);
  EXPECT_EQ(port_.sendThreshold, 1);
  EXPECT_EQ(CurrentStation(), 42);
}

TEST_F(SendInhibitsTest, WithoutADatabaseNothingIsSent) {
  ASSERT_TRUE(files_.SaveAndClose().ok());
  EXPECT_FALSE(Send(Table::Inhibits));
  EXPECT_EQ(port_.TakeWritten(), "");
  // The line is free: the poll goes on when the port says so.
  EXPECT_EQ(port_.sendThreshold, 1);
  EXPECT_THAT(reporter_.reports,
              ElementsAre("critical|Serial Communications Error|Error Sending Inhibits Table"
                          "\r\rError # 3021 - The configuration database is not open"));
}

TEST_F(SendInhibitsTest, OnAClosedPortNoSendEventIsAskedFor) {
  port_.Close();
  EXPECT_FALSE(Send(Table::Inhibits));
  EXPECT_TRUE(model_.SendBusy);
  EXPECT_EQ(port_.sendThreshold, 0);
}

// The records of stations 11 to 15 stood on a page that is zeros now.
class DamagedTablesTest : public SendInhibitsTest {
 protected:
  void SetUp() override {
    ASSERT_TRUE(db::CreateDatabase(folder_ / "Tesk.mdb").ok());
    test::ZeroPageOf(folder_ / "Tesk.mdb", "Sta. 012");
    model_.LabelCount = 128;
    model_.StationCount = 64;
    model_.OptoCount = 64;
    SendInhibitsTest::SetUp();
    ASSERT_THAT(files_.DamageFound().missing, ElementsAre(11, 12, 13, 14, 15));
  }
};

TEST_F(DamagedTablesTest, NoTableThatLacksStationsIsSent) {
  EXPECT_FALSE(Send(Table::Inhibits));
  EXPECT_FALSE(Send(Table::Relays));
  EXPECT_FALSE(Send(Table::Buttons));
  EXPECT_FALSE(Send(Table::Buttons, 12));
  EXPECT_FALSE(Send(Table::Optos));
  EXPECT_FALSE(Send(Table::OutputLabels));
  EXPECT_FALSE(Send(Table::InputLabels));
  EXPECT_EQ(port_.TakeWritten(), "");
  const std::string title = "critical|Serial Communications Error|";
  const std::string reason =
      "\r\rError # 3049 - The database is damaged, stations cannot be read: ";
  EXPECT_THAT(reporter_.reports,
              ElementsAre(title + "Error Sending Inhibits Table" + reason + "11 to 15",
                          title + "Error Sending Inhibits Table" + reason + "11 to 15",
                          title + "Error Sending Button Table" + reason + "11 to 15",
                          title + "Error Sending Button Table" + reason + "12",
                          title + "Error Sending Opto Programming Data" + reason + "11 to 15",
                          title + "Error Sending Alpha Table" + reason + "11 to 15",
                          title + "Error Sending Alpha Table" + reason + "11 to 15"));
}

TEST_F(DamagedTablesTest, WhatIsWholeIsSent) {
  EXPECT_TRUE(Send(Table::Inhibits, 2));
  EXPECT_EQ(port_.TakeWritten(), "F5 01 00 02 00 00 00 03 FF");
  EXPECT_THAT(reporter_.reports, IsEmpty());
}

}  // namespace
}  // namespace switcher
