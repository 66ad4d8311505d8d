// SPDX-License-Identifier: MIT

#include "views/rules/sheet_choice.h"

#include <algorithm>
#include <iterator>

namespace rules {

bool CurrentHasSheet(const SheetStations& stations) {
  return std::ranges::binary_search(stations.all, stations.current);
}

SheetChoice ProposedChoice(const SheetStations& stations) {
  return CurrentHasSheet(stations) ? SheetChoice::This : SheetChoice::All;
}

std::vector<int> StationsOf(SheetChoice choice, const SheetStations& stations) {
  std::vector<int> chosen;
  switch (choice) {
    case SheetChoice::This:
      if (CurrentHasSheet(stations)) chosen.push_back(stations.current);
      break;
    case SheetChoice::Chosen:
      std::ranges::set_intersection(stations.ticked, stations.all, std::back_inserter(chosen));
      break;
    case SheetChoice::All:
      chosen = stations.all;
      break;
  }
  return chosen;
}

}  // namespace rules
