// SPDX-License-Identifier: MIT

#include <cstdio>

#include "tools/tesksim/switcher_state.h"

namespace tesksim {

namespace {

constexpr int kTalk = 0;
constexpr int kInactive = 254;

// "Sta. 007".
std::string WithThreeDigits(const char* prefix, int number) {
  char text[16];
  std::snprintf(text, sizeof text, "%s%03d", prefix, number);
  return text;
}

Members Only(int member) { return Members().set(static_cast<std::size_t>(member - 1)); }

void FillLabels(SwitcherState& state) {
  const int stations = state.Sizes().stations;
  for (int label = 1; label <= state.Sizes().labels; ++label) {
    const bool hidden = label > stations;
    const int number = hidden ? label - stations : label;
    state.outLabels[label] = WithThreeDigits(hidden ? "{xt. " : "Sta. ", number);
    state.inLabels[label] = WithThreeDigits(hidden ? "{npt " : "Inpt ", number);
  }
}

}  // namespace

void FillDefaultTables(SwitcherState& state) {
  FillLabels(state);
  for (int output = 1; output <= state.ChannelCount(); ++output) {
    for (int input = 1; input <= state.ChannelCount(); ++input) {
      state.inhibits.At(output, input) = input == output ? 1 : 0;
    }
    state.relays[output].reset();
  }
  for (int station = 1; station <= state.Sizes().stations; ++station) {
    for (int button = 1; button <= kButtons; ++button) {
      state.buttons[station][button] = {.type = kTalk, .first = button, .members = Only(button)};
    }
  }
  for (int opto = 1; opto <= kOptos; ++opto) {
    state.optos[opto] = {.type = kInactive, .channel = opto, .first = opto, .members = Only(opto)};
  }
}

}  // namespace tesksim
