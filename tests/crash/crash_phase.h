// SPDX-License-Identifier: MIT

#ifndef TESTS_CRASH_CRASH_PHASE_H_
#define TESTS_CRASH_CRASH_PHASE_H_

#include <array>
#include <string>
#include <string_view>
#include <vector>

namespace crash {

// What a console was at when it died.
enum class Phase {
  Starting,   // before it touched any file that matters
  Creating,   // the first database
  Copying,    // the working copy
  Editing,    // with the operator, or with tables from the switcher
  Shrinking,  // a large journal, at its start
  Restoring,  // what an earlier console left in the journal
  Saving,     // the working copy back over the database
  Tidying,    // the working copy removed
  Settings,   // Orvotesk.ini
  Ended,      // it did not die: it was through before
};

inline constexpr std::array kPhases{
    Phase::Starting,  Phase::Creating, Phase::Copying, Phase::Shrinking, Phase::Editing,
    Phase::Restoring, Phase::Saving,   Phase::Tidying, Phase::Settings,  Phase::Ended};

const char* NameOf(Phase phase);

// By the last call that changed a file: "write Tesk.mdb.new".  `ending`: it had been asked to
// end when the first of `calls` came.  No calls are noted of a console that is up and waits.
Phase PhaseOf(const std::vector<std::string>& calls, bool ending);

// The numbers, from 1, of the calls that belong to a phase.
std::vector<int> CallsOf(Phase phase, const std::vector<std::string>& calls, bool ending);

}  // namespace crash

#endif  // TESTS_CRASH_CRASH_PHASE_H_
