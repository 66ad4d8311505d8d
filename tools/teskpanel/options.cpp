// SPDX-License-Identifier: MIT

#include "tools/teskpanel/options.h"

#include <algorithm>
#include <limits>
#include <string_view>

#include "tools/command_line/number.h"
#include "tools/command_line/option.h"
#include "tools/teskpanel/messages.h"

namespace teskpanel {

namespace {

using command_line::Option;
using command_line::ParseNumber;
using Words = std::span<const std::string>;

constexpr int kLargestType = 127;
constexpr int kLongestTimeout = 3600;
constexpr int kLastChannel = kLargestPair + 1;

struct ConnectionTypeWord {
  std::string_view name;
  int code;
};

constexpr ConnectionTypeWord kTypes[] = {
    {"lrm", 10},   {"automation", 30}, {"tkm-8", 51},    {"tkn-8", 52},
    {"multi", 53}, {"mini", 54},       {"intercom", 55},
};

bool SetType(std::string_view value, int* type) {
  for (const ConnectionTypeWord& known : kTypes) {
    if (known.name == value) {
      *type = known.code;
      return true;
    }
  }
  const auto code = ParseNumber(value, 0, kLargestType);
  *type = code.value_or(0);
  return code.has_value();
}

// Takes a number within first..last into *place.
auto Number(int first, int last, int* place) {
  return [=](std::string_view value) {
    const auto number = ParseNumber(value, first, last);
    *place = number.value_or(first);
    return number.has_value();
  };
}

std::vector<Option> KnownOptions(Options* options) {
  const auto flag = [](bool* place) { return [place](std::string_view) { return *place = true; }; };
  return {
      {"host", "NAME", "the console's name or address (default 127.0.0.1)", "a name",
       [options](std::string_view value) {
         options->host = value;
         return !value.empty();
       }},
      {"port", "N", "the console's port (default 1250)", "1..65535",
       Number(1, 65535, &options->port)},
      {"type", "TYPE", "what to say the panel is (default automation)", "0..127 or a name",
       [options](std::string_view value) { return SetType(value, &options->type); }},
      {"timeout", "SECONDS", "how long to wait, each time, for the console (default 30)", "1..3600",
       [options](std::string_view value) {
         const auto seconds = ParseNumber(value, 1, kLongestTimeout);
         options->timeout = std::chrono::seconds(seconds.value_or(1));
         return seconds.has_value();
       }},
      {"tries", "N", "watch: give up after N failed tries in a row (default 0: never)",
       "a number from 0", Number(0, std::numeric_limits<int>::max(), &options->tries)},
      {"json", "", "print one JSON object a line", "", flag(&options->json)},
      {"help", "", "print this and end", "", flag(&options->help)},
  };
}

// Each reads the words behind a command's name, and returns what is wrong with them, or nothing.
std::string ReadNumbers(Words words, Options* options) {
  for (const std::string& word : words) {
    const auto number = ParseNumber(word, 1, kLastChannel);
    if (!number.has_value()) return "\"" + word + "\" is no channel";
    options->numbers.push_back(*number);
  }
  return {};
}

std::string ReadMap(Words words, Options* options) {
  options->mask = kAskMap;
  return ReadNumbers(words, options);
}

std::string ReadLabels(Words words, Options* options) {
  options->mask = words.empty() ? kAskInputLabels | kAskStationLabels : 0;
  for (const std::string& word : words) {
    if (word != "output" && word != "input") return "labels are of output or input";
    options->mask |= word == "output" ? kAskStationLabels : kAskInputLabels;
  }
  return {};
}

std::string ReadButtons(Words words, Options* options) {
  options->mask = kAskProgramming;
  return ReadNumbers(words, options);
}

std::string ReadTake(Words words, Options* options) {
  options->command = Options::Command::Take;
  const auto output = ParseNumber(words[0], 1, kLastChannel);
  const auto input = ParseNumber(words[1], 1, kLastChannel);
  if (!output.has_value()) return "\"" + words[0] + "\" is no channel";
  if (!input.has_value()) return "\"" + words[1] + "\" is no channel";
  options->output = *output;
  options->input = *input;
  if (words.size() < 3) return {};
  const auto action = ParseTakeAction(words[2]);
  if (!action.has_value()) return "\"" + words[2] + "\" is no action of a take";
  options->action = *action;
  return {};
}

std::string ReadWatch(Words words, Options* options) {
  options->command = Options::Command::Watch;
  options->mask = words.empty() ? kAskMap : 0;
  for (const std::string& word : words) {
    if (word == "map") {
      options->mask |= kAskMap;
    } else if (word == "labels") {
      options->mask |= kAskInputLabels | kAskStationLabels;
    } else if (word == "buttons") {
      options->mask |= kAskProgramming;
    } else {
      return "\"" + word + "\" cannot be watched";
    }
  }
  return {};
}

constexpr std::size_t kAnyNumber = std::numeric_limits<std::size_t>::max();

struct Command {
  std::string_view name;
  std::string_view arguments;
  std::string_view help;
  std::size_t fewest;  // words
  std::size_t most;
  std::string (*read)(Words words, Options* options);
};

constexpr Command kCommands[] = {
    {"map", "[OUT...]", "print what the outputs hear", 0, kAnyNumber, &ReadMap},
    {"labels", "[output|input]", "print the labels of outputs and inputs", 0, 2, &ReadLabels},
    {"buttons", "[STATION...]", "print what the buttons of the stations do", 0, kAnyNumber,
     &ReadButtons},
    {"take", "OUT IN [ACTION]", "take a crosspoint and wait until it stands", 2, 3, &ReadTake},
    {"watch", "[map] [labels] [buttons]", "print them (map), then what changes, without end", 0,
     kAnyNumber, &ReadWatch},
};

std::string ReadCommand(Words words, Options* options) {
  if (words.empty()) return "no command";
  const auto* const command =
      std::find_if(std::begin(kCommands), std::end(kCommands),
                   [&](const Command& known) { return known.name == words.front(); });
  if (command == std::end(kCommands)) return "unknown command " + words.front();
  const Words arguments = words.subspan(1);
  if (arguments.size() < command->fewest || arguments.size() > command->most) {
    return "usage: " + std::string(command->name) + " " + std::string(command->arguments);
  }
  return command->read(arguments, options);
}

std::string CommandLine(const Command& command) {
  constexpr std::size_t kColumn = 36;
  std::string line = "  " + std::string(command.name) + " " + std::string(command.arguments);
  line.resize(std::max(line.size() + 2, kColumn), ' ');
  return line + std::string(command.help) + "\n";
}

}  // namespace

std::string ParseOptions(std::span<const char* const> arguments, Options* options) {
  std::vector<std::string> words;
  const std::vector<Option> known = KnownOptions(options);
  std::string problem = command_line::ParseOptions(arguments, known, &words);
  if (!problem.empty() || options->help) return problem;
  return ReadCommand(words, options);
}

std::string HelpText() {
  std::string text =
      "Usage: teskpanel [OPTION]... COMMAND [ARGUMENT]...\n"
      "\n"
      "A network panel of the console on the command line: it sees the console's crosspoint map,\n"
      "labels and button programming, and takes crosspoints.  Everything counts from 1.\n"
      "\n"
      "Commands:\n";
  for (const Command& command : kCommands) text += CommandLine(command);
  text += "\nOptions:\n";
  Options unused;
  for (const Option& option : KnownOptions(&unused)) text += command_line::HelpLine(option);
  text +=
      "\nACTION of a take: " + TakeActionHelp() +
      ";\n"
      "\"-off\" behind the name breaks the crosspoint.  Without one it is listen.  A number is\n"
      "sent as the command code it is.\n"
      "\n"
      "TYPE: a number, or ";
  for (const ConnectionTypeWord& type : kTypes) {
    text += std::string(type.name) + (&type == std::end(kTypes) - 1 ? ".\n" : ", ");
  }
  text +=
      "\n"
      "For people, outputs that hear nothing and buttons that do nothing are left out.  With\n"
      "--json everything is there, a line each: \"event\" is row, label, button, take, connected,\n"
      "disconnected or link.\n"
      "\n"
      "Watch polls the console twice in every timeout.  When the connection is lost or none is to\n"
      "be had it tries again after half a second, then after twice as long each time, up to half "
      "a\n"
      "minute.  Then it prints what has changed meanwhile.\n"
      "\n"
      "Exit status:\n"
      "  0  done; for a take: the crosspoint stands as asked\n"
      "  1  no connection, a lost one, or what answers is no console; the output cannot be "
      "written\n"
      "  2  a wrong command line, or a channel that the system does not have\n"
      "  3  the console does not serve a panel of this type\n"
      "  4  the console has no switcher connected\n"
      "  5  the console did not answer in time\n"
      "  6  the take was sent, but the switcher did not report the crosspoint as asked in time\n";
  return text;
}

}  // namespace teskpanel
