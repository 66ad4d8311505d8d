// SPDX-License-Identifier: MIT
//
// Databases of systems of any size, filled with values that tell stations, buttons and patterns
// apart.

#ifndef TESTS_END_TO_END_SYSTEM_DATABASE_H_
#define TESTS_END_TO_END_SYSTEM_DATABASE_H_

#include <algorithm>
#include <filesystem>
#include <map>
#include <string>
#include <string_view>
#include <vector>

#include "db/jet/value.h"

namespace test {

// The labels of a system of so many channels: there are at least 128 records.
constexpr int LabelsOf(int channels) { return std::max(128, channels); }

// Creates a database of so many channels and stations (8..256), each with a record whose flag
// fields are as long as the system is large.  Two patterns differ in every table.  The records
// beyond are those of a new database.
void CreateSystem(const std::filesystem::path& file, int channels, int pattern);

// Sets a field of a station's record.
void SetField(const std::filesystem::path& file, int stationNum, std::string_view field,
              const jet::Value& value);

// A field of a station's record as text.
std::string ReadField(const std::filesystem::path& file, int stationNum, std::string_view field);

// Every field that travels in a system of so many channels, as lines like "3 B2 Type=255".  The
// file stays as it is.
std::vector<std::string> ReadTables(const std::filesystem::path& file, int channels);

// What the table "Stations" holds: "6 Inhibits" -> "0000010000...".
using StoredTables = std::map<std::string, std::string>;

// Every field of every record.  The file stays as it is.
StoredTables ReadStations(const std::filesystem::path& file);

}  // namespace test

#endif  // TESTS_END_TO_END_SYSTEM_DATABASE_H_
