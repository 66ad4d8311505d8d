// SPDX-License-Identifier: MIT

#include "tests/crash/kills.h"

#include <algorithm>
#include <chrono>
#include <filesystem>
#include <memory>
#include <optional>
#include <vector>

#include "tests/crash/killer.h"

namespace crash {
namespace {

namespace fs = std::filesystem;
using std::chrono::microseconds;
using std::chrono::milliseconds;
using test::ConsoleProcess;

constexpr milliseconds kLongestEditing{600};
constexpr int kMostEditingCalls = 60;
constexpr milliseconds kLongestRestoring{20};

}  // namespace

Outcome Kills::WhileStarting(Phase phase) {
  const bool first = phase == Phase::Creating;
  stage_.StartAndLook()->Kill();  // one that waits is killed as well
  stage_.plan.Restart();
  if (first) {
    fs::remove(stage_.main);
    // What was never there was created in the rehearsal, too, and the calls are counted.
    fs::remove(stage_.folder / "WorkingDb.lock");
    stage_.before = "(none)";
    stage_.operated = rehearsal_.newTables;
  }
  const int call = stage_.DrawOf(
      CallsOf(phase, first ? rehearsal_.firstStartCalls : rehearsal_.startCalls, false));
  stage_.plan.KillAt(call, stage_.Draw(2) == 0);
  const auto console = stage_.Start();
  if (!IsGone(*console)) stage_.Fail("not killed at its start");
  return {.how = "call " + std::to_string(call), .saved = first ? &rehearsal_.newTables : nullptr};
}

Outcome Kills::WhileEditing(bool timed) {
  const auto console = stage_.StartAndLook();
  Outcome outcome;
  outcome.timed = timed;
  std::unique_ptr<Killer> killer;
  if (timed) {
    const milliseconds after(stage_.Draw(static_cast<int>(kLongestEditing.count())));
    outcome.how = "after " + std::to_string(after.count()) + " ms";
    killer = std::make_unique<Killer>(static_cast<pid_t>(console->Id()), after);
  } else {
    const int call = stage_.plan.Count() + 1 + stage_.Draw(kMostEditingCalls);
    outcome.how = "call " + std::to_string(call);
    stage_.plan.KillAt(call, stage_.Draw(2) == 0);
  }
  while (stage_.Edit(*console)) continue;
  if (!IsGone(*console)) {
    stage_.Fail("an edit was not done");
    console->Kill();
  }
  return outcome;
}

Outcome Kills::WhileReceiving() {
  const auto console = stage_.StartAndLook();
  const microseconds after(stage_.Draw(
      static_cast<int>(std::chrono::duration_cast<microseconds>(rehearsal_.receiving).count())));
  stage_.plan.Restart();
  {
    const Killer killer(static_cast<pid_t>(console->Id()), after);
    while (stage_.Receive(*console)) continue;
  }
  if (!IsGone(*console)) {
    stage_.Fail("the tables were not received");
    console->Kill();
  }
  return {.how = "receiving, after " + std::to_string(after.count() / 1000) + " ms",
          .timed = true,
          .received = true,
          .receivedSome = stage_.plan.Count() > 0};
}

Outcome Kills::WhileRestoring(bool timed) {
  stage_.EditAndKill();
  stage_.plan.Restart();
  const auto console = stage_.Start();
  if (!ConsoleProcess::WaitFor([&] { return console->IsShown("aidRestore"); })) {
    stage_.Fail("nothing is offered");
  }
  const int call = 1 + stage_.Draw(kMostEditingCalls);
  const microseconds after(stage_.Draw(
      static_cast<int>(std::chrono::duration_cast<microseconds>(kLongestRestoring).count())));
  stage_.plan.Restart();
  if (!timed) stage_.plan.KillAt(call, stage_.Draw(2) == 0);
  std::optional<Killer> killer;
  if (timed) killer.emplace(static_cast<pid_t>(console->Id()), after);
  console->Click("aidRestore");
  // Or it has restored before it was killed.
  ConsoleProcess::WaitFor([&] { return !console->Lives() || !console->IsShown("aidRestore"); });
  killer.reset();
  if (console->Lives()) console->Kill();
  return {.how = timed ? "restoring, after " + std::to_string(after.count() / 1000) + " ms"
                       : "restoring, call " + std::to_string(call),
          .timed = timed,
          .restoring = true};
}

Outcome Kills::WhileShrinking() {
  // What an earlier kill left there would be deleted first, and the calls be other ones.
  fs::remove(stage_.folder / "Tesk.journal.new");
  stage_.EditAndKill();
  stage_.MakeJournalLarge();
  stage_.Watch({"Tesk.journal"});
  stage_.plan.Restart();
  const int call = 1 + stage_.Draw(rehearsal_.shrinkCalls);
  stage_.plan.KillAt(call, stage_.Draw(2) == 0);
  const auto console = stage_.Start();
  if (!IsGone(*console)) {
    stage_.Fail("not killed at its start");
    console->Kill();
  }
  return {.how = "shrinking the journal, call " + std::to_string(call)};
}

void Kills::EditBeforeTheEnd(ConsoleProcess& console) {
  if (stage_.Draw(4) == 0 && !stage_.Receive(console)) stage_.Fail("the tables were not received");
  // An edit may choose what was there; a console without changes has nothing to copy back.
  for (int edits = 1 + stage_.Draw(3); edits > 0 || stage_.operated == stage_.stored; --edits) {
    if (!stage_.Edit(console)) return stage_.Fail("an edit was not done");
  }
  stage_.plan.Restart();
  stage_.plan.SlowDown(kSlowDisk);
}

Outcome Kills::WhileEnding(const std::string& file) {
  // What an earlier kill left there would be deleted first, and the calls be other ones.
  for (const char* const left : {"Tesk.mdb.new", "Orvotesk.ini.new"})
    fs::remove(stage_.folder / left);
  const auto console = stage_.StartAndLook();
  EditBeforeTheEnd(*console);
  // The journal is brought to the disk when that is due: of this file each end has as many calls.
  stage_.Watch({file});
  const auto isOfFile = [&](const std::string& noted) {
    return noted.substr(noted.find(' ') + 1).starts_with(file);
  };
  const int call =
      1 + stage_.Draw(static_cast<int>(std::ranges::count_if(rehearsal_.endCalls, isOfFile)));
  stage_.plan.KillAt(call, stage_.Draw(2) == 0);
  stage_.AskToEnd(*console, stage_.Draw(2) == 0);
  const bool ended = console->WaitForEnd() == 0;
  if (ended) stage_.Fail("not killed at its end");
  if (console->Lives()) console->Kill();
  return {.how = "call " + std::to_string(call),
          .ending = true,
          .ended = ended,
          .saved = &stage_.operated};
}

Outcome Kills::WhileEndingTimed(int part) {
  const auto console = stage_.StartAndLook();
  EditBeforeTheEnd(*console);
  const int third =
      static_cast<int>(std::chrono::duration_cast<microseconds>(rehearsal_.ending).count() / 3);
  const microseconds after(part * third + stage_.Draw(third));
  const bool bySystem = stage_.Draw(2) == 0;
  bool ended = false;
  {
    const Killer killer(static_cast<pid_t>(console->Id()), after);
    stage_.AskToEnd(*console, bySystem);
    ended = console->WaitForEnd() == 0;
  }
  if (console->Lives()) {
    stage_.Fail("it did not end");
    console->Kill();
  }
  return {.how = "asked to end, after " + std::to_string(after.count() / 1000) + " ms",
          .ending = true,
          .ended = ended,
          .timed = true,
          .saved = &stage_.operated};
}

Outcome Kills::WhileSayingThatItIsSaved() {
  stage_.Watch({"Tesk.journal"});
  const auto console = stage_.StartAndLook();
  EditBeforeTheEnd(*console);
  stage_.plan.Restart();
  if (!stage_.Edit(*console)) stage_.Fail("an edit was not done");
  // Then the next call is that one.
  const auto isOnTheDisk = [&] {
    const std::vector<std::string> calls = stage_.plan.Calls();
    return !calls.empty() && calls.back().starts_with("sync ");
  };
  if (!ConsoleProcess::WaitFor(isOnTheDisk)) stage_.Fail("the journal is not brought to the disk");
  stage_.plan.Restart();
  stage_.plan.KillAt(1, stage_.Draw(2) == 0);
  stage_.AskToEnd(*console, stage_.Draw(2) == 0);
  const bool ended = console->WaitForEnd() == 0;
  if (ended) stage_.Fail("not killed at its end");
  if (console->Lives()) console->Kill();
  return {.how = "said to be saved", .ending = true, .ended = ended, .saved = &stage_.operated};
}

}  // namespace crash
