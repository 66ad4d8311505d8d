// SPDX-License-Identifier: MIT
//
// The crosspoint map as far as it is drawn from the stations.
//
// The readers move in `stations`: the caller holds a db::KeepPosition.  A failure leaves the grid
// drawn as far as the stations could be read.

#ifndef VIEWS_RULES_XMAP_RECORDS_H_
#define VIEWS_RULES_XMAP_RECORDS_H_

#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "db/jet/record_set.h"
#include "model/status.h"
#include "views/rules/xmap_grid.h"

namespace rules {

// stations::ReadTexts, to which a station without a record is a failure, or
// stations::ReadAvailableTexts.
using TextReader = model::Status (*)(jet::RecordSet& stations, std::string_view field, int count,
                                     std::vector<std::optional<std::string>>* texts);

// Writes the labels and numbers of all outputs and inputs.
model::Status DrawLabels(jet::RecordSet& stations, TextReader read, XmapGrid* grid);

// Draws the inhibits.  *changed are the outputs that look different now.
model::Status DrawInhibits(jet::RecordSet& stations, TextReader read, XmapGrid* grid,
                           ChannelSet* changed);

}  // namespace rules

#endif  // VIEWS_RULES_XMAP_RECORDS_H_
