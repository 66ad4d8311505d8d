// SPDX-License-Identifier: MIT
//
// crash_run [KILLS [SEED]]: the real console on a simulated switcher, killed (SIGKILL) KILLS
// times (default 300, at least 16): while it creates its database, makes the working copy, makes
// a large journal smaller, is edited, receives tables, restores what an earlier one was killed
// with, copies back, says in the journal that it did, writes its settings.  Part of the kills come
// at a moment by chance, part in a call by chance that changes a file, some of them with half of a
// write done.  Whoever closes the console has a slow disk, so that copying back takes its time.
//
// After each kill
//   - Tesk.mdb is byte by byte what it was at the start, or it holds everything that the
//     operator had done when the console was asked to end; every page of it is in order, and
//     mdbtools read all its records,
//   - Orvotesk.ini is the old or the new one,
//   - the console starts again, without a word, and its map shows what Tesk.mdb holds,
//   - it offers to restore what was edited and not saved; restored and saved, everything is there
//     that the operator has seen, and besides at most what he was about to see, each act whole,
//   - what was saved is not offered, also when the one that died could not say any more that it is.
// In the end each of the phases must have been hit.  SEED repeats a run's choices.

#include <QCoreApplication>
#include <cstdio>
#include <cstdlib>
#include <random>

#include "tests/crash/judge.h"
#include "tests/crash/kills.h"
#include "tests/crash/rehearsal.h"
#include "tests/crash/stage.h"

namespace crash {
namespace {

constexpr int kLeastKills = 16;

// One after the other, each kind.
Outcome Kill(Kills& kills, int number) {
  switch (number % kLeastKills) {
    case 0:
      return kills.WhileStarting(Phase::Creating);
    case 1:
      return kills.WhileEnding("Tesk.mdb");
    case 2:
      return kills.WhileEditing(true);
    case 3:
      return kills.WhileEndingTimed(0);
    case 4:
      return kills.WhileStarting(Phase::Copying);
    case 5:
      return kills.WhileEnding("Orvotesk.ini");
    case 6:
      return kills.WhileReceiving();
    case 7:
      return kills.WhileEndingTimed(1);
    case 8:
      return kills.WhileEditing(false);
    case 9:
      return kills.WhileEnding("WorkingDb.md$");
    case 10:
      return kills.WhileEndingTimed(2);
    case 11:
      return kills.WhileEnding("Tesk.mdb");
    case 12:
      return kills.WhileRestoring(true);
    case 13:
      return kills.WhileShrinking();
    case 14:
      return kills.WhileRestoring(false);
    default:
      return kills.WhileSayingThatItIsSaved();
  }
}

// Goes on, for a while, until one of the kills by time has come while copying back.
void KillWhileSaving(Stage& stage, Kills& kills, Judge& judge, int number) {
  constexpr int kMostKills = 20;
  for (int more = 0; more < kMostKills && judge.TimedKills(Phase::Saving) == 0; ++more) {
    stage.number = number + more;
    judge.Check(kills.WhileEndingTimed(0));
  }
}

}  // namespace
}  // namespace crash

int main(int argc, char** argv) {
  const QCoreApplication application(argc, argv);
  const int kills = argc > 1 ? std::atoi(argv[1]) : 300;
  const unsigned seed =
      argc > 2 ? static_cast<unsigned>(std::strtoul(argv[2], nullptr, 10)) : std::random_device()();
  if (kills < crash::kLeastKills) {
    std::printf("usage: crash_run [KILLS [SEED]], at least %d kills\n", crash::kLeastKills);
    return 2;
  }
  std::printf("crash_run %d %u\n", kills, seed);
  crash::Stage stage(seed);
  crash::Rehearsal rehearsal;
  if (!crash::Rehearse(stage, &rehearsal)) {
    std::printf("FAILED: a console that nobody kills does not do what it should\n");
    return 1;
  }
  crash::Kills kinds(stage, rehearsal);
  crash::Judge judge(stage, rehearsal);
  for (int number = 1; number <= kills; ++number) {
    stage.BeginKill(number);
    stage.WatchTheWork();
    judge.Check(crash::Kill(kinds, number));
  }
  crash::KillWhileSaving(stage, kinds, judge, kills + 1);
  return judge.Verdict();
}
