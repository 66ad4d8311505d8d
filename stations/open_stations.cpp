// SPDX-License-Identifier: MIT

#include "stations/open_stations.h"

#include "db/schema.h"

namespace stations {

model::Status OpenStations(jet::Database& database, std::unique_ptr<jet::RecordSet>* stations) {
  if (jet::Status status = database.OpenTable(db::kStationsTable, stations); !status.ok()) {
    return status;
  }
  if (jet::Status status = (*stations)->SetIndex(db::kStationNumIndex); !status.ok()) return status;
  return (*stations)->MoveFirst();
}

model::Status OpenStation(jet::Database& database, int number,
                          std::unique_ptr<jet::RecordSet>* stations) {
  if (model::Status status = OpenStations(database, stations); !status.ok()) return status;
  if (jet::Status status = (*stations)->Seek(number); !status.ok()) return status;
  if ((*stations)->NoMatch()) stations->reset();
  return {};
}

}  // namespace stations
