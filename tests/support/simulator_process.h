// SPDX-License-Identifier: MIT

#ifndef TESTS_SUPPORT_SIMULATOR_PROCESS_H_
#define TESTS_SUPPORT_SIMULATOR_PROCESS_H_

#include <sys/types.h>

#include <chrono>
#include <condition_variable>
#include <deque>
#include <mutex>
#include <optional>
#include <string>
#include <string_view>
#include <thread>
#include <vector>

namespace test {

// A running tesksim.  Every wait has a deadline, generous because a busy machine is slow; none
// is waited out when what it waits for happens.  What the program writes to its standard error
// goes to the test's.
class SimulatorProcess {
 public:
  static constexpr std::chrono::seconds kPatience{60};

  // Starts it and waits until it says where to connect, or ends.
  explicit SimulatorProcess(const std::vector<std::string>& arguments = {});

  // Ends it, with force if need be.
  ~SimulatorProcess();
  SimulatorProcess(const SimulatorProcess&) = delete;
  SimulatorProcess& operator=(const SimulatorProcess&) = delete;

  // The device to open, as of the start or the last "replug" command: "/dev/pts/7".  Empty when
  // the program did not start.
  const std::string& Terminal() const { return terminal_; }

  // Carries out one command and returns its answer: "ok ...", "error ...", or "" when none came.
  std::string Command(std::string_view command);

  // A number out of its "stats"; 0 when there is none of that name.
  double Stat(const std::string& name);

  // Waits for a line other than an answer that contains `text`, such as "rx poll map", and
  // returns it.  Looks at each line once: the search goes on behind the line found last.
  // Nothing when none comes in time.
  std::optional<std::string> WaitForLine(std::string_view text,
                                         std::chrono::milliseconds within = kPatience);

  // Waits for the end of the program; its exit status, or nothing when it does not end in time
  // or was killed.
  std::optional<int> WaitForEnd(std::chrono::milliseconds within = kPatience);

  // Closes the program's standard input.
  void CloseInput();

  pid_t Id() const { return pid_; }

 private:
  void Start(const std::vector<std::string>& arguments);
  void ReadLines();
  void NoteTerminal(const std::string& line);

  pid_t pid_ = -1;  // -1 once it has been waited for
  int input_ = -1;
  int output_ = -1;
  std::string terminal_;
  std::optional<int> exitStatus_;

  std::thread reader_;
  std::mutex mutex_;
  std::condition_variable changed_;
  std::deque<std::string> lines_;    // guarded by mutex_, as is what follows
  std::deque<std::string> answers_;  // "ok ..." and "error ..."
  bool ended_ = false;               // no more lines come
};

}  // namespace test

#endif  // TESTS_SUPPORT_SIMULATOR_PROCESS_H_
