// SPDX-License-Identifier: MIT

#ifndef TESKSIM_WORDS_H_
#define TESKSIM_WORDS_H_

#include <algorithm>
#include <span>
#include <string_view>
#include <vector>

namespace tesksim {

// Words of one line; they point into it.
using Words = std::span<const std::string_view>;

// Splits a line at blanks, tabs and carriage returns.  `line` must outlive the words.
inline std::vector<std::string_view> SplitWords(std::string_view line) {
  constexpr std::string_view kBlanks = " \t\r";
  std::vector<std::string_view> words;
  for (std::size_t first = line.find_first_not_of(kBlanks); first != std::string_view::npos;) {
    const std::size_t end = std::min(line.find_first_of(kBlanks, first), line.size());
    words.push_back(line.substr(first, end - first));
    first = line.find_first_not_of(kBlanks, end);
  }
  return words;
}

}  // namespace tesksim

#endif  // TESKSIM_WORDS_H_
