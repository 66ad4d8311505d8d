// SPDX-License-Identifier: MIT
//
// New databases, tables and indexes.

#ifndef DB_JET_CREATION_H_
#define DB_JET_CREATION_H_

#include <memory>
#include <span>
#include <string_view>

#include "db/jet/database.h"
#include "db/jet/status.h"
#include "db/jet/store.h"

namespace jet {

// Fills an empty file: header, maps and the four system tables.  `now` is the date in the
// catalogue, days since 1899-12-30.
Status CreateDatabase(Store& store);

// As Database::CreateTable and Database::CreateIndex.
Status CreateTable(Store& store, const TableSpec& spec, std::span<const IndexSpec> indexes);
Status CreateIndex(Store& store, std::string_view table, const IndexSpec& spec);

}  // namespace jet

#endif  // DB_JET_CREATION_H_
