// SPDX-License-Identifier: MIT

#ifndef TESTS_CRASH_KILLER_H_
#define TESTS_CRASH_KILLER_H_

#include <sys/types.h>

#include <chrono>
#include <condition_variable>
#include <mutex>
#include <thread>

namespace crash {

// Kills a process (SIGKILL) after a time, whatever the test does meanwhile.
class Killer {
 public:
  Killer(pid_t process, std::chrono::microseconds after);
  // Waits no longer: a process that still lives is spared.
  ~Killer();
  Killer(const Killer&) = delete;
  Killer& operator=(const Killer&) = delete;

 private:
  std::mutex mutex_;
  std::condition_variable changed_;
  bool spared_ = false;
  int handle_ = -1;  // stands for this process, also when its number is given to another one
  std::thread thread_;
};

}  // namespace crash

#endif  // TESTS_CRASH_KILLER_H_
