// SPDX-License-Identifier: MIT

#include "gateway/ember/expected_rows.h"

#include <iterator>

namespace ember {

ExpectedRow ReportedRow(const model::SystemModel& model, int output) {
  ExpectedRow row;
  row.isPriority = model.ChannelStatus[output] != 0;
  for (int input = 1; input <= model.ChannelCount; ++input) {
    row.sources[static_cast<std::size_t>(input)] = model.CrosspointMap.At(output, input) != 0;
  }
  if (row.isPriority) row.calls = row.sources;
  return row;
}

ExpectedRow ExpectedRows::At(int output) const {
  ExpectedRow row = ReportedRow(model_, output);
  const auto commands = commands_.find(output);
  if (commands == commands_.end()) return row;
  for (const Command& command : commands->second) {
    const auto input = static_cast<std::size_t>(command.input);
    const bool isMade = command.effect == Effect::Makes || command.effect == Effect::MakesCall;
    row.awaited.set(input);
    row.sources[input] = isMade;
    row.calls[input] = command.effect == Effect::MakesCall || (isMade && row.isPriority);
    row.isPriority = row.isPriority || command.effect == Effect::MakesCall;
  }
  return row;
}

void ExpectedRows::Sent(const switcher::Take& take, Time now) {
  using switcher::TakeAction;
  const auto action = static_cast<TakeAction>(take.action);
  const Time until = now + patience_;
  const ExpectedRow row = At(take.destination);
  std::vector<Command>& commands = commands_[take.destination];
  if (action == TakeAction::Take) {
    for (int input = 1; input <= model_.ChannelCount; ++input) {
      if (input != take.source && row.sources[static_cast<std::size_t>(input)]) {
        commands.push_back({input, Effect::Breaks, until});
      }
    }
  }
  Effect effect = Effect::Makes;
  if (action == TakeAction::BreakSum) effect = Effect::Breaks;
  if (action == TakeAction::MakeCall || action == TakeAction::MakePriorityListen) {
    effect = Effect::MakesCall;
  }
  if (action == TakeAction::BreakCall || action == TakeAction::BreakPriorityListen) {
    effect = Effect::BreaksCall;
  }
  commands.push_back({take.source, effect, until});
}

bool ExpectedRows::IsReported(int output, const Command& command) const {
  const bool isThere = model_.CrosspointMap.At(output, command.input) != 0;
  const bool isPriority = model_.ChannelStatus[output] != 0;
  switch (command.effect) {
    case Effect::Makes:
      return isThere;
    case Effect::Breaks:
      return !isThere;
    case Effect::MakesCall:
      return isThere && isPriority;
    case Effect::BreaksCall:
      return !isThere || !isPriority;
  }
  return false;
}

void ExpectedRows::Reported(int output) {
  const auto commands = commands_.find(output);
  if (commands == commands_.end()) return;
  ExpectedRow::Inputs seen;
  std::erase_if(commands->second, [&](const Command& command) {
    const auto input = static_cast<std::size_t>(command.input);
    const bool isOldest = !seen[input];
    seen.set(input);
    return isOldest && IsReported(output, command);
  });
  if (commands->second.empty()) commands_.erase(commands);
}

void ExpectedRows::Expire(Time now) {
  for (auto row = commands_.begin(); row != commands_.end();) {
    std::erase_if(row->second, [&](const Command& command) { return command.until <= now; });
    row = row->second.empty() ? commands_.erase(row) : std::next(row);
  }
}

std::optional<ExpectedRows::Time> ExpectedRows::NextExpiry() const {
  std::optional<Time> next;
  for (const auto& [output, commands] : commands_) {
    if (!next || commands.front().until < *next) next = commands.front().until;
  }
  return next;
}

}  // namespace ember
