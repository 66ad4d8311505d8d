// SPDX-License-Identifier: MIT
//
// The text of Locks.json:
//
//   {
//     "console": false,
//     "outputs": [
//       {"output": 6, "panels": true}
//     ]
//   }

#ifndef CONFIG_LOCK_TEXT_H_
#define CONFIG_LOCK_TEXT_H_

#include <cstddef>
#include <string>
#include <string_view>

#include "model/locks.h"

namespace config {

// What is locked.
struct LockState {
  bool isConsoleLocked = false;
  model::Locks::Outputs outputs;

  bool operator==(const LockState&) const = default;
};

// No text of locks is longer.
inline constexpr std::size_t kMostLockText = 64 * 1024;

// Reads what is locked.  A text with anything that is not as it is written, an output outside
// 1..256 or one that is there twice, is refused as a whole: half of the locks would be taken for
// all of them.
bool ReadLocks(std::string_view text, LockState* state);

std::string WriteLocks(const LockState& state);

}  // namespace config

#endif  // CONFIG_LOCK_TEXT_H_
