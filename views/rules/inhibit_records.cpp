// SPDX-License-Identifier: MIT

#include "views/rules/inhibit_records.h"

#include "switcher/station_records.h"
#include "views/rules/station_navigation.h"
#include "views/rules/store_fields.h"

namespace rules {

model::Status FindInhibits(jet::RecordSet& stations, int output,
                           std::optional<std::string>* flags) {
  flags->reset();
  if (model::Status found = FindStation(stations, output); !found.ok()) return found;
  if (stations.NoMatch()) return {};
  jet::Value value;
  if (const jet::Status read = stations.Get(switcher::kInhibitsField, &value); !read.ok()) {
    return read;
  }
  *flags = value.Text();
  return {};
}

model::Status StoreInhibits(jet::RecordSet& stations, std::string_view flags) {
  return StoreFields(stations, {{switcher::kInhibitsField, flags}});
}

}  // namespace rules
