// SPDX-License-Identifier: MIT

#include "tests/support/small_database.h"

#include <algorithm>
#include <array>
#include <memory>
#include <stdexcept>

namespace test {

namespace {

// A failure here is one of the test's own: it ends the test.
void Must(const model::Status& status) {
  if (!status.ok()) throw std::runtime_error(status.Description());
}

// A database without records is not opened: each table has one until it is.
void AddOne(jet::Database& database, const char* table, const char* field) {
  std::unique_ptr<jet::RecordSet> records;
  Must(database.OpenTable(table, &records));
  Must(records->AddNew());
  Must(records->Set(field, 1));
  Must(records->Update());
}

void DeleteOne(jet::RecordSet& records) {
  Must(records.Delete());
  Must(records.MoveFirst());
}

std::unique_ptr<jet::RecordSet> OpenOwn(db::DatabaseFiles& files) {
  std::unique_ptr<jet::RecordSet> stations;
  Must(files.Database()->OpenTable(db::kStationsTable, &stations));
  Must(stations->SetIndex(db::kStationNumIndex));
  return stations;
}

}  // namespace

SmallDatabase::SmallDatabase(const jet::TableSpec& stations) {
  {
    std::unique_ptr<jet::Database> database;
    Must(jet::Database::Create(folder_ / "Tesk.mdb", &database));
    Must(database->CreateTable(db::DbInfoSpec()));
    const std::array<jet::IndexSpec, 1> indexes{
        jet::IndexSpec{.name = db::kStationNumIndex, .fields = {"StationNum"}, .primary = true}};
    Must(database->CreateTable(stations, indexes));
    AddOne(*database, db::kDbInfoTable, "StationCount");
    AddOne(*database, db::kStationsTable, "StationNum");
  }
  Must(files_.Open());
  DeleteOne(*files_.DbInfo());
  DeleteOne(*files_.Stations());
}

void SmallDatabase::AddStation(int stationNum, const Fields& fields) {
  const std::unique_ptr<jet::RecordSet> stations = OpenOwn(files_);
  Must(stations->AddNew());
  Must(stations->Set("StationNum", stationNum));
  for (const auto& [field, value] : fields) Must(stations->Set(field, value));
  Must(stations->Update());
}

void SmallDatabase::Set(int stationNum, std::string_view field, const jet::Value& value) {
  const std::unique_ptr<jet::RecordSet> stations = OpenOwn(files_);
  Must(stations->Seek(stationNum));
  Must(stations->Edit());
  Must(stations->Set(field, value));
  Must(stations->Update());
}

void SmallDatabase::Delete(int stationNum) {
  const std::unique_ptr<jet::RecordSet> stations = OpenOwn(files_);
  Must(stations->Seek(stationNum));
  Must(stations->Delete());
}

std::string SmallDatabase::Field(int stationNum, std::string_view field) {
  const std::unique_ptr<jet::RecordSet> stations = OpenOwn(files_);
  Must(stations->Seek(stationNum));
  if (stations->NoMatch()) return "(none)";
  jet::Value value;
  Must(stations->Get(field, &value));
  if (value.IsNull()) return "null";
  return value.GetKind() == jet::Value::Kind::Text ? value.Text() : std::to_string(value.Int());
}

int SmallDatabase::CurrentStation() {
  jet::Value number;
  Must(files_.Stations()->Get("StationNum", &number));
  return number.Int();
}

void SmallDatabase::GoTo(int stationNum) { Must(files_.Stations()->Seek(stationNum)); }

jet::TableSpec StationsWithout(std::string_view field) {
  jet::TableSpec spec = db::StationsSpec();
  const auto removed = std::erase_if(
      spec.fields, [field](const jet::FieldSpec& candidate) { return candidate.name == field; });
  if (removed != 1) throw std::runtime_error("no such field");
  return spec;
}

jet::TableSpec StationsWithTextSize(std::string_view field, int size) {
  jet::TableSpec spec = db::StationsSpec();
  const auto found =
      std::find_if(spec.fields.begin(), spec.fields.end(),
                   [field](const jet::FieldSpec& candidate) { return candidate.name == field; });
  if (found == spec.fields.end()) throw std::runtime_error("no such field");
  found->size = size;
  return spec;
}

}  // namespace test
