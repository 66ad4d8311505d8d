// SPDX-License-Identifier: MIT
//
// Takes arbitrary bytes for the file of the locks.  What is read of it must be the same when it was
// written and read again.

#include <cstdint>
#include <cstdlib>
#include <string_view>

#include "config/lock_text.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  config::LockState state;
  if (!config::ReadLocks({reinterpret_cast<const char*>(data), size}, &state)) {
    if (state != config::LockState()) std::abort();
    return 0;
  }
  config::LockState again;
  if (!config::ReadLocks(config::WriteLocks(state), &again) || again != state) std::abort();
  return 0;
}
