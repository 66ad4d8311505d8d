// SPDX-License-Identifier: MIT

#ifndef TESKSIM_SWITCHER_STATE_H_
#define TESKSIM_SWITCHER_STATE_H_

#include <cstdint>
#include <string>
#include <vector>

#include "model/one_based.h"
#include "switcher/messages/crosspoint_row.h"
#include "switcher/messages/tally.h"

namespace tesksim {

enum class Crosspoint : std::uint8_t {
  Off,
  Ordinary,  // program, sum, listen
  Priority,  // call, priority listen: not interrupted by a call
};

// What the simulated switcher holds.  Channels count from 1; gains and tally points are
// indexed from 0.
struct SwitcherState {
  // Every crosspoint off, no inhibits, every gain at 64 (-36 dB), no tally point responding:
  // what a console shows before it has heard anything.
  // REQUIRES: `channelCount` is a multiple of eight within 8..256
  explicit SwitcherState(int channelCount);

  int ChannelCount() const { return crosspoints.Size(); }
  bool HasChannel(int channel) const { return channel >= 1 && channel <= ChannelCount(); }

  // Releases all sources of an output.
  void ClearOutput(int output);

  // The map row of an output as it is reported.  Its status is 1 when any of its crosspoints is
  // a priority one, else 0.
  switcher::CrosspointRow Row(int output) const;

  model::OneBasedMatrix<Crosspoint> crosspoints;  // (output, input)
  model::OneBasedMatrix<std::uint8_t> inhibits;   // (output, input), 1 = inhibited
  std::vector<std::int16_t> gains;                // steps 0..127, one for each channel
  switcher::TallyValues tally{};                  // 0..255, 0 = not responding
};

// "output 6 status 1 sources 8 12 priority 12"; "output 6 status 0 sources none".
std::string DescribeRow(const SwitcherState& state, int output);

// "output 3 inhibits 1 8"; "output 3 inhibits none".
std::string DescribeInhibits(const SwitcherState& state, int output);

}  // namespace tesksim

#endif  // TESKSIM_SWITCHER_STATE_H_
