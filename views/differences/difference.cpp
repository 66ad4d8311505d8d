// SPDX-License-Identifier: MIT

#include "views/differences/difference.h"

#include <set>
#include <utility>

namespace views {

std::vector<stations::Change> ChangesOf(std::span<const stations::Change> changes,
                                        std::span<const Difference> rows) {
  std::set<std::pair<int, std::string_view>> wanted;
  for (const Difference& row : rows) {
    for (const std::string& field : row.fields) wanted.emplace(row.station, field);
  }
  std::vector<stations::Change> chosen;
  for (stations::Change change : changes) {
    std::erase_if(change.fields, [&](const stations::FieldChange& field) {
      return !wanted.contains({change.station, field.field});
    });
    if (!change.fields.empty()) chosen.push_back(std::move(change));
  }
  return chosen;
}

}  // namespace views
