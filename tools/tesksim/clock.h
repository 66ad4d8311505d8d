// SPDX-License-Identifier: MIT

#ifndef TESKSIM_CLOCK_H_
#define TESKSIM_CLOCK_H_

#include <chrono>
#include <optional>

namespace tesksim {

// The simulator never asks for the time: whoever drives it says what time it is.
using Clock = std::chrono::steady_clock;
using Time = Clock::time_point;

// "At once", as the time of a next event.
inline constexpr Time kNow = Time::min();

// The earlier of two times, either of which may be "never".
inline std::optional<Time> Earlier(std::optional<Time> a, std::optional<Time> b) {
  if (!a.has_value()) return b;
  if (!b.has_value()) return a;
  return *a < *b ? a : b;
}

}  // namespace tesksim

#endif  // TESKSIM_CLOCK_H_
