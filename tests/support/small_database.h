// SPDX-License-Identifier: MIT

#ifndef TESTS_SUPPORT_SMALL_DATABASE_H_
#define TESTS_SUPPORT_SMALL_DATABASE_H_

#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "db/database_files.h"
#include "db/schema.h"
#include "tests/support/temporary_folder.h"

namespace test {

// A flag string of 64 members, none of them set.
inline const std::string kNoFlags(64, '0');

// An open configuration database without stations but those that the test adds.
class SmallDatabase {
 public:
  using Fields = std::vector<std::pair<std::string, jet::Value>>;

  explicit SmallDatabase(const jet::TableSpec& stations = db::StationsSpec());

  // Adds a record; fields that are not named are null.
  void AddStation(int stationNum, const Fields& fields);
  void Set(int stationNum, std::string_view field, const jet::Value& value);
  void Delete(int stationNum);

  // A field of a station's record as text: "null" for null, "(none)" without such a record.
  std::string Field(int stationNum, std::string_view field);

  // The station where the shared record set stands, and to one of them.
  int CurrentStation();
  void GoTo(int stationNum);

  db::DatabaseFiles& Files() { return files_; }

 private:
  TemporaryFolder folder_;
  db::DatabaseFiles files_{folder_ / "Tesk.mdb", folder_ / "WorkingDb.md$"};
};

// The fields of a station as the program makes them, without one of that name.
jet::TableSpec StationsWithout(std::string_view field);
// The same with `field` of another size.
jet::TableSpec StationsWithTextSize(std::string_view field, int size);

}  // namespace test

#endif  // TESTS_SUPPORT_SMALL_DATABASE_H_
