// SPDX-License-Identifier: MIT
//
// Dumps of databases, compared field by field.

#ifndef TESTS_JET_JSON_COMPARE_H_
#define TESTS_JET_JSON_COMPARE_H_

#include <QJsonObject>
#include <string>
#include <vector>

#include "db/jet/database.h"

namespace test {

// Text that is no JSON object fails the test.
QJsonObject ParseJson(const std::string& text);

// The dump of a database as mdbdump makes it.  Anything that cannot be read fails the test.
QJsonObject Dump(const jet::Database& database);

// The golden dump of a sample file.
QJsonObject GoldenDump(const std::string& sample);

// "path: found, expected" for each place where the two differ, up to a number that a person
// can read.
std::vector<std::string> Differences(const QJsonObject& found, const QJsonObject& expected);

// The dump with each place of a row, "page:row", replaced by the row's number in storage order:
// the same for all files of the same content.
QJsonObject WithoutPlaces(QJsonObject dump);

}  // namespace test

#endif  // TESTS_JET_JSON_COMPARE_H_
