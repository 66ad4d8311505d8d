// SPDX-License-Identifier: MIT
//
// How far a database can be relied upon.

#ifndef DB_DAMAGE_H_
#define DB_DAMAGE_H_

#include <string>
#include <vector>

#include "db/jet/database.h"
#include "db/table.h"
#include "model/status.h"

namespace db {

// A record of which not every field can be read.
struct UnreadableStation {
  int station = 0;                  // from 1
  std::vector<std::string> fields;  // names, in the order of the table
};

struct Damage {
  // What is wrong and where, each a line for the operator: "table "Stations": A data page is
  // expected but the page has type 0 (page 31)".  None: the file is sound.
  std::vector<std::string> problems;

  // The numbers from 1 to LabelCount that no record has, rising.  In a sound file nothing is
  // missing, however many records it has.
  std::vector<int> missing;
  // By rising number.  Of a number that two records have, no field can be relied upon: it is here
  // with all of them.
  std::vector<UnreadableStation> unreadable;

  bool isDbInfoReadable = true;

  bool IsSound() const { return problems.empty(); }

  // The stations that `table` cannot be made for, rising.  A table is sent only when there are
  // none.
  std::vector<int> Lacking(Table table) const;
};

// Looks at every page of an open database and at every field of both tables; a few milliseconds
// for 128 stations.  Nothing is changed.  Fails only when the catalogue cannot be read.
model::Status FindDamage(jet::Database& database, Damage* damage);

}  // namespace db

#endif  // DB_DAMAGE_H_
