// SPDX-License-Identifier: MIT
//
// The fields in which people label a station, and the texts that fit into them.  All texts are
// UTF-8.

#ifndef STATIONS_LABEL_TEXTS_H_
#define STATIONS_LABEL_TEXTS_H_

#include <array>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

#include "db/jet/value.h"
#include "db/station_fields.h"

namespace stations {

// In the order in which they are shown.
enum class LabelColumn : std::uint8_t {
  Station,
  StationLabel,
  InputLabel,
  Hidden,
  SystemInput,
  SystemOutput,
  Notes
};

// A field of the table of stations that holds one of these texts.
struct LabelColumnSpec {
  const char* field;
  int maxLength;  // in characters; 0 when it holds no text

  bool IsText() const { return maxLength > 0; }
};

inline constexpr int kLabelColumnCount = 7;

// In the order of LabelColumn.
inline constexpr std::array<LabelColumnSpec, kLabelColumnCount> kLabelColumns = {{
    {db::kStationNumField, 0},
    {db::kLabelField, 8},
    {db::kInLabelField, 8},
    {db::kHiddenField, 0},
    {db::kSysInputField, 20},
    {db::kSysOutputField, 20},
    {db::kNotesField, 128},
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

}  // namespace stations

#endif  // STATIONS_LABEL_TEXTS_H_
