// SPDX-License-Identifier: MIT

#include "switcher/comparison/carried.h"

#include <algorithm>
#include <cstdint>
#include <optional>
#include <vector>

#include "model/flag_string.h"
#include "switcher/stored_labels.h"
#include "switcher/table.h"

namespace switcher {
namespace {

bool AreSameFlags(const jet::Value& one, const jet::Value& other) {
  std::vector<std::uint8_t> flags = model::FlagMembers(one.Text());
  std::vector<std::uint8_t> others = model::FlagMembers(other.Text());
  const std::size_t length = std::max(flags.size(), others.size());
  flags.resize(length, 0);
  others.resize(length, 0);
  return flags == others;
}

}  // namespace

bool IsSameInMessage(std::string_view field, const jet::Value& one, const jet::Value& other) {
  const std::optional<Carried> carried = HowCarried(field);
  if (!carried) return true;
  switch (*carried) {
    case Carried::Number:
      return (one.Int() & 0xFF) == (other.Int() & 0xFF);
    case Carried::Mark:
      return (one.Int() == 1) == (other.Int() == 1);
    case Carried::Label:
      return WireLabel(one.Text(), /*hidden=*/false) == WireLabel(other.Text(), /*hidden=*/false);
    case Carried::Flags:
      return AreSameFlags(one, other);
  }
  return false;
}

}  // namespace switcher
