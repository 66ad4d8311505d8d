// SPDX-License-Identifier: MIT

#include "views/pickable_stations.h"

#include "db/station_fields.h"
#include "stations/navigation.h"
#include "stations/record.h"

namespace views {

model::Status ReadPickableStations(const Services& services,
                                   std::vector<PickableStation>* pickable) {
  pickable->clear();
  return WithStations(services, [&](jet::RecordSet& stations) {
    for (int number = 1; number <= services.model.StationCount; ++number) {
      if (model::Status found = stations::FindStation(stations, number); !found.ok()) return found;
      if (stations.NoMatch()) continue;
      pickable->push_back(
          {.number = number,
           .label = QString::fromStdString(stations::Record(stations).Text(db::kLabelField))});
    }
    return model::Status();
  });
}

}  // namespace views
