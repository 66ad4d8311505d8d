// SPDX-License-Identifier: MIT

#include "switcher/comparison/carried.h"

#include <algorithm>
#include <cstdint>
#include <vector>

#include "db/table.h"
#include "model/flag_string.h"
#include "switcher/stored_labels.h"

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
  switch (db::HowCarried(field)) {
    case db::Carried::Number:
      return (one.Int() & 0xFF) == (other.Int() & 0xFF);
    case db::Carried::Mark:
      return (one.Int() == 1) == (other.Int() == 1);
    case db::Carried::Label:
      return WireLabel(one.Text(), /*hidden=*/false) == WireLabel(other.Text(), /*hidden=*/false);
    case db::Carried::Flags:
      return AreSameFlags(one, other);
  }
  return false;
}

}  // namespace switcher
