// SPDX-License-Identifier: MIT
//
// What a test and the shim in the program under test share: a file that both have mapped.

#ifndef TESTS_FAULTS_FAULT_BLOCK_H_
#define TESTS_FAULTS_FAULT_BLOCK_H_

#include <array>
#include <atomic>
#include <cstdint>

namespace faults {

// The variable of the environment that names the mapped file.
inline constexpr char kBlockVariable[] = "TESK_FAULTS";

inline constexpr int kNever = 0;  // calls count from 1
inline constexpr int kKill = -1;  // in the place of an error number

// One call that would have changed a file.
struct Call {
  std::array<char, 12> operation;  // "open", "write", "copy", "flush", "sync", "cut", "rename",
                                   // "remove", "chmod", "chown"
  std::array<char, 52> file;       // its name without the folder
};

// All zero at first: nothing is watched.  The shim alone counts and notes; the test alone sets
// the rest, at any time.
struct Block {
  std::array<char, 512> folder;  // what lies below is watched; set before `watching`
  std::array<char, 256> spared;  // but for names that begin with one of these, a line each
  std::atomic<std::int32_t> watching;
  std::atomic<std::int32_t> calls;  // so far

  std::atomic<std::int32_t> firstFault;  // the number of the first call to fail, or kNever
  std::atomic<std::int32_t> lastFault;
  std::atomic<std::int32_t> error;   // what they fail with; kKill: the process is killed instead
  std::atomic<std::int32_t> halves;  // a write does half of its work first
  std::atomic<std::int32_t> delay;   // microseconds that every call takes longer

  std::array<Call, 16384> noted;  // the calls from the first one on
};

static_assert(std::atomic<std::int32_t>::is_always_lock_free, "the block is shared by processes");

}  // namespace faults

// Of the shim: watches for this process, without a variable in its environment.
extern "C" void TeskWatch(faults::Block* block);

#endif  // TESTS_FAULTS_FAULT_BLOCK_H_
