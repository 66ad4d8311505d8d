// SPDX-License-Identifier: MIT

#ifndef VIEWS_RULES_HEARING_H_
#define VIEWS_RULES_HEARING_H_

#include <vector>

#include "views/rules/xmap_grid.h"

namespace rules {

// The channels at the other ends of a channel's crosspoints, from 1 and rising, as the switcher
// reported them.
struct Hearing {
  std::vector<int> ordinary;
  std::vector<int> byPriority;

  bool operator==(const Hearing&) const = default;
};

// The inputs that an output hears.  REQUIRES: 1 <= output <= grid.ChannelCount()
Hearing HeardBy(const XmapGrid& grid, int output);

// The outputs that hear an input.  REQUIRES: 1 <= input <= grid.ChannelCount()
Hearing HearersOf(const XmapGrid& grid, int input);

}  // namespace rules

#endif  // VIEWS_RULES_HEARING_H_
