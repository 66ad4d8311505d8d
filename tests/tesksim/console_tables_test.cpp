// SPDX-License-Identifier: MIT
//
// The console's own senders and the simulator: what has been sent is what the database holds.

#include <gtest/gtest.h>

#include <algorithm>
#include <memory>
#include <optional>
#include <string>

#include "db/database_files.h"
#include "db/schema.h"
#include "db/station_fields.h"
#include "switcher/table_senders.h"
#include "tests/support/fake_serial_port.h"
#include "tests/support/recording_reporter.h"
#include "tests/support/temporary_folder.h"
#include "tests/tesksim/simulated_line.h"
#include "tools/tesksim/database_tables.h"
#include "tools/tesksim/kept_state.h"

namespace tesksim {
namespace {

// A text of `count` flags that differs from station to station and from field to field.
std::string Flags(int count, int station, int salt) {
  std::string flags;
  for (int member = 1; member <= count; ++member) {
    flags += (member * (salt + 2) + station) % 5 < 2 ? '1' : '0';
  }
  return flags;
}

class ConsoleTablesTest : public testing::TestWithParam<SystemSizes> {
 protected:
  void SetUp() override {
    ASSERT_TRUE(db::CreateDatabase(path_).ok());
    std::unique_ptr<jet::Database> database;
    ASSERT_TRUE(jet::Database::Open(path_, jet::Access::ReadWrite, &database).ok());
    jet::Database::Batch batch(*database);
    ASSERT_NO_FATAL_FAILURE(SetCounts(*database));
    std::unique_ptr<jet::RecordSet> stations;
    ASSERT_TRUE(database->OpenTable("Stations", &stations).ok());
    ASSERT_TRUE(stations->SetIndex("StationNum").ok());
    for (int station = 1; station <= GetParam().labels; ++station) {
      ASSERT_NO_FATAL_FAILURE(SetStation(*stations, station));
    }
    ASSERT_TRUE(batch.Commit().ok());
  }

  static void SetCounts(jet::Database& database) {
    std::unique_ptr<jet::RecordSet> info;
    ASSERT_TRUE(database.OpenTable("DbInfo", &info).ok());
    ASSERT_TRUE(info->Edit().ok());
    ASSERT_TRUE(info->Set("ChannelCount", GetParam().channels).ok());
    ASSERT_TRUE(info->Set("StationCount", GetParam().stations).ok());
    ASSERT_TRUE(info->Set("LabelCount", GetParam().labels).ok());
    ASSERT_TRUE(info->Update().ok());
  }

  // Labels that sort in another order than the stations, some hidden, some of odd characters.
  static void SetStation(jet::RecordSet& stations, int station) {
    ASSERT_TRUE(stations.Seek(station).ok());
    ASSERT_TRUE((stations.NoMatch() ? stations.AddNew() : stations.Edit()).ok());
    const auto set = [&](const std::string& field, const jet::Value& value) {
      ASSERT_TRUE(stations.Set(field, value).ok()) << field;
    };
    set("StationNum", station);
    set("Hidden", station % 3 == 0 ? 1 : 0);
    set("Label", "L" + std::to_string(station * 37 % 101) + (station % 7 == 0 ? "ÿé€" : ""));
    set("InLabel", station % 11 == 0 ? "" : "I" + std::to_string(station * 53 % 97));
    set("Inhibits", Flags(GetParam().channels, station, 1));
    set("Relays", Flags(64, station, 2));
    set("OptoType", station % 256);
    set("OptoChannel", 255 - station % 256);
    set("OptoFirst", station * 3 % 256);
    set("OptoStations", Flags(64, station, 3));
    for (int button = 1; button <= 32; ++button) {
      set(db::ButtonField(button, "Type"), button % 6 == 5 ? 255 : button % 6);
      set(db::ButtonField(button, "First"), (station + button) % 256);
      set(db::ButtonField(button, "Prog"),
          Flags(std::max(64, GetParam().stations), station, button));
    }
    ASSERT_TRUE(stations.Update().ok());
  }

  test::TemporaryFolder folder_;
  std::filesystem::path path_ = folder_ / "Tesk.mdb";
};

TEST_P(ConsoleTablesTest, WhatTheConsoleSendsIsWhatItsDatabaseHolds) {
  std::optional<SwitcherState> expected;
  const model::Status status = ReadDatabase(path_, &expected);
  ASSERT_TRUE(status.ok()) << status.Description();

  model::SystemModel model;
  model.ApplyFixedValues();
  model.ChannelCount = static_cast<std::int16_t>(GetParam().channels);
  model.StationCount = static_cast<std::int16_t>(GetParam().stations);
  model.LabelCount = static_cast<std::int16_t>(GetParam().labels);
  db::DatabaseFiles files(path_, folder_ / "WorkingDb.md$");
  ASSERT_TRUE(files.Open().ok());
  test::FakeSerialPort port;
  ASSERT_TRUE(port.Open(1).ok());
  test::RecordingReporter reporter;
  switcher::TableSenders senders(
      {.model = model, .files = files, .port = port, .reporter = reporter});
  for (const db::TableKind& kind : db::kTables) {
    const switcher::Table table = kind.table;
    EXPECT_TRUE(senders.Make({.table = table}).Run());
  }

  SimulatedLine line(GetParam());
  line.Send(port.TakeWritten());
  EXPECT_EQ(line.simulator.Counts().refused, 0u);
  EXPECT_EQ(line.simulator.Counts().malformed, 0u);
  EXPECT_EQ(line.simulator.Counts().noiseBytes, 0u);
  const int tables = 5 + 2 * GetParam().channels + GetParam().stations;
  EXPECT_EQ(line.simulator.Counts().tables, static_cast<std::uint64_t>(tables));
  EXPECT_TRUE(WriteState(line.simulator.State()) == WriteState(*expected));
}

INSTANTIATE_TEST_SUITE_P(Sizes, ConsoleTablesTest,
                         testing::Values(SystemSizes{16, 16, 128}, SystemSizes{64, 64, 128},
                                         SystemSizes{128, 128, 128}, SystemSizes{256, 256, 256}),
                         [](const auto& one) { return std::to_string(one.param.channels); });

}  // namespace
}  // namespace tesksim
