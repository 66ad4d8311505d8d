// SPDX-License-Identifier: MIT

#include "tools/tesksim/options.h"

#include <algorithm>
#include <limits>
#include <optional>
#include <string_view>

#include "tools/tesksim/commands.h"
#include "tools/tesksim/number.h"

namespace tesksim {

namespace {

// One option.  `set` takes the value ("" for an option without one) and says whether it will do.
struct Option {
  std::string_view name;
  std::string_view argument;  // empty: takes no value
  std::string_view help;
  std::string_view expected;  // what the value must be, for a complaint
  bool (*set)(std::string_view value, Options* options);
};

bool SetChannels(std::string_view value, Options* options) {
  const auto channels = ParseNumber(value, 8, 256);
  if (!channels.has_value() || *channels % 8 != 0) return false;
  options->channels = channels;
  return true;
}

bool SetStations(std::string_view value, Options* options) {
  options->stations = ParseNumber(value, 1, 256);
  return options->stations.has_value();
}

bool SetLabels(std::string_view value, Options* options) {
  options->labels = ParseNumber(value, 1, 256);
  return options->labels.has_value();
}

// "relays:3:checksum".
bool AddSpoiled(std::string_view value, Options* options) {
  std::string line(value);
  std::replace(line.begin(), line.end(), ':', ' ');
  const auto spoiled = ParseSpoiledMessage(SplitWords(line));
  if (spoiled.has_value()) options->spoiled.push_back(*spoiled);
  return spoiled.has_value();
}

bool SetPath(std::string_view value, std::string* path) {
  *path = value;
  return !value.empty();
}

bool SetBaud(std::string_view value, Options* options) {
  const auto baud = ParseNumber(value, 0, 4'000'000);
  if (!baud.has_value() || (*baud != 0 && *baud < 300)) return false;
  options->simulator.baud = *baud;
  return true;
}

bool SetSeed(std::string_view value, Options* options) {
  const auto seed = ParseNumber(value, 0, std::numeric_limits<int>::max());
  if (!seed.has_value()) return false;
  options->simulator.seed = static_cast<std::uint32_t>(*seed);
  return true;
}

constexpr Option kOptions[] = {
    {"channels", "N", "size of the matrix, 8..256 in steps of 8 (default 64)",
     "a multiple of 8 within 8..256", &SetChannels},
    {"baud", "RATE", "pace of the line in both directions (default 57600; 0: no pace)",
     "0 or 300..4000000", &SetBaud},
    {"stations", "N", "stations with buttons, 1..256 (default 64)", "1..256", &SetStations},
    {"labels", "N", "labels of either kind, 1..256 (default 128)", "1..256", &SetLabels},
    {"state", "FILE", "keep all that the switcher holds in FILE across runs", "a path",
     [](std::string_view value, Options* options) { return SetPath(value, &options->stateFile); }},
    {"database", "FILE", "start with the sizes and tables of a console's database", "a path",
     [](std::string_view value, Options* options) {
       return SetPath(value, &options->databaseFile);
     }},
    {"link", "PATH", "make a symbolic link to the terminal; it follows a replug", "a path",
     [](std::string_view value, Options* options) { return SetPath(value, &options->link); }},
    {"device", "PATH", "use this serial device (57600, 8, N, 1) instead of a pseudo terminal",
     "a path",
     [](std::string_view value, Options* options) { return SetPath(value, &options->device); }},
    {"seed", "N", "seed of all that is left to chance (default 1)", "a number from 0", &SetSeed},
    {"demo", "", "begin with a believable state and change a source every few seconds", "",
     [](std::string_view, Options* options) { return options->simulator.demo = true; }},
    {"log", "", "print a line for each message received and sent", "",
     [](std::string_view, Options* options) { return options->log = true; }},
    {"spoil", "M:N:HARM", "this message of a retrieval goes out wrong; may be given again",
     "MESSAGE:N:HARM, as in relays:3:checksum", &AddSpoiled},
    {"silence", "", "act on what comes, but answer nothing", "",
     [](std::string_view, Options* options) { return options->silence = true; }},
    {"help", "", "print this and end", "",
     [](std::string_view, Options* options) { return options->help = true; }},
};

// "  --name ARGUMENT     help", aligned.
std::string HelpLine(std::string_view name, std::string_view argument, std::string_view help) {
  constexpr std::size_t kColumn = 24;
  std::string line = "  --" + std::string(name);
  if (!argument.empty()) line += " " + std::string(argument);
  line.resize(std::max(line.size() + 2, kColumn), ' ');
  return line + std::string(help) + "\n";
}

const FaultSetting* FindFault(std::string_view name) {
  const auto* const found = std::find_if(std::begin(kFaultSettings), std::end(kFaultSettings),
                                         [&](const FaultSetting& s) { return s.name == name; });
  return found == std::end(kFaultSettings) ? nullptr : found;
}

const Option* FindOption(std::string_view name) {
  const auto* const found = std::find_if(std::begin(kOptions), std::end(kOptions),
                                         [&](const Option& option) { return option.name == name; });
  return found == std::end(kOptions) ? nullptr : found;
}

}  // namespace

std::string ParseOptions(std::span<const char* const> arguments, Options* options) {
  for (std::size_t i = 0; i < arguments.size(); ++i) {
    const std::string_view argument = arguments[i];
    if (!argument.starts_with("--")) return "what is \"" + std::string(argument) + "\"?";
    const std::size_t equals = argument.find('=');
    const std::string_view name = argument.substr(2, equals == argument.npos ? equals : equals - 2);
    const std::string shown = "--" + std::string(name);

    const FaultSetting* const fault = FindFault(name);
    const Option* const option = FindOption(name);
    if (fault == nullptr && option == nullptr) return "unknown option " + shown;

    const bool takesValue = fault != nullptr || !option->argument.empty();
    std::string_view value;
    if (equals != argument.npos) {
      if (!takesValue) return shown + " takes no value";
      value = argument.substr(equals + 1);
    } else if (takesValue) {
      if (i + 1 == arguments.size()) return shown + " needs a value";
      value = arguments[++i];
    }

    if (fault != nullptr) {
      const auto number = ParseNumber(value, 0, fault->limit);
      if (!number.has_value()) return shown + " must be 0.." + std::to_string(fault->limit);
      options->faults.emplace_back(fault, *number);
    } else if (!option->set(value, options)) {
      return shown + " must be " + std::string(option->expected);
    }
  }
  if (!options->link.empty() && !options->device.empty()) {
    return "--link names a pseudo terminal, and --device uses none";
  }
  return {};
}

std::string HelpText() {
  std::string text =
      "Usage: tesksim [OPTION]...\n"
      "\n"
      "A simulated matrix switcher on a pseudo terminal or a serial device.  The first line it\n"
      "prints says where to connect.  It answers polls and takes, keeps the tables it is sent and\n"
      "gives them back on request, at the pace of its line, and misbehaves when told to.\n"
      "\n"
      "It begins with no crosspoint, no tally point responding, every gain at 64 (-36 dB) and the\n"
      "tables of a console's fresh database: each output inhibited from itself, labels behind the\n"
      "last station hidden.  It sends nothing until it is polled.\n"
      "\n"
      "With --state FILE it begins as it ended: everything it holds is written to FILE a second\n"
      "after a change and at the end, as a whole.  While there is no FILE yet, --database says\n"
      "what to start from.  A FILE that is no state file is not touched.\n"
      "\n"
      "Options:\n";
  for (const Option& option : kOptions) {
    text += HelpLine(option.name, option.argument, option.help);
  }
  text += "\nFaults, also as options (0: none, the default):\n";
  for (const FaultSetting& fault : kFaultSettings) {
    text += HelpLine(fault.name, fault.argument, fault.help);
  }
  text +=
      "\n"
      "Commands, one a line on the standard input, each answered with one line that begins with\n"
      "\"ok\" or \"error\".  Everything counts from 1.  The end of the input ends nothing.\n" +
      Commands::Help() +
      "\n"
      "Asked for its tables (0xE7), it sends the output labels, the input labels, for each\n"
      "output its inhibits and its relays, the optos, and the buttons of each station.  \"spoil\"\n"
      "makes one of these messages go out wrong.  It takes the message and what is wrong:\n  " +
      SpoilUsage() +
      "\n"
      "\n"
      "A pseudo terminal holds some 20 kB for whoever writes to it; a sender feels the pace of\n"
      "the line from there on.\n"
      "\n"
      "Exit status: 0 after quit, SIGINT or SIGTERM; 1 when the terminal or a file fails; 2 for a\n"
      "wrong command line.\n";
  return text;
}

}  // namespace tesksim
