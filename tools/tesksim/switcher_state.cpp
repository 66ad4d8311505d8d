// SPDX-License-Identifier: MIT

#include "tools/tesksim/switcher_state.h"

namespace tesksim {

namespace {

constexpr std::int16_t kInitialGain = 64;

}  // namespace

SwitcherState::SwitcherState(const SystemSizes& sizes)
    : crosspoints(sizes.channels),
      gains(static_cast<std::size_t>(sizes.channels), kInitialGain),
      outLabels(sizes.labels),
      inLabels(sizes.labels),
      inhibits(sizes.channels),
      relays(sizes.channels),
      buttons(sizes.stations),
      optos(kOptos),
      sizes_(sizes) {
  for (int station = 1; station <= sizes.stations; ++station) {
    buttons[station] = model::OneBasedArray<ButtonProgram>(kButtons);
  }
  FillDefaultTables(*this);
}

void SwitcherState::ClearOutput(int output) {
  for (int input = 1; input <= ChannelCount(); ++input) {
    crosspoints.At(output, input) = Crosspoint::Off;
  }
}

switcher::CrosspointRow SwitcherState::Row(int output) const {
  switcher::CrosspointRow row{.output = output, .status = 0, .sources = {}};
  row.sources.reserve(static_cast<std::size_t>(ChannelCount()));
  for (const Crosspoint crosspoint : crosspoints.Row(output)) {
    row.sources.push_back(crosspoint == Crosspoint::Off ? 0 : 1);
    if (crosspoint == Crosspoint::Priority) row.status = 1;
  }
  return row;
}

}  // namespace tesksim
