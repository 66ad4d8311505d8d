// SPDX-License-Identifier: MIT

#include "gateway/ember/take_plan.h"

#include <algorithm>

namespace ember {

namespace {

using switcher::TakeAction;

bool IsFunction(const Wanted& wanted) {
  return wanted.act == Wanted::Act::Call || wanted.act == Wanted::Act::PriorityListen;
}

struct RowDifference {
  std::vector<int> makes;
  std::vector<int> breaks;
};

RowDifference DifferenceOf(const model::SystemModel& model, const Wanted& wanted) {
  RowDifference difference;
  const auto stands = [&](int input) { return model.CrosspointMap.At(wanted.output, input) != 0; };
  const bool takesAway =
      wanted.act == Wanted::Act::Disconnect || (IsFunction(wanted) && !wanted.on);
  // What is there is a call only in a row of priority.
  const bool isOrdinary = IsFunction(wanted) && model.ChannelStatus[wanted.output] == 0;
  for (const int input : wanted.inputs) {
    if (takesAway && stands(input)) difference.breaks.push_back(input);
    if (!takesAway && (!stands(input) || isOrdinary)) difference.makes.push_back(input);
  }
  if (wanted.act != Wanted::Act::Absolute) return difference;
  for (int input = 1; input <= model.ChannelCount; ++input) {
    const bool isKept =
        std::find(wanted.inputs.begin(), wanted.inputs.end(), input) != wanted.inputs.end();
    if (stands(input) && !isKept) difference.breaks.push_back(input);
  }
  return difference;
}

TakeAction MakeAction(Wanted::Act act) {
  if (act == Wanted::Act::Call) return TakeAction::MakeCall;
  if (act == Wanted::Act::PriorityListen) return TakeAction::MakePriorityListen;
  return TakeAction::MakeSum;
}

TakeAction BreakAction(Wanted::Act act) {
  if (act == Wanted::Act::Call) return TakeAction::BreakCall;
  if (act == Wanted::Act::PriorityListen) return TakeAction::BreakPriorityListen;
  return TakeAction::BreakSum;
}

std::optional<Refusal> Judge(const model::SystemModel& model, const model::Locks& locks,
                             ChannelTexts& texts, const Wanted& wanted,
                             const RowDifference& difference) {
  if (locks.IsLocked(wanted.output)) return Refusal::OutputLocked;
  // What cannot be seen to be allowed is not.
  const bool makesInhibited = std::any_of(
      difference.makes.begin(), difference.makes.end(),
      [&](int input) { return texts.IsInhibited(wanted.output, input).value_or(true); });
  if (makesInhibited) return Refusal::Inhibited;
  if (!difference.breaks.empty() && !IsFunction(wanted) &&
      model.ChannelStatus[wanted.output] != 0) {
    return Refusal::PriorityRow;
  }
  return std::nullopt;
}

}  // namespace

bool IsAsWanted(const model::SystemModel& model, const Wanted& wanted) {
  const RowDifference difference = DifferenceOf(model, wanted);
  return difference.makes.empty() && difference.breaks.empty();
}

TakePlan PlanTake(const model::SystemModel& model, const switcher::KnownMap& knownMap,
                  const model::Locks& locks, ChannelTexts& texts, const Wanted& wanted) {
  if (model.LinkStatus[0] != 1) return {.refusal = Refusal::LinkDown};
  if (!model.XmapComplete) return {.refusal = Refusal::MapNotComplete};
  if (!knownMap.IsKnown()) return {.refusal = Refusal::MapNotKnown};
  const RowDifference difference = DifferenceOf(model, wanted);
  TakePlan plan;
  if (difference.makes.empty() && difference.breaks.empty()) return plan;
  plan.refusal = Judge(model, locks, texts, wanted, difference);
  if (plan.refusal) return plan;
  const auto add = [&](int input, TakeAction action) {
    plan.commands.push_back({.destination = wanted.output,
                             .source = input,
                             .action = static_cast<std::uint8_t>(action)});
  };
  if (wanted.act == Wanted::Act::Absolute && wanted.inputs.size() == 1) {
    const int input = wanted.inputs.front();
    // One command does it.  Where the input is there and inhibited it would be made anew.
    const bool isMade = !difference.makes.empty();
    if (isMade || !texts.IsInhibited(wanted.output, input).value_or(true)) {
      add(input, TakeAction::Take);
      return plan;
    }
  }
  for (const int input : difference.makes) add(input, MakeAction(wanted.act));
  for (const int input : difference.breaks) add(input, BreakAction(wanted.act));
  return plan;
}

}  // namespace ember
