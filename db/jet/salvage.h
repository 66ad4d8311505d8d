// SPDX-License-Identifier: MIT
//
// Records out of a file that may be damaged in any way.

#ifndef DB_JET_SALVAGE_H_
#define DB_JET_SALVAGE_H_

#include <cstdint>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "db/jet/database.h"
#include "db/jet/page_file.h"
#include "db/jet/status.h"
#include "db/jet/value.h"

namespace jet {

class SalvagePages;

// What is looked for.
struct SoughtTable {
  TableSpec spec;
  // The field that tells records apart, into spec.fields: a whole number.  None: the table has one
  // record at most.
  std::optional<int> key;
  // Whether a field (into spec.fields) can have a value.  What cannot is damage, however readable
  // it is; a record whose key cannot is none of the table.  Null is not asked for.
  std::function<bool(int field, const Value& value)> accepts;
  // The same for a long value that stands where nothing sure puts it, which can be anything:
  // whether it is as such values are.
  std::function<bool(int field, const Value& value)> expects;
};

struct SalvagedRecord {
  std::vector<Value> values;  // by field
  std::vector<int> lost;      // fields whose bytes did not survive, rising; their values are null
  bool hasSlot = true;        // false: it was found by its own build only, or had to be put right
  bool isSure = true;         // false: the row contradicted itself, any of the values may be wrong
};

// Reads a file as found: header, catalogue, definitions, maps and indexes are used where they are
// sound and not needed where they are not.  Nothing is changed.
//
//   rows         on any page with rows, whatever its owner is said to be; where its table of rows
//                is damaged, wherever there is something built as a row of the table
//   moved rows   also when nothing points to them any more
//   deleted rows not, nor rows of pages that are free and nobody's
//   columns      as the definition in the file places them, or as this engine would
//   long values  where the row says; where that page's table of rows is damaged, where the lengths
//                in all rows together put them; on a page that was written to another's place,
//                there
//
// Of two records with one key the one is taken that is found in the more regular way, then the one
// that the index of the key names, then the first in the file.
class Salvage {
 public:
  // DiskError when the file has no size.  Parts of it that cannot be read count as zeros.
  static Status Open(std::unique_ptr<PageFile> file, std::unique_ptr<Salvage>* salvage);
  ~Salvage();
  Salvage(const Salvage&) = delete;
  Salvage& operator=(const Salvage&) = delete;

  // The records of a table by rising key, each key once.
  std::vector<SalvagedRecord> Records(const SoughtTable& table);

 private:
  explicit Salvage(std::unique_ptr<SalvagePages> pages);

  std::unique_ptr<SalvagePages> pages_;
};

}  // namespace jet

#endif  // DB_JET_SALVAGE_H_
