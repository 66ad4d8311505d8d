// SPDX-License-Identifier: MIT

#ifndef TOOLS_COMMAND_LINE_NUMBER_H_
#define TOOLS_COMMAND_LINE_NUMBER_H_

#include <charconv>
#include <optional>
#include <string_view>

namespace command_line {

// A decimal number within first..last, and nothing else in `text`.
inline std::optional<int> ParseNumber(std::string_view text, int first, int last) {
  int number = 0;
  const char* const end = text.data() + text.size();
  const auto [stop, error] = std::from_chars(text.data(), end, number);
  if (error != std::errc() || stop != end || number < first || number > last) return std::nullopt;
  return number;
}

}  // namespace command_line

#endif  // TOOLS_COMMAND_LINE_NUMBER_H_
