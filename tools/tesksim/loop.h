// SPDX-License-Identifier: MIT

#ifndef TESKSIM_LOOP_H_
#define TESKSIM_LOOP_H_

#include <csignal>
#include <optional>
#include <string>

#include "tools/tesksim/clock.h"
#include "tools/tesksim/commands.h"
#include "tools/tesksim/line_pacer.h"
#include "tools/tesksim/link_file.h"
#include "tools/tesksim/options.h"
#include "tools/tesksim/simulator.h"
#include "tools/tesksim/state_file.h"
#include "tools/tesksim/terminal.h"

namespace tesksim {

// The running program: carries bytes between the terminal and the simulator, and lines between
// the standard input, the commands and the standard output.
//
// One thread and one wait, for the terminal, the input, a signal or the next time at which
// there is something to do.
class Loop {
 public:
  // Begins with `state`; what it becomes is kept in `file`.
  Loop(const Options& options, StateFile file, SwitcherState state);
  Loop(const Loop&) = delete;
  Loop& operator=(const Loop&) = delete;

  // Runs until it is told to quit.  Returns the exit status of the program.
  int Run();

 private:
  // What the commands reach.
  model::Status Unplug();
  model::Status Replug();
  std::string Where() const;
  model::Status Save(const std::string& path);

  void WatchForPeer(Time now);
  void CarryIn(Time now);
  void CarryOut(Time now);
  void LosePeer();
  void Wait(const sigset_t& mask);
  bool WatchesLine() const;
  std::optional<Time> NextTime() const;
  void KeepState(Time now);
  bool WriteState();
  void ReadInput();
  void ExecuteLines();

  Simulator simulator_;
  Commands commands_;
  Terminal terminal_;
  LinkFile link_;
  std::string linkPath_;

  // Somebody has the terminal open.  While nobody has, what is sent is lost, and whether
  // somebody has come is looked up from time to time: nothing announces it.
  bool hasPeer_ = false;
  Time nextLook_{};

  // The line from the console: busy while there are bytes to be read.
  LinePacer inputPacer_;
  Bytes unwritten_;  // left the simulator and not taken by the terminal yet

  // The state is written a while after it has changed, so that a whole download is one write.
  StateFile stateFile_;
  std::uint64_t changesSeen_ = 0;
  bool commandsExecuted_ = false;  // since the state was written; each may have changed it
  std::optional<Time> nextWrite_;

  bool inputOpen_ = true;
  std::string input_;          // of the commands, not ended by a line end yet
  bool inputTooLong_ = false;  // the rest of an overlong line is being dropped
  bool quit_ = false;
};

}  // namespace tesksim

#endif  // TESKSIM_LOOP_H_
