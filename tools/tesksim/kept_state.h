// SPDX-License-Identifier: MIT
//
// Everything the switcher holds, as the text of a state file: one entry a line, in a fixed
// order, from "tesksim state 1" to "end".  The entries look like the answers of the commands.

#ifndef TESKSIM_KEPT_STATE_H_
#define TESKSIM_KEPT_STATE_H_

#include <optional>
#include <string>
#include <string_view>

#include "model/status.h"
#include "tools/tesksim/switcher_state.h"

namespace tesksim {

std::string WriteState(const SwitcherState& state);

// Reads what WriteState wrote.  A text with anything else in it, or with anything missing, is a
// failure that names the line and what should stand there; *state is filled only on success.
model::Status ReadState(std::string_view text, std::optional<SwitcherState>* state);

}  // namespace tesksim

#endif  // TESKSIM_KEPT_STATE_H_
