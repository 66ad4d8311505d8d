// SPDX-License-Identifier: MIT

#include "tests/faults/fault_plan.h"

#include <fcntl.h>
#include <sys/mman.h>
#include <unistd.h>

#include <algorithm>
#include <cstdlib>
#include <limits>
#include <stdexcept>

namespace faults {

namespace {

constexpr int kLast = std::numeric_limits<int>::max();

}  // namespace

FaultPlan::FaultPlan(const std::filesystem::path& folder) {
  const std::string name = (own_ / "faults").string();
  const int handle = open(name.c_str(), O_RDWR | O_CREAT | O_CLOEXEC, 0600);
  if (handle < 0 || ftruncate(handle, sizeof(Block)) != 0) {
    throw std::runtime_error("no file to be had");
  }
  void* const mapped = mmap(nullptr, sizeof(Block), PROT_READ | PROT_WRITE, MAP_SHARED, handle, 0);
  close(handle);
  if (mapped == MAP_FAILED) throw std::runtime_error("no memory to be had");
  block_ = static_cast<Block*>(mapped);
  const std::string watched = folder.string();
  if (watched.size() >= block_->folder.size()) throw std::runtime_error("too long a path");
  std::copy(watched.begin(), watched.end(), block_->folder.begin());
  block_->watching = 1;
}

FaultPlan::~FaultPlan() { munmap(block_, sizeof(Block)); }

std::vector<std::string> FaultPlan::Prefix() const {
  const char* const options = std::getenv("ASAN_OPTIONS");
  return {
      "env", "LD_PRELOAD=" TESK_FAULT_SHIM,
      std::string(kBlockVariable) + "=" + (own_ / "faults").string(),
      // The shim comes before the sanitizer and hands every call on to it.
      std::string("ASAN_OPTIONS=verify_asan_link_order=0:") + (options == nullptr ? "" : options)};
}

void FaultPlan::Spare(const std::vector<std::string>& names) {
  std::string lines;
  for (const std::string& name : names) lines += name + '\n';
  if (lines.size() >= block_->spared.size()) throw std::runtime_error("too many names");
  block_->spared.fill(0);
  std::copy(lines.begin(), lines.end(), block_->spared.begin());
}

void FaultPlan::Restart() {
  Lift();
  block_->delay = 0;
  for (int i = 0; i < Count() && i < static_cast<int>(block_->noted.size()); ++i) {
    block_->noted[static_cast<std::size_t>(i)] = {};
  }
  block_->calls = 0;
}

// The first call is set last: it is what puts the rest in force.
void FaultPlan::Arm(int first, int last, int error, bool halves) {
  Lift();
  block_->error = error;
  block_->halves = halves ? 1 : 0;
  block_->lastFault = last;
  block_->firstFault = first;
}

void FaultPlan::Fail(int first, int last, int error, bool halves) {
  Arm(first, last, error, halves);
}

void FaultPlan::KillAt(int call, bool halves) { Arm(call, kLast, kKill, halves); }

void FaultPlan::SlowDown(std::chrono::microseconds by) {
  block_->delay = static_cast<int>(by.count());
}

void FaultPlan::Lift() { block_->firstFault = kNever; }

std::vector<std::string> FaultPlan::Calls() const {
  std::vector<std::string> calls;
  for (int i = 0; i < Count() && i < static_cast<int>(block_->noted.size()); ++i) {
    const Call& call = block_->noted[static_cast<std::size_t>(i)];
    calls.push_back(std::string(call.operation.data()) + " " + call.file.data());
  }
  return calls;
}

}  // namespace faults
