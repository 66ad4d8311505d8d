// SPDX-License-Identifier: MIT

#include "switcher/wire/message_table.h"

namespace switcher {

std::string DescribeMessage(MessageCode code, int number) {
  std::string title(FindMessage(code)->title);
  const std::size_t mark = title.find("%1");
  return mark == std::string::npos ? title : title.replace(mark, 2, std::to_string(number));
}

}  // namespace switcher
