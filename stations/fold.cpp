// SPDX-License-Identifier: MIT

#include "stations/fold.h"

#include <algorithm>
#include <map>
#include <utility>

namespace stations {
namespace {

void Merge(std::vector<FieldChange>* into, const std::vector<FieldChange>& fields) {
  for (const FieldChange& field : fields) {
    const auto known = std::ranges::find(*into, field.field, &FieldChange::field);
    if (known == into->end()) {
      into->push_back(field);
    } else {
      known->after = field.after;
    }
  }
}

}  // namespace

std::vector<Change> Fold(std::span<const Change> changes) {
  std::map<int, Change> stations;
  for (const Change& change : changes) {
    const auto at =
        stations.try_emplace(change.station, Change{change.origin, change.station, {}}).first;
    at->second.origin = change.origin;
    Merge(&at->second.fields, change.fields);
  }
  std::vector<Change> folded;
  for (auto& [number, change] : stations) {
    std::erase_if(change.fields,
                  [](const FieldChange& field) { return field.before == field.after; });
    if (!change.fields.empty()) folded.push_back(std::move(change));
  }
  return folded;
}

}  // namespace stations
