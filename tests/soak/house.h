// SPDX-License-Identifier: MIT

#ifndef TESTS_SOAK_HOUSE_H_
#define TESTS_SOAK_HOUSE_H_

#include <atomic>
#include <chrono>
#include <cstdio>
#include <functional>
#include <limits>
#include <memory>
#include <string>
#include <thread>
#include <utility>
#include <vector>

#include "tests/end_to_end/console_process.h"
#include "tests/support/simulator_process.h"

namespace soak {

using Clock = std::chrono::steady_clock;

inline constexpr std::chrono::milliseconds kLost{60000};  // so long is waited for what never comes

std::chrono::milliseconds Since(Clock::time_point start);

// What an operator who works during an attack finds out about the console, and what the switcher
// is sent meanwhile.
struct Service {
  std::chrono::milliseconds longestTake{0};     // of the operator, to the line
  std::chrono::milliseconds longestSilence{0};  // between two polls of the switcher
  // Until who looks at the console sees something, less the longer of the waits of the two for a
  // processor.
  std::chrono::milliseconds longestLook{0};
  int takesOfOthers = 0;  // on the line
};

// A console on a simulated switcher of 57600 baud under attack, and what is measured of it.
class House {
 public:
  // An attack lasts `time`; limits are multiplied by `patience`.  `settings` is what the settings
  // file has besides the line.  A system of other than 64 channels has a database of its own.
  House(Clock::duration time, int patience, const std::string& settings, int channels = 64);

  // Whether the console has the whole map.
  bool IsUp() const { return up_; }
  // Whether those who attacked are gone, which is waited for: what they have left on its way is
  // theirs until it is served.
  bool IsLeftAlone();
  Clock::duration Time() const { return time_; }
  int Patience() const { return patience_; }
  test::ConsoleProcess& Console() { return *console_; }
  test::SimulatorProcess& Switcher() { return *simulator_; }

  // Whether `measured` is within the limit; says so.
  bool Check(const char* what, std::chrono::milliseconds measured,
             std::chrono::milliseconds limit) const;

  // Whether there are as many as there must be at least, and no more than there may be; says so.
  static bool CheckCount(const char* what, int counted, int least,
                         int most = std::numeric_limits<int>::max());

  // Takes on output 60 and looks, again and again for the time of an attack.  The switcher's link
  // prescribes that a poll that falls due in the middle of a command waits for the next second: a
  // second is not counted of a silence in which the operator took near its poll.
  Service Work();

  // The memory that the console has taken since it was up, in megabytes.
  double Growth() const { return console_->ResidentMegabytes() - atFirst_; }

 private:
  std::chrono::milliseconds Look();

  const Clock::duration time_;
  const int patience_;
  const int channels_;
  test::ConsoleFolder folder_;
  const std::string line_ = folder_ / "line";
  std::unique_ptr<test::SimulatorProcess> simulator_;
  std::unique_ptr<test::ConsoleProcess> console_;
  bool up_ = false;
  double atFirst_ = 0;
  int input_ = 0;  // that the operator took last
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

// Runs the attacks that the options ask for one after the other, on one house as long as it stands:
// after a failure the next one begins on a new one.  Returns the exit status of the program: 0 when
// all held, 2 when there is no attack of that name.  `SomeHouse` is made of time and patience.
template <typename SomeHouse>
int RunAttacks(const Options& options,
               const std::vector<std::pair<std::string, bool (*)(SomeHouse&)>>& attacks) {
  std::unique_ptr<SomeHouse> house;
  int run = 0;
  int failures = 0;
  for (const auto& [name, attack] : attacks) {
    if (!options.Wants(name)) continue;
    ++run;
    std::printf("%s\n", name.c_str());
    std::fflush(stdout);
    if (house == nullptr) house = std::make_unique<SomeHouse>(options.time, options.patience);
    if (house->IsUp() && house->IsLeftAlone() && attack(*house) && house->Console().Lives())
      continue;
    std::printf("FAILED: %s\n", name.c_str());
    ++failures;
    house.reset();
  }
  if (run == 0) std::printf("There is no attack \"%s\"\n", options.only.c_str());
  if (run == 0) return 2;
  return failures == 0 ? 0 : 1;
}

}  // namespace soak

#endif  // TESTS_SOAK_HOUSE_H_
