// SPDX-License-Identifier: MIT

#include "model/flag_string.h"

namespace model {

bool FlagIsSet(std::string_view flags, int member) {
  return member >= 1 && static_cast<std::size_t>(member) <= flags.size() &&
         flags[static_cast<std::size_t>(member) - 1] == '1';
}

int FlagGroup(std::string_view flags, int first) {
  int value = 0;
  for (int i = 0; i < 8; ++i) {
    if (FlagIsSet(flags, first + i)) value |= 1 << i;
  }
  return value;
}

}  // namespace model
