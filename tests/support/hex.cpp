// SPDX-License-Identifier: MIT

#include "tests/support/hex.h"

#include <cctype>
#include <charconv>
#include <stdexcept>

namespace test {

std::vector<std::uint8_t> FromHex(std::string_view text) {
  std::vector<std::uint8_t> bytes;
  for (std::size_t i = 0; i < text.size();) {
    if (std::isspace(static_cast<unsigned char>(text[i])) != 0) {
      ++i;
      continue;
    }
    std::uint8_t byte = 0;
    const char* const first = text.data() + i;
    const char* const last = text.data() + std::min(i + 2, text.size());
    const auto [end, error] = std::from_chars(first, last, byte, 16);
    if (error != std::errc() || end != first + 2) {
      throw std::invalid_argument("no hexadecimal byte at: " + std::string(text.substr(i)));
    }
    bytes.push_back(byte);
    i += 2;
  }
  return bytes;
}

std::string Hex(std::span<const std::uint8_t> bytes) {
  static constexpr char kDigits[] = "0123456789ABCDEF";
  std::string text;
  for (const std::uint8_t byte : bytes) {
    if (!text.empty()) text += ' ';
    text += kDigits[byte >> 4];
    text += kDigits[byte & 15];
  }
  return text;
}

std::string Times(int count, std::string_view hex) {
  std::string text;
  for (int i = 0; i < count; ++i) text.append(hex).append(" ");
  return text;
}

}  // namespace test
