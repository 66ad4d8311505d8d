// SPDX-License-Identifier: MIT

#include "tools/tesksim/demo.h"

namespace tesksim {

namespace {

constexpr std::int16_t kUnityGain = 100;

}  // namespace

void Demo::Fill(SwitcherState& state) {
  for (int output = 1; output <= state.ChannelCount(); ++output) {
    if (random_.Chance(50)) {
      state.crosspoints.At(output, OtherChannel(state, output)) = Crosspoint::Ordinary;
      if (random_.Chance(25)) {
        state.crosspoints.At(output, OtherChannel(state, output)) = Crosspoint::Ordinary;
      }
    }
    if (random_.Chance(6)) {
      state.crosspoints.At(output, OtherChannel(state, output)) = Crosspoint::Priority;
    }
  }
  for (std::int16_t& gain : state.gains) {
    gain = static_cast<std::int16_t>(kUnityGain + random_.Between(-8, 6));
  }
  state.tally.fill(1);
  const int first = random_.Below(static_cast<int>(switcher::kTallyPoints));
  const int second = random_.Between(1, static_cast<int>(switcher::kTallyPoints) - 1);
  state.tally[static_cast<std::size_t>(first)] = 0;
  state.tally[static_cast<std::size_t>(first + second) % switcher::kTallyPoints] = 0;
}

std::optional<int> Demo::Change(SwitcherState& state) {
  const int output = random_.Between(1, state.ChannelCount());
  const int input = OtherChannel(state, output);
  const int kind = random_.Below(10);
  if (state.inhibits.At(output, input) != 0) return std::nullopt;

  Crosspoint& crosspoint = state.crosspoints.At(output, input);
  if (kind < 6) {
    state.ClearOutput(output);
    crosspoint = Crosspoint::Ordinary;
  } else if (crosspoint != Crosspoint::Off) {
    crosspoint = Crosspoint::Off;
  } else {
    crosspoint = kind < 8 ? Crosspoint::Ordinary : Crosspoint::Priority;
  }
  return output;
}

// Any channel but this one: nobody listens to himself.
int Demo::OtherChannel(const SwitcherState& state, int channel) {
  return (channel - 1 + random_.Between(1, state.ChannelCount() - 1)) % state.ChannelCount() + 1;
}

}  // namespace tesksim
