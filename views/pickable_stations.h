// SPDX-License-Identifier: MIT

#ifndef VIEWS_PICKABLE_STATIONS_H_
#define VIEWS_PICKABLE_STATIONS_H_

#include <vector>

#include "views/services.h"
#include "views/widgets/station_picker.h"

namespace views {

// Stations 1 to StationCount that have a record, with their output labels.  Without a database
// there are none; a label that cannot be read is empty.
std::vector<PickableStation> ReadPickableStations(const Services& services);

}  // namespace views

#endif  // VIEWS_PICKABLE_STATIONS_H_
