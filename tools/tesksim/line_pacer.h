// SPDX-License-Identifier: MIT
//
// The pace of one direction of a serial line: ten bits a byte, and no byte before its last bit.

#ifndef TESKSIM_LINE_PACER_H_
#define TESKSIM_LINE_PACER_H_

#include <cstddef>
#include <cstdint>

#include "tools/tesksim/clock.h"

namespace tesksim {

// Says how many bytes may have passed by now.
//
// The count runs from the moment the line became busy, in whole numbers, so that it neither
// drifts nor depends on how often it is asked.  Whoever asks late is given all that has become
// due meanwhile, but never more than a second's worth: a process that was held up for longer
// has lost that time.
class LinePacer {
 public:
  // `baud` bits per second; 0 sets no pace.  REQUIRES: 0, or 300 <= baud <= 4000000
  explicit LinePacer(int baud) : baud_(baud) {}

  // The line has something to carry from `now` on.  No effect when it is busy already.
  void Begin(Time now);

  // The line has nothing to carry; time that passes from here on earns nothing.
  void End() { busy_ = false; }

  bool Busy() const { return busy_; }

  // How many of `wanted` bytes have passed by `now`; they count as carried.  0 when the line is
  // idle.
  std::size_t Take(Time now, std::size_t wanted);

  // When Take() will give `count` bytes.  REQUIRES: Busy()
  Time When(std::size_t count) const;

  // How many bytes to carry at a time: what passes in about a millisecond, so that the flow is
  // even and there is a rest between two portions.  At least 1.
  std::size_t Portion() const;

 private:
  int baud_;
  bool busy_ = false;
  Time start_{};
  std::int64_t carried_ = 0;  // bytes since start_
};

}  // namespace tesksim

#endif  // TESKSIM_LINE_PACER_H_
