// SPDX-License-Identifier: MIT
//
// What the tests of a small system have in common.

#ifndef TESTS_APP_EIGHT_CHANNELS_H_
#define TESTS_APP_EIGHT_CHANNELS_H_

#include <cstddef>
#include <string>
#include <vector>

namespace app {

inline constexpr int kChannels = 8;

// Columns of the grid of labels.
inline constexpr int kLabel = 1;
inline constexpr int kInput = 2;
inline constexpr int kNotes = 6;

// A flag string with these members (from 1) set.
inline std::string Flags(const std::vector<int>& members) {
  std::string flags(64, '0');
  for (const int member : members) flags[static_cast<std::size_t>(member - 1)] = '1';
  return flags;
}

}  // namespace app

#endif  // TESTS_APP_EIGHT_CHANNELS_H_
