// SPDX-License-Identifier: MIT

#include "switcher/comparison/carried.h"

#include <algorithm>
#include <cstdint>
#include <vector>

#include "db/station_fields.h"
#include "model/flag_string.h"
#include "switcher/stored_labels.h"

namespace switcher {
namespace {

bool IsFlagString(std::string_view field) {
  return field == db::kInhibitsField || field == db::kRelaysField ||
         field == db::kOptoStationsField || field.ends_with(db::kButtonTargets);
}

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
  if (field == db::kLabelField || field == db::kInLabelField) {
    return WireLabel(one.Text(), /*hidden=*/false) == WireLabel(other.Text(), /*hidden=*/false);
  }
  if (field == db::kHiddenField) return (one.Int() == 1) == (other.Int() == 1);
  if (IsFlagString(field)) return AreSameFlags(one, other);
  return (one.Int() & 0xFF) == (other.Int() & 0xFF);
}

}  // namespace switcher
