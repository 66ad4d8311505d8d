// SPDX-License-Identifier: MIT
//
// What the grid of station labels shows and takes: its columns, the texts that fit into them,
// and blocks of cells as spreadsheets copy them.  All texts are UTF-8.

#ifndef VIEWS_RULES_LABEL_RULES_H_
#define VIEWS_RULES_LABEL_RULES_H_

#include <array>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "db/jet/value.h"
#include "db/station_fields.h"

namespace rules {

enum class LabelColumn : std::uint8_t {
  Station,
  StationLabel,
  InputLabel,
  Hidden,
  SystemInput,
  SystemOutput,
  Notes
};

// A column of the grid.  Its texts are fixed and end with a NUL.
struct LabelColumnSpec {
  const char* caption;
  const char* key;
  const char* field;  // of the table of stations
  int maxLength;      // in characters; 0 when the column holds no text
  int twips;          // its width

  bool IsText() const { return maxLength > 0; }
};

inline constexpr int kLabelColumnCount = 7;

// In the order of the grid.
inline constexpr std::array<LabelColumnSpec, kLabelColumnCount> kLabelColumns = {{
    {"Station", "StaNum", db::kStationNumField, 0, 960},
    {"Station Label", "StaLabel", db::kLabelField, 8, 1400},
    {"Input Label", "SysInLabel", db::kInLabelField, 8, 1400},
    {"Hidden", "StaHidden", db::kHiddenField, 0, 1000},
    {"System Input", "SysInput", db::kSysInputField, 20, 1400},
    {"System Output", "SysOutput", db::kSysOutputField, 20, 1500},
    {"Station Notes", "StaNotes", db::kNotesField, 128, 3500},
}};

constexpr const LabelColumnSpec& Spec(LabelColumn column) {
  return kLabelColumns[static_cast<std::size_t>(column)];
}

// Whether the column's texts travel to the switcher and the panels.
constexpr bool IsLabel(LabelColumn column) {
  return column == LabelColumn::StationLabel || column == LabelColumn::InputLabel;
}

// The length of a text in the characters that limit a field; -1 when it is not valid UTF-8.
int LengthOf(std::string_view text);

enum class TextProblem : std::uint8_t {
  None,
  TooLong,
  NotInCodePage,  // the database's code page 1252 does not have the character
  EndOfMessage,   // 0xFF, which ends a message on the wire, in a label
  Control,        // a control character; notes may hold tabs and line breaks
};

// The first problem that a text has in a column, and the character that has it.
struct TextCheck {
  TextProblem problem = TextProblem::None;
  std::string character;  // empty for None and TooLong

  bool ok() const { return problem == TextProblem::None; }
};

// REQUIRES: a column that holds texts.
TextCheck CheckText(LabelColumn column, std::string_view text);

// The first character above 127, which a line of 7-bit data spoils; empty when there is none.
std::string FirstWideCharacter(std::string_view text);

// The words of the hidden flag: "No" for 0, "Yes" for 1, "" for null, any other value as it is.
std::string HiddenText(const jet::Value& hidden);

// The flag that a word stands for: No, Yes (in either case), 0, 1.
std::optional<int> ParseHidden(std::string_view word);

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

#endif  // VIEWS_RULES_LABEL_RULES_H_
