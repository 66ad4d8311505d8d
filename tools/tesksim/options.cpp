// SPDX-License-Identifier: MIT

#include "tools/tesksim/options.h"

#include <algorithm>
#include <limits>
#include <optional>
#include <string_view>

#include "tools/command_line/number.h"
#include "tools/command_line/option.h"
#include "tools/tesksim/commands.h"

namespace tesksim {

namespace {

using command_line::Option;
using command_line::ParseNumber;

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

std::vector<Option> GeneralOptions(Options* options) {
  const auto path = [](std::string* place) {
    return [place](std::string_view value) { return SetPath(value, place); };
  };
  const auto flag = [](bool* place) { return [place](std::string_view) { return *place = true; }; };
  const auto with = [options](bool (*set)(std::string_view, Options*)) {
    return [options, set](std::string_view value) { return set(value, options); };
  };
  return {
      {"channels", "N", "size of the matrix, 8..256 in steps of 8 (default 64)",
       "a multiple of 8 within 8..256", with(&SetChannels)},
      {"baud", "RATE", "pace of the line in both directions (default 57600; 0: no pace)",
       "0 or 300..4000000", with(&SetBaud)},
      {"stations", "N", "stations with buttons, 1..256 (default 64)", "1..256", with(&SetStations)},
      {"labels", "N", "labels of either kind, 1..256 (default 128)", "1..256", with(&SetLabels)},
      {"state", "FILE", "keep all that the switcher holds in FILE across runs", "a path",
       path(&options->stateFile)},
      {"database", "FILE", "start with the sizes and tables of a console's database", "a path",
       path(&options->databaseFile)},
      {"link", "PATH", "make a symbolic link to the terminal; it follows a replug", "a path",
       path(&options->link)},
      {"device", "PATH", "use this serial device (57600, 8, N, 1) instead of a pseudo terminal",
       "a path", path(&options->device)},
      {"seed", "N", "seed of all that is left to chance (default 1)", "a number from 0",
       with(&SetSeed)},
      {"demo", "", "begin with a believable state and change a source every few seconds", "",
       flag(&options->simulator.demo)},
      {"log", "", "print a line for each message received and sent", "", flag(&options->log)},
      {"spoil", "M:N:HARM", "this message of a retrieval goes out wrong; may be given again",
       "MESSAGE:N:HARM, as in relays:3:checksum", with(&AddSpoiled)},
      {"silence", "", "act on what comes, but answer nothing", "", flag(&options->silence)},
      {"help", "", "print this and end", "", flag(&options->help)},
  };
}

std::vector<Option> FaultOptions(Options* options) {
  std::vector<Option> faults;
  for (const FaultSetting& fault : kFaultSettings) {
    const auto set = [&fault, options](std::string_view value) {
      const auto number = ParseNumber(value, 0, fault.limit);
      if (number.has_value()) options->faults.emplace_back(&fault, *number);
      return number.has_value();
    };
    faults.push_back({std::string(fault.name), std::string(fault.argument), std::string(fault.help),
                      "0.." + std::to_string(fault.limit), set});
  }
  return faults;
}

}  // namespace

std::string ParseOptions(std::span<const char* const> arguments, Options* options) {
  std::vector<Option> known = GeneralOptions(options);
  for (Option& fault : FaultOptions(options)) known.push_back(std::move(fault));
  if (std::string problem = command_line::ParseOptions(arguments, known); !problem.empty()) {
    return problem;
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
  Options unused;
  for (const Option& option : GeneralOptions(&unused)) text += command_line::HelpLine(option);
  text += "\nFaults, also as options (0: none, the default):\n";
  for (const Option& option : FaultOptions(&unused)) text += command_line::HelpLine(option);
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
