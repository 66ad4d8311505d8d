// SPDX-License-Identifier: MIT

#include "db/table.h"

#include <algorithm>
#include <iterator>

namespace db {
namespace {

constexpr bool StandAtTheirPlaces() {
  for (std::size_t i = 0; i < std::size(kTables); ++i) {
    if (static_cast<std::size_t>(kTables[i].table) != i) return false;
  }
  return true;
}
static_assert(StandAtTheirPlaces());

// A button's field is found by its end, which is read sooner than its number.
bool Is(const TableField& known, std::string_view field) {
  if (known.table != Table::Buttons) return field == known.name;
  return field.ends_with(known.name) && ButtonOfField(field) != 0;
}

}  // namespace

bool IsFieldOf(Table table, std::string_view field) {
  return std::ranges::any_of(kTableFields, [&](const TableField& known) {
    return known.table == table && Is(known, field);
  });
}

const TableField* FindTableField(std::string_view field) {
  const auto* const found =
      std::ranges::find_if(kTableFields, [&](const TableField& known) { return Is(known, field); });
  return found == std::end(kTableFields) ? nullptr : found;
}

}  // namespace db
