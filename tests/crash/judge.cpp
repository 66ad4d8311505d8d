// SPDX-License-Identifier: MIT

#include "tests/crash/judge.h"

#include <algorithm>
#include <cstdio>
#include <filesystem>
#include <utility>

#include "db/database_files.h"
#include "stations/journal/journal.h"
#include "tests/crash/last_acts.h"
#include "tests/support/database_check.h"
#include "tests/support/run_program.h"

namespace crash {
namespace {

namespace fs = std::filesystem;
using test::ConsoleProcess;
using test::ReadFile;

}  // namespace

int Judge::TimedKills(Phase phase) const {
  const auto found = timedKills_.find(phase);
  return found == timedKills_.end() ? 0 : found->second;
}

void Judge::CheckWhole(const std::string& when) {
  if (const std::string wrong = test::WhatIsWrong(stage_.main); !wrong.empty()) {
    stage_.Fail(when + ": Tesk.mdb: " + wrong);
    return;
  }
  const auto exported = test::RunProgram("mdb-export", {stage_.main.string(), "Stations"});
  const auto lines = std::count(exported.output.begin(), exported.output.end(), '\n');
  if (exported.exitCode != 0 || lines != 129) {
    stage_.Fail(when + ": mdbtools read " + std::to_string(lines) + " of 129 lines " +
                exported.errors);
  }
}

void Judge::Check(const Outcome& outcome) {
  const auto calls = stage_.plan.Calls();
  const Phase phase = outcome.ended       ? Phase::Ended
                      : outcome.restoring ? Phase::Restoring
                                          : PhaseOf(calls, outcome.ending);
  stage_.plan.Restart();
  ++kills_[phase];
  if (outcome.receivedSome) ++received_;
  if (outcome.timed) ++timedKills_[phase];

  const std::string now = ReadFile(stage_.main);
  const std::string when = outcome.how + ", " + NameOf(phase);
  const char* left = "as it was";
  if (now == stage_.before && !outcome.ended) {
    ++oldFiles_;
    if (now == "(none)") stage_.stored = rehearsal_.newTables;
  } else if (outcome.saved == nullptr) {
    stage_.Fail(when + ": Tesk.mdb was changed");
  } else {
    left = stage_.before == "(none)" ? "new" : "with the run's changes";
    ++newFiles_;
    if (test::ReadStations(stage_.main) != *outcome.saved)
      stage_.Fail(when + ": Tesk.mdb holds something else");
    stage_.stored = *outcome.saved;
  }
  if (now != "(none)") CheckWhole(when);

  const std::string settings = ReadFile(stage_.settings);
  if (settings != stage_.oldSettings && settings != rehearsal_.newSettings) {
    stage_.Fail(when + ": Orvotesk.ini is neither the old nor the new one: " + settings);
  }
  if (outcome.ended &&
      (settings != rehearsal_.newSettings || fs::exists(stage_.folder / db::kWorkingCopy))) {
    stage_.Fail(when + ": ended, and left something undone");
  }
  std::printf("%4d  %-34s %-24s %-22s Tesk.mdb %s\n", stage_.number, outcome.how.c_str(),
              NameOf(phase), calls.empty() ? "" : calls.back().c_str(), left);
  std::fflush(stdout);
  Restore(outcome);
}

// What nobody may have seen of what is to be restored.
std::vector<stations::Act> Judge::LastOfTheJournal() const {
  stations::Journal journal(stage_.journal);
  return journal.Read().ok() ? LastActs(journal.Contents()) : std::vector<stations::Act>();
}

// Whether there is what the operator has seen, and besides at most whole acts that he was about to
// see, or, of tables that were being received, any part of them.
bool Judge::IsAsSeen(const std::vector<stations::Act>& last, bool received) const {
  test::StoredTables arriving;
  if (received) {
    arriving = stage_.operated;
    stage_.TakeOver(&arriving);
  }
  if (IsSeenAndWholeActs(stage_.stored, stage_.operated, last, arriving)) return true;
  for (const auto& [field, value] : stage_.stored) {
    const auto seen = stage_.operated.find(field);
    if (seen != stage_.operated.end() && seen->second == value) continue;
    std::printf("      station and field %s: %s, and was seen as %s\n", field.c_str(),
                value.c_str(), seen == stage_.operated.end() ? "nothing" : seen->second.c_str());
  }
  return false;
}

bool Judge::IsAnyUnsaved() const {
  stations::Journal journal(stage_.journal);
  return !journal.Read().ok() ||
         std::ranges::any_of(journal.Contents().Runs(), &stations::JournalRun::IsUnsaved);
}

// The next console offers what is not in Tesk.mdb, and nothing else.
void Judge::Restore(const Outcome& outcome) {
  stage_.plan.Restart();
  const bool isMissing = stage_.operated != stage_.stored;
  const std::vector<stations::Act> last = LastOfTheJournal();
  auto console = stage_.Start();
  const auto isOffered = [&] { return console->IsShown("aidRestore"); };
  if (isMissing && !ConsoleProcess::WaitFor(isOffered)) return stage_.Fail("nothing is offered");
  if (outcome.ending && !isMissing &&
      !ConsoleProcess::WaitFor([this] { return !IsAnyUnsaved(); })) {
    return stage_.Fail("what is saved is not said to be");
  }
  // What the operator has not seen done may be offered, too, when the console has read a long run.
  if (!ConsoleProcess::WaitFor([&] { return isOffered() || !IsAnyUnsaved(); })) {
    return stage_.Fail("what is not saved is neither offered nor said to be saved");
  }
  if (!isOffered()) {
    console->Terminate();
    return;
  }
  // One run, or also the one that was killed while it restored that.
  const auto isDone = [&] {
    if (console->IsShown("aidRestoreAll")) {
      console->Click("aidRestoreAll");
    } else if (isOffered()) {
      console->Click("aidRestore");
    }
    return !isOffered() && !console->IsShown("aidRestoreAll");
  };
  if (!ConsoleProcess::WaitFor(isDone)) return stage_.Fail("it is not restored");
  for (const test::Box& box : console->Boxes())
    stage_.Fail("after restoring: " + box.title + ": " + box.text);
  if (console->Terminate() != 0) return stage_.Fail("the console that has restored does not end");
  stage_.stored = test::ReadStations(stage_.main);
  if (!IsAsSeen(last, outcome.received)) stage_.Fail("something else was restored");
  CheckWhole("restored");
  ++restored_;
}

int Judge::Verdict() {
  if (stage_.StartAndLook()->Terminate() != 0) stage_.Fail("the console does not end as it should");
  std::printf("\n%-26s %6s %6s\n", "killed while", "kills", "timed");
  for (const Phase phase : kPhases) {
    std::printf("%-26s %6d %6d\n", NameOf(phase), kills_[phase], timedKills_[phase]);
  }
  std::printf("%d of them while storing received tables\n", received_);
  std::printf("Tesk.mdb as it was: %d, with the run's changes or new: %d\n", oldFiles_, newFiles_);
  std::printf("%d restored\n", restored_);
  if (restored_ == 0) stage_.Fail("nothing was ever restored");
  for (const Phase phase : {Phase::Creating, Phase::Copying, Phase::Shrinking, Phase::Editing,
                            Phase::Restoring, Phase::Saving, Phase::Tidying, Phase::Settings}) {
    if (kills_[phase] == 0) stage_.Fail(std::string("never killed while ") + NameOf(phase));
  }
  if (timedKills_[Phase::Saving] == 0) stage_.Fail("no kill by time while copying back");
  if (oldFiles_ == 0 || newFiles_ == 0) stage_.Fail("only one kind of file was found");
  std::printf(stage_.failures == 0 ? "whole each time\n" : "%d FAILURES\n", stage_.failures);
  return stage_.failures == 0 ? 0 : 1;
}

}  // namespace crash
