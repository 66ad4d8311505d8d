// SPDX-License-Identifier: MIT

#include "tools/tesksim/line_pacer.h"

#include <algorithm>

namespace tesksim {

namespace {

constexpr std::int64_t kBitsPerByte = 10;  // start bit, eight data bits, stop bit
constexpr std::int64_t kNanosecondsPerSecond = 1'000'000'000;

// The longest span counted in one go; keeps the product of nanoseconds and baud in range.
constexpr std::chrono::seconds kLongSpan{100};

}  // namespace

void LinePacer::Begin(Time now) {
  if (busy_) return;
  busy_ = true;
  start_ = now;
  carried_ = 0;
}

std::size_t LinePacer::Take(Time now, std::size_t wanted) {
  if (!busy_) return 0;
  if (baud_ == 0) return wanted;

  const std::int64_t perSecond = baud_ / kBitsPerByte;
  if (now - start_ > kLongSpan) {
    start_ = now - std::chrono::seconds(1);
    carried_ = 0;
  }
  const std::int64_t elapsed = std::chrono::nanoseconds(now - start_).count();
  const std::int64_t due = elapsed * baud_ / (kBitsPerByte * kNanosecondsPerSecond);
  carried_ = std::max(carried_, due - perSecond);

  const auto credit = static_cast<std::size_t>(std::max<std::int64_t>(0, due - carried_));
  const std::size_t granted = std::min(credit, wanted);
  carried_ += static_cast<std::int64_t>(granted);

  // Ten seconds carry exactly baud_ bytes: move the origin by a span without remainder.
  while (carried_ >= baud_) {
    carried_ -= baud_;
    start_ += std::chrono::seconds(kBitsPerByte);
  }
  return granted;
}

Time LinePacer::When(std::size_t count) const {
  if (baud_ == 0) return start_;
  const std::int64_t bytes = carried_ + static_cast<std::int64_t>(count);
  const std::int64_t scaled = bytes * kBitsPerByte * kNanosecondsPerSecond;
  return start_ + std::chrono::nanoseconds((scaled + baud_ - 1) / baud_);
}

std::size_t LinePacer::Portion() const {
  constexpr std::size_t kWithoutPace = 4096;
  if (baud_ == 0) return kWithoutPace;
  return static_cast<std::size_t>(std::max<std::int64_t>(1, baud_ / kBitsPerByte / 1000));
}

}  // namespace tesksim
