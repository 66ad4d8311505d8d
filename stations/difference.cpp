// SPDX-License-Identifier: MIT

#include "stations/difference.h"

#include <memory>
#include <string>
#include <utility>

#include "db/schema.h"
#include "db/station_fields.h"
#include "db/station_list.h"
#include "stations/open_stations.h"

namespace stations {
namespace {

model::Status OtherSystem(const std::string& how) {
  return jet::Status(jet::ErrorNumber::Unsupported, "It is of another system: " + how);
}

std::string InWords(const jet::Value& count) {
  return count.IsNull() ? "nothing" : std::to_string(count.Int());
}

model::Status CompareCounts(jet::Database& here, jet::Database& there) {
  std::unique_ptr<jet::RecordSet> ours;
  std::unique_ptr<jet::RecordSet> theirs;
  if (auto status = here.OpenTable(db::kDbInfoTable, &ours); !status.ok()) return status;
  if (auto status = there.OpenTable(db::kDbInfoTable, &theirs); !status.ok()) return status;
  for (const jet::FieldSpec& count : db::DbInfoSpec().fields) {
    if (count.type != jet::FieldType::Integer) continue;
    if (ours->FieldIndex(count.name) < 0 || theirs->FieldIndex(count.name) < 0) continue;
    jet::Value our;
    jet::Value their;
    if (auto status = ours->Get(count.name, &our); !status.ok()) return status;
    if (auto status = theirs->Get(count.name, &their); !status.ok()) return status;
    if (our == their) continue;
    return OtherSystem(count.name + " is " + InWords(their) + " there and " + InWords(our) +
                       " here");
  }
  return {};
}

// Walks the stations of two databases side by side.
class Comparison {
 public:
  Comparison(jet::RecordSet& here, jet::RecordSet& there) : here_(here), there_(there) {
    for (int field = 0; field < here_.FieldCount(); ++field) {
      const std::string& name = here_.Field(field).name;
      if (const int same = there_.FieldIndex(name); same >= 0) {
        fields_.push_back({.name = name, .here = field, .there = same});
      }
    }
  }

  model::Status Run(std::vector<Change>* changes) {
    while (here_.HasRecord() || there_.HasRecord()) {
      int ours = kBehindAll;
      int theirs = kBehindAll;
      if (auto status = ReadNumber(here_, &ours); !status.ok()) return status;
      if (auto status = ReadNumber(there_, &theirs); !status.ok()) return status;
      if (ours < theirs) lackingThere_.push_back(ours);
      if (theirs < ours) lackingHere_.push_back(theirs);
      if (ours == theirs) {
        if (auto status = CompareStation(ours, changes); !status.ok()) return status;
      }
      if (ours <= theirs) {
        if (auto status = here_.MoveNext(); !status.ok()) return status;
      }
      if (theirs <= ours) {
        if (auto status = there_.MoveNext(); !status.ok()) return status;
      }
    }
    if (!lackingThere_.empty()) {
      return OtherSystem("these stations are not there: " + db::StationList(lackingThere_));
    }
    if (!lackingHere_.empty()) {
      return OtherSystem("these stations are not here: " + db::StationList(lackingHere_));
    }
    return {};
  }

 private:
  struct Field {
    std::string name;
    int here;  // indexes in the two tables
    int there;
  };

  static constexpr int kBehindAll = 1 << 30;

  // Leaves *number as it is behind the last record.
  static model::Status ReadNumber(const jet::RecordSet& stations, int* number) {
    if (!stations.HasRecord()) return {};
    jet::Value value;
    jet::Status status = stations.Get(db::kStationNumField, &value);
    *number = value.Int();
    return status;
  }

  model::Status CompareStation(int station, std::vector<Change>* changes) {
    Change change{.origin = Origin::Backup, .station = station, .fields = {}};
    for (const Field& field : fields_) {
      if (jet::Status status = there_.Get(field.there, &after_); !status.ok()) return status;
      const bool isRead = here_.Get(field.here, &before_).ok();
      if (isRead && before_ == after_) continue;
      if (!isRead) before_.SetNull();
      change.fields.push_back({.field = field.name, .before = before_, .after = after_});
    }
    if (!change.fields.empty()) changes->push_back(std::move(change));
    return {};
  }

  jet::RecordSet& here_;
  jet::RecordSet& there_;
  std::vector<Field> fields_;
  std::vector<int> lackingHere_;
  std::vector<int> lackingThere_;
  jet::Value before_;  // kept from field to field for their room
  jet::Value after_;
};

}  // namespace

model::Status Difference(jet::Database& here, jet::Database& there, std::vector<Change>* changes) {
  changes->clear();
  if (model::Status status = CompareCounts(here, there); !status.ok()) return status;
  std::unique_ptr<jet::RecordSet> ours;
  std::unique_ptr<jet::RecordSet> theirs;
  if (model::Status status = OpenStations(here, &ours); !status.ok()) return status;
  if (model::Status status = OpenStations(there, &theirs); !status.ok()) return status;
  std::vector<Change> found;
  model::Status status = Comparison(*ours, *theirs).Run(&found);
  if (status.ok()) *changes = std::move(found);
  return status;
}

}  // namespace stations
