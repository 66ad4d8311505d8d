// SPDX-License-Identifier: MIT

#ifndef TESTS_CRASH_REHEARSAL_H_
#define TESTS_CRASH_REHEARSAL_H_

#include <chrono>
#include <string>
#include <vector>

#include "tests/crash/stage.h"

namespace crash {

inline constexpr std::chrono::microseconds kSlowDisk{4000};  // more for each call of who ends

// What a console does that nobody kills.  A call is one that changes a file: "write Tesk.mdb.new".
struct Rehearsal {
  std::vector<std::string> firstStartCalls;
  std::vector<std::string> startCalls;
  std::vector<std::string> endCalls;
  int shrinkCalls = 0;
  std::chrono::steady_clock::duration receiving{};
  std::chrono::steady_clock::duration ending{};
  std::string newSettings;
  test::StoredTables newTables;  // of a new database
};

// False when it does not do what it should.
bool Rehearse(Stage& stage, Rehearsal* rehearsal);

}  // namespace crash

#endif  // TESTS_CRASH_REHEARSAL_H_
