// SPDX-License-Identifier: MIT

#ifndef TESTS_END_TO_END_LABEL_EDITS_H_
#define TESTS_END_TO_END_LABEL_EDITS_H_

#include <random>

#include "tests/end_to_end/console_process.h"
#include "tests/end_to_end/system_database.h"

namespace test {

// What an operator does in the grid of the labels, each as OperatorEdit::make: in a row by
// chance.

bool TypeStationLabel(ConsoleProcess& console, std::mt19937& random, StoredTables& tables);
bool TypeInputLabel(ConsoleProcess& console, std::mt19937& random, StoredTables& tables);
// Hides a station, or shows it again.
bool ToggleHidden(ConsoleProcess& console, std::mt19937& random, StoredTables& tables);

// Brings labels of some stations in from a file.
bool ImportLabels(ConsoleProcess& console, std::mt19937& random, StoredTables& tables);

}  // namespace test

#endif  // TESTS_END_TO_END_LABEL_EDITS_H_
