// SPDX-License-Identifier: MIT

#include "tests/end_to_end/system_database.h"

#include <gtest/gtest.h>

#include <memory>

#include "db/jet/database.h"
#include "db/schema.h"
#include "db/station_fields.h"
#include "db/table.h"

namespace test {

namespace {

namespace fs = std::filesystem;

constexpr int kOptos = 64;
constexpr int kTypes[] = {0, 1, 2, 3, 254, 255};

// Flags of `length` members that are told apart by the salt.
std::string Flags(int length, int salt) {
  std::string flags(static_cast<std::size_t>(length), '0');
  for (int member = 0; member < length; ++member) {
    if ((member * 7 + salt * 5) % 11 < 3) flags[static_cast<std::size_t>(member)] = '1';
  }
  return flags;
}

int Type(int salt) { return kTypes[salt % 6]; }

int First(int salt) { return salt * 3 % 255 + 1; }

// An open database with its stations.
struct OpenTables {
  explicit OpenTables(const fs::path& file, jet::Access access = jet::Access::ReadWrite) {
    Check(jet::Database::Open(file, access, &database));
    Check(database->OpenTable(db::kStationsTable, &stations));
    Check(stations->SetIndex(db::kStationNumIndex));
  }

  static void Check(const jet::Status& status) { ASSERT_TRUE(status.ok()) << status.Description(); }

  void Seek(int stationNum) { Check(stations->Seek(stationNum)); }

  std::string Text(std::string_view field) {
    jet::Value value;
    Check(stations->Get(field, &value));
    if (value.GetKind() == jet::Value::Kind::Int) return std::to_string(value.Int());
    return value.IsNull() ? "null" : value.Text();
  }

  std::unique_ptr<jet::Database> database;
  std::unique_ptr<jet::RecordSet> stations;
};

void FillStation(OpenTables& tables, int stationNum, int channels, int pattern) {
  jet::RecordSet& stations = *tables.stations;
  const auto set = [&](const std::string& field, const jet::Value& value) {
    OpenTables::Check(stations.Set(field, value));
  };
  const int salt = stationNum + 100 * pattern;
  tables.Seek(stationNum);
  OpenTables::Check(stations.NoMatch() ? stations.AddNew() : stations.Edit());
  set("StationNum", stationNum);
  set("Hidden", 0);
  // The sorted order of the labels is not the order of the stations.
  set("Label", std::to_string(salt * 37 % 1000) + "o" + std::to_string(stationNum));
  set("InLabel", std::to_string(salt * 53 % 1000) + "i" + std::to_string(stationNum));
  set("Inhibits", Flags(channels, salt));
  set("Relays", Flags(64, salt + 1));
  set("OptoType", Type(salt));
  set("OptoChannel", First(salt + 1));
  set("OptoFirst", First(salt + 2));
  set("OptoStations", Flags(64, salt + 2));
  for (int button = 1; button <= db::kButtons; ++button) {
    set(db::ButtonField(button, "Type"), Type(salt + button));
    set(db::ButtonField(button, "First"), First(salt + button));
    set(db::ButtonField(button, "Prog"), Flags(channels, salt + 3 * button));
  }
  OpenTables::Check(stations.Update());
}

// The stations of which a table travels.
int StationsIn(db::Table table, int channels) {
  if (table == db::Table::Optos) return kOptos;
  return db::RowsOf(table) == db::Rows::None ? LabelsOf(channels) : channels;
}

}  // namespace

void CreateSystem(const fs::path& file, int channels, int pattern) {
  const model::Status created = db::CreateDatabase(file);
  ASSERT_TRUE(created.ok()) << created.Description();
  OpenTables tables(file);
  jet::Database::Batch batch(*tables.database);
  std::unique_ptr<jet::RecordSet> info;
  OpenTables::Check(tables.database->OpenTable(db::kDbInfoTable, &info));
  OpenTables::Check(info->MoveFirst());
  OpenTables::Check(info->Edit());
  OpenTables::Check(info->Set("StationCount", channels));
  OpenTables::Check(info->Set("ChannelCount", channels));
  OpenTables::Check(info->Set("LabelCount", LabelsOf(channels)));
  OpenTables::Check(info->Update());
  for (int stationNum = 1; stationNum <= channels; ++stationNum) {
    FillStation(tables, stationNum, channels, pattern);
  }
  OpenTables::Check(batch.Commit());
}

void SetField(const fs::path& file, int stationNum, std::string_view field,
              const jet::Value& value) {
  OpenTables tables(file);
  tables.Seek(stationNum);
  OpenTables::Check(tables.stations->Edit());
  OpenTables::Check(tables.stations->Set(field, value));
  OpenTables::Check(tables.stations->Update());
}

std::string ReadField(const fs::path& file, int stationNum, std::string_view field) {
  OpenTables tables(file, jet::Access::ReadOnly);
  tables.Seek(stationNum);
  return tables.Text(field);
}

std::vector<std::string> ReadTables(const fs::path& file, int channels) {
  OpenTables tables(file, jet::Access::ReadOnly);
  std::vector<std::string> lines;
  const auto add = [&](int stationNum, const std::string& field) {
    lines.push_back(std::to_string(stationNum) + " " + field + "=" + tables.Text(field));
  };
  for (int stationNum = 1; stationNum <= LabelsOf(channels); ++stationNum) {
    tables.Seek(stationNum);
    for (const auto& [table, name] : db::kTableFields) {
      if (stationNum > StationsIn(table, channels)) continue;
      if (table != db::Table::Buttons) {
        add(stationNum, std::string(name));
        continue;
      }
      for (int button = 1; button <= db::kButtons; ++button) {
        add(stationNum, db::ButtonField(button, name));
      }
    }
  }
  return lines;
}

StoredTables ReadStations(const fs::path& file) {
  OpenTables tables(file, jet::Access::ReadOnly);
  const std::vector<std::string> fields = tables.stations->FieldNames();
  StoredTables stored;
  for (OpenTables::Check(tables.stations->MoveFirst()); tables.stations->HasRecord();
       OpenTables::Check(tables.stations->MoveNext())) {
    const std::string stationNum = tables.Text("StationNum");
    for (const std::string& field : fields) stored[stationNum + " " + field] = tables.Text(field);
  }
  return stored;
}

}  // namespace test
