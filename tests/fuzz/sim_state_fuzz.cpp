// SPDX-License-Identifier: MIT
//
// Reads arbitrary text as a state file of the simulated switcher.  What is accepted is written
// again, and read again as the same.

#include <cstdint>
#include <cstdlib>
#include <optional>
#include <string_view>

#include "tools/tesksim/kept_state.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  std::optional<tesksim::SwitcherState> state;
  const std::string_view text(reinterpret_cast<const char*>(data), size);
  const model::Status status = tesksim::ReadState(text, &state);
  if (status.ok() != state.has_value()) std::abort();
  if (!status.ok()) return 0;
  const std::string written = tesksim::WriteState(*state);
  std::optional<tesksim::SwitcherState> again;
  if (!tesksim::ReadState(written, &again).ok() || tesksim::WriteState(*again) != written) {
    std::abort();
  }
  return 0;
}
