// SPDX-License-Identifier: MIT

#ifndef TESTS_END_TO_END_PROGRAMMING_EDITS_H_
#define TESTS_END_TO_END_PROGRAMMING_EDITS_H_

#include <random>

#include "tests/end_to_end/console_process.h"
#include "tests/end_to_end/system_database.h"

namespace test {

// What an operator does in the window of the button programming, each as OperatorEdit::make: at
// a station, and for a button, by chance.

// Selects a target of a button, or takes it away.
bool ToggleTarget(ConsoleProcess& console, std::mt19937& random, StoredTables& tables);
// Takes away the targets of a button one by one, up to the last.
bool ClearTargets(ConsoleProcess& console, std::mt19937& random, StoredTables& tables);
// Chooses the operation of a button.
bool ChooseOperation(ConsoleProcess& console, std::mt19937& random, StoredTables& tables);
// Selects a target of a button, or takes it away, and copies the button to some other stations.
bool CopyButton(ConsoleProcess& console, std::mt19937& random, StoredTables& tables);
// Assigns a relay, or takes it away.
bool ToggleRelay(ConsoleProcess& console, std::mt19937& random, StoredTables& tables);
// Selects a target of an opto, or takes it away.
bool ToggleOptoTarget(ConsoleProcess& console, std::mt19937& random, StoredTables& tables);
// Chooses the operation of an opto, and its channel.
bool ChooseOptoOperation(ConsoleProcess& console, std::mt19937& random, StoredTables& tables);

}  // namespace test

#endif  // TESTS_END_TO_END_PROGRAMMING_EDITS_H_
