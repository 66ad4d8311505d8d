// SPDX-License-Identifier: MIT

#include "stations/label_texts.h"

#include <algorithm>

#include "db/jet/text_codec.h"

namespace stations {
namespace {

constexpr char16_t kReplacement = 0xFFFD;
constexpr char16_t kEndOfMessage = 0xFF;
constexpr char16_t kFirstWide = 0x80;

// A text that is not UTF-8 comes out as a character that no field takes.
std::u16string UnitsOf(std::string_view text) {
  std::u16string units;
  if (!jet::AppendUnits(text, &units)) units.push_back(kReplacement);
  return units;
}

// The character that begins at a unit.
std::string CharacterAt(const std::u16string& units, std::size_t at) {
  const bool isPair = units[at] >= 0xD800 && units[at] < 0xDC00 && at + 1 < units.size();
  std::string character;
  jet::AppendUtf8(std::u16string_view(units).substr(at, isPair ? 2 : 1), &character);
  return character;
}

bool IsControl(char16_t unit) { return unit < 0x20 || (unit >= 0x7F && unit < 0xA0); }

bool IsLineBreakOrTab(char16_t unit) { return unit == '\n' || unit == '\r' || unit == '\t'; }

TextProblem ProblemOf(LabelColumn column, char16_t unit) {
  if (IsControl(unit)) {
    const bool allowed = column == LabelColumn::Notes && IsLineBreakOrTab(unit);
    return allowed ? TextProblem::None : TextProblem::Control;
  }
  if (jet::ByteOfUnit(unit) < 0) return TextProblem::NotInCodePage;
  if (unit == kEndOfMessage && IsLabel(column)) return TextProblem::EndOfMessage;
  return TextProblem::None;
}

}  // namespace

int LengthOf(std::string_view text) {
  std::u16string units;
  return jet::AppendUnits(text, &units) ? static_cast<int>(units.size()) : -1;
}

TextCheck CheckText(LabelColumn column, std::string_view text) {
  const std::u16string units = UnitsOf(text);
  for (std::size_t i = 0; i < units.size(); ++i) {
    const TextProblem problem = ProblemOf(column, units[i]);
    if (problem != TextProblem::None) return {problem, CharacterAt(units, i)};
  }
  const bool fits = units.size() <= static_cast<std::size_t>(Spec(column).maxLength);
  return {fits ? TextProblem::None : TextProblem::TooLong, {}};
}

std::string FirstWideCharacter(std::string_view text) {
  const std::u16string units = UnitsOf(text);
  const auto wide =
      std::find_if(units.begin(), units.end(), [](char16_t unit) { return unit >= kFirstWide; });
  if (wide == units.end()) return {};
  return CharacterAt(units, static_cast<std::size_t>(wide - units.begin()));
}

std::string HiddenText(const jet::Value& hidden) {
  if (hidden.IsNull()) return {};
  if (hidden.GetKind() == jet::Value::Kind::Text) return hidden.Text();
  if (hidden.GetKind() == jet::Value::Kind::Bool) return hidden.Bool() ? "Yes" : "No";
  switch (const int value = hidden.Int(); value) {
    case 0:
      return "No";
    case 1:
      return "Yes";
    default:
      return std::to_string(value);
  }
}

std::optional<int> ParseHidden(std::string_view word) {
  std::string lower(word);
  std::transform(lower.begin(), lower.end(), lower.begin(),
                 [](char c) { return c >= 'A' && c <= 'Z' ? static_cast<char>(c + 32) : c; });
  if (lower == "no" || lower == "0") return 0;
  if (lower == "yes" || lower == "1") return 1;
  return std::nullopt;
}

}  // namespace stations
