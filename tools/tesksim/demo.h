// SPDX-License-Identifier: MIT

#ifndef TESKSIM_DEMO_H_
#define TESKSIM_DEMO_H_

#include <cstdint>
#include <optional>

#include "tools/tesksim/clock.h"
#include "tools/tesksim/random.h"
#include "tools/tesksim/switcher_state.h"

namespace tesksim {

// A house at work: a believable state, and somebody who changes a source every few seconds.
class Demo {
 public:
  explicit Demo(std::uint32_t seed) : random_(seed) {}

  // Crosspoints for about half of the outputs, gains around unity, every tally point but two
  // responding.
  void Fill(SwitcherState& state);

  // Makes one change: a program take, or a sum or a call made or broken.  Returns the output it
  // was made on; nothing when an inhibit stood against it.
  std::optional<int> Change(SwitcherState& state);

  // The time until the next change.
  std::chrono::milliseconds Pause() {
    return std::chrono::milliseconds(random_.Between(2000, 6000));
  }

 private:
  int OtherChannel(const SwitcherState& state, int channel);

  Random random_;
};

}  // namespace tesksim

#endif  // TESKSIM_DEMO_H_
