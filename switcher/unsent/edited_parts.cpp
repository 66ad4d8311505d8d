// SPDX-License-Identifier: MIT

#include "switcher/unsent/edited_parts.h"

#include <algorithm>

namespace switcher {

std::vector<TablePart> EditedParts(const stations::Change& change) {
  std::vector<TablePart> parts;
  for (const db::TableKind& kind : db::kTables) {
    const bool isEdited = std::ranges::any_of(
        change.fields, [&](const auto& field) { return db::IsFieldOf(kind.table, field.field); });
    if (isEdited) parts.push_back({.table = kind.table, .station = change.station});
  }
  return parts;
}

}  // namespace switcher
