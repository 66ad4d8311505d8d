// SPDX-License-Identifier: MIT

#include "tests/support/page_examples.h"

#include <algorithm>
#include <fstream>
#include <stdexcept>

namespace test {

namespace {

std::ifstream Open(std::string_view page) {
  return std::ifstream(std::string(TESK_DOCS) + "/" + std::string(page));
}

// "| a | b |" to its cells.
std::vector<std::string> Cells(const std::string& row) {
  std::vector<std::string> cells;
  for (std::size_t begin = 1; begin < row.size();) {
    const std::size_t end = std::min(row.find('|', begin), row.size());
    const std::string cell = row.substr(begin, end - begin);
    const std::size_t first = cell.find_first_not_of(' ');
    const std::size_t last = cell.find_last_not_of(' ');
    cells.push_back(first == std::string::npos ? "" : cell.substr(first, last - first + 1));
    begin = end + 1;
  }
  return cells;
}

}  // namespace

std::vector<std::string> PageLines(std::string_view page, std::string_view kind) {
  const std::string fence = "```" + std::string(kind);
  std::ifstream file = Open(page);
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

std::vector<std::vector<std::string>> PageTable(std::string_view page, std::string_view heading) {
  std::ifstream file = Open(page);
  std::vector<std::vector<std::string>> rows;
  bool below = false;
  for (std::string line; std::getline(file, line);) {
    below = below || line == heading;
    if (below && line.starts_with('|')) rows.push_back(Cells(line));
    if (!rows.empty() && !line.starts_with('|')) break;
  }
  constexpr int kHead = 2;
  if (rows.size() <= kHead) throw std::runtime_error("no table in " + std::string(page));
  rows.erase(rows.begin(), rows.begin() + kHead);
  return rows;
}

}  // namespace test
