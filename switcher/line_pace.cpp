// SPDX-License-Identifier: MIT

#include "switcher/line_pace.h"

#include <algorithm>

namespace switcher {

namespace {

using std::chrono::nanoseconds;

// The time that so many bytes take.
constexpr nanoseconds TimeOf(std::size_t bytes) {
  return nanoseconds(std::chrono::seconds(1)) * bytes / LinePace::kBytesPerSecond;
}

}  // namespace

std::size_t LinePace::BytesIn(nanoseconds time) {
  return static_cast<std::size_t>(time * kBytesPerSecond / nanoseconds(std::chrono::seconds(1)));
}

void LinePace::Add(std::size_t bytes, Time now) {
  free_ = std::min(std::max(free_, now) + TimeOf(bytes), now + TimeOf(kMost));
}

std::size_t LinePace::Behind(Time now) const {
  if (free_ <= now) return 0;
  constexpr nanoseconds kSecond = std::chrono::seconds(1);
  const nanoseconds left = free_ - now;
  return static_cast<std::size_t>((left * kBytesPerSecond + kSecond - nanoseconds(1)) / kSecond);
}

}  // namespace switcher
