// SPDX-License-Identifier: MIT

#include "stations/journal/waiting_acts.h"

#include <algorithm>
#include <utility>
#include <vector>

#include "stations/journal/act.h"
#include "stations/journal/fold_acts.h"

namespace stations {

void WaitingActs::Add(std::string act) {
  bytes_ += act.size();
  acts_.push_back(std::move(act));
  if (bytes_ > most_) Fold();
}

void WaitingActs::RemoveFirst() {
  bytes_ -= acts_.front().size();
  acts_.pop_front();
  if (acts_.empty()) Clear();
}

void WaitingActs::Clear() {
  acts_.clear();
  bytes_ = 0;
  most_ = kMostBytes;
}

void WaitingActs::Fold() {
  std::vector<Act> acts;
  for (const std::string& text : acts_) {
    Act act;
    if (ReadAct(text, &act)) acts.push_back(std::move(act));
  }
  Clear();
  if (acts.empty()) return;
  for (const Act& act : FoldActs(std::move(acts))) {
    bytes_ += acts_.emplace_back(WriteAct(act)).size();
  }
  most_ = std::max(kMostBytes, 2 * bytes_);
}

}  // namespace stations
