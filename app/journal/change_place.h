// SPDX-License-Identifier: MIT

#ifndef APP_JOURNAL_CHANGE_PLACE_H_
#define APP_JOURNAL_CHANGE_PLACE_H_

#include <string_view>

#include "app/shell/view_place.h"
#include "stations/change.h"

namespace app {

// The place of a field of a change; of inhibits the first input whose flag is another one now. What
// no view shows is at the station's label.
ViewPlace PlaceOf(const stations::Change& change, std::string_view field);

}  // namespace app

#endif  // APP_JOURNAL_CHANGE_PLACE_H_
