// SPDX-License-Identifier: MIT

#ifndef TESKPANEL_OPTIONS_H_
#define TESKPANEL_OPTIONS_H_

#include <chrono>
#include <span>
#include <string>
#include <vector>

#include "tools/teskpanel/take_action.h"

namespace teskpanel {

// The command line.
struct Options {
  enum class Command { Show, Take, Watch };

  Command command = Command::Show;
  int mask = 0;              // Show, Watch: the tables, kAskMap and the like
  std::vector<int> numbers;  // Show: of the outputs or stations; empty for all
  int output = 1;            // Take
  int input = 1;             // Take
  TakeAction action;         // Take

  std::string host = "127.0.0.1";
  int port = 1250;
  int type = 30;
  std::chrono::seconds timeout{30};
  int tries = 0;  // 0: no end
  bool json = false;
  bool help = false;
};

// Reads the arguments, without the program's name.  Returns what is wrong with them, as a
// sentence for the user; empty when nothing is, or when help is asked for.
std::string ParseOptions(std::span<const char* const> arguments, Options* options);

// The text of --help.
std::string HelpText();

}  // namespace teskpanel

#endif  // TESKPANEL_OPTIONS_H_
