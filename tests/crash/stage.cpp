// SPDX-License-Identifier: MIT

#include "tests/crash/stage.h"

#include <algorithm>
#include <chrono>
#include <csignal>
#include <cstdint>
#include <cstdio>
#include <functional>

#include "stations/journal/act.h"
#include "stations/journal/journal.h"
#include "tests/end_to_end/operator_edits.h"

namespace crash {
namespace {

namespace fs = std::filesystem;
using test::ConsoleProcess;
using test::ReadFile;

constexpr std::uintmax_t kLargeJournal = 2 << 20;  // larger ones are made smaller

// What a console stores of a hidden station's label, which travels with a mark for its first
// character: its own when the others are the same, else what came.
std::string HiddenLabel(const std::string& stored, const std::string& held) {
  return stored.substr(1) == held.substr(1) ? stored : "{" + held.substr(1);
}

}  // namespace

// Whether it was killed.  Who dies is there for another moment.
bool IsGone(ConsoleProcess& console) {
  return ConsoleProcess::WaitFor([&] { return !console.Lives(); });
}

Stage::Stage(unsigned theSeed) : seed(theSeed), random(theSeed) {
  test::CreateSystem(held, kChannels, 2);
  receivedTables = test::ReadTables(held, kChannels);
  simulator = std::make_unique<test::SimulatorProcess>(
      std::vector<std::string>{"--database", held.string(), "--baud", "0", "--link", line});
}

void Stage::BeginKill(int theNumber) {
  number = theNumber;
  std::seed_seq draws{seed, static_cast<unsigned>(number)};
  random.seed(draws);
}

void Stage::Fail(const std::string& what) {
  ++failures;
  const fs::path kept = fs::temp_directory_path() /
                        ("crash_run_" + std::to_string(seed) + "_" + std::to_string(number));
  std::error_code ignored;
  fs::copy(folder.Program(), kept,
           fs::copy_options::recursive | fs::copy_options::overwrite_existing, ignored);
  std::printf("FAILED, kill %d, seed %u: %s\n  the files are kept in %s\n", number, seed,
              what.c_str(), kept.c_str());
}

std::unique_ptr<ConsoleProcess> Stage::Start() {
  folder.WriteSettings(line);
  oldSettings = ReadFile(settings);
  return std::make_unique<ConsoleProcess>(folder, plan.Prefix());
}

// After whatever happened before, it comes up without a word and shows what is stored.
std::unique_ptr<ConsoleProcess> Stage::StartAndLook() {
  plan.Restart();
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
        stored.at(std::to_string(output) + " Inhibits").at(static_cast<std::size_t>(input) - 1) ==
        '1';
    if (console->Mark(output, input) != (inhibited ? 2 : 0)) {
      Fail("the map does not show what is stored: output " + std::to_string(output));
    }
  }
  before = ReadFile(main);
  operated = stored;
  return console;
}

bool Stage::Edit(ConsoleProcess& console) {
  const auto edits = test::Edits();
  const auto& edit = edits[static_cast<std::size_t>(Draw(static_cast<int>(edits.size())))];
  const bool isDone = edit.make(console, random, operated);
  if (!isDone && console.Lives()) std::printf("not done: %s\n", edit.name);
  return isDone;
}

// All tables of the switcher.
bool Stage::Receive(ConsoleProcess& console) {
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
  TakeOver(&operated);
  return true;
}

// What the switcher has, stored.
void Stage::TakeOver(test::StoredTables* tables) const {
  bool hidden = false;
  for (const std::string& received : receivedTables) {
    const auto equals = received.find('=');
    const std::string field = received.substr(0, equals);
    const std::string value = received.substr(equals + 1);
    if (field.ends_with(" Hidden")) hidden = value == "1";
    std::string& kept = (*tables)[field];
    kept = field.ends_with("Label") && hidden ? HiddenLabel(kept, value) : value;
  }
}

void Stage::AskToEnd(ConsoleProcess& console, bool bySystem) {
  if (bySystem) {
    kill(static_cast<pid_t>(console.Id()), SIGTERM);
  } else {
    console.Trigger("ID_Exit");
  }
}

// A console that leaves something to be restored.
void Stage::EditAndKill() {
  const auto console = StartAndLook();
  for (int edits = 0; edits < 4 || operated == stored; ++edits) {
    if (!Edit(*console)) return Fail("an edit was not done");
  }
  console->Kill();
}

// By what an earlier run has changed, and saved.
void Stage::MakeJournalLarge() {
  stations::Journal large(journal);
  bool made = large.Read().ok();
  const std::string act = stations::WriteAct(
      {.title = "Label of station 17",
       .time = "2026-11-21T18:05:12+01:00",
       .changes = {{stations::Origin::Operator, 17, {{"Label", "Sta. 017", "CAM 4"}}}}});
  large.SetBeginning("{}");
  do {
    made = made && large.AddAct(act).ok();
  } while (made && fs::file_size(journal) <= kLargeJournal);
  if (!made || !large.EndRun(large.ThisRun(), stations::JournalLine::Kind::Saved, "{}").ok()) {
    Fail("the journal is not made large");
  }
}

// Threads of their own write other files: their calls come in between as they like, and those that
// are meant could not be told by their numbers.
void Stage::Watch(const std::vector<std::string>& files) {
  std::vector<std::string> others;
  for (const char* const file : {"Tesk.mdb", "WorkingDb.md$", "WorkingDb.lock", "Tesk.journal",
                                 "Tesk.sent", "Orvotesk.ini", "Teskctl.", "Backups"}) {
    if (std::ranges::find(files, file) == files.end()) others.emplace_back(file);
  }
  plan.Spare(others);
}

void Stage::WatchTheWork() {
  Watch({"Tesk.mdb", "WorkingDb.md$", "WorkingDb.lock", "Tesk.journal", "Orvotesk.ini"});
}

}  // namespace crash
