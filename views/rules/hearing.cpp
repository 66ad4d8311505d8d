// SPDX-License-Identifier: MIT

#include "views/rules/hearing.h"

namespace rules {
namespace {

void AddChannel(Hearing& hearing, int channel, Mark mark) {
  if (mark == Mark::Crosspoint) hearing.ordinary.push_back(channel);
  if (mark == Mark::Priority) hearing.byPriority.push_back(channel);
}

}  // namespace

Hearing HeardBy(const XmapGrid& grid, int output) {
  Hearing hearing;
  for (int input = 1; input <= grid.ChannelCount(); ++input) {
    AddChannel(hearing, input, grid.MarkAt(output + 1, input + 1));
  }
  return hearing;
}

Hearing HearersOf(const XmapGrid& grid, int input) {
  Hearing hearing;
  for (int output = 1; output <= grid.ChannelCount(); ++output) {
    AddChannel(hearing, output, grid.MarkAt(output + 1, input + 1));
  }
  return hearing;
}

}  // namespace rules
