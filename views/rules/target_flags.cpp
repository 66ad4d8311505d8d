// SPDX-License-Identifier: MIT

#include "views/rules/target_flags.h"

#include <cstdint>
#include <vector>

#include "switcher/stored_forms.h"

namespace rules {

std::string WithMember(std::string_view text, int member, bool set, int count) {
  std::vector<std::uint8_t> members = switcher::FlagMembers(text);
  members.resize(static_cast<std::size_t>(count));
  members[static_cast<std::size_t>(member - 1)] = set ? 1 : 0;
  return switcher::WithFirstFlags(text, members);
}

}  // namespace rules
