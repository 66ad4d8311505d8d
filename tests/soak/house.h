// SPDX-License-Identifier: MIT

#ifndef TESTS_SOAK_HOUSE_H_
#define TESTS_SOAK_HOUSE_H_

#include <atomic>
#include <chrono>
#include <functional>
#include <memory>
#include <string>
#include <thread>

#include "tests/end_to_end/console_process.h"
#include "tests/support/simulator_process.h"

namespace soak {

using Clock = std::chrono::steady_clock;

inline constexpr std::chrono::milliseconds kLost{60000};  // so long is waited for what never comes

std::chrono::milliseconds Since(Clock::time_point start);

// A port that nobody listens on.
int FreePort();

// A console on a simulated switcher of 57600 baud under attack, and what is measured of it.
class House {
 public:
  // An attack lasts `time`; limits are multiplied by `patience`.  `settings` is what the settings
  // file has besides the line.  A system of other than 64 channels has a database of its own.
  House(Clock::duration time, int patience, const std::string& settings, int channels = 64);

  // Whether the console has the whole map.
  bool IsUp() const { return up_; }
  Clock::duration Time() const { return time_; }
  test::ConsoleProcess& Console() { return *console_; }
  test::SimulatorProcess& Switcher() { return *simulator_; }

  // Whether `measured` is within the limit; says so.
  bool Check(const char* what, std::chrono::milliseconds measured,
             std::chrono::milliseconds limit) const;

  // For the time of an attack: the longest way of the operator's take to the line, the longest time
  // between two polls of the switcher, and the longest that the console needs to say something to
  // who looks at it.
  std::chrono::milliseconds LongestTake();
  std::chrono::milliseconds LongestSilence();
  std::chrono::milliseconds LongestLook();

  // The memory that the console has, in megabytes.
  double Megabytes();

 private:
  const Clock::duration time_;
  const int patience_;
  test::ConsoleFolder folder_;
  const std::string line_ = folder_ / "line";
  std::unique_ptr<test::SimulatorProcess> simulator_;
  std::unique_ptr<test::ConsoleProcess> console_;
  bool up_ = false;
};

// What is done to the console in a thread of its own, again and again, until the object goes.
class Attack {
 public:
  Attack(std::chrono::milliseconds pause, std::function<void()> blow);
  ~Attack();
  Attack(const Attack&) = delete;
  Attack& operator=(const Attack&) = delete;

 private:
  std::atomic<bool> ending_ = false;
  std::thread thread_;
};

// How the attacks of a program are run.  The command line is [SECONDS [PATIENCE [ATTACK]]].
struct Options {
  Options(int argc, char** argv);

  bool Wants(const std::string& attack) const { return only.empty() || only == attack; }

  Clock::duration time;  // of each attack
  int patience = 1;
  std::string only;  // the name of the only one to run; empty for all
};

}  // namespace soak

#endif  // TESTS_SOAK_HOUSE_H_
