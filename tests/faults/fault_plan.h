// SPDX-License-Identifier: MIT

#ifndef TESTS_FAULTS_FAULT_PLAN_H_
#define TESTS_FAULTS_FAULT_PLAN_H_

#include <chrono>
#include <filesystem>
#include <string>
#include <vector>

#include "tests/faults/fault_block.h"
#include "tests/support/temporary_folder.h"

namespace faults {

// Says which of the calls that change files of one folder fail, are slow, or are the last ones
// of their process.  Everything can be said while the process runs.  Calls count from 1, anew
// with each Restart().
class FaultPlan {
 public:
  // Nothing fails as yet.  `folder` must be absolute and without links.
  explicit FaultPlan(const std::filesystem::path& folder);
  ~FaultPlan();
  FaultPlan(const FaultPlan&) = delete;
  FaultPlan& operator=(const FaultPlan&) = delete;

  // What a program's command line begins with so that the plan is in force in it.
  std::vector<std::string> Prefix() const;
  // For TeskWatch(), in a test that the shim is linked to.
  Block* Shared() const { return block_; }

  // Files whose names begin with one of these are not watched.  To be said before the process runs.
  void Spare(const std::vector<std::string>& names);

  // Forgets the calls so far; nothing fails or is slow.
  void Restart();
  // The calls `first` to `last` fail with an errno.  With `halves`, the first half of what a
  // failing write is to write reaches the file.
  void Fail(int first, int last, int error, bool halves = true);
  // The process dies in that call (SIGKILL), after the first half of a write when `halves`.
  void KillAt(int call, bool halves);
  // Every call takes longer.
  void SlowDown(std::chrono::microseconds by);
  // Nothing fails any more.
  void Lift();

  int Count() const { return block_->calls; }
  // The calls since Restart(): "write Tesk.mdb.new", "rename Tesk.mdb".
  std::vector<std::string> Calls() const;

 private:
  void Arm(int first, int last, int error, bool halves);

  test::TemporaryFolder own_;
  Block* block_ = nullptr;
};

}  // namespace faults

#endif  // TESTS_FAULTS_FAULT_PLAN_H_
