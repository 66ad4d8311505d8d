// SPDX-License-Identifier: MIT

#include "views/rules/inhibit_records.h"

#include <utility>

#include "db/station_fields.h"
#include "stations/record.h"
#include "views/rules/station_navigation.h"

namespace rules {

model::Status FindInhibits(jet::RecordSet& stations, int output,
                           std::optional<std::string>* flags) {
  flags->reset();
  if (model::Status found = FindStation(stations, output); !found.ok()) return found;
  if (stations.NoMatch()) return {};
  stations::Record record(stations);
  std::string text = record.Text(db::kInhibitsField);
  if (record.Outcome().ok()) *flags = std::move(text);
  return record.Outcome();
}

model::Status StoreInhibits(jet::RecordSet& stations, std::string_view flags) {
  stations::Record record(stations);
  record.Set(db::kInhibitsField, flags);
  return record.Commit();
}

}  // namespace rules
