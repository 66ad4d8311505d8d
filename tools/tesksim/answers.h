// SPDX-License-Identifier: MIT
//
// What the commands have in common: complaints, and words that many of them take.

#ifndef TESKSIM_ANSWERS_H_
#define TESKSIM_ANSWERS_H_

#include <optional>
#include <string>
#include <string_view>

namespace tesksim {

inline std::string OutOfRange(std::string_view what, int first, int last) {
  return "error " + std::string(what) + " must be " + std::to_string(first) + ".." +
         std::to_string(last);
}

inline std::optional<bool> ParseSwitch(std::string_view text) {
  if (text == "on") return true;
  if (text == "off") return false;
  return std::nullopt;
}

inline constexpr char kOnOrOff[] = "error say on or off";

}  // namespace tesksim

#endif  // TESKSIM_ANSWERS_H_
