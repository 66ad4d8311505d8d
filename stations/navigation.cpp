// SPDX-License-Identifier: MIT

#include "stations/navigation.h"

#include "db/schema.h"
#include "db/station_fields.h"

namespace stations {
namespace {

constexpr int kManySteps = 10;

model::Status GoBack(jet::RecordSet& stations, int steps) {
  for (int step = 0; step < steps && !stations.Bof(); ++step) {
    if (const jet::Status moved = stations.MovePrevious(); !moved.ok()) return moved;
    if (stations.Bof()) return stations.MoveFirst();
  }
  return {};
}

// One record on, unless that is past the last one or beyond station `stationCount`.
model::Status StepForward(jet::RecordSet& stations, int stationCount, bool* moved) {
  *moved = false;
  jet::Value number;
  jet::Status status = stations.Get(db::kStationNumField, &number);
  if (!status.ok() || number.Int() >= stationCount) return status;
  const jet::Bookmark mark = stations.Mark();
  status = stations.MoveNext();
  if (!status.ok()) return status;
  if (stations.Eof()) return stations.MoveLast();
  status = stations.Get(db::kStationNumField, &number);
  if (!status.ok()) return status;
  if (number.Int() > stationCount) return stations.GoTo(mark);
  *moved = true;
  return {};
}

model::Status GoForward(jet::RecordSet& stations, int steps, int stationCount) {
  if (stations.Eof()) return {};
  bool moved = true;
  for (int step = 0; step < steps && moved; ++step) {
    if (model::Status status = StepForward(stations, stationCount, &moved); !status.ok()) {
      return status;
    }
  }
  return {};
}

model::Status GoToLast(jet::RecordSet& stations, int stationCount) {
  const jet::Bookmark mark = stations.Mark();
  if (model::Status status = FindStation(stations, stationCount); !status.ok()) return status;
  return stations.NoMatch() ? model::Status(stations.GoTo(mark)) : model::Status();
}

}  // namespace

model::Status FindStation(jet::RecordSet& stations, const jet::Value& stationNum) {
  // The same record either way: the numbers are unique.
  if (stations.IndexName() == db::kStationNumIndex) return stations.Seek(stationNum);
  return stations.FindFirst(db::kStationNumField, stationNum);
}

model::Status MoveStation(jet::RecordSet& stations, Movement movement, int stationCount) {
  switch (movement) {
    case Movement::First:
      return stations.MoveFirst();
    case Movement::Previous:
      return GoBack(stations, 1);
    case Movement::Back10:
      return GoBack(stations, kManySteps);
    case Movement::Next:
      return GoForward(stations, 1, stationCount);
    case Movement::Forward10:
      return GoForward(stations, kManySteps, stationCount);
    case Movement::Last:
      return GoToLast(stations, stationCount);
  }
  return {};
}

}  // namespace stations
