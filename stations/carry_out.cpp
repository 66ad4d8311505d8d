// SPDX-License-Identifier: MIT

#include "stations/carry_out.h"

#include <algorithm>
#include <memory>
#include <utility>

#include "db/keep_position.h"
#include "stations/batch.h"
#include "stations/navigation.h"
#include "stations/open_stations.h"
#include "stations/record.h"

namespace stations {
namespace {

struct Way {
  const jet::Value& from;
  const jet::Value& to;
};

Way WayOf(const FieldChange& field, Direction direction) {
  return direction == Direction::Again ? Way{field.before, field.after}
                                       : Way{field.after, field.before};
}

}  // namespace

model::Status FindConflicts(jet::Database& database, std::span<const Change> changes,
                            Direction direction, std::vector<Conflict>* conflicts) {
  conflicts->clear();
  std::unique_ptr<jet::RecordSet> stations;
  if (model::Status status = OpenStations(database, &stations); !status.ok()) return status;
  for (const Change& change : changes) {
    if (jet::Status status = stations->Seek(change.station); !status.ok()) return status;
    if (stations->NoMatch()) {
      conflicts->push_back({.station = change.station, .field = {}, .present = {}, .wanted = {}});
      continue;
    }
    Record record(*stations);
    for (const FieldChange& field : change.fields) {
      const Way way = WayOf(field, direction);
      jet::Value present = record.Get(field.field);
      if (present == way.from || present == way.to) continue;
      conflicts->push_back({.station = change.station,
                            .field = field.field,
                            .present = std::move(present),
                            .wanted = way.to});
    }
  }
  return {};
}

model::Status CarryOut(jet::Database& database, std::span<const Change> changes,
                       Direction direction, const Author& author) {
  std::unique_ptr<jet::RecordSet> stations;
  if (model::Status status = OpenStations(database, &stations); !status.ok()) return status;
  return CarryOut(*stations, changes, direction, author);
}

model::Status CarryOut(jet::RecordSet& stations, std::span<const Change> changes,
                       Direction direction, const Author& author) {
  Batch batch(stations, author.changes);
  {
    const db::KeepPosition keep(stations);  // who hears of the changes may draw the current record
    for (const Change& change : changes) {
      if (model::Status status = FindStation(stations, change.station); !status.ok()) return status;
      if (stations.NoMatch()) continue;
      Record record(stations);
      for (const FieldChange& field : change.fields) {
        record.Set(field.field, WayOf(field, direction).to);
      }
      if (model::Status status = record.Commit(author); !status.ok()) return status;
    }
  }
  return batch.Commit();
}

std::vector<Change> Without(std::span<const Change> changes, std::span<const Conflict> conflicts) {
  const auto isInConflict = [&](int station, const std::string& field) {
    return std::ranges::any_of(conflicts, [&](const Conflict& conflict) {
      return conflict.station == station && (conflict.field.empty() || conflict.field == field);
    });
  };
  std::vector<Change> rest;
  for (Change change : changes) {
    std::erase_if(change.fields, [&](const FieldChange& field) {
      return isInConflict(change.station, field.field);
    });
    if (!change.fields.empty()) rest.push_back(std::move(change));
  }
  return rest;
}

}  // namespace stations
