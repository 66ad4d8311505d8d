// SPDX-License-Identifier: MIT

#ifndef SWITCHER_LINE_PACE_H_
#define SWITCHER_LINE_PACE_H_

#include <chrono>
#include <cstddef>

namespace switcher {

// What a line of 57600 baud cannot have sent yet of what it was handed: a byte takes ten bits, so
// there are 5760 in a second.  Some devices, and pseudo terminals, swallow bytes faster than that
// and do not tell what they still hold.
class LinePace {
 public:
  using Time = std::chrono::steady_clock::time_point;

  static constexpr int kBytesPerSecond = 5760;

  // No more than so many bytes are counted: what is no line at all may have taken far more.
  static constexpr std::size_t kMost = 512;

  // The bytes that a line sends in this time.
  static std::size_t BytesIn(std::chrono::nanoseconds time);

  // So many bytes were handed over.
  void Add(std::size_t bytes, Time now);

  // The bytes that the line still has to send.
  std::size_t Behind(Time now) const;

  // The line is a new one.
  void Reset() { free_ = {}; }

 private:
  Time free_{};  // when the line will have sent all
};

}  // namespace switcher

#endif  // SWITCHER_LINE_PACE_H_
