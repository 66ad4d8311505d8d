// SPDX-License-Identifier: MIT

#include "tools/teskpanel/json_line.h"

namespace teskpanel {

JsonLine& JsonLine::Text(std::string_view name, std::string_view value) {
  static constexpr char kDigits[] = "0123456789abcdef";
  std::string& line = Begin(name);
  line += '"';
  for (const char character : value) {
    const auto byte = static_cast<unsigned char>(character);
    if (character == '"' || character == '\\') {
      line += '\\';
      line += character;
    } else if (byte < 0x20 || byte >= 0x7F) {
      line += "\\u00";
      line += kDigits[byte >> 4];
      line += kDigits[byte & 15];
    } else {
      line += character;
    }
  }
  line += '"';
  return *this;
}

JsonLine& JsonLine::Number(std::string_view name, int value) {
  Begin(name) += std::to_string(value);
  return *this;
}

JsonLine& JsonLine::Flag(std::string_view name, bool value) {
  Begin(name) += value ? "true" : "false";
  return *this;
}

JsonLine& JsonLine::Numbers(std::string_view name, std::span<const int> values) {
  std::string& line = Begin(name);
  line += '[';
  for (const int value : values) {
    if (line.back() != '[') line += ',';
    line += std::to_string(value);
  }
  line += ']';
  return *this;
}

std::string& JsonLine::Begin(std::string_view name) {
  line_ += line_.empty() ? '{' : ',';
  line_ += '"';
  line_ += name;
  line_ += "\":";
  return line_;
}

}  // namespace teskpanel
