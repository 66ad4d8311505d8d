// SPDX-License-Identifier: MIT

#ifndef APP_SHELL_VIEW_PLACE_H_
#define APP_SHELL_VIEW_PLACE_H_

#include <cstdint>

#include "stations/where_used.h"

namespace app {

// A place in one of the main views that another window can lead to.
struct ViewPlace {
  enum class Kind : std::uint8_t {
    Label,       // the label of the station in column `number` (a stations::LabelColumn)
    Crosspoint,  // the cell of output `station` and input `number` in the map
    Output,      // row `station` of the map
    Input,       // column `station` of the map
    Station,     // the programming of the station, at the page that shows
    Button,      // button `number` of the station
    Relays,      // the relays of the station
    Opto,        // the programming of opto `station`
  };

  Kind kind = Kind::Label;
  int station = 0;  // from 1
  int number = 0;   // 0 where there is none

  bool operator==(const ViewPlace&) const = default;
};

// The place of the label of a station's output, or of its input.
ViewPlace PlaceOfLabel(int station, bool ofInput);

// The place of an opto (from 1), which is not the station in whose record it is kept.
ViewPlace PlaceOfOpto(int opto);

// The place of what points at a station.
ViewPlace PlaceOf(const stations::Use& use);

}  // namespace app

#endif  // APP_SHELL_VIEW_PLACE_H_
