// SPDX-License-Identifier: MIT

#include "tests/support/page_examples.h"

#include <fstream>
#include <stdexcept>

namespace test {

std::vector<std::string> PageLines(std::string_view page, std::string_view kind) {
  const std::string fence = "```" + std::string(kind);
  std::ifstream file(std::string(TESK_DOCS) + "/" + std::string(page));
  std::vector<std::string> lines;
  bool inside = false;
  for (std::string line; std::getline(file, line);) {
    if (line.starts_with("```")) {
      inside = line == fence;
    } else if (inside && !line.empty()) {
      lines.push_back(line);
    }
  }
  if (lines.empty()) throw std::runtime_error("no examples in " + std::string(page));
  return lines;
}

}  // namespace test
