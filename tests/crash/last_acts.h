// SPDX-License-Identifier: MIT
//
// What a console that was killed had stored last, and the operator may not have seen.

#ifndef TESTS_CRASH_LAST_ACTS_H_
#define TESTS_CRASH_LAST_ACTS_H_

#include <vector>

#include "stations/journal/act.h"
#include "stations/journal/contents.h"
#include "tests/end_to_end/system_database.h"

namespace crash {

// The last acts, as many as one edit may have and the oldest first, of the last run that is to be
// restored: of earlier ones everything was seen.
std::vector<stations::Act> LastActs(const stations::JournalContents& journal);

// Whether the tables are what the operator has seen, or that with the last of `acts` laid over it,
// one or more of them, each of them whole; and besides at most any part of what is in `arriving`.
bool IsSeenAndWholeActs(const test::StoredTables& tables, const test::StoredTables& seen,
                        const std::vector<stations::Act>& acts,
                        const test::StoredTables& arriving = {});

}  // namespace crash

#endif  // TESTS_CRASH_LAST_ACTS_H_
