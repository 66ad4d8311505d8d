// SPDX-License-Identifier: MIT

#ifndef TESKPANEL_JSON_LINE_H_
#define TESKPANEL_JSON_LINE_H_

#include <span>
#include <string>
#include <string_view>

namespace teskpanel {

// Builds one JSON object on one line.
class JsonLine {
 public:
  explicit JsonLine(std::string_view event) { Text("event", event); }

  // Append a member.  Bytes of `value` that are no printable ASCII are escaped.
  JsonLine& Text(std::string_view name, std::string_view value);
  JsonLine& Number(std::string_view name, int value);
  JsonLine& Flag(std::string_view name, bool value);
  JsonLine& Numbers(std::string_view name, std::span<const int> values);

  // The object, without a line end.
  std::string Finish() const { return line_ + "}"; }

 private:
  std::string& Begin(std::string_view name);

  std::string line_;
};

}  // namespace teskpanel

#endif  // TESKPANEL_JSON_LINE_H_
