// SPDX-License-Identifier: MIT

#ifndef TESTS_END_TO_END_PENDING_TABLES_H_
#define TESTS_END_TO_END_PENDING_TABLES_H_

#include <string>
#include <string_view>

#include "tests/end_to_end/system_database.h"

namespace test {

// The tables as an edit of several steps changes them: only when the console has done all of it
// are they changed.
class PendingTables {
 public:
  explicit PendingTables(StoredTables& tables) : tables_(tables) {}

  std::string Get(int station, std::string_view field) const {
    const std::string key = Key(station, field);
    const auto changed = changes_.find(key);
    return changed != changes_.end() ? changed->second : tables_.at(key);
  }

  void Set(int station, std::string_view field, const std::string& value) {
    changes_[Key(station, field)] = value;
  }

  void Commit() {
    for (const auto& [key, value] : changes_) tables_[key] = value;
  }

 private:
  static std::string Key(int station, std::string_view field) {
    return std::to_string(station) + " " + std::string(field);
  }

  StoredTables& tables_;
  StoredTables changes_;
};

}  // namespace test

#endif  // TESTS_END_TO_END_PENDING_TABLES_H_
