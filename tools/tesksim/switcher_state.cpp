// SPDX-License-Identifier: MIT

#include "tools/tesksim/switcher_state.h"

#include <algorithm>

namespace tesksim {

namespace {

constexpr std::int16_t kInitialGain = 64;

// " 1 8", or " none" when no channel passes the test.
template <typename Test>
std::string ChannelList(const SwitcherState& state, Test test) {
  std::string list;
  for (int channel = 1; channel <= state.ChannelCount(); ++channel) {
    if (test(channel)) list += " " + std::to_string(channel);
  }
  return list.empty() ? " none" : list;
}

}  // namespace

SwitcherState::SwitcherState(int channelCount)
    : crosspoints(channelCount),
      inhibits(channelCount),
      gains(static_cast<std::size_t>(channelCount), kInitialGain) {}

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

std::string DescribeRow(const SwitcherState& state, int output) {
  const int status = state.Row(output).status;
  std::string text = "output " + std::to_string(output) + " status " + std::to_string(status);
  text += " sources" + ChannelList(state, [&](int input) {
            return state.crosspoints.At(output, input) != Crosspoint::Off;
          });
  if (status == 0) return text;
  return text + " priority" + ChannelList(state, [&](int input) {
           return state.crosspoints.At(output, input) == Crosspoint::Priority;
         });
}

std::string DescribeInhibits(const SwitcherState& state, int output) {
  return "output " + std::to_string(output) + " inhibits" +
         ChannelList(state, [&](int input) { return state.inhibits.At(output, input) != 0; });
}

}  // namespace tesksim
