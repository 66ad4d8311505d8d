// SPDX-License-Identifier: MIT

#ifndef SWITCHER_UNSENT_EDITED_PARTS_H_
#define SWITCHER_UNSENT_EDITED_PARTS_H_

#include <vector>

#include "stations/change.h"
#include "switcher/table.h"

namespace switcher {

// What a change of a station's record changes of the tables, in the order of a download, each part
// once and with that station.  Nothing for fields that never travel.
std::vector<TablePart> EditedParts(const stations::Change& change);

}  // namespace switcher

#endif  // SWITCHER_UNSENT_EDITED_PARTS_H_
