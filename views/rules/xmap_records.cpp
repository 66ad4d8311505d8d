// SPDX-License-Identifier: MIT

#include "views/rules/xmap_records.h"

#include "db/station_fields.h"

namespace rules {

model::Status DrawLabels(jet::RecordSet& stations, TextReader read, XmapGrid* grid) {
  std::vector<std::optional<std::string>> labels;
  model::Status status = read(stations, db::kLabelField, grid->ChannelCount(), &labels);
  grid->UpdateOutputLabels(labels);
  if (!status.ok()) return status;
  status = read(stations, db::kInLabelField, grid->ChannelCount(), &labels);
  grid->UpdateInputLabels(labels);
  return status;
}

model::Status DrawInhibits(jet::RecordSet& stations, TextReader read, XmapGrid* grid,
                           ChannelSet* changed) {
  std::vector<std::optional<std::string>> inhibits;
  model::Status status = read(stations, db::kInhibitsField, grid->ChannelCount(), &inhibits);
  *changed = grid->UpdateXmapInhibits(inhibits);
  return status;
}

}  // namespace rules
