// SPDX-License-Identifier: MIT

#include "stations/change.h"

#include <algorithm>
#include <utility>

namespace stations {

bool Change::Has(std::string_view field) const {
  return std::ranges::find(fields, field, &FieldChange::field) != fields.end();
}

ChangeObserver::ChangeObserver(Changes& changes) : changes_(changes) { changes_.Add(*this); }

ChangeObserver::~ChangeObserver() { changes_.Remove(*this); }

void Changes::Remove(const ChangeObserver& observer) { std::erase(observers_, &observer); }

void Changes::Announce(Change change) {
  if (isHeld_) {
    held_.push_back(std::move(change));
    return;
  }
  for (ChangeObserver* const observer : observers_) observer->Changed(change);
}

void Changes::Release() {
  isHeld_ = false;
  for (Change& change : std::exchange(held_, {})) Announce(std::move(change));
}

void Changes::Drop() {
  isHeld_ = false;
  held_.clear();
}

}  // namespace stations
