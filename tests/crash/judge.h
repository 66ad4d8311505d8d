// SPDX-License-Identifier: MIT

#ifndef TESTS_CRASH_JUDGE_H_
#define TESTS_CRASH_JUDGE_H_

#include <map>
#include <string>
#include <vector>

#include "stations/journal/act.h"
#include "tests/crash/crash_phase.h"
#include "tests/crash/kills.h"
#include "tests/crash/rehearsal.h"
#include "tests/crash/stage.h"

namespace crash {

// What came back after each kill, and what all of them come to.
class Judge {
 public:
  // Both must outlive the object.
  Judge(Stage& stage, const Rehearsal& rehearsal) : stage_(stage), rehearsal_(rehearsal) {}

  // Looks at the files that a kill has left, and at the console that finds them.
  void Check(const Outcome& outcome);

  // How many kills by time there were in a phase.
  int TimedKills(Phase phase) const;

  // The table of all kills; 0, or 1 when something was wrong or a phase was never hit.
  int Verdict();

 private:
  void CheckWhole(const std::string& when);
  void Restore(const Outcome& outcome);
  bool IsAnyUnsaved() const;
  std::vector<stations::Act> LastOfTheJournal() const;
  bool IsAsSeen(const std::vector<stations::Act>& last, bool received) const;

  Stage& stage_;
  const Rehearsal& rehearsal_;

  std::map<Phase, int> kills_;
  std::map<Phase, int> timedKills_;
  int received_ = 0;  // kills while tables were being stored
  int oldFiles_ = 0;
  int newFiles_ = 0;
  int restored_ = 0;
};

}  // namespace crash

#endif  // TESTS_CRASH_JUDGE_H_
