// SPDX-License-Identifier: MIT
//
// Comma-separated values as spreadsheets write them, read into rows of texts.

#ifndef VIEWS_RULES_CSV_H_
#define VIEWS_RULES_CSV_H_

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace rules {

// A row and the line of the text, from 1, in which it begins.
struct CsvRow {
  int line = 1;
  std::vector<std::string> cells;  // UTF-8; at least one
};

struct Csv {
  std::vector<CsvRow> rows;  // without those that are empty lines
  // The line in which quotes are opened that are never closed; 0 when there is none.
  int openQuotes = 0;
  // The line that has more cells, or is one more row, than the bounds allow: there the reading has
  // ended.  0 when there is none.
  int tooManyCells = 0;
  int tooManyRows = 0;
};

// How much is read of a file before it is none of ours.
struct CsvBounds {
  std::size_t cells = 64;  // of a row
  std::size_t rows = 0;
};

// A text without the spaces around it.
std::string_view Trimmed(std::string_view text);

// The bytes of a text file as UTF-8: with or without a byte order mark, or in code page 1252 when
// they are no UTF-8.  Nothing when they are no text but hold a byte of 0, as wider characters do.
std::optional<std::string> TextOfFile(std::string_view bytes);

// Takes a text apart.  Cells are separated by what the first line has most of: commas, semicolons
// or tabs.  Rows end in LF, CR LF or CR.  A cell that begins with a quote ends with the next one
// that is not doubled, and may hold separators and line ends; what follows the closing quote up to
// the separator belongs to it, too.
Csv ParseCsv(std::string_view text, const CsvBounds& bounds);

}  // namespace rules

#endif  // VIEWS_RULES_CSV_H_
