// SPDX-License-Identifier: MIT

#include "db/schema.h"

#include <gtest/gtest.h>

#include <array>
#include <cstdio>
#include <memory>

#include "tests/support/temporary_folder.h"

namespace db {
namespace {

using jet::FieldType;

class SchemaTest : public testing::Test {
 protected:
  void SetUp() override {
    ASSERT_TRUE(jet::Database::CreateInMemory(&database_).ok());
    const model::Status status = CreateTables(*database_);
    ASSERT_TRUE(status.ok()) << status.Description();
    ASSERT_TRUE(database_->OpenTable("Stations", &stations_).ok());
    ASSERT_TRUE(stations_->SetIndex("StationNum").ok());
    ASSERT_TRUE(database_->OpenTable("DbInfo", &dbInfo_).ok());
  }

  jet::Value Read(jet::RecordSet& records, std::string_view field) {
    jet::Value value;
    const jet::Status status = records.Get(field, &value);
    EXPECT_TRUE(status.ok()) << field << ": " << status.Description();
    return value;
  }

  // A field of the station with that number.
  jet::Value Station(int stationNum, std::string_view field) {
    EXPECT_TRUE(stations_->Seek(stationNum).ok());
    EXPECT_FALSE(stations_->NoMatch()) << stationNum;
    return Read(*stations_, field);
  }

  static std::string Flags(std::size_t set) {
    std::string flags(64, '0');
    flags[set - 1] = '1';
    return flags;
  }

  std::unique_ptr<jet::Database> database_;
  std::unique_ptr<jet::RecordSet> stations_;
  std::unique_ptr<jet::RecordSet> dbInfo_;
};

TEST_F(SchemaTest, HasTheTwoTables) {
  EXPECT_EQ(database_->TableNames(), (std::vector<std::string>{"DbInfo", "Stations"}));
}

TEST_F(SchemaTest, DbInfoHasItsTenFieldsInOrder) {
  EXPECT_EQ(dbInfo_->FieldNames(),
            (std::vector<std::string>{"DbaseVer", "StationCount", "ChannelCount", "LabelCount",
                                      "ButtonCount", "ChkBoxCount", "InCount", "OutCount",
                                      "RelayCount", "OptoCount"}));
  EXPECT_EQ(dbInfo_->Field(0).type, FieldType::Text);
  EXPECT_EQ(dbInfo_->Field(0).size, 64);
  EXPECT_TRUE(dbInfo_->Field(0).allowZeroLength);
  for (int i = 1; i < 10; ++i) EXPECT_EQ(dbInfo_->Field(i).type, FieldType::Integer) << i;
}

TEST_F(SchemaTest, DbInfoHasOneRecordWithTheDefaults) {
  EXPECT_EQ(dbInfo_->RecordCount(), 1);
  EXPECT_EQ(Read(*dbInfo_, "DbaseVer").Text(), "Version 2.12 - 04/17/2002");
  EXPECT_EQ(Read(*dbInfo_, "StationCount").Int(), 64);
  EXPECT_EQ(Read(*dbInfo_, "ChannelCount").Int(), 64);
  EXPECT_EQ(Read(*dbInfo_, "LabelCount").Int(), 128);
  EXPECT_EQ(Read(*dbInfo_, "ButtonCount").Int(), 32);
  EXPECT_EQ(Read(*dbInfo_, "ChkBoxCount").Int(), 64);
  EXPECT_EQ(Read(*dbInfo_, "InCount").Int(), 64);
  EXPECT_EQ(Read(*dbInfo_, "OutCount").Int(), 64);
  EXPECT_EQ(Read(*dbInfo_, "RelayCount").Int(), 64);
  EXPECT_EQ(Read(*dbInfo_, "OptoCount").Int(), 64);
}

TEST_F(SchemaTest, StationsHasItsFieldsTypesAndSizes) {
  struct Expected {
    const char* name;
    FieldType type;
    int size;
  };
  constexpr Expected kFixed[] = {
      {"StationNum", FieldType::Integer, 2},  {"Hidden", FieldType::Integer, 2},
      {"Label", FieldType::Text, 8},          {"Notes", FieldType::Text, 128},
      {"InLabel", FieldType::Text, 8},        {"SysOutput", FieldType::Text, 20},
      {"SysInput", FieldType::Text, 20},      {"Inhibits", FieldType::Memo, 0},
      {"Relays", FieldType::Memo, 0},         {"OptoType", FieldType::Integer, 2},
      {"OptoChannel", FieldType::Integer, 2}, {"OptoFirst", FieldType::Integer, 2},
      {"OptoStations", FieldType::Memo, 0},
  };
  ASSERT_EQ(stations_->FieldCount(), 13 + 3 * 32);
  for (int i = 0; i < 13; ++i) {
    SCOPED_TRACE(kFixed[i].name);
    const jet::FieldInfo& field = stations_->Field(i);
    EXPECT_EQ(field.name, kFixed[i].name);
    EXPECT_EQ(field.type, kFixed[i].type);
    EXPECT_EQ(field.size, kFixed[i].size);
  }
  EXPECT_EQ(stations_->Field(13).name, "B1 Type");
  EXPECT_EQ(stations_->Field(14).name, "B1 First");
  EXPECT_EQ(stations_->Field(15).name, "B1 Prog");
  EXPECT_EQ(stations_->Field(16).name, "B2 Type");
  EXPECT_EQ(stations_->Field(108).name, "B32 Prog");
  EXPECT_EQ(stations_->Field(106).type, FieldType::Integer);
  EXPECT_EQ(stations_->Field(107).type, FieldType::Integer);
  EXPECT_EQ(stations_->Field(108).type, FieldType::Memo);
  for (int i = 0; i < stations_->FieldCount(); ++i) {
    const jet::FieldInfo& field = stations_->Field(i);
    EXPECT_EQ(field.allowZeroLength, field.type != FieldType::Integer) << field.name;
  }
}

TEST_F(SchemaTest, StationsHasBothIndexes) {
  ASSERT_TRUE(stations_->SetIndex("Label").ok());
  ASSERT_TRUE(stations_->MoveFirst().ok());
  EXPECT_EQ(Read(*stations_, "Label").Text(), "Ext. 001");
  ASSERT_TRUE(stations_->MoveLast().ok());
  EXPECT_EQ(Read(*stations_, "Label").Text(), "Sta. 064");
  ASSERT_TRUE(stations_->AddNew().ok());
  ASSERT_TRUE(stations_->Set("StationNum", 128).ok());
  EXPECT_EQ(stations_->Update().Error(), jet::ErrorNumber::DuplicateKey);
}

TEST_F(SchemaTest, FirstStation) {
  EXPECT_EQ(stations_->RecordCount(), 128);
  EXPECT_EQ(Station(1, "Hidden").Int(9), 0);
  EXPECT_EQ(Station(1, "Label").Text(), "Sta. 001");
  EXPECT_EQ(Station(1, "InLabel").Text(), "Inpt 001");
  EXPECT_EQ(Station(1, "Notes").Text(), "Notes for Station 001");
  EXPECT_EQ(Station(1, "SysInput").Text(), "HRJ(1) - Ch 1");
  EXPECT_EQ(Station(1, "SysOutput").Text(), "QDV(1) - Ch A");
  EXPECT_EQ(Station(1, "Inhibits").Text(), Flags(1));
  EXPECT_EQ(Station(1, "Relays").Text(), std::string(64, '0'));
  EXPECT_EQ(Station(1, "OptoType").Int(), 254);
  EXPECT_EQ(Station(1, "OptoChannel").Int(), 1);
  EXPECT_EQ(Station(1, "OptoFirst").Int(), 1);
  EXPECT_EQ(Station(1, "OptoStations").Text(), Flags(1));
}

TEST_F(SchemaTest, UnitsOfTheSystemsInputsAndOutputs) {
  EXPECT_EQ(Station(2, "SysOutput").Text(), "QDV(1) - Ch B");
  EXPECT_EQ(Station(3, "SysOutput").Text(), "QDV(2) - Ch A");
  EXPECT_EQ(Station(8, "SysInput").Text(), "HRJ(1) - Ch 8");
  EXPECT_EQ(Station(9, "SysInput").Text(), "HRJ(2) - Ch 1");
  EXPECT_EQ(Station(64, "SysOutput").Text(), "QDV(32) - Ch B");
  EXPECT_EQ(Station(64, "SysInput").Text(), "HRJ(8) - Ch 8");
}

TEST_F(SchemaTest, FurtherChannelsAreHiddenAndNumberedFromOne) {
  EXPECT_EQ(Station(65, "Hidden").Int(), 1);
  EXPECT_EQ(Station(65, "Label").Text(), "Ext. 001");
  EXPECT_EQ(Station(65, "InLabel").Text(), "Inpt 001");
  EXPECT_EQ(Station(65, "Notes").Text(), "Notes for Channel 001");
  EXPECT_EQ(Station(65, "SysInput").Text(), "Virtual Input 001");
  EXPECT_EQ(Station(65, "SysOutput").Text(), "Virtual Output 001");
  EXPECT_EQ(Station(65, "Inhibits").Text(), Flags(1));
  EXPECT_EQ(Station(128, "Label").Text(), "Ext. 064");
  EXPECT_EQ(Station(128, "OptoChannel").Int(), 64);
  EXPECT_EQ(Station(128, "OptoFirst").Int(), 64);
  EXPECT_EQ(Station(128, "OptoStations").Text(), Flags(64));
}

TEST_F(SchemaTest, EveryButtonTalksToTheStationOfItsNumber) {
  for (const int stationNum : {1, 64, 65, 128}) {
    for (int button = 1; button <= 32; ++button) {
      const std::string name = "B" + std::to_string(button);
      EXPECT_EQ(Station(stationNum, name + " Type").Int(9), 0);
      EXPECT_EQ(Station(stationNum, name + " First").Int(), button);
      EXPECT_EQ(Station(stationNum, name + " Prog").Text(),
                Flags(static_cast<std::size_t>(button)));
    }
  }
}

// What a program prints.
std::string Output(const std::string& command) {
  std::string output;
  const std::unique_ptr<std::FILE, int (*)(std::FILE*)> pipe(popen(command.c_str(), "r"), pclose);
  std::array<char, 4096> block{};
  while (const std::size_t count = std::fread(block.data(), 1, block.size(), pipe.get())) {
    output.append(block.data(), count);
  }
  return output;
}

// An independent reader finds in a new file what it finds in a known good one.
TEST(CreateDatabase, OtherSoftwareReadsTheDefaultContents) {
  const test::TemporaryFolder folder;
  const auto file = folder / "Tesk.mdb";
  test::WriteFile(file, "something that stood here before");
  const model::Status status = CreateDatabase(file);
  ASSERT_TRUE(status.ok()) << status.Description();
  const std::string known = std::string(TESK_TEST_DATA) + "/mdb/tesk_jet4.mdb";
  for (const char* const table : {"DbInfo", "Stations"}) {
    const std::string expected = Output("mdb-export " + known + " " + table);
    ASSERT_GT(expected.size(), 100U) << "mdb-export (package mdbtools) is needed";
    EXPECT_EQ(Output("mdb-export " + file.string() + " " + table), expected);
  }
  const std::string schema = Output("mdb-schema " + known);
  ASSERT_GT(schema.size(), 100U);
  EXPECT_EQ(Output("mdb-schema " + file.string()), schema);
}

}  // namespace
}  // namespace db
