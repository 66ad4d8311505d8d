// SPDX-License-Identifier: MIT

#include "switcher/station_records.h"

#include "db/schema.h"
#include "switcher/messages/label_order.h"

namespace switcher {

model::Status OpenStations(jet::Database& database, std::unique_ptr<jet::RecordSet>* stations) {
  if (jet::Status status = database.OpenTable(db::kStationsTable, stations); !status.ok()) {
    return status;
  }
  if (jet::Status status = (*stations)->SetIndex(db::kStationNumIndex); !status.ok()) return status;
  return (*stations)->MoveFirst();
}

const char* LabelFieldOf(int selector) {
  return selector == kInputLabels ? kInLabelField : kLabelField;
}

}  // namespace switcher
