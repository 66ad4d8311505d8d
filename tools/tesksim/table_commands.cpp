// SPDX-License-Identifier: MIT
//
// The commands that show and set the tables.

#include <utility>

#include "switcher/wire/messages/opto_data.h"
#include "tools/command_line/number.h"
#include "tools/tesksim/answers.h"
#include "tools/tesksim/commands.h"
#include "tools/tesksim/state_text.h"

namespace tesksim {

using command_line::ParseNumber;

namespace {

constexpr int kLargestMember = 256;  // of a button
constexpr int kOptoMembers = static_cast<int>(switcher::kOptoStations);

// The words from `first` on as they stand in the line, with the blanks between them.
std::string_view Tail(Words words, std::size_t first) {
  if (first >= words.size()) return {};
  const char* const begin = words[first].data();
  return {begin, static_cast<std::size_t>(words.back().data() + words.back().size() - begin)};
}

// Reads the words "TYPE FIRST" and the like into `numbers`; false when one is no byte.
bool ParseBytes(Words words, std::span<int* const> numbers) {
  for (std::size_t i = 0; i < numbers.size(); ++i) {
    const auto number = ParseNumber(words[i], 0, kLargestByte);
    if (!number.has_value()) return false;
    *numbers[i] = *number;
  }
  return true;
}

std::string NoList(int count) {
  return "error give numbers 1.." + std::to_string(count) + ", or none";
}

}  // namespace

std::string Commands::Label(Words words) {
  SwitcherState& state = simulator_.State();
  if (words[0] != "out" && words[0] != "in") return "error say out or in";
  const auto number = ParseNumber(words[1], 1, state.Sizes().labels);
  if (!number.has_value()) return OutOfRange("label", 1, state.Sizes().labels);
  std::string& label = (words[0] == "out" ? state.outLabels : state.inLabels)[*number];
  if (words.size() > 2) {
    auto text = ParseLabel(Tail(words, 2));
    if (!text.has_value()) return "error a label has up to 8 characters; \\xHH, \\\\, \\\"";
    label = std::move(*text);
  }
  return "ok " + std::string(words[0]) + " " + std::to_string(*number) + " " + QuoteLabel(label) +
         (label.starts_with('{') ? " hidden" : "");
}

std::string Commands::Inhibit(Words words) {
  int output = 0;
  int input = 0;
  if (!IsChannel(words[0], &output)) return NoChannel("output");
  if (!IsChannel(words[1], &input)) return NoChannel("input");
  const auto on = ParseSwitch(words[2]);
  if (!on.has_value()) return kOnOrOff;
  simulator_.State().inhibits.At(output, input) = *on ? 1 : 0;
  return "ok " + DescribeInhibits(simulator_.State(), output);
}

std::string Commands::Inhibits(Words words) {
  SwitcherState& state = simulator_.State();
  int output = 0;
  if (!IsChannel(words[0], &output)) return NoChannel("output");
  if (words.size() > 1) {
    const auto list = ParseMembers(words.subspan(1), state.ChannelCount());
    if (!list.has_value()) return NoList(state.ChannelCount());
    for (int input = 1; input <= state.ChannelCount(); ++input) {
      state.inhibits.At(output, input) = list->test(static_cast<std::size_t>(input - 1)) ? 1 : 0;
    }
  }
  return "ok " + DescribeInhibits(state, output);
}

std::string Commands::Relay(Words words) {
  int output = 0;
  if (!IsChannel(words[0], &output)) return NoChannel("output");
  const auto relay = ParseNumber(words[1], 1, kRelays);
  if (!relay.has_value()) return OutOfRange("relay", 1, kRelays);
  const auto on = ParseSwitch(words[2]);
  if (!on.has_value()) return kOnOrOff;
  simulator_.State().relays[output].set(static_cast<std::size_t>(*relay - 1), *on);
  return "ok " + DescribeRelays(simulator_.State(), output);
}

std::string Commands::Relays(Words words) {
  SwitcherState& state = simulator_.State();
  int output = 0;
  if (!IsChannel(words[0], &output)) return NoChannel("output");
  if (words.size() > 1) {
    const auto list = ParseMembers(words.subspan(1), kRelays);
    if (!list.has_value()) return NoList(kRelays);
    for (std::size_t relay = 0; relay < kRelays; ++relay) {
      state.relays[output].set(relay, list->test(relay));
    }
  }
  return "ok " + DescribeRelays(state, output);
}

std::string Commands::Button(Words words) {
  SwitcherState& state = simulator_.State();
  const auto station = ParseNumber(words[0], 1, state.Sizes().stations);
  if (!station.has_value()) return OutOfRange("station", 1, state.Sizes().stations);
  const auto button = ParseNumber(words[1], 1, kButtons);
  if (!button.has_value()) return OutOfRange("button", 1, kButtons);
  if (words.size() > 2) {
    ButtonProgram program;
    int* const numbers[] = {&program.type, &program.first};
    if (words.size() < 5) return "error give type, first station and stations";
    if (!ParseBytes(words.subspan(2), numbers)) return OutOfRange("a number", 0, kLargestByte);
    const auto list = ParseMembers(words.subspan(4), kLargestMember);
    if (!list.has_value()) return NoList(kLargestMember);
    program.members = *list;
    state.buttons[*station][*button] = program;
  }
  return "ok " + DescribeButton(state, *station, *button);
}

std::string Commands::Opto(Words words) {
  SwitcherState& state = simulator_.State();
  const auto opto = ParseNumber(words[0], 1, kOptos);
  if (!opto.has_value()) return OutOfRange("opto", 1, kOptos);
  if (words.size() > 1) {
    OptoProgram program;
    int* const numbers[] = {&program.type, &program.channel, &program.first};
    if (words.size() < 5) return "error give type, channel, first station and stations";
    if (!ParseBytes(words.subspan(1), numbers)) return OutOfRange("a number", 0, kLargestByte);
    const auto list = ParseMembers(words.subspan(4), kOptoMembers);
    if (!list.has_value()) return NoList(kOptoMembers);
    program.members = *list;
    state.optos[*opto] = program;
  }
  return "ok " + DescribeOpto(state, *opto);
}

std::string Commands::SpoilMessage(Words words) {
  Retrieval& tables = simulator_.Tables();
  if (words.size() == 1 && words[0] == "none") {
    tables.Mend();
  } else if (!words.empty()) {
    const auto spoiled = ParseSpoiledMessage(words);
    if (!spoiled.has_value()) return "error give " + SpoilUsage();
    tables.Spoil(*spoiled);
  }
  std::string answer = "ok";
  for (const SpoiledMessage& spoiled : tables.Spoiled()) {
    answer += (answer == "ok" ? " " : ", ") + Describe(spoiled.message) + " " +
              std::string(HarmName(spoiled.harm));
  }
  return answer;
}

std::string Commands::Save(Words words) {
  const model::Status status = terminal_.save(std::string(Tail(words, 0)));
  return status.ok() ? "ok" : "error " + status.Description();
}

}  // namespace tesksim
