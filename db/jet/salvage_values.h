// SPDX-License-Identifier: MIT
//
// Long values on pages that may be damaged.

#ifndef DB_JET_SALVAGE_VALUES_H_
#define DB_JET_SALVAGE_VALUES_H_

#include <cstdint>
#include <functional>
#include <map>
#include <vector>

#include "db/jet/bytes.h"
#include "db/jet/long_value.h"
#include "db/jet/salvage_pages.h"

namespace jet {

// What the rows of a table say of their values together tells what the pages of values should
// look like.  So it is seen where a page is another one, and where a value stands on a page whose
// own table of rows is damaged.
class SalvageValues {
 public:
  explicit SalvageValues(SalvagePages& pages) : pages_(pages) {}

  // A row has a value with this field.  All of them come before the first Read.
  void Expect(ByteView field);

  // Judges a content; more strictly when it is not sure that it is the value's.
  using Judge = std::function<bool(ByteView content, bool isSure)>;

  // The content of the value with this field has passed `judge`, which was called for it last.
  // False when it did not survive.
  bool Read(ByteView field, const Judge& judge);

 private:
  using Lengths = std::map<std::uint32_t, std::uint32_t>;  // of the values on a page, by slot

  void FindDisplaced();
  bool ReadRow(RowPointer row, std::uint32_t length, const Judge& judge);

  SalvagePages& pages_;
  std::map<std::uint32_t, Lengths> expected_;         // by page
  std::map<std::uint32_t, std::uint32_t> displaced_;  // where a page is now
  bool displacedKnown_ = false;
};

}  // namespace jet

#endif  // DB_JET_SALVAGE_VALUES_H_
