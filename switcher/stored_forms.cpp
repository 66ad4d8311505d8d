// SPDX-License-Identifier: MIT

#include "switcher/stored_forms.h"

#include <algorithm>

#include "db/jet/text_codec.h"
#include "switcher/messages/label_texts.h"

namespace switcher {

namespace {

// The UTF-16 units that a character of UTF-8 begins, by its first byte: none for a byte in the
// middle of one.
std::size_t UnitsBegunBy(char byte) {
  const auto value = static_cast<std::uint8_t>(byte);
  if ((value & 0xC0) == 0x80) return 0;
  return value >= 0xF0 ? 2 : 1;
}

}  // namespace

std::string WireLabel(std::string_view label, bool hidden) {
  std::u16string units;
  jet::AppendUnits(label, &units);  // what comes from the database is always UTF-8
  std::string bytes(kLabelLength, ' ');
  for (std::size_t i = 0; i < std::min(units.size(), bytes.size()); ++i) {
    const int byte = jet::ByteOfUnit(units[i]);
    bytes[i] = static_cast<char>(byte >= 0 ? byte : units[i] & 0xFF);
  }
  if (hidden) bytes[0] = kHiddenMark;
  return bytes;
}

std::string LabelFromWire(std::string_view bytes) {
  const std::size_t length = bytes.find_last_not_of(' ') + 1;
  std::u16string units;
  for (const char byte : bytes.substr(0, length)) {
    units += jet::UnitOfByte(static_cast<std::uint8_t>(byte));
  }
  std::string label;
  jet::AppendUtf8(units, &label);
  return label;
}

std::vector<std::uint8_t> FlagMembers(std::string_view text) {
  std::vector<std::uint8_t> members;
  members.reserve(text.size());
  for (const char byte : text) {
    members.insert(members.end(), UnitsBegunBy(byte), static_cast<std::uint8_t>(byte == '1'));
  }
  return members;
}

std::string PlainFlags(std::string_view text) {
  std::string flags;
  flags.reserve(text.size());
  for (const char byte : text) flags.append(UnitsBegunBy(byte), byte == '1' ? '1' : '0');
  return flags;
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

std::string FilledFlags(std::string text, std::size_t length) {
  std::size_t units = 0;
  for (const char byte : text) units += UnitsBegunBy(byte);
  if (units < length) text.append(length - units, '0');
  return text;
}

}  // namespace switcher
