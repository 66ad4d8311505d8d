// SPDX-License-Identifier: MIT

#ifndef DB_JET_BOOKMARK_H_
#define DB_JET_BOOKMARK_H_

#include <cstdint>
#include <string>

namespace jet {

// A place in a record set: a record, before the first, past the last, or no current record.
// A plain value: it may be kept, copied and compared, and goes stale when its record is
// deleted (GoTo then reports NoCurrentRecord).
class Bookmark {
 public:
  // No current record.
  Bookmark() = default;

  // The same place of the same table.  The order that was in force does not matter.
  friend bool operator==(const Bookmark& a, const Bookmark& b) {
    return a.place_ == b.place_ && a.table_ == b.table_ && a.row_ == b.row_ &&
           (a.row_ == 0 || a.tenant_ == b.tenant_);
  }

 private:
  friend class RecordCursor;

  enum class Place : std::uint8_t {
    Nowhere,  // no match, or the record was deleted; `row_` may say where it stood
    Before,
    Record,
    After,
    Empty,  // before the first and past the last at once: there are no records
  };

  Place place_ = Place::Nowhere;
  std::uint32_t table_ = 0;   // definition page
  std::uint32_t row_ = 0;     // page << 8 | slot of the record; 0 for none
  std::uint64_t tenant_ = 0;  // of the row's place, when the record was found there
  std::int32_t order_ = -1;   // real index the key belongs to, or -1
  std::string key_;           // entry of the record in that index
};

}  // namespace jet

#endif  // DB_JET_BOOKMARK_H_
