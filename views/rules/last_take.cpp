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

void LastTake::Sent(int output, int input) {
  output_ = output;
  input_ = input;
  isMade_ = false;
  isChanged_ = false;
  wasByPriority_ = model_.ChannelStatus[output] != 0;
  before_ = Row();
}

void LastTake::Reported(int output) {
  if (output_ == 0 || (output != output_ && output != model::kAll)) return;
  std::vector<int> row = Row();
  if (isMade_) {
    isChanged_ |= row != after_;
  } else {
    isMade_ = HasInput(row, input_);
    after_ = std::move(row);
  }
}

TakeBack LastTake::Decide(const XmapGrid& grid) const {
  using Kind = TakeBack::Kind;
  // A map that was allocated anew since has nothing of it.
  if (output_ == 0 || output_ > model_.CrosspointMap.Size()) return {};
  TakeBack back{.kind = Kind::Possible, .output = output_, .before = before_, .steps = {}};
  const std::vector<int> now = Row();
  if (wasByPriority_ || model_.ChannelStatus[output_] != 0) {
    back.kind = Kind::ByPriority;
  } else if (!isMade_) {
    back.kind = Kind::Unreported;
  } else if (isChanged_ || now != after_) {
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

}  // namespace rules
