// SPDX-License-Identifier: MIT

#ifndef TESKSIM_DATABASE_TABLES_H_
#define TESKSIM_DATABASE_TABLES_H_

#include <filesystem>
#include <optional>

#include "model/status.h"
#include "tools/tesksim/switcher_state.h"

namespace tesksim {

// Reads sizes and tables of a console's database, as the switcher would hold them after the
// console has sent them all.  What a station without a record would have is empty: a blank
// label, nothing inhibited, no relay, buttons and optos of zeros.  The file is not changed.
// Fails when it is no such database, or its system is none that can be simulated.
model::Status ReadDatabase(const std::filesystem::path& path, std::optional<SwitcherState>* state);

}  // namespace tesksim

#endif  // TESKSIM_DATABASE_TABLES_H_
