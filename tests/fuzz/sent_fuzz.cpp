// SPDX-License-Identifier: MIT
//
// Takes arbitrary bytes for the file of what the switcher holds.  What is read of it must be the
// same when it was written and read again.

#include <cstdint>
#include <cstdlib>
#include <string>
#include <string_view>

#include "switcher/unsent/held_messages.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  const std::string_view text(reinterpret_cast<const char*>(data), size);
  const switcher::HeldMessages messages = switcher::ReadHeld(text);
  const std::string written = switcher::WriteHeld(messages);
  const switcher::HeldMessages again = switcher::ReadHeld(written);
  if (switcher::WriteHeld(again) != written) std::abort();
  for (const auto& [part, message] : again) {
    if (messages.at(part) != message) std::abort();
  }
  return 0;
}
