// SPDX-License-Identifier: MIT
//
// The two tables of the configuration database and what a new one holds.
//
// "DbInfo" has exactly one record: the version text of the layout and the system's counts.
// "Stations" has one record per label position, 1 to 64 for the stations, 65 to 128 for the
// further channels: labels, notes, inhibits, relays, the programming of 32 buttons and of one
// opto input.

#ifndef DB_SCHEMA_H_
#define DB_SCHEMA_H_

#include <filesystem>
#include <memory>
#include <string>

#include "db/jet/database.h"
#include "db/jet/page_file.h"
#include "model/status.h"

namespace db {

inline constexpr char kDbInfoTable[] = "DbInfo";
inline constexpr char kStationsTable[] = "Stations";
inline constexpr char kStationNumIndex[] = "StationNum";

// Buttons per station, and characters of a flag string, in a new database.
inline constexpr int kButtons = 32;
inline constexpr int kFlags = 64;
// Records of "Stations" in a new database.
inline constexpr int kDefaultLabels = 128;

// The fields and indexes of the two tables, as a new database gets them.
jet::TableSpec DbInfoSpec();
jet::TableSpec StationsSpec();

// Gives a database that has no tables both, with their indexes and without a record.
model::Status CreateEmptyTables(jet::Database& database);

// The same with the default records.
model::Status CreateTables(jet::Database& database);

// Creates the database file `path` with the default contents, replacing a file of that name.
// On a failure the file is left as far as it got.
model::Status CreateDatabase(const std::filesystem::path& path);
// The same in a file that is empty.
model::Status CreateDatabase(std::unique_ptr<jet::PageFile> file);

}  // namespace db

#endif  // DB_SCHEMA_H_
