// SPDX-License-Identifier: MIT

#include "stations/change.h"

#include <algorithm>
#include <utility>

namespace stations {

bool Touches(std::span<const Change> changes, std::string_view field) {
  return std::ranges::any_of(changes, [&](const Change& change) {
    return std::ranges::find(change.fields, field, &FieldChange::field) != change.fields.end();
  });
}

ChangeObserver::ChangeObserver(Changes& changes) : changes_(changes) { changes_.Add(*this); }

ChangeObserver::~ChangeObserver() { changes_.Remove(*this); }

void Changes::Announce(Change change) {
  if (isHeld_) {
    held_.push_back(std::move(change));
  } else {
    Tell({&change, 1});
  }
}

void Changes::Release() {
  isHeld_ = false;
  const std::vector<Change> changes = std::exchange(held_, {});
  if (!changes.empty()) Tell(changes);
}

void Changes::Drop() {
  isHeld_ = false;
  held_.clear();
}

}  // namespace stations
