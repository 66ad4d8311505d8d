// SPDX-License-Identifier: MIT

#ifndef TESTS_TESKSIM_SMALL_SYSTEM_H_
#define TESTS_TESKSIM_SMALL_SYSTEM_H_

#include "tools/tesksim/switcher_state.h"

namespace tesksim {

// A system whose state a test can spell out.
inline constexpr SystemSizes kSmall{.channels = 8, .stations = 1, .labels = 2};

}  // namespace tesksim

#endif  // TESTS_TESKSIM_SMALL_SYSTEM_H_
