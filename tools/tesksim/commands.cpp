// SPDX-License-Identifier: MIT

#include "tools/tesksim/commands.h"

#include <optional>
#include <utility>
#include <vector>

#include "tools/command_line/number.h"
#include "tools/tesksim/answers.h"
#include "tools/tesksim/state_text.h"

namespace tesksim {

using command_line::ParseNumber;

namespace {

constexpr std::size_t kLongestRaw = 4096;
constexpr std::size_t kAnyNumber = 4096;  // of arguments

// The digits of the words put together, two to a byte; nothing when they are no bytes.
std::optional<Bytes> ParseHex(std::span<const std::string_view> words) {
  std::string digits;
  for (const std::string_view word : words) digits += word;
  if (digits.size() % 2 != 0 || digits.size() / 2 > kLongestRaw) return std::nullopt;
  Bytes bytes(digits.size() / 2);
  for (std::size_t i = 0; i < bytes.size(); ++i) {
    const char* const first = digits.data() + 2 * i;
    const auto [stop, error] = std::from_chars(first, first + 2, bytes[i], 16);
    if (error != std::errc() || stop != first + 2) return std::nullopt;
  }
  return bytes;
}

// "  name arguments      help", aligned.
std::string HelpLine(std::string_view name, std::string_view arguments, std::string_view help) {
  constexpr std::size_t kColumn = 40;
  std::string line = "  " + std::string(name);
  if (!arguments.empty()) line += " " + std::string(arguments);
  line.resize(std::max(line.size() + 2, kColumn), ' ');
  return line + std::string(help) + "\n";
}

}  // namespace

// Everything counts from 1.
const Commands::Command Commands::kCommands[] = {
    {"make", "OUT IN [priority]", "make a crosspoint, even an inhibited one; sends nothing", 2, 3,
     &Commands::Make},
    {"break", "OUT IN", "break a crosspoint; sends nothing", 2, 2, &Commands::Break},
    {"row", "OUT", "show the sources of an output", 1, 1, &Commands::Row},
    {"send-row", "OUT", "send the map row of an output", 1, 1, &Commands::SendRow},
    {"map", "", "show how many crosspoints are made", 0, 0, &Commands::Map},
    {"tally", "N VALUE", "set tally point N (1..64) to VALUE (0..255); sends nothing", 2, 2,
     &Commands::Tally},
    {"send-tally", "", "send the tally", 0, 0, &Commands::SendTally},
    {"gain", "IN [STEP]", "show or set a gain (0..127; 100 is 0 dB); sends nothing", 1, 2,
     &Commands::Gain},
    {"send-gains", "", "send the gain report", 0, 0, &Commands::SendGains},
    {"label", "out|in N [TEXT]", "show or set a label; { first: hidden; \\xHH: any character", 2,
     kAnyNumber, &Commands::Label},
    {"inhibit", "OUT IN on|off", "set or clear an inhibit", 3, 3, &Commands::Inhibit},
    {"inhibits", "OUT [IN...|none]", "show or set the inhibits of an output", 1, kAnyNumber,
     &Commands::Inhibits},
    {"relay", "OUT N on|off", "assign a relay (1..64) to an output, or take it away", 3, 3,
     &Commands::Relay},
    {"relays", "OUT [N...|none]", "show or set the relays of an output", 1, kAnyNumber,
     &Commands::Relays},
    {"button", "STA N [TYPE FIRST STA...|none]", "show or set a button (1..32) of a station", 2,
     kAnyNumber, &Commands::Button},
    {"opto", "N [TYPE CHANNEL FIRST STA...|none]", "show or set an opto input (1..64)", 1,
     kAnyNumber, &Commands::Opto},
    {"spoil", "[MESSAGE [N] HARM]|[none]", "a message of a retrieval goes out wrong (see below)", 0,
     3, &Commands::SpoilMessage},
    {"save", "[FILE]", "write all it holds to FILE, or to the --state file", 0, kAnyNumber,
     &Commands::Save},
    {"raw", "HEX...", "send these bytes as they are", 1, kLongestRaw, &Commands::Raw},
    {"silence", "on|off", "act on what comes, but answer nothing", 1, 1, &Commands::Silence},
    {"unplug", "", "take the terminal away", 0, 0, &Commands::Unplug},
    {"replug", "", "bring a new terminal; the link follows it", 0, 0, &Commands::Replug},
    {"stats", "", "show what has been received and sent", 0, 0, &Commands::ShowStats},
    {"log", "on|off", "print a line for each message received and sent", 1, 1,
     &Commands::LogMessages},
    {"help", "[COMMAND]", "list the commands, or explain one", 0, 1, &Commands::ShowHelp},
    {"quit", "", "end the simulator", 0, 0, &Commands::Quit},
};

const Commands::Command* Commands::Find(std::string_view name) {
  for (const Command& command : kCommands) {
    if (command.name == name) return &command;
  }
  return nullptr;
}

std::string Commands::Execute(std::string_view line, Time now) {
  const std::vector<std::string_view> split = SplitWords(line);
  if (split.empty()) return "error no command";
  const std::string name(split.front());
  const Words words = Words(split).subspan(1);

  for (const FaultSetting& setting : kFaultSettings) {
    if (setting.name == name) return SetFault(setting, words, now);
  }
  const Command* const command = Find(name);
  if (command == nullptr) return "error unknown command " + name + "; help lists them";
  if (words.size() < command->fewest || words.size() > command->most) {
    return "error usage: " + name + " " + std::string(command->arguments);
  }
  return (this->*command->run)(words);
}

std::string Commands::Help() {
  std::string text;
  for (const Command& command : kCommands) {
    text += HelpLine(command.name, command.arguments, command.help);
  }
  for (const FaultSetting& setting : kFaultSettings) {
    text += HelpLine(setting.name, setting.argument, setting.help);
  }
  return text;
}

bool Commands::IsChannel(std::string_view word, int* channel) {
  const auto number = ParseNumber(word, 1, simulator_.State().ChannelCount());
  *channel = number.value_or(0);
  return number.has_value();
}

std::string Commands::NoChannel(std::string_view what) {
  return OutOfRange(what, 1, simulator_.State().ChannelCount());
}

std::string Commands::Make(Words words) {
  int output = 0;
  int input = 0;
  if (!IsChannel(words[0], &output)) return NoChannel("output");
  if (!IsChannel(words[1], &input)) return NoChannel("input");
  if (words.size() == 3 && words[2] != "priority") return "error only priority may follow";
  simulator_.State().crosspoints.At(output, input) =
      words.size() == 3 ? Crosspoint::Priority : Crosspoint::Ordinary;
  return "ok " + DescribeRow(simulator_.State(), output);
}

std::string Commands::Break(Words words) {
  int output = 0;
  int input = 0;
  if (!IsChannel(words[0], &output)) return NoChannel("output");
  if (!IsChannel(words[1], &input)) return NoChannel("input");
  simulator_.State().crosspoints.At(output, input) = Crosspoint::Off;
  return "ok " + DescribeRow(simulator_.State(), output);
}

std::string Commands::Row(Words words) {
  int output = 0;
  if (!IsChannel(words[0], &output)) return NoChannel("output");
  return "ok " + DescribeRow(simulator_.State(), output);
}

std::string Commands::SendRow(Words words) {
  int output = 0;
  if (!IsChannel(words[0], &output)) return NoChannel("output");
  simulator_.SendRow(output);
  return "ok";
}

std::string Commands::Map(Words) {
  const SwitcherState& state = simulator_.State();
  int made = 0;
  int priority = 0;
  int outputs = 0;
  for (int output = 1; output <= state.ChannelCount(); ++output) {
    const int before = made;
    for (const Crosspoint crosspoint : state.crosspoints.Row(output)) {
      if (crosspoint != Crosspoint::Off) ++made;
      if (crosspoint == Crosspoint::Priority) ++priority;
    }
    if (made > before) ++outputs;
  }
  return "ok channels " + std::to_string(state.ChannelCount()) + " crosspoints " +
         std::to_string(made) + " priority " + std::to_string(priority) + " outputs-in-use " +
         std::to_string(outputs);
}

std::string Commands::Tally(Words words) {
  constexpr int kPoints = static_cast<int>(switcher::kTallyPoints);
  const auto point = ParseNumber(words[0], 1, kPoints);
  if (!point.has_value()) return OutOfRange("tally point", 1, kPoints);
  const auto value = ParseNumber(words[1], 0, 255);
  if (!value.has_value()) return OutOfRange("value", 0, 255);
  simulator_.State().tally[static_cast<std::size_t>(*point - 1)] =
      static_cast<std::int16_t>(*value);
  return "ok";
}

std::string Commands::SendTally(Words) {
  simulator_.SendTally();
  return "ok";
}

std::string Commands::Gain(Words words) {
  int input = 0;
  if (!IsChannel(words[0], &input)) return NoChannel("input");
  std::int16_t& gain = simulator_.State().gains[static_cast<std::size_t>(input - 1)];
  if (words.size() == 2) {
    const auto step = ParseNumber(words[1], 0, 127);
    if (!step.has_value()) return OutOfRange("step", 0, 127);
    gain = static_cast<std::int16_t>(*step);
  }
  return "ok input " + std::to_string(input) + " step " + std::to_string(gain);
}

std::string Commands::SendGains(Words) {
  simulator_.SendGains();
  return "ok";
}

std::string Commands::Raw(Words words) {
  auto bytes = ParseHex(words);
  if (!bytes.has_value()) {
    return "error give up to " + std::to_string(kLongestRaw) + " bytes of two hex digits each";
  }
  const std::size_t count = bytes->size();
  simulator_.SendRaw(std::move(*bytes));
  return "ok bytes " + std::to_string(count);
}

std::string Commands::Silence(Words words) {
  const auto on = ParseSwitch(words[0]);
  if (!on.has_value()) return kOnOrOff;
  simulator_.SetSilence(*on);
  return "ok";
}

std::string Commands::Unplug(Words) {
  if (const model::Status status = terminal_.unplug(); !status.ok()) {
    return "error " + status.Description();
  }
  return "ok";
}

std::string Commands::Replug(Words) {
  if (const model::Status status = terminal_.replug(); !status.ok()) {
    return "error " + status.Description();
  }
  return "ok connect to " + terminal_.where();
}

std::string Commands::ShowStats(Words) {
  const Stats& stats = simulator_.Counts();
  const Transmitter& output = simulator_.Output();
  const std::pair<std::string_view, std::uint64_t> figures[] = {
      {"rx-bytes", stats.bytesReceived},
      {"map-polls", stats.mapPolls},
      {"tally-polls", stats.tallyPolls},
      {"keep-alives", stats.keepAlives},
      {"table-polls", stats.tablePolls},
      {"messages", stats.messages},
      {"takes", stats.takes},
      {"tables", stats.tables},
      {"refused", stats.refused},
      {"malformed", stats.malformed},
      {"noise-bytes", stats.noiseBytes},
      {"tx-bytes", output.BytesSent()},
      {"tx-messages", output.MessagesSent()},
      {"tx-dropped", output.MessagesDropped()},
  };
  std::string answer = "ok";
  for (const auto& [name, figure] : figures) {
    answer += " " + std::string(name) + " " + std::to_string(figure);
  }
  return answer;
}

std::string Commands::LogMessages(Words words) {
  const auto on = ParseSwitch(words[0]);
  if (!on.has_value()) return kOnOrOff;
  simulator_.SetLogging(*on);
  return "ok";
}

std::string Commands::ShowHelp(Words words) {
  if (words.empty()) {
    std::string answer = "ok";
    for (const Command& command : kCommands) answer += " " + std::string(command.name);
    for (const FaultSetting& setting : kFaultSettings) answer += " " + std::string(setting.name);
    return answer;
  }
  for (const FaultSetting& setting : kFaultSettings) {
    if (setting.name == words[0]) {
      return "ok " + std::string(setting.name) + " " + std::string(setting.argument) + ": " +
             std::string(setting.help);
    }
  }
  const Command* const command = Find(words[0]);
  if (command == nullptr) return "error unknown command " + std::string(words[0]);
  const std::string arguments =
      command->arguments.empty() ? "" : " " + std::string(command->arguments);
  return "ok " + std::string(command->name) + arguments + ": " + std::string(command->help);
}

std::string Commands::Quit(Words) {
  terminal_.quit();
  return "ok";
}

std::string Commands::SetFault(const FaultSetting& setting, Words words, Time now) {
  const auto value = words.size() == 1 ? ParseNumber(words[0], 0, setting.limit) : std::nullopt;
  if (!value.has_value()) return OutOfRange(setting.argument, 0, setting.limit);
  simulator_.SetFault(setting, *value, now);
  return "ok";
}

}  // namespace tesksim
