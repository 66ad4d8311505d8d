// SPDX-License-Identifier: MIT

#include "tools/tesksim/initial_state.h"

#include <cerrno>

#include "tools/tesksim/database_tables.h"

namespace tesksim {

namespace {

// What an option says against a file; empty when it says nothing, or the same.
std::string Contradiction(const char* name, std::optional<int> wanted, int found) {
  if (!wanted.has_value() || *wanted == found) return {};
  return std::string("--") + name + " says " + std::to_string(*wanted) + ", the file " +
         std::to_string(found);
}

model::Status CheckSizes(const Options& options, const SystemSizes& sizes) {
  for (const std::string& text : {Contradiction("channels", options.channels, sizes.channels),
                                  Contradiction("stations", options.stations, sizes.stations),
                                  Contradiction("labels", options.labels, sizes.labels)}) {
    if (!text.empty()) return {EINVAL, text};
  }
  return {};
}

}  // namespace

model::Status MakeInitialState(const Options& options, StateFile& file,
                               std::optional<SwitcherState>* state) {
  if (model::Status status = file.Read(state); !status.ok()) return status;
  if (state->has_value()) return CheckSizes(options, (*state)->Sizes());

  if (!options.databaseFile.empty()) {
    if (model::Status status = ReadDatabase(options.databaseFile, state); !status.ok()) {
      return status;
    }
    if (model::Status status = CheckSizes(options, (*state)->Sizes()); !status.ok()) return status;
  } else {
    const SystemSizes defaults;
    *state = SwitcherState({.channels = options.channels.value_or(defaults.channels),
                            .stations = options.stations.value_or(defaults.stations),
                            .labels = options.labels.value_or(defaults.labels)});
  }
  if (options.simulator.demo) Demo(options.simulator.seed).Fill(**state);
  return {};
}

}  // namespace tesksim
