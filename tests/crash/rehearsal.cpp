// SPDX-License-Identifier: MIT

#include "tests/crash/rehearsal.h"

#include <cstdio>
#include <utility>

#include "tests/crash/crash_phase.h"

namespace crash {

using test::ReadFile;
using Clock = std::chrono::steady_clock;

bool Rehearse(Stage& stage, Rehearsal* rehearsal) {
  // A thread of its own writes the log: its calls come in between as they like, and the others
  // could not be told by their numbers.
  stage.plan.Spare({"Teskctl.", "Tesk.sent", "Backups"});
  stage.plan.Restart();
  {
    auto console = stage.Start();
    if (!console->IsUp()) return false;
    rehearsal->firstStartCalls = stage.plan.Calls();
    stage.before = ReadFile(stage.main);
    rehearsal->newTables = test::ReadStations(stage.main);
    if (console->Terminate() != 0) return false;
  }
  stage.stored = rehearsal->newTables;
  auto console = stage.StartAndLook();
  rehearsal->startCalls = stage.plan.Calls();
  for (int i = 0; i < 3; ++i) {
    if (!stage.Edit(*console)) return false;
  }
  const auto asked = Clock::now();
  if (!stage.Receive(*console)) return false;
  rehearsal->receiving = Clock::now() - asked;
  if (!stage.Edit(*console)) return false;
  stage.plan.Restart();
  stage.plan.SlowDown(kSlowDisk);
  const auto ended = Clock::now();
  stage.AskToEnd(*console, true);
  if (console->WaitForEnd() != 0) return false;
  rehearsal->ending = Clock::now() - ended;
  rehearsal->endCalls = stage.plan.Calls();
  rehearsal->newSettings = ReadFile(stage.settings);
  stage.stored = stage.operated;
  if (rehearsal->newSettings == stage.oldSettings || test::ReadStations(stage.main) != stage.stored)
    return false;
  for (const auto& [phase, calls] : {std::pair{Phase::Creating, &rehearsal->firstStartCalls},
                                     std::pair{Phase::Copying, &rehearsal->startCalls}}) {
    if (CallsOf(phase, *calls, false).empty()) return false;
  }
  for (const Phase phase : {Phase::Saving, Phase::Tidying, Phase::Settings}) {
    if (CallsOf(phase, rehearsal->endCalls, true).empty()) return false;
  }
  stage.MakeJournalLarge();
  stage.Watch({"Tesk.journal"});
  stage.StartAndLook()->Kill();
  rehearsal->shrinkCalls = stage.plan.Count();
  if (CallsOf(Phase::Shrinking, stage.plan.Calls(), false).size() !=
      static_cast<std::size_t>(rehearsal->shrinkCalls)) {
    return false;
  }
  std::printf(
      "creating: %zu calls, making the copy: %zu, ending: %zu in %.0f ms, receiving: %.0f ms\n",
      rehearsal->firstStartCalls.size() - rehearsal->startCalls.size(),
      rehearsal->startCalls.size(), rehearsal->endCalls.size(),
      std::chrono::duration<double, std::milli>(rehearsal->ending).count(),
      std::chrono::duration<double, std::milli>(rehearsal->receiving).count());
  return stage.failures == 0;
}

}  // namespace crash
