// SPDX-License-Identifier: MIT

#include "stations/inhibits.h"

#include <utility>

#include "db/station_fields.h"
#include "stations/navigation.h"
#include "stations/record.h"

namespace stations {

model::Status FindInhibits(jet::RecordSet& stations, int output,
                           std::optional<std::string>* flags) {
  flags->reset();
  if (model::Status found = FindStation(stations, output); !found.ok()) return found;
  if (stations.NoMatch()) return {};
  Record record(stations);
  std::string text = record.Text(db::kInhibitsField);
  if (record.Outcome().ok()) *flags = std::move(text);
  return record.Outcome();
}

model::Status StoreInhibits(jet::RecordSet& stations, std::string_view flags,
                            const Author& author) {
  Record record(stations);
  record.Set(db::kInhibitsField, flags);
  return record.Commit(author);
}

}  // namespace stations
