// SPDX-License-Identifier: MIT

#ifndef TESTS_SOAK_OPERATOR_H_
#define TESTS_SOAK_OPERATOR_H_

#include <chrono>
#include <functional>
#include <random>
#include <string>
#include <vector>

#include "tests/end_to_end/console_process.h"
#include "tests/end_to_end/operator_edits.h"

namespace soak {

// Somebody who works at the console all the time: edits, closes and opens windows, arranges
// them, reads the about box, takes an edit back and does it again, makes a crosspoint and undoes
// the take, locks an output, sends tables and what is unsent, begins a download and a retrieval and
// thinks better of it.  One thing after the other, round after round; a new window's tasks are
// added to the list in the constructor.
class Operator {
 public:
  // The only one that he makes crosspoints of.
  static constexpr int kOutput = 50;

  // `tables` is what the console's database holds.
  Operator(test::ConsoleProcess& console, test::StoredTables tables);

  // Goes on when the thing of the moment is done; never waits.
  void Step();

  int Rounds() const { return rounds_; }
  // How often he sent what was unsent, and how often the switcher was seen to have it.
  int Sends() const { return sends_; }
  int ConfirmedSends() const { return confirmedSends_; }
  // What took longer than a minute, "" when nothing did.
  const std::string& Stuck() const { return stuck_; }
  // What the database is to hold when the console has ended.
  const test::StoredTables& Tables() const { return tables_; }

 private:
  using Clock = std::chrono::steady_clock;

  struct Task {
    const char* name;
    std::function<void()> begin;
    std::function<bool()> isDone;
  };

  void AddTrigger(const char* name, const char* action, const char* shows,
                  const char* of = "frmMain");
  void AddClose(const char* name, const char* window);
  void AddEdits();
  void AddUndo();
  void AddTake();
  void AddOutputLock();
  void AddSendChanges();

  test::ConsoleProcess& console_;
  test::StoredTables tables_;
  std::mt19937 random_{6};
  std::vector<Task> tasks_;
  std::size_t task_ = 0;
  int input_ = 1;  // of his crosspoint
  bool busy_ = false;
  Clock::time_point begun_ = Clock::now();
  int rounds_ = 0;
  int sends_ = 0;
  int confirmedSends_ = 0;
  bool isConfirmed_ = false;  // the send of the moment, as far as can be seen
  std::string stuck_;
};

}  // namespace soak

#endif  // TESTS_SOAK_OPERATOR_H_
