// SPDX-License-Identifier: MIT

#ifndef TESTS_JET_EXERCISE_H_
#define TESTS_JET_EXERCISE_H_

#include <cstdint>
#include <string>
#include <vector>

#include "db/jet/database.h"

namespace test {

// What came of opening a file and doing everything with it that a program may do.
struct Exercise {
  std::vector<jet::Status> errors;  // in the order in which they came
  bool opened = false;
  std::size_t values = 0;  // fields read
};

// Opens the file for reading, reads every field of every record of every table, forward and
// back, in each order, sorts, audits and dumps.  The bytes must stay as they are.
Exercise ReadEverything(const std::vector<std::uint8_t>& file);

// Opens a copy for writing, edits, adds and deletes in every table, creates a table and an
// index.  *file is the copy afterwards.
Exercise WriteEverywhere(std::vector<std::uint8_t>* file);

// An error that says what, and for damage where: a number, a sentence, and a page of the file
// when it is Damaged.
void ExpectGoodError(const jet::Status& status);

}  // namespace test

#endif  // TESTS_JET_EXERCISE_H_
