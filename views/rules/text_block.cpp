// SPDX-License-Identifier: MIT

#include "views/rules/text_block.h"

namespace rules {
namespace {

constexpr char kQuote = '"';
constexpr char kTab = '\t';

bool EndsCell(char c) { return c == kTab || c == '\n' || c == '\r'; }

// Reads the cell at text[*at] and leaves *at on what ends it.
std::string ReadCell(std::string_view text, std::size_t* at) {
  if (*at < text.size() && text[*at] == kQuote) {
    std::string cell;
    for (std::size_t i = *at + 1; i < text.size(); ++i) {
      if (text[i] != kQuote) {
        cell += text[i];
      } else if (i + 1 < text.size() && text[i + 1] == kQuote) {
        cell += kQuote;
        ++i;
      } else if (i + 1 == text.size() || EndsCell(text[i + 1])) {
        *at = i + 1;
        return cell;
      } else {
        break;  // the quotes are part of an ordinary text
      }
    }
  }
  const std::size_t begin = *at;
  while (*at < text.size() && !EndsCell(text[*at])) ++*at;
  return std::string(text.substr(begin, *at - begin));
}

}  // namespace

TextBlock ParseBlock(std::string_view text) {
  TextBlock block;
  for (std::size_t at = 0; at < text.size();) {
    std::vector<std::string>& row = block.emplace_back();
    row.push_back(ReadCell(text, &at));
    while (at < text.size() && text[at] == kTab) {
      ++at;
      row.push_back(ReadCell(text, &at));
    }
    const bool endsInTwo = at + 1 < text.size() && text[at] == '\r' && text[at + 1] == '\n';
    at += endsInTwo ? 2 : 1;
  }
  return block;
}

std::string WriteBlock(const TextBlock& block) {
  std::string text;
  for (const std::vector<std::string>& row : block) {
    for (std::size_t i = 0; i < row.size(); ++i) {
      if (i > 0) text += kTab;
      const std::string& cell = row[i];
      const bool needsQuotes = cell.find_first_of("\t\r\n") != std::string::npos ||
                               (!cell.empty() && cell.front() == kQuote);
      if (!needsQuotes) {
        text += cell;
        continue;
      }
      text += kQuote;
      for (const char c : cell) {
        if (c == kQuote) text += kQuote;
        text += c;
      }
      text += kQuote;
    }
    text += '\n';
  }
  return text;
}

}  // namespace rules
