// SPDX-License-Identifier: MIT

#ifndef APP_JOURNAL_CHANGE_PLACE_H_
#define APP_JOURNAL_CHANGE_PLACE_H_

#include <cstdint>
#include <string_view>

#include "app/shell/open_views.h"
#include "stations/change.h"
#include "stations/where_used.h"

namespace app {

// Where the views show what was changed.
struct ChangePlace {
  enum class View : std::uint8_t { Labels, Map, Button, Relays, Opto };

  View view = View::Labels;
  int station = 0;  // of the map its output
  int number = 0;   // of the labels a stations::LabelColumn, of the map the input, of a button its
                    // own; else 0

  bool operator==(const ChangePlace&) const = default;
};

// The place of a field of a change; of inhibits the first input whose flag is another one now. What
// no view shows is at the station's label.
ChangePlace PlaceOf(const stations::Change& change, std::string_view field);

// The place of what points at a station.
ChangePlace PlaceOf(const stations::Use& use);

// Shows the view and goes to the place.
void GoTo(OpenViews& views, const ChangePlace& place);

}  // namespace app

#endif  // APP_JOURNAL_CHANGE_PLACE_H_
