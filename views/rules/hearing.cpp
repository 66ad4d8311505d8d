// SPDX-License-Identifier: MIT

#include "views/rules/hearing.h"

namespace rules {
namespace {

void AddChannel(Hearing& hearing, int channel, Standing standing) {
  if (standing == Standing::Ordinary) hearing.ordinary.push_back(channel);
  if (standing == Standing::ByPriority) hearing.byPriority.push_back(channel);
}

}  // namespace

Hearing HeardBy(const XmapGrid& grid, int output) {
  Hearing hearing;
  for (int input = 1; input <= grid.ChannelCount(); ++input) {
    AddChannel(hearing, input, grid.StandingOf(output, input));
  }
  return hearing;
}

Hearing HearersOf(const XmapGrid& grid, int input) {
  Hearing hearing;
  for (int output = 1; output <= grid.ChannelCount(); ++output) {
    AddChannel(hearing, output, grid.StandingOf(output, input));
  }
  return hearing;
}

}  // namespace rules
