// SPDX-License-Identifier: MIT

#include "db/station_list.h"

namespace db {

std::string StationList(const std::vector<int>& stations) {
  std::string list;
  for (std::size_t first = 0; first < stations.size();) {
    std::size_t last = first;
    while (last + 1 < stations.size() && stations[last + 1] == stations[last] + 1) ++last;
    // Two are no range.
    if (last == first + 1) last = first;
    if (!list.empty()) list += ", ";
    list += std::to_string(stations[first]);
    if (last > first) list += " to " + std::to_string(stations[last]);
    first = last + 1;
  }
  return list;
}

}  // namespace db
