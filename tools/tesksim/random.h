// SPDX-License-Identifier: MIT
//
// Chance that repeats itself: the same seed gives the same run with every compiler, which the
// standard library's distributions do not promise.

#ifndef TESKSIM_RANDOM_H_
#define TESKSIM_RANDOM_H_

#include <cstdint>
#include <random>

namespace tesksim {

class Random {
 public:
  explicit Random(std::uint32_t seed) : engine_(seed) {}

  // A number from 0 to `count` - 1.  REQUIRES: count > 0
  int Below(int count) {
    return static_cast<int>(engine_() % static_cast<std::mt19937::result_type>(count));
  }

  // A number from `first` to `last`, both included.  REQUIRES: first <= last
  int Between(int first, int last) { return first + Below(last - first + 1); }

  // True in `percent` of a hundred cases.
  bool Chance(int percent) { return Below(100) < percent; }

  // A number above 0 and up to 1.
  double Fraction() { return (static_cast<double>(engine_()) + 1.0) / 4294967296.0; }

 private:
  std::mt19937 engine_;
};

}  // namespace tesksim

#endif  // TESKSIM_RANDOM_H_
