// SPDX-License-Identifier: MIT

#include "tools/tesksim/state_text.h"

#include <charconv>
#include <cstdio>

#include "switcher/wire/messages/label_texts.h"
#include "tools/command_line/number.h"

namespace tesksim {

using command_line::ParseNumber;

namespace {

template <std::size_t Size>
std::string MemberList(const std::bitset<Size>& bits) {
  return ListOf(static_cast<int>(Size),
                [&](int member) { return bits.test(static_cast<std::size_t>(member - 1)); });
}

// Reads one character, or what a backslash makes of those behind it.  Returns the number of
// characters read; 0 for none that can be read.
std::size_t ParseCharacter(std::string_view text, char* character) {
  if (text.front() != '\\') {
    *character = text.front();
    return 1;
  }
  if (text.size() >= 2 && (text[1] == '\\' || text[1] == '"')) {
    *character = text[1];
    return 2;
  }
  if (text.size() < 4 || text[1] != 'x') return 0;
  unsigned value = 0;
  const auto [stop, error] = std::from_chars(text.data() + 2, text.data() + 4, value, 16);
  if (error != std::errc() || stop != text.data() + 4) return 0;
  *character = static_cast<char>(value);
  return 4;
}

}  // namespace

std::string DescribeRow(const SwitcherState& state, int output) {
  const auto crosspoint = [&](int input) { return state.crosspoints.At(output, input); };
  const int status = state.Row(output).status;
  std::string text = "output " + std::to_string(output) + " status " + std::to_string(status);
  text += " sources " + ListOf(state.ChannelCount(),
                               [&](int input) { return crosspoint(input) != Crosspoint::Off; });
  if (status == 0) return text;
  return text + " priority " + ListOf(state.ChannelCount(), [&](int input) {
           return crosspoint(input) == Crosspoint::Priority;
         });
}

std::string DescribeInhibits(const SwitcherState& state, int output) {
  return "output " + std::to_string(output) + " inhibits " +
         ListOf(state.ChannelCount(),
                [&](int input) { return state.inhibits.At(output, input) != 0; });
}

std::string DescribeRelays(const SwitcherState& state, int output) {
  return "output " + std::to_string(output) + " relays " + MemberList(state.relays[output]);
}

std::string DescribeButton(const SwitcherState& state, int station, int button) {
  const ButtonProgram& program = state.buttons[station][button];
  return "station " + std::to_string(station) + " button " + std::to_string(button) + " type " +
         std::to_string(program.type) + " first " + std::to_string(program.first) + " members " +
         MemberList(program.members);
}

std::string DescribeOpto(const SwitcherState& state, int opto) {
  const OptoProgram& program = state.optos[opto];
  return "opto " + std::to_string(opto) + " type " + std::to_string(program.type) + " channel " +
         std::to_string(program.channel) + " first " + std::to_string(program.first) + " members " +
         MemberList(program.members);
}

std::optional<Members> ParseMembers(Words words, int count) {
  if (words.empty()) return std::nullopt;
  Members members;
  if (words.size() == 1 && words.front() == "none") return members;
  for (const std::string_view word : words) {
    const auto member = ParseNumber(word, 1, count);
    if (!member.has_value()) return std::nullopt;
    members.set(static_cast<std::size_t>(*member - 1));
  }
  return members;
}

std::string QuoteLabel(std::string_view label) {
  std::string text = "\"";
  for (const char character : label) {
    const auto code = static_cast<unsigned char>(character);
    if (code < 0x20 || code > 0x7E) {
      char escaped[8];
      std::snprintf(escaped, sizeof escaped, "\\x%02X", code);
      text += escaped;
      continue;
    }
    if (character == '"' || character == '\\') text += '\\';
    text += character;
  }
  return text + "\"";
}

std::optional<std::string> ParseLabel(std::string_view text) {
  if (text.starts_with('"')) {
    if (text.size() < 2 || !text.ends_with('"')) return std::nullopt;
    text = text.substr(1, text.size() - 2);
  }
  std::string label;
  while (!text.empty()) {
    char character = 0;
    const std::size_t length = ParseCharacter(text, &character);
    if (length == 0) return std::nullopt;
    label += character;
    text.remove_prefix(length);
  }
  if (label.size() > switcher::kLabelLength) return std::nullopt;
  label.resize(switcher::kLabelLength, ' ');
  return label;
}

}  // namespace tesksim
