// SPDX-License-Identifier: MIT
//
// What an operator changes in a running console, one thing at a time, for tests that need much
// of it: crashes, failing disks, long runs.  A new window's edits are added to Edits().

#ifndef TESTS_END_TO_END_OPERATOR_EDITS_H_
#define TESTS_END_TO_END_OPERATOR_EDITS_H_

#include <random>
#include <span>

#include "tests/end_to_end/console_process.h"
#include "tests/end_to_end/system_database.h"

namespace test {

// Something that an operator does which ends in the database.
struct OperatorEdit {
  const char* name;
  // Does it somewhere, by chance, and waits until the console shows that it is done; then the
  // tables are changed as the file's are to be when the console has ended.  False, and the tables
  // as they were, when the console did not do it: it was killed meanwhile, or shows a box.
  bool (*make)(ConsoleProcess& console, std::mt19937& random, StoredTables& tables);
  // Its last act is one of several stations.
  bool isOfMany = false;
};

std::span<const OperatorEdit> Edits();

}  // namespace test

#endif  // TESTS_END_TO_END_OPERATOR_EDITS_H_
