// SPDX-License-Identifier: MIT

#include "gateway/ember/take_plan.h"

#include <algorithm>

namespace ember {

namespace {

using switcher::TakeAction;

struct RowDifference {
  std::vector<int> makes;
  std::vector<int> breaks;

  bool IsNone() const { return makes.empty() && breaks.empty(); }
};

bool Has(const ExpectedRow::Inputs& inputs, int input) {
  return inputs[static_cast<std::size_t>(input)];
}

// A row of priority says that a call or a priority listen stands, not which: to end one of them is
// left to the switcher, which knows.  In a row without priority there is neither.
RowDifference DifferenceOf(const ExpectedRow& row, const Wanted& wanted) {
  RowDifference difference;
  const bool takesAway =
      wanted.act == Wanted::Act::Disconnect || (wanted.IsFunction() && !wanted.on);
  const ExpectedRow::Inputs& present = wanted.IsFunction() ? row.calls : row.sources;
  ExpectedRow::Inputs kept;
  for (const int input : wanted.inputs) {
    kept.set(static_cast<std::size_t>(input));
    if (takesAway && Has(present, input)) difference.breaks.push_back(input);
    if (!takesAway && !Has(present, input)) difference.makes.push_back(input);
  }
  if (wanted.act != Wanted::Act::Absolute) return difference;
  for (int input = 1; input <= model::kMaxChannelCount; ++input) {
    if (Has(present, input) && !Has(kept, input)) difference.breaks.push_back(input);
  }
  return difference;
}

bool IsAwaited(const ExpectedRow& row, const Wanted& wanted) {
  if (wanted.act == Wanted::Act::Absolute) return row.awaited.any();
  return std::any_of(wanted.inputs.begin(), wanted.inputs.end(),
                     [&](int input) { return Has(row.awaited, input); });
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

std::optional<Refusal> Judge(const PlanServices& services, const ExpectedRow& row,
                             const Wanted& wanted, const RowDifference& difference) {
  if (services.locks.IsLocked(wanted.output)) return Refusal::OutputLocked;
  // What cannot be seen to be allowed is not.
  for (const int input : difference.makes) {
    const std::optional<bool> isInhibited = services.texts.IsInhibited(wanted.output, input);
    if (!isInhibited) return Refusal::InhibitsUnknown;
    if (*isInhibited) return Refusal::Inhibited;
  }
  if (!difference.breaks.empty() && !wanted.IsFunction() && row.isPriority) {
    return Refusal::PriorityRow;
  }
  return std::nullopt;
}

}  // namespace

bool IsAsWanted(const model::SystemModel& model, const Wanted& wanted) {
  return DifferenceOf(ReportedRow(model, wanted.output), wanted).IsNone();
}

TakePlan PlanTake(const PlanServices& services, const ExpectedRow& row, const Wanted& wanted) {
  if (services.model.LinkStatus[0] != 1) return {.refusal = Refusal::LinkDown};
  if (!services.model.XmapComplete) return {.refusal = Refusal::MapNotComplete};
  if (!services.knownMap.IsKnown()) return {.refusal = Refusal::MapNotKnown};
  const RowDifference difference = DifferenceOf(row, wanted);
  if (difference.IsNone()) return {.isAwaited = IsAwaited(row, wanted)};
  TakePlan plan;
  plan.refusal = Judge(services, row, wanted, difference);
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
    if (isMade || !services.texts.IsInhibited(wanted.output, input).value_or(true)) {
      add(input, TakeAction::Take);
      return plan;
    }
  }
  for (const int input : difference.makes) add(input, MakeAction(wanted.act));
  for (const int input : difference.breaks) add(input, BreakAction(wanted.act));
  return plan;
}

}  // namespace ember
