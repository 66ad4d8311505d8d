// SPDX-License-Identifier: MIT

#ifndef TESTS_CRASH_KILLS_H_
#define TESTS_CRASH_KILLS_H_

#include <string>

#include "tests/crash/crash_phase.h"
#include "tests/crash/rehearsal.h"
#include "tests/crash/stage.h"

namespace crash {

// Where a kill found the console, and what it may have left.
struct Outcome {
  std::string how;
  bool ending = false;
  bool ended = false;  // the console had ended before it was killed
  bool timed = false;
  bool received = false;                      // it was receiving tables when it was killed
  bool receivedSome = false;                  // and had begun to store them
  bool restoring = false;                     // it was restoring then
  const test::StoredTables* saved = nullptr;  // what Tesk.mdb may hold instead of the old
};

// The kinds of kills.  Each starts a console and sees it die.
class Kills {
 public:
  // Both must outlive the object.
  Kills(Stage& stage, const Rehearsal& rehearsal) : stage_(stage), rehearsal_(rehearsal) {}

  // In a call of the phase, Creating or Copying.
  Outcome WhileStarting(Phase phase);
  // At a moment by chance, or in a call by chance.
  Outcome WhileEditing(bool timed);
  Outcome WhileReceiving();
  Outcome WhileRestoring(bool timed);
  Outcome WhileShrinking();
  // In a call that changes the file.
  Outcome WhileEnding(const std::string& file);
  // In the given third, from 0, of the time that ending takes.
  Outcome WhileEndingTimed(int part);
  // The work is saved, and the journal does not have it yet.
  Outcome WhileSayingThatItIsSaved();

 private:
  void EditBeforeTheEnd(test::ConsoleProcess& console);

  Stage& stage_;
  const Rehearsal& rehearsal_;
};

}  // namespace crash

#endif  // TESTS_CRASH_KILLS_H_
