// SPDX-License-Identifier: MIT

#ifndef TESTS_CRASH_STAGE_H_
#define TESTS_CRASH_STAGE_H_

#include <filesystem>
#include <memory>
#include <random>
#include <string>
#include <vector>

#include "db/database_files.h"
#include "tests/end_to_end/console_process.h"
#include "tests/end_to_end/system_database.h"
#include "tests/faults/fault_plan.h"
#include "tests/support/simulator_process.h"

namespace crash {

inline constexpr int kChannels = 64;

// Whether it was killed.  Who dies is there for another moment.
bool IsGone(test::ConsoleProcess& console);

// The console's folder, its disk and its switcher, the operator in front of it, and what he may
// expect to find.
struct Stage {
  // The switcher runs from now on.
  explicit Stage(unsigned theSeed);

  // From now on it is about this kill.  Each draws anew, so that how long the one before lived does
  // not matter.
  void BeginKill(int theNumber);

  // Says what is wrong, and keeps the files.
  void Fail(const std::string& what);

  // From 0 to below `count`, and one of `numbers`.
  int Draw(int count) { return static_cast<int>(random() % static_cast<unsigned>(count)); }
  int DrawOf(const std::vector<int>& numbers) {
    return numbers[static_cast<std::size_t>(Draw(static_cast<int>(numbers.size())))];
  }

  std::unique_ptr<test::ConsoleProcess> Start();
  std::unique_ptr<test::ConsoleProcess> StartAndLook();
  bool Edit(test::ConsoleProcess& console);
  bool Receive(test::ConsoleProcess& console);
  void TakeOver(test::StoredTables* tables) const;
  void AskToEnd(test::ConsoleProcess& console, bool bySystem);
  void EditAndKill();
  void MakeJournalLarge();
  void Watch(const std::vector<std::string>& files);
  void WatchTheWork();

  const unsigned seed;
  std::mt19937 random;
  int number = 0;
  int failures = 0;

  test::ConsoleFolder folder;
  const std::filesystem::path main = folder / db::kMainFile;
  const std::filesystem::path journal = folder / "Tesk.journal";
  const std::filesystem::path settings = folder / "Orvotesk.ini";
  const std::filesystem::path held = folder.Home() / "Held.mdb";
  const std::string line = folder.Home() / "line";
  faults::FaultPlan plan{folder.Program()};
  std::unique_ptr<test::SimulatorProcess> simulator;
  std::vector<std::string> receivedTables;  // what the switcher has: "3 B2 Type=255"

  std::string before;  // Tesk.mdb at the start, "(none)" without one
  std::string oldSettings;
  test::StoredTables stored;    // what Tesk.mdb holds
  test::StoredTables operated;  // with what the operator has done since
};

}  // namespace crash

#endif  // TESTS_CRASH_STAGE_H_
