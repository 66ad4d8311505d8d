// SPDX-License-Identifier: MIT
//
// What can be asked of the simulator while it runs: one command a line, one line of answer.

#ifndef TESKSIM_COMMANDS_H_
#define TESKSIM_COMMANDS_H_

#include <functional>
#include <span>
#include <string>
#include <string_view>
#include <utility>

#include "model/status.h"
#include "tools/tesksim/clock.h"
#include "tools/tesksim/simulator.h"
#include "tools/tesksim/words.h"

namespace tesksim {

// The terminal and the program, as far as commands reach them.
struct TerminalControl {
  // Takes the device away from the console.  Fails when it is away already.
  std::function<model::Status()> unplug;

  // Brings a device back.  Fails when there is one, or when none can be had.
  std::function<model::Status()> replug;

  // Where to connect, as it was printed at the start: "/dev/pts/7".
  std::function<std::string()> where;

  // Writes what the switcher holds to a file; an empty path is the file that keeps the state
  // across runs, which fails when there is none.
  std::function<model::Status(const std::string& path)> save;

  // Ends the program once the answer has been written.
  std::function<void()> quit;
};

class Commands {
 public:
  // `simulator` must outlive the commands; all of `terminal` is set.
  Commands(Simulator& simulator, TerminalControl terminal)
      : simulator_(simulator), terminal_(std::move(terminal)) {}

  // Carries out one line, without its line end, at `now`.  The answer is one line without its
  // end: "ok", "ok" and what was asked for, or "error" and the reason.
  std::string Execute(std::string_view line, Time now);

  // All commands with their arguments and what they do, for people: one line each, with line
  // ends.
  static std::string Help();

 private:
  // The words handed to a command are its arguments, without its name.
  struct Command {
    std::string_view name;
    std::string_view arguments;
    std::string_view help;
    std::size_t fewest;  // arguments
    std::size_t most;
    std::string (Commands::*run)(Words words);
  };
  static const Command kCommands[];

  // Null when there is no such command.
  static const Command* Find(std::string_view name);

  bool IsChannel(std::string_view word, int* channel);
  std::string NoChannel(std::string_view what);

  std::string Make(Words words);
  std::string Break(Words words);
  std::string Row(Words words);
  std::string SendRow(Words words);
  std::string Map(Words words);
  std::string Tally(Words words);
  std::string SendTally(Words words);
  std::string Gain(Words words);
  std::string SendGains(Words words);
  std::string Inhibit(Words words);
  std::string Inhibits(Words words);
  std::string Label(Words words);
  std::string Relay(Words words);
  std::string Relays(Words words);
  std::string Button(Words words);
  std::string Opto(Words words);
  std::string SpoilMessage(Words words);
  std::string Save(Words words);
  std::string Silence(Words words);
  std::string Unplug(Words words);
  std::string Replug(Words words);
  std::string Raw(Words words);
  std::string ShowStats(Words words);
  std::string LogMessages(Words words);
  std::string ShowHelp(Words words);
  std::string Quit(Words words);
  std::string SetFault(const FaultSetting& setting, Words words, Time now);

  Simulator& simulator_;
  const TerminalControl terminal_;
};

}  // namespace tesksim

#endif  // TESKSIM_COMMANDS_H_
