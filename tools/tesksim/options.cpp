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
  options->simulator.channelCount = *channels;
  return true;
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
    {"link", "PATH", "make a symbolic link to the terminal; it follows a replug", "a path",
     [](std::string_view value, Options* options) {
       options->link = value;
       return !value.empty();
     }},
    {"device", "PATH", "use this serial device (57600, 8, N, 1) instead of a pseudo terminal",
     "a path",
     [](std::string_view value, Options* options) {
       options->device = value;
       return !value.empty();
     }},
    {"seed", "N", "seed of all that is left to chance (default 1)", "a number from 0", &SetSeed},
    {"demo", "", "begin with a believable state and change a source every few seconds", "",
     [](std::string_view, Options* options) { return options->simulator.demo = true; }},
    {"log", "", "print a line for each message received and sent", "",
     [](std::string_view, Options* options) { return options->log = true; }},
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
      "prints says where to connect.  It answers polls, takes, gains and inhibits as a switcher\n"
      "does, at the pace of its line, and misbehaves when told to.\n"
      "\n"
      "Without --demo it begins with no crosspoint, no inhibit, no tally point responding and\n"
      "every gain at 64 (-36 dB), and sends nothing until it is polled.\n"
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
      "\"ok\" or \"error\".  Channels count from 1.  The end of the input ends nothing.\n" +
      Commands::Help() +
      "\n"
      "A pseudo terminal holds some 20 kB for whoever writes to it; a sender feels the pace of\n"
      "the line from there on.\n"
      "\n"
      "Exit status: 0 after quit, SIGINT or SIGTERM; 1 when the terminal fails; 2 for a wrong\n"
      "command line.\n";
  return text;
}

}  // namespace tesksim
