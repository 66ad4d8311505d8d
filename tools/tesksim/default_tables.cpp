// SPDX-License-Identifier: MIT

#include "model/padded.h"
#include "tools/tesksim/switcher_state.h"

namespace tesksim {

namespace {

constexpr int kTalk = 0;
constexpr int kInactive = 254;

Members Only(int member) { return Members().set(static_cast<std::size_t>(member - 1)); }

void FillLabels(SwitcherState& state) {
  const int stations = state.Sizes().stations;
  for (int label = 1; label <= state.Sizes().labels; ++label) {
    const bool hidden = label > stations;
    const std::string number = model::Padded(hidden ? label - stations : label, 3);
    state.outLabels[label] = (hidden ? "{xt. " : "Sta. ") + number;
    state.inLabels[label] = (hidden ? "{npt " : "Inpt ") + number;
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
