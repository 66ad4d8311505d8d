// SPDX-License-Identifier: MIT
//
// Blocks of cells as spreadsheets copy them.  All texts are UTF-8.

#ifndef VIEWS_RULES_TEXT_BLOCK_H_
#define VIEWS_RULES_TEXT_BLOCK_H_

#include <string>
#include <string_view>
#include <vector>

namespace rules {

// The cells of a block, row by row; rows may have different lengths.
using TextBlock = std::vector<std::vector<std::string>>;

// Takes apart a block as spreadsheets copy it: cells separated by tabs, rows by line ends (LF,
// CR LF or CR; one at the end ends the last row).  A cell in quotes may hold all of these, and
// quotes that are doubled; a cell that only begins with a quote is taken as it stands.  An empty
// text has no rows.
TextBlock ParseBlock(std::string_view text);

// The same the other way round: with quotes where a cell needs them, rows ended by LF.
std::string WriteBlock(const TextBlock& block);

}  // namespace rules

#endif  // VIEWS_RULES_TEXT_BLOCK_H_
