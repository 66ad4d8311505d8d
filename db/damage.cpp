// SPDX-License-Identifier: MIT

#include "db/damage.h"

#include <algorithm>
#include <array>
#include <map>
#include <memory>
#include <set>
#include <string_view>

#include "db/jet/audit.h"
#include "db/jet/store.h"
#include "db/jet/table.h"
#include "db/schema.h"

namespace db {
namespace {

// Reads every record of a table that can be read, in the order of its pages.
class Records {
 public:
  explicit Records(jet::Table& table) : table_(table) {}

  // False behind the last one.  Behind what cannot be read the walk goes on.
  bool Next() {
    while (true) {
      const jet::Status status = table_.NextRow(at_, &at_);
      if (status.ok()) {
        if (!at_) return false;
        if (table_.ReadRow(at_, &row_).ok()) return true;
        continue;
      }
      if (status.Page() == jet::kNoPage || status.Page() <= at_.page) return false;
      at_ = {status.Page(), 0xFF};  // the rest of the page is lost
    }
  }

  // The whole number in a field; 0 when it cannot be read.
  int Number(std::string_view field) {
    const int column = table_.FindColumn(field);
    if (column < 0 || !table_.ReadValue(row_, column, &value_).ok()) return 0;
    return value_.Int();
  }

  // The names of the fields that cannot be read.
  std::vector<std::string> UnreadableFields() {
    std::vector<std::string> fields;
    for (std::size_t i = 0; i < table_.Def().columns.size(); ++i) {
      if (!table_.ReadValue(row_, static_cast<int>(i), &value_).ok()) {
        fields.push_back(table_.Def().columns[i].name);
      }
    }
    return fields;
  }

 private:
  jet::Table& table_;
  jet::RowPointer at_;
  jet::RowView row_;
  jet::Value value_;
};

std::vector<std::string> FieldNames(const jet::TableSpec& table) {
  std::vector<std::string> names;
  for (const jet::FieldSpec& field : table.fields) names.push_back(field.name);
  return names;
}

// LabelCount, or as many as a new database has when it cannot be read.
int ReadLabelCount(jet::Database& database, Damage* damage) {
  std::shared_ptr<jet::Table> table;
  if (database.GetStore().OpenTable(kDbInfoTable, &table).ok()) {
    Records records(*table);
    if (records.Next() && records.UnreadableFields().empty()) return records.Number("LabelCount");
  }
  damage->isDbInfoReadable = false;
  return kDefaultLabels;
}

void ReadStations(jet::Database& database, int labelCount, Damage* damage) {
  std::set<int> found;
  std::map<int, std::vector<std::string>> unreadable;
  std::shared_ptr<jet::Table> table;
  if (database.GetStore().OpenTable(kStationsTable, &table).ok()) {
    for (Records records(*table); records.Next();) {
      const int station = records.Number("StationNum");
      if (station < 1) continue;
      if (!found.insert(station).second) {
        unreadable[station] = FieldNames(StationsSpec());
      } else if (std::vector<std::string> fields = records.UnreadableFields(); !fields.empty()) {
        unreadable[station] = std::move(fields);
      }
    }
  }
  for (auto& [station, fields] : unreadable) {
    damage->unreadable.push_back({station, std::move(fields)});
  }
  for (int station = 1; station <= labelCount && !damage->IsSound(); ++station) {
    if (!found.contains(station)) damage->missing.push_back(station);
  }
}

}  // namespace

std::vector<int> Damage::Lacking(Table table) const {
  std::vector<int> stations = missing;
  for (const UnreadableStation& station : unreadable) {
    const bool isNeeded =
        std::any_of(station.fields.begin(), station.fields.end(),
                    [table](const std::string& field) { return IsFieldOf(table, field); });
    if (isNeeded) stations.push_back(station.station);
  }
  std::sort(stations.begin(), stations.end());
  return stations;
}

model::Status FindDamage(jet::Database& database, Damage* damage) {
  *damage = {};
  jet::Findings findings;
  if (jet::Status status = jet::Audit(database.GetStore(), &findings); !status.ok()) return status;
  for (const jet::Finding& finding : findings) {
    if (finding.IsProblem()) damage->problems.push_back(finding.Description());
  }
  ReadStations(database, ReadLabelCount(database, damage), damage);
  return {};
}

}  // namespace db
