// SPDX-License-Identifier: MIT

#ifndef APP_SHELL_VIEW_PLACE_H_
#define APP_SHELL_VIEW_PLACE_H_

#include <cstdint>

#include "stations/where_used.h"

namespace app {

// A place in one of the main views that another window can lead to.
struct ViewPlace {
  enum class Kind : std::uint8_t {
    Label,       // of a station, in the column `number` (a stations::LabelColumn)
    Crosspoint,  // of the output `station` and the input `number`
    Output,      // a row of the map
    Input,       // a column of it
    Station,     // the programming of a station, at the page that shows
    Button,      // of it the button `number`
    Relays,      // of it the relays
    Opto,        // the programming of the opto `station`
  };

  Kind kind = Kind::Label;
  int station = 0;  // from 1; of the map the output or the input, of an opto the opto
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
