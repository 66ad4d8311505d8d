// SPDX-License-Identifier: MIT

#include <cstdio>
#include <utility>

#include "tools/tesksim/initial_state.h"
#include "tools/tesksim/loop.h"
#include "tools/tesksim/options.h"

int main(int argc, char** argv) {
  tesksim::Options options;
  const auto arguments = std::span<const char* const>(argv, static_cast<std::size_t>(argc));
  const std::string problem = tesksim::ParseOptions(arguments.subspan(1), &options);
  if (!problem.empty()) {
    std::fprintf(stderr, "tesksim: %s; --help explains\n", problem.c_str());
    return 2;
  }
  if (options.help) {
    std::fputs(tesksim::HelpText().c_str(), stdout);
    return 0;
  }
  tesksim::StateFile file(options.stateFile);
  std::optional<tesksim::SwitcherState> state;
  if (const auto status = tesksim::MakeInitialState(options, file, &state); !status.ok()) {
    std::fprintf(stderr, "tesksim: %s\n", status.Description().c_str());
    return 1;
  }
  return tesksim::Loop(options, std::move(file), std::move(*state)).Run();
}
