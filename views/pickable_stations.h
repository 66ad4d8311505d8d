// SPDX-License-Identifier: MIT

#ifndef VIEWS_PICKABLE_STATIONS_H_
#define VIEWS_PICKABLE_STATIONS_H_

#include <vector>

#include "model/status.h"
#include "views/services.h"
#include "views/widgets/station_picker.h"

namespace views {

// Stations 1 to StationCount that have a record, with their output labels; a label that cannot be
// read is empty.  A failure when the database is not open or a station cannot be looked for: those
// that were found by then are not all.
model::Status ReadPickableStations(const Services& services,
                                   std::vector<PickableStation>* pickable);

}  // namespace views

#endif  // VIEWS_PICKABLE_STATIONS_H_
