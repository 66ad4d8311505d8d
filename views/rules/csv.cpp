// SPDX-License-Identifier: MIT

#include "views/rules/csv.h"

#include <algorithm>
#include <cstdint>
#include <utility>

#include "db/jet/text_codec.h"

namespace rules {
namespace {

constexpr std::string_view kByteOrderMark = "\xEF\xBB\xBF";
constexpr char kSeparators[] = {',', ';', '\t'};
constexpr char kCsvQuote = '"';

bool IsLineEnd(char c) { return c == '\n' || c == '\r'; }

char SeparatorOf(std::string_view text) {
  std::size_t counts[std::size(kSeparators)] = {};
  bool isQuoted = false;
  for (const char c : text) {
    if (c == kCsvQuote) isQuoted = !isQuoted;
    if (isQuoted) continue;
    if (IsLineEnd(c)) break;
    const auto* const found = std::ranges::find(kSeparators, c);
    if (found != std::end(kSeparators)) ++counts[found - std::begin(kSeparators)];
  }
  return kSeparators[std::ranges::max_element(counts) - std::begin(counts)];
}

// Goes through a text from cell to cell.
class Reader {
 public:
  Reader(std::string_view text, char separator) : text_(text), separator_(separator) {}

  bool IsAtEnd() const { return at_ == text_.size(); }
  int Line() const { return line_; }
  int OpenQuotes() const { return openQuotes_; }

  // The cells of a row; of one that has more than `most` the first of them, and one more.
  std::vector<std::string> Row(std::size_t most) {
    std::vector<std::string> cells{Cell()};
    while (!IsAtEnd() && text_[at_] == separator_) {
      if (cells.size() > most) return cells;
      ++at_;
      cells.push_back(Cell());
    }
    if (!IsAtEnd()) {
      std::string lineEnd;
      Take(&lineEnd);
    }
    return cells;
  }

 private:
  // Up to the separator or line end that ends the cell.
  std::string Cell() {
    std::string cell;
    if (!IsAtEnd() && text_[at_] == kCsvQuote) TakeQuoted(&cell);
    while (!IsAtEnd() && text_[at_] != separator_ && !IsLineEnd(text_[at_])) Take(&cell);
    return cell;
  }

  void TakeQuoted(std::string* cell) {
    const int begin = line_;
    ++at_;
    while (!IsAtEnd()) {
      if (text_[at_] != kCsvQuote) {
        Take(cell);
        continue;
      }
      ++at_;
      if (IsAtEnd() || text_[at_] != kCsvQuote) return;
      Take(cell);
    }
    openQuotes_ = begin;
  }

  // A character, or the two of a line end.
  void Take(std::string* taken) {
    const char c = text_[at_++];
    *taken += c;
    if (!IsLineEnd(c)) return;
    if (c == '\r' && !IsAtEnd() && text_[at_] == '\n') *taken += text_[at_++];
    ++line_;
  }

  const std::string_view text_;
  const char separator_;
  std::size_t at_ = 0;
  int line_ = 1;
  int openQuotes_ = 0;
};

}  // namespace

std::optional<std::string> TextOfFile(std::string_view bytes) {
  if (bytes.find('\0') != std::string_view::npos) return std::nullopt;
  if (bytes.starts_with(kByteOrderMark)) bytes.remove_prefix(kByteOrderMark.size());
  std::u16string units;
  if (jet::AppendUnits(bytes, &units)) return std::string(bytes);
  units.clear();
  for (const char byte : bytes) units += jet::UnitOfByte(static_cast<std::uint8_t>(byte));
  std::string text;
  jet::AppendUtf8(units, &text);
  return text;
}

std::string_view Trimmed(std::string_view text) {
  while (!text.empty() && text.front() == ' ') text.remove_prefix(1);
  while (!text.empty() && text.back() == ' ') text.remove_suffix(1);
  return text;
}

Csv ParseCsv(std::string_view text, const CsvBounds& bounds) {
  Csv csv;
  Reader reader(text, SeparatorOf(text));
  while (!reader.IsAtEnd()) {
    const int line = reader.Line();
    std::vector<std::string> cells = reader.Row(bounds.cells);
    if (cells.size() == 1 && cells.front().empty()) continue;
    if (cells.size() > bounds.cells) {
      csv.tooManyCells = line;
      return csv;
    }
    if (csv.rows.size() == bounds.rows) {
      csv.tooManyRows = line;
      return csv;
    }
    csv.rows.push_back({.line = line, .cells = std::move(cells)});
  }
  csv.openQuotes = reader.OpenQuotes();
  return csv;
}

}  // namespace rules
