// SPDX-License-Identifier: MIT

#include "model/flag_string.h"

#include <algorithm>

namespace model {

namespace {

// The UTF-16 units that a character of UTF-8 begins, by its first byte: none for a byte in the
// middle of one.
std::size_t UnitsBegunBy(char byte) {
  const auto value = static_cast<std::uint8_t>(byte);
  if ((value & 0xC0) == 0x80) return 0;
  return value >= 0xF0 ? 2 : 1;
}

// The members of a text of ASCII; false when it is none.  In blocks of a size that is known when
// this is compiled, which the compiler makes a few instructions of.
bool TakeAscii(std::string_view text, std::uint8_t* members) {
  constexpr std::size_t kBlock = 16;
  std::uint8_t bits = 0;
  std::size_t i = 0;
  for (; i + kBlock <= text.size(); i += kBlock) {
    for (std::size_t k = i; k < i + kBlock; ++k) {
      bits |= static_cast<std::uint8_t>(text[k]);
      members[k] = text[k] == '1' ? 1 : 0;
    }
  }
  for (; i < text.size(); ++i) {
    bits |= static_cast<std::uint8_t>(text[i]);
    members[i] = text[i] == '1' ? 1 : 0;
  }
  return bits < 0x80;
}

}  // namespace

std::vector<std::uint8_t> FlagMembers(std::string_view text) {
  // In ASCII, as nearly every text is, each byte is a unit.
  std::vector<std::uint8_t> members(text.size());
  if (TakeAscii(text, members.data())) return members;
  members.clear();
  for (const char byte : text) {
    members.insert(members.end(), UnitsBegunBy(byte), static_cast<std::uint8_t>(byte == '1'));
  }
  return members;
}

std::string PlainFlags(std::string_view text) {
  const std::vector<std::uint8_t> members = FlagMembers(text);
  std::string flags(members.size(), '0');
  std::ranges::transform(members, flags.begin(),
                         [](std::uint8_t member) { return static_cast<char>('0' + member); });
  return flags;
}

bool FlagIsSet(std::string_view flags, int member) {
  return member >= 1 && static_cast<std::size_t>(member) <= flags.size() &&
         flags[static_cast<std::size_t>(member) - 1] == '1';
}

int FirstFlag(std::string_view flags, int count) {
  for (int member = 1; member <= count; ++member) {
    if (FlagIsSet(flags, member)) return member;
  }
  return 0;
}

int FlagGroup(std::string_view flags, int first) {
  int value = 0;
  for (int i = 0; i < 8; ++i) {
    if (FlagIsSet(flags, first + i)) value |= 1 << i;
  }
  return value;
}

std::string WithFirstFlags(std::string_view text, std::span<const std::uint8_t> flags) {
  std::string result;
  result.reserve(std::max(text.size(), flags.size()));
  for (const std::uint8_t flag : flags) result += flag != 0 ? '1' : '0';
  std::size_t kept = 0;
  for (std::size_t units = 0; kept < text.size(); ++kept) {
    const std::size_t begun = UnitsBegunBy(text[kept]);
    if (begun > 0 && units >= flags.size()) break;
    units += begun;
  }
  result += text.substr(kept);
  return result;
}

std::string WithFlag(std::string_view text, int member, bool set, int count) {
  std::vector<std::uint8_t> members = FlagMembers(text);
  members.resize(static_cast<std::size_t>(count));
  members[static_cast<std::size_t>(member - 1)] = set ? 1 : 0;
  return WithFirstFlags(text, members);
}

std::string FilledFlags(std::string text, std::size_t length) {
  std::size_t units = 0;
  for (const char byte : text) units += UnitsBegunBy(byte);
  if (units < length) text.append(length - units, '0');
  return text;
}

}  // namespace model
