// SPDX-License-Identifier: MIT

#include "db/station_fields.h"

#include <charconv>
#include <system_error>

namespace db {

std::string ButtonField(int button, std::string_view suffix) {
  return "B" + std::to_string(button) + " " + std::string(suffix);
}

int ButtonOfField(std::string_view field) {
  if (!field.starts_with('B')) return 0;
  int button = 0;
  const char* const end = field.data() + field.size();
  const auto number = std::from_chars(field.data() + 1, end, button);
  if (number.ec != std::errc() || button < 1 || field[1] == '0') return 0;
  std::string_view suffix(number.ptr, end);
  if (!suffix.starts_with(' ')) return 0;
  suffix.remove_prefix(1);
  const bool isButtons =
      suffix == kButtonType || suffix == kButtonFirst || suffix == kButtonTargets;
  return isButtons ? button : 0;
}

}  // namespace db
