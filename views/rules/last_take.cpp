// SPDX-License-Identifier: MIT

#include "views/rules/last_take.h"

#include <algorithm>
#include <utility>

namespace rules {
namespace {

using switcher::TakeAction;

bool HasInput(const std::vector<int>& row, int input) {
  return std::ranges::binary_search(row, input);
}

// The row that a step leaves.
std::vector<int> After(std::vector<int> row, const TakeBack::Step& step) {
  if (step.action == TakeAction::Take) return {step.input};
  std::erase(row, step.input);
  if (step.action == TakeAction::MakeSum) {
    row.insert(std::ranges::lower_bound(row, step.input), step.input);
  }
  return row;
}

// One source comes in place of all others by a take.  Several, or none, are connected and then
// the others broken, so that the output is never without what it is to hear.
std::vector<TakeBack::Step> StepsBetween(const std::vector<int>& now,
                                         const std::vector<int>& wanted) {
  if (wanted.size() == 1) return {{wanted.front(), TakeAction::Take}};
  std::vector<TakeBack::Step> steps;
  for (const int input : wanted) {
    if (!HasInput(now, input)) steps.push_back({input, TakeAction::MakeSum});
  }
  for (const int input : now) {
    if (!HasInput(wanted, input)) steps.push_back({input, TakeAction::BreakSum});
  }
  return steps;
}

}  // namespace

void LastTake::Sent(int output, int input, bool isMapKnown) {
  output_ = output;
  input_ = input;
  stage_ = Stage::Sent;
  isBeforeKnown_ = isMapKnown;
  isChanged_ = false;
  ReadBefore();
}

void LastTake::StepSent(const TakeBack::Step& step) {
  stage_ = Stage::StepSent;
  expected_ = After(after_, step);
}

void LastTake::Reported(int output) {
  if (!HasRow() || (output != output_ && output != model::kAll)) return;
  std::vector<int> row = Row();
  if (stage_ == Stage::Sent) {
    if (!HasInput(row, input_)) return ReadBefore();
    stage_ = Stage::Made;
    isChanged_ = row.size() > 1;  // a take leaves its own source alone
    after_ = std::move(row);
  } else if (stage_ == Stage::StepSent && row == expected_) {
    stage_ = Stage::Made;
    after_ = std::move(row);
    if (after_ == before_) output_ = 0;
  } else {
    isChanged_ |= row != after_;
  }
}

void LastTake::Lapse() {
  if (stage_ == Stage::Sent) output_ = 0;
  stage_ = Stage::Made;
}

TakeBack LastTake::Decide(const XmapGrid& grid) const {
  using Kind = TakeBack::Kind;
  // A map that was allocated anew since has nothing of it.
  if (!HasRow()) return {};
  TakeBack back{.kind = Kind::Possible, .output = output_, .before = before_, .steps = {}};
  const std::vector<int> now = Row();
  if (!isBeforeKnown_) {
    back.kind = Kind::BeforeUnknown;
  } else if (wasByPriority_ || model_.ChannelStatus[output_] != 0) {
    back.kind = Kind::ByPriority;
  } else if (isChanged_) {
    back.kind = Kind::Changed;
  } else if (stage_ != Stage::Made) {
    back.kind = Kind::Unreported;
  } else if (now != after_) {
    back.kind = Kind::Changed;
  } else if (std::ranges::any_of(before_, [&](int input) {
               return grid.MarkAt(output_ + 1, input + 1) == Mark::Inhibit;
             })) {
    back.kind = Kind::Inhibited;
  } else {
    back.steps = StepsBetween(now, before_);
  }
  return back;
}

std::vector<int> LastTake::Row() const {
  std::vector<int> row;
  const std::span<const std::uint8_t> made = model_.CrosspointMap.Row(output_);
  for (std::size_t i = 0; i < made.size(); ++i) {
    if (made[i] == 1) row.push_back(static_cast<int>(i) + 1);
  }
  return row;
}

// Also while the take is on its way: it comes in place of what the switcher has by then.
void LastTake::ReadBefore() {
  wasByPriority_ = model_.ChannelStatus[output_] != 0;
  before_ = Row();
}

}  // namespace rules
