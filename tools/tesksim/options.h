// SPDX-License-Identifier: MIT

#ifndef TESKSIM_OPTIONS_H_
#define TESKSIM_OPTIONS_H_

#include <optional>
#include <span>
#include <string>
#include <utility>
#include <vector>

#include "tools/tesksim/faults.h"
#include "tools/tesksim/simulator.h"
#include "tools/tesksim/spoil.h"

namespace tesksim {

// The command line.
struct Options {
  Simulator::Options simulator;
  std::optional<int> channels;  // as SystemSizes has them; what is not given is open
  std::optional<int> stations;
  std::optional<int> labels;
  std::string stateFile;     // keeps the state across runs; empty for none
  std::string databaseFile;  // what to start from; empty for the defaults
  std::string link;          // the symbolic link to make; empty for none
  std::string device;        // the serial device to use; empty for a pseudo terminal
  std::vector<std::pair<const FaultSetting*, int>> faults;
  std::vector<SpoiledMessage> spoiled;
  bool silence = false;
  bool log = false;
  bool help = false;
};

// Reads the arguments, without the program's name.  Returns what is wrong with them, as a
// sentence for the user; empty when nothing is.
std::string ParseOptions(std::span<const char* const> arguments, Options* options);

// The text of --help.
std::string HelpText();

}  // namespace tesksim

#endif  // TESKSIM_OPTIONS_H_
