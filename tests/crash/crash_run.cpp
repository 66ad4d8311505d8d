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
//     that the operator has seen, and besides at most what he was about to do,
//   - what was saved is not offered, also when the one that died could not say any more that it is.
// In the end each of the phases must have been hit.  SEED repeats a run's choices.

#include <QCoreApplication>
#include <algorithm>
#include <chrono>
#include <csignal>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <functional>
#include <map>
#include <memory>
#include <optional>
#include <random>
#include <set>
#include <string>
#include <utility>

#include "db/database_files.h"
#include "stations/journal/act.h"
#include "stations/journal/journal.h"
#include "tests/crash/crash_phase.h"
#include "tests/crash/killer.h"
#include "tests/end_to_end/operator_edits.h"
#include "tests/faults/fault_plan.h"
#include "tests/support/database_check.h"
#include "tests/support/run_program.h"
#include "tests/support/simulator_process.h"

namespace {

namespace fs = std::filesystem;
using Clock = std::chrono::steady_clock;
using std::chrono::microseconds;
using std::chrono::milliseconds;

using crash::Phase;
using test::ConsoleProcess;
using test::ReadFile;

constexpr int kLeastKills = 16;
constexpr int kChannels = 64;
constexpr microseconds kSlowDisk{4000};  // more for each call while the console ends
constexpr milliseconds kLongestEditing{600};
constexpr int kMostEditingCalls = 60;
constexpr int kMostOfAnEdit = 3;  // acts
constexpr milliseconds kLongestRestoring{20};
constexpr std::uintmax_t kLargeJournal = 2 << 20;  // larger ones are made smaller

// Whether it was killed.  Who dies is there for another moment.
bool IsGone(ConsoleProcess& console) {
  return ConsoleProcess::WaitFor([&] { return !console.Lives(); });
}

// What a console stores of a hidden station's label, which travels with a mark for its first
// character: its own when the others are the same, else what came.
std::string HiddenLabel(const std::string& stored, const std::string& held) {
  return stored.substr(1) == held.substr(1) ? stored : "{" + held.substr(1);
}

class CrashRun {
 public:
  explicit CrashRun(unsigned seed) : seed_(seed) {}

  // What is to be expected of a console that nobody kills.  False when that fails.
  bool Prepare();
  void Kill(int number);
  // Goes on, for a while, until one of the kills by time has come while copying back.
  void KillWhileSaving(int number);
  int Verdict();

 private:
  // Where a kill found the console, and what it may have left.
  struct Outcome {
    std::string how;
    bool ending = false;
    bool ended = false;  // the console had ended before it was killed
    bool timed = false;
    bool received = false;                      // it was receiving tables when it was killed
    bool restoring = false;                     // it was restoring then
    const test::StoredTables* saved = nullptr;  // what Tesk.mdb may hold instead of the old
  };

  void Fail(const std::string& what);
  int Draw(int count) { return static_cast<int>(random_() % static_cast<unsigned>(count)); }
  int DrawOf(const std::vector<int>& numbers) {
    return numbers[static_cast<std::size_t>(Draw(static_cast<int>(numbers.size())))];
  }

  std::unique_ptr<ConsoleProcess> Start();
  std::unique_ptr<ConsoleProcess> StartAndLook();
  bool Edit(ConsoleProcess& console);
  bool Receive(ConsoleProcess& console);
  void TakeOver(test::StoredTables* tables) const;
  void AskToEnd(ConsoleProcess& console, bool bySystem);

  Outcome WhileStarting(Phase phase);
  Outcome WhileEditing(bool timed);
  Outcome WhileReceiving();
  void EditAndKill();
  Outcome WhileRestoring(bool timed);
  void MakeJournalLarge();
  Outcome WhileShrinking();
  void Watch(const std::vector<std::string>& files);
  void WatchTheWork();
  Outcome WhileEnding(const std::string& file);
  Outcome WhileEndingTimed(int part);
  Outcome WhileSayingThatItIsSaved();
  void EditBeforeTheEnd(ConsoleProcess& console);
  void Check(const Outcome& outcome);
  void CheckWhole(const std::string& when);
  void Restore(const Outcome& outcome);
  bool IsAnyUnsaved() const;
  std::set<std::string> LastStored() const;
  bool IsAsSeen(const test::StoredTables& restored, const std::set<std::string>& last,
                bool received) const;

  const unsigned seed_;
  std::mt19937 random_;
  int number_ = 0;
  int failures_ = 0;

  test::ConsoleFolder folder_;
  const fs::path main_ = folder_ / db::kMainFile;
  const fs::path journal_ = folder_ / "Tesk.journal";
  const fs::path settings_ = folder_ / "Orvotesk.ini";
  const fs::path held_ = folder_.Home() / "Held.mdb";
  const std::string line_ = folder_.Home() / "line";
  faults::FaultPlan plan_{folder_.Program()};
  std::unique_ptr<test::SimulatorProcess> simulator_;

  // Of the run that nobody kills.
  std::vector<std::string> firstStartCalls_;
  std::vector<std::string> startCalls_;
  std::vector<std::string> endCalls_;
  int shrinkCalls_ = 0;
  Clock::duration receiving_{};
  Clock::duration ending_{};
  std::string newSettings_;
  test::StoredTables newTables_;             // of a new database
  std::vector<std::string> receivedTables_;  // "3 B2 Type=255"

  std::string before_;  // Tesk.mdb at the start, "(none)" without one
  std::string oldSettings_;
  test::StoredTables stored_;    // what Tesk.mdb holds
  test::StoredTables operated_;  // with what the operator has done since

  std::map<Phase, int> kills_;
  std::map<Phase, int> timedKills_;
  int received_ = 0;  // kills while tables were being stored
  int oldFiles_ = 0;
  int newFiles_ = 0;
  int restored_ = 0;
};

void CrashRun::Fail(const std::string& what) {
  ++failures_;
  const fs::path kept = fs::temp_directory_path() /
                        ("crash_run_" + std::to_string(seed_) + "_" + std::to_string(number_));
  std::error_code ignored;
  fs::copy(folder_.Program(), kept,
           fs::copy_options::recursive | fs::copy_options::overwrite_existing, ignored);
  std::printf("FAILED, kill %d, seed %u: %s\n  the files are kept in %s\n", number_, seed_,
              what.c_str(), kept.c_str());
}

std::unique_ptr<ConsoleProcess> CrashRun::Start() {
  folder_.WriteSettings(line_);
  oldSettings_ = ReadFile(settings_);
  return std::make_unique<ConsoleProcess>(folder_, plan_.Prefix());
}

// After whatever happened before, it comes up without a word and shows what is stored.
std::unique_ptr<ConsoleProcess> CrashRun::StartAndLook() {
  plan_.Restart();
  auto console = Start();
  if (!console->IsUp()) {
    Fail("the console does not start again");
    return console;
  }
  for (const test::Box& box : console->Boxes())
    Fail("at the start: " + box.title + ": " + box.text);
  for (int look = 0; look < 8; ++look) {
    const int output = 1 + Draw(kChannels);
    const int input = 1 + Draw(kChannels);
    const bool inhibited =
        stored_.at(std::to_string(output) + " Inhibits").at(static_cast<std::size_t>(input) - 1) ==
        '1';
    if (console->Mark(output, input) != (inhibited ? 2 : 0)) {
      Fail("the map does not show what is stored: output " + std::to_string(output));
    }
  }
  before_ = ReadFile(main_);
  operated_ = stored_;
  return console;
}

bool CrashRun::Edit(ConsoleProcess& console) {
  const auto edits = test::Edits();
  return edits[static_cast<std::size_t>(Draw(static_cast<int>(edits.size())))].make(
      console, random_, operated_);
}

// All tables of the switcher.
bool CrashRun::Receive(ConsoleProcess& console) {
  const auto caption = [&] { return console.Property("frmSysInfo", "windowTitle").toString(); };
  console.Trigger("ID_RetreiveData");
  if (!console.LivesUntil([&] { return console.IsShown("frmSysInfo"); })) return false;
  console.Click("cmdOkSysInf");
  if (!console.LivesUntil(
          [&] { return caption().startsWith(QLatin1String("Retrieval Completed (")); })) {
    return false;
  }
  console.Click("cmdCancelSysInf");
  if (!console.LivesUntil([&] { return console.IsShown("frmXmap"); })) return false;
  TakeOver(&operated_);
  return true;
}

// What the switcher has, stored.
void CrashRun::TakeOver(test::StoredTables* tables) const {
  bool hidden = false;
  for (const std::string& line : receivedTables_) {
    const auto equals = line.find('=');
    const std::string field = line.substr(0, equals);
    const std::string value = line.substr(equals + 1);
    if (field.ends_with(" Hidden")) hidden = value == "1";
    std::string& stored = (*tables)[field];
    stored = field.ends_with("Label") && hidden ? HiddenLabel(stored, value) : value;
  }
}

void CrashRun::AskToEnd(ConsoleProcess& console, bool bySystem) {
  if (bySystem) {
    kill(static_cast<pid_t>(console.Id()), SIGTERM);
  } else {
    console.Trigger("ID_Exit");
  }
}

bool CrashRun::Prepare() {
  random_.seed(seed_);
  test::CreateSystem(held_, kChannels, 2);
  receivedTables_ = test::ReadTables(held_, kChannels);
  simulator_ = std::make_unique<test::SimulatorProcess>(
      std::vector<std::string>{"--database", held_.string(), "--baud", "0", "--link", line_});

  // A thread of its own writes the log: its calls come in between as they like, and the others
  // could not be told by their numbers.
  plan_.Spare({"Teskctl.", "Tesk.sent", "Backups"});
  plan_.Restart();
  {
    auto console = Start();
    if (!console->IsUp()) return false;
    firstStartCalls_ = plan_.Calls();
    before_ = ReadFile(main_);
    newTables_ = test::ReadStations(main_);
    if (console->Terminate() != 0) return false;
  }
  stored_ = newTables_;
  auto console = StartAndLook();
  startCalls_ = plan_.Calls();
  for (int i = 0; i < 3; ++i) {
    if (!Edit(*console)) return false;
  }
  const auto asked = Clock::now();
  if (!Receive(*console)) return false;
  receiving_ = Clock::now() - asked;
  if (!Edit(*console)) return false;
  plan_.Restart();
  plan_.SlowDown(kSlowDisk);
  const auto ended = Clock::now();
  AskToEnd(*console, true);
  if (console->WaitForEnd() != 0) return false;
  ending_ = Clock::now() - ended;
  endCalls_ = plan_.Calls();
  newSettings_ = ReadFile(settings_);
  stored_ = operated_;
  if (newSettings_ == oldSettings_ || test::ReadStations(main_) != stored_) return false;
  for (const auto& [phase, calls] :
       {std::pair{Phase::Creating, &firstStartCalls_}, std::pair{Phase::Copying, &startCalls_}}) {
    if (crash::CallsOf(phase, *calls, false).empty()) return false;
  }
  for (const Phase phase : {Phase::Saving, Phase::Tidying, Phase::Settings}) {
    if (crash::CallsOf(phase, endCalls_, true).empty()) return false;
  }
  MakeJournalLarge();
  Watch({"Tesk.journal"});
  StartAndLook()->Kill();
  shrinkCalls_ = plan_.Count();
  if (crash::CallsOf(Phase::Shrinking, plan_.Calls(), false).size() !=
      static_cast<std::size_t>(shrinkCalls_)) {
    return false;
  }
  std::printf(
      "creating: %zu calls, making the copy: %zu, ending: %zu in %.0f ms, receiving: %.0f ms\n",
      firstStartCalls_.size() - startCalls_.size(), startCalls_.size(), endCalls_.size(),
      std::chrono::duration<double, std::milli>(ending_).count(),
      std::chrono::duration<double, std::milli>(receiving_).count());
  return failures_ == 0;
}

CrashRun::Outcome CrashRun::WhileStarting(Phase phase) {
  const bool first = phase == Phase::Creating;
  StartAndLook()->Kill();  // one that waits is killed as well
  plan_.Restart();
  if (first) {
    fs::remove(main_);
    before_ = "(none)";
    operated_ = newTables_;
  }
  const int call = DrawOf(crash::CallsOf(phase, first ? firstStartCalls_ : startCalls_, false));
  plan_.KillAt(call, Draw(2) == 0);
  const auto console = Start();
  if (!IsGone(*console)) Fail("not killed at its start");
  return {.how = "call " + std::to_string(call), .saved = first ? &newTables_ : nullptr};
}

CrashRun::Outcome CrashRun::WhileEditing(bool timed) {
  const auto console = StartAndLook();
  Outcome outcome;
  outcome.timed = timed;
  std::unique_ptr<crash::Killer> killer;
  if (timed) {
    const milliseconds after(Draw(static_cast<int>(kLongestEditing.count())));
    outcome.how = "after " + std::to_string(after.count()) + " ms";
    killer = std::make_unique<crash::Killer>(static_cast<pid_t>(console->Id()), after);
  } else {
    const int call = plan_.Count() + 1 + Draw(kMostEditingCalls);
    outcome.how = "call " + std::to_string(call);
    plan_.KillAt(call, Draw(2) == 0);
  }
  while (Edit(*console)) continue;
  if (!IsGone(*console)) {
    Fail("an edit was not done");
    console->Kill();
  }
  return outcome;
}

CrashRun::Outcome CrashRun::WhileReceiving() {
  const auto console = StartAndLook();
  const microseconds after(
      Draw(static_cast<int>(std::chrono::duration_cast<microseconds>(receiving_).count())));
  plan_.Restart();
  {
    const crash::Killer killer(static_cast<pid_t>(console->Id()), after);
    while (Receive(*console)) continue;
  }
  if (!IsGone(*console)) {
    Fail("the tables were not received");
    console->Kill();
  }
  if (plan_.Count() > 0) ++received_;
  return {.how = "receiving, after " + std::to_string(after.count() / 1000) + " ms",
          .timed = true,
          .received = true};
}

// A console that leaves something to be restored.
void CrashRun::EditAndKill() {
  const auto console = StartAndLook();
  for (int edits = 0; edits < 4 || operated_ == stored_; ++edits) {
    if (!Edit(*console)) return Fail("an edit was not done");
  }
  console->Kill();
}

CrashRun::Outcome CrashRun::WhileRestoring(bool timed) {
  EditAndKill();
  plan_.Restart();
  const auto console = Start();
  if (!ConsoleProcess::WaitFor([&] { return console->IsShown("aidRestore"); })) {
    Fail("nothing is offered");
  }
  const int call = 1 + Draw(kMostEditingCalls);
  const microseconds after(
      Draw(static_cast<int>(std::chrono::duration_cast<microseconds>(kLongestRestoring).count())));
  plan_.Restart();
  if (!timed) plan_.KillAt(call, Draw(2) == 0);
  std::optional<crash::Killer> killer;
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

// By what an earlier run has changed, and saved.
void CrashRun::MakeJournalLarge() {
  stations::Journal journal(journal_);
  bool made = journal.Read().ok();
  const std::string act = stations::WriteAct(
      {.title = "Label of station 17",
       .time = "2026-11-21T18:05:12+01:00",
       .changes = {{stations::Origin::Operator, 17, {{"Label", "Sta. 017", "CAM 4"}}}}});
  journal.SetBeginning("{}");
  do {
    made = made && journal.AddAct(act).ok();
  } while (made && fs::file_size(journal_) <= kLargeJournal);
  if (!made || !journal.EndRun(journal.ThisRun(), stations::JournalLine::Kind::Saved, "{}").ok()) {
    Fail("the journal is not made large");
  }
}

CrashRun::Outcome CrashRun::WhileShrinking() {
  // What an earlier kill left there would be deleted first, and the calls be other ones.
  fs::remove(folder_ / "Tesk.journal.new");
  EditAndKill();
  MakeJournalLarge();
  Watch({"Tesk.journal"});
  plan_.Restart();
  const int call = 1 + Draw(shrinkCalls_);
  plan_.KillAt(call, Draw(2) == 0);
  const auto console = Start();
  if (!IsGone(*console)) {
    Fail("not killed at its start");
    console->Kill();
  }
  return {.how = "shrinking the journal, call " + std::to_string(call)};
}

void CrashRun::EditBeforeTheEnd(ConsoleProcess& console) {
  if (Draw(4) == 0 && !Receive(console)) Fail("the tables were not received");
  // An edit may choose what was there; a console without changes has nothing to copy back.
  for (int edits = 1 + Draw(3); edits > 0 || operated_ == stored_; --edits) {
    if (!Edit(console)) return Fail("an edit was not done");
  }
  plan_.Restart();
  plan_.SlowDown(kSlowDisk);
}

// Threads of their own write other files: their calls come in between as they like, and those that
// are meant could not be told by their numbers.
void CrashRun::Watch(const std::vector<std::string>& files) {
  std::vector<std::string> others;
  for (const char* const file : {"Tesk.mdb", "WorkingDb.md$", "WorkingDb.lock", "Tesk.journal",
                                 "Tesk.sent", "Orvotesk.ini", "Teskctl.", "Backups"}) {
    if (std::ranges::find(files, file) == files.end()) others.emplace_back(file);
  }
  plan_.Spare(others);
}

void CrashRun::WatchTheWork() {
  Watch({"Tesk.mdb", "WorkingDb.md$", "WorkingDb.lock", "Tesk.journal", "Orvotesk.ini"});
}

CrashRun::Outcome CrashRun::WhileEnding(const std::string& file) {
  // What an earlier kill left there would be deleted first, and the calls be other ones.
  for (const char* const left : {"Tesk.mdb.new", "Orvotesk.ini.new"}) fs::remove(folder_ / left);
  const auto console = StartAndLook();
  EditBeforeTheEnd(*console);
  // The journal is brought to the disk when that is due: of this file each end has as many calls.
  Watch({file});
  const auto isOfFile = [&](const std::string& noted) {
    return noted.substr(noted.find(' ') + 1).starts_with(file);
  };
  const int call = 1 + Draw(static_cast<int>(std::ranges::count_if(endCalls_, isOfFile)));
  plan_.KillAt(call, Draw(2) == 0);
  AskToEnd(*console, Draw(2) == 0);
  const bool ended = console->WaitForEnd() == 0;
  if (ended) Fail("not killed at its end");
  if (console->Lives()) console->Kill();
  return {
      .how = "call " + std::to_string(call), .ending = true, .ended = ended, .saved = &operated_};
}

// In the given third of the time that ending takes.
CrashRun::Outcome CrashRun::WhileEndingTimed(int part) {
  const auto console = StartAndLook();
  EditBeforeTheEnd(*console);
  const int third = static_cast<int>(std::chrono::duration_cast<microseconds>(ending_).count() / 3);
  const microseconds after(part * third + Draw(third));
  const bool bySystem = Draw(2) == 0;
  bool ended = false;
  {
    const crash::Killer killer(static_cast<pid_t>(console->Id()), after);
    AskToEnd(*console, bySystem);
    ended = console->WaitForEnd() == 0;
  }
  if (console->Lives()) {
    Fail("it did not end");
    console->Kill();
  }
  return {.how = "asked to end, after " + std::to_string(after.count() / 1000) + " ms",
          .ending = true,
          .ended = ended,
          .timed = true,
          .saved = &operated_};
}

// The work is saved, and the journal does not have it yet.
CrashRun::Outcome CrashRun::WhileSayingThatItIsSaved() {
  Watch({"Tesk.journal"});
  const auto console = StartAndLook();
  EditBeforeTheEnd(*console);
  plan_.Restart();
  if (!Edit(*console)) Fail("an edit was not done");
  // Then the next call is that one.
  const auto isOnTheDisk = [&] {
    const std::vector<std::string> calls = plan_.Calls();
    return !calls.empty() && calls.back().starts_with("sync ");
  };
  if (!ConsoleProcess::WaitFor(isOnTheDisk)) Fail("the journal is not brought to the disk");
  plan_.Restart();
  plan_.KillAt(1, Draw(2) == 0);
  AskToEnd(*console, Draw(2) == 0);
  const bool ended = console->WaitForEnd() == 0;
  if (ended) Fail("not killed at its end");
  if (console->Lives()) console->Kill();
  return {.how = "said to be saved", .ending = true, .ended = ended, .saved = &operated_};
}

void CrashRun::CheckWhole(const std::string& when) {
  if (const std::string wrong = test::WhatIsWrong(main_); !wrong.empty()) {
    Fail(when + ": Tesk.mdb: " + wrong);
    return;
  }
  const auto exported = test::RunProgram("mdb-export", {main_.string(), "Stations"});
  const auto lines = std::count(exported.output.begin(), exported.output.end(), '\n');
  if (exported.exitCode != 0 || lines != 129) {
    Fail(when + ": mdbtools read " + std::to_string(lines) + " of 129 lines " + exported.errors);
  }
}

void CrashRun::Check(const Outcome& outcome) {
  const auto calls = plan_.Calls();
  const Phase phase = outcome.ended       ? Phase::Ended
                      : outcome.restoring ? Phase::Restoring
                                          : crash::PhaseOf(calls, outcome.ending);
  plan_.Restart();
  ++kills_[phase];
  if (outcome.timed) ++timedKills_[phase];

  const std::string now = ReadFile(main_);
  const std::string when = outcome.how + ", " + crash::NameOf(phase);
  const char* left = "as it was";
  if (now == before_ && !outcome.ended) {
    ++oldFiles_;
    if (now == "(none)") stored_ = newTables_;
  } else if (outcome.saved == nullptr) {
    Fail(when + ": Tesk.mdb was changed");
  } else {
    left = before_ == "(none)" ? "new" : "with the run's changes";
    ++newFiles_;
    if (test::ReadStations(main_) != *outcome.saved) Fail(when + ": Tesk.mdb holds something else");
    stored_ = *outcome.saved;
  }
  if (now != "(none)") CheckWhole(when);

  const std::string settings = ReadFile(settings_);
  if (settings != oldSettings_ && settings != newSettings_) {
    Fail(when + ": Orvotesk.ini is neither the old nor the new one: " + settings);
  }
  if (outcome.ended && (settings != newSettings_ || fs::exists(folder_ / db::kWorkingCopy))) {
    Fail(when + ": ended, and left something undone");
  }
  std::printf("%4d  %-34s %-24s %-22s Tesk.mdb %s\n", number_, outcome.how.c_str(),
              crash::NameOf(phase), calls.empty() ? "" : calls.back().c_str(), left);
  std::fflush(stdout);
  Restore(outcome);
}

// What the last acts of a run have stored, as many as an edit may have: "3 B2 Type=255".
void AddLastStored(const stations::JournalRun& run, std::set<std::string>* stored) {
  for (auto line = run.acts.rbegin();
       line != run.acts.rend() && line - run.acts.rbegin() < kMostOfAnEdit; ++line) {
    stations::Act act;
    if (!stations::ReadAct((*line)->content, &act)) continue;
    for (const stations::Change& change : act.changes) {
      for (const stations::FieldChange& field : change.fields) {
        const bool isText = field.after.GetKind() == jet::Value::Kind::Text;
        stored->insert(std::to_string(change.station) + " " + field.field + "=" +
                       (isText ? field.after.Text() : std::to_string(field.after.Int())));
      }
    }
  }
}

// The same of all runs that are to be restored.
std::set<std::string> CrashRun::LastStored() const {
  std::set<std::string> stored;
  stations::Journal journal(journal_);
  if (!journal.Read().ok()) return stored;
  for (const stations::JournalRun& run : journal.Contents().Runs()) {
    if (run.IsUnsaved()) AddLastStored(run, &stored);
  }
  return stored;
}

// Whether there is what the operator has seen, and besides at most what the last acts have stored,
// or, of tables that were being received, any part of them.
bool CrashRun::IsAsSeen(const test::StoredTables& restored, const std::set<std::string>& last,
                        bool received) const {
  test::StoredTables all = operated_;
  if (received) TakeOver(&all);
  return std::ranges::all_of(restored, [&](const auto& each) {
    const auto& [field, value] = each;
    return value == operated_.at(field) || value == all.at(field) ||
           last.contains(field + "=" + value);
  });
}

bool CrashRun::IsAnyUnsaved() const {
  stations::Journal journal(journal_);
  return !journal.Read().ok() ||
         std::ranges::any_of(journal.Contents().Runs(), &stations::JournalRun::IsUnsaved);
}

// The next console offers what is not in Tesk.mdb, and nothing else.
void CrashRun::Restore(const Outcome& outcome) {
  plan_.Restart();
  const bool isMissing = operated_ != stored_;
  const std::set<std::string> last = LastStored();
  auto console = Start();
  const auto isOffered = [&] { return console->IsShown("aidRestore"); };
  if (isMissing && !ConsoleProcess::WaitFor(isOffered)) return Fail("nothing is offered");
  if (outcome.ending && !isMissing &&
      !ConsoleProcess::WaitFor([this] { return !IsAnyUnsaved(); })) {
    return Fail("what is saved is not said to be");
  }
  // What the operator has not seen done may be offered, too.
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
  if (!ConsoleProcess::WaitFor(isDone)) return Fail("it is not restored");
  for (const test::Box& box : console->Boxes())
    Fail("after restoring: " + box.title + ": " + box.text);
  if (console->Terminate() != 0) return Fail("the console that has restored does not end");
  stored_ = test::ReadStations(main_);
  if (!IsAsSeen(stored_, last, outcome.received)) Fail("something else was restored");
  CheckWhole("restored");
  ++restored_;
}

void CrashRun::Kill(int number) {
  number_ = number;
  // Each kill draws anew, so that how long the one before lived does not matter.
  std::seed_seq seed{seed_, static_cast<unsigned>(number)};
  random_.seed(seed);
  WatchTheWork();
  switch (number % kLeastKills) {
    case 0:
      return Check(WhileStarting(Phase::Creating));
    case 1:
      return Check(WhileEnding("Tesk.mdb"));
    case 2:
      return Check(WhileEditing(true));
    case 3:
      return Check(WhileEndingTimed(0));
    case 4:
      return Check(WhileStarting(Phase::Copying));
    case 5:
      return Check(WhileEnding("Orvotesk.ini"));
    case 6:
      return Check(WhileReceiving());
    case 7:
      return Check(WhileEndingTimed(1));
    case 8:
      return Check(WhileEditing(false));
    case 9:
      return Check(WhileEnding("WorkingDb.md$"));
    case 10:
      return Check(WhileEndingTimed(2));
    case 11:
      return Check(WhileEnding("Tesk.mdb"));
    case 12:
      return Check(WhileRestoring(true));
    case 13:
      return Check(WhileShrinking());
    case 14:
      return Check(WhileRestoring(false));
    default:
      return Check(WhileSayingThatItIsSaved());
  }
}

void CrashRun::KillWhileSaving(int number) {
  constexpr int kMostKills = 20;
  for (int more = 0; more < kMostKills && timedKills_[Phase::Saving] == 0; ++more) {
    number_ = number + more;
    Check(WhileEndingTimed(0));
  }
}

int CrashRun::Verdict() {
  if (StartAndLook()->Terminate() != 0) Fail("the console does not end as it should");
  std::printf("\n%-26s %6s %6s\n", "killed while", "kills", "timed");
  for (const Phase phase : crash::kPhases) {
    std::printf("%-26s %6d %6d\n", crash::NameOf(phase), kills_[phase], timedKills_[phase]);
  }
  std::printf("%d of them while storing received tables\n", received_);
  std::printf("Tesk.mdb as it was: %d, with the run's changes or new: %d\n", oldFiles_, newFiles_);
  std::printf("%d restored\n", restored_);
  if (restored_ == 0) Fail("nothing was ever restored");
  for (const Phase phase : {Phase::Creating, Phase::Copying, Phase::Shrinking, Phase::Editing,
                            Phase::Restoring, Phase::Saving, Phase::Tidying, Phase::Settings}) {
    if (kills_[phase] == 0) Fail(std::string("never killed while ") + crash::NameOf(phase));
  }
  if (timedKills_[Phase::Saving] == 0) Fail("no kill by time while copying back");
  if (oldFiles_ == 0 || newFiles_ == 0) Fail("only one kind of file was found");
  std::printf(failures_ == 0 ? "whole each time\n" : "%d FAILURES\n", failures_);
  return failures_ == 0 ? 0 : 1;
}

}  // namespace

int main(int argc, char** argv) {
  const QCoreApplication application(argc, argv);
  const int kills = argc > 1 ? std::atoi(argv[1]) : 300;
  const unsigned seed =
      argc > 2 ? static_cast<unsigned>(std::strtoul(argv[2], nullptr, 10)) : std::random_device()();
  if (kills < kLeastKills) {
    std::printf("usage: crash_run [KILLS [SEED]], at least %d kills\n", kLeastKills);
    return 2;
  }
  std::printf("crash_run %d %u\n", kills, seed);
  CrashRun run(seed);
  if (!run.Prepare()) {
    std::printf("FAILED: a console that nobody kills does not do what it should\n");
    return 1;
  }
  for (int number = 1; number <= kills; ++number) run.Kill(number);
  run.KillWhileSaving(kills + 1);
  return run.Verdict();
}
