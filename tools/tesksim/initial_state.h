// SPDX-License-Identifier: MIT

#ifndef TESKSIM_INITIAL_STATE_H_
#define TESKSIM_INITIAL_STATE_H_

#include <optional>

#include "model/status.h"
#include "tools/tesksim/options.h"
#include "tools/tesksim/state_file.h"
#include "tools/tesksim/switcher_state.h"

namespace tesksim {

// What the switcher holds at the start: what the state file holds; else the tables of the
// database; else the defaults.  A demo puts its crosspoints on top of the last two.  Fails when a
// file cannot be read, and when its sizes are others than the options say.
model::Status MakeInitialState(const Options& options, StateFile& file,
                               std::optional<SwitcherState>* state);

}  // namespace tesksim

#endif  // TESKSIM_INITIAL_STATE_H_
