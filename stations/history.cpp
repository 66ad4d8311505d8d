// SPDX-License-Identifier: MIT

#include "stations/history.h"

#include <algorithm>
#include <iterator>
#include <utility>

#include "stations/fold.h"

namespace stations {
namespace {

// What a field takes beside its texts, about.
constexpr std::size_t kFieldBytes = sizeof(FieldChange) + 32;

std::size_t BytesOf(std::span<const Change> changes) {
  std::size_t bytes = 0;
  for (const Change& change : changes) {
    bytes += sizeof(Change);
    for (const FieldChange& field : change.fields) {
      bytes +=
          kFieldBytes + field.field.size() + field.before.Text().size() + field.after.Text().size();
    }
  }
  return bytes;
}

// Whether the step put something there that `change` found.
bool LedTo(const Step& step, const Change& change) {
  return std::ranges::any_of(step, [&](const Change& earlier) {
    if (earlier.station != change.station) return false;
    return std::ranges::any_of(change.fields, [&](const FieldChange& field) {
      const auto found = std::ranges::find(earlier.fields, field.field, &FieldChange::field);
      return found != earlier.fields.end() && found->after == field.before;
    });
  });
}

}  // namespace

const Step* History::Next(Direction direction) const {
  const Entries& entries = direction == Direction::Back ? done_ : undone_;
  return entries.empty() ? nullptr : &entries.back().step;
}

model::Status History::Go(jet::Database& database, Direction direction,
                          const std::function<bool(const Step&)>& may, Outcome* outcome) {
  const bool isBack = direction == Direction::Back;
  Entries& from = isBack ? done_ : undone_;
  Entries& to = isBack ? undone_ : done_;
  const Step& step = from.back().step;
  std::vector<Conflict> conflicts;
  if (model::Status status = FindConflicts(database, step, direction, &conflicts); !status.ok()) {
    return status;
  }
  *outcome = Outcome::Stale;
  if (!conflicts.empty()) {
    Drop(&from);
    return {};
  }
  if (!may(step)) {
    *outcome = Outcome::Refused;
    return {};
  }
  hasStored_ = false;
  if (model::Status status =
          CarryOut(database, step, direction, {changes_, isBack ? Origin::Undo : Origin::Redo});
      !status.ok()) {
    return status;
  }
  if (hasStored_) {
    *outcome = Outcome::Gone;
    to.push_back(std::move(from.back()));
  }
  Drop(&from);
  return {};
}

void History::Drop(Entries* from) {
  from->pop_back();
  Tell();
}

void History::Changed(std::span<const Change> changes) {
  switch (changes.front().origin) {
    case Origin::Undo:
    case Origin::Redo:
      hasStored_ = true;
      break;
    case Origin::Switcher:
      break;
    case Origin::Navigation:
      for (const Change& change : Fold(changes)) Join(change);
      break;
    case Origin::Operator:
    case Origin::Restore:
    case Origin::Comparison:
    case Origin::Backup:
    case Origin::File:
      Add(Fold(changes));
      break;
  }
}

void History::Add(Step step) {
  if (step.empty()) return;
  undone_.clear();
  Append(std::move(step));
}

void History::Append(Step step) {
  const std::size_t bytes = BytesOf(step);
  done_.push_back({.step = std::move(step), .bytes = bytes});
  ForgetOldest();
  Tell();
}

// Together they may come to nothing.
void History::Join(const Change& change) {
  const auto newest = std::find_if(done_.rbegin(), done_.rend(), [&change](const Entry& entry) {
    return LedTo(entry.step, change);
  });
  if (newest == done_.rend()) return Append({change});
  Step& step = newest->step;
  const Origin origin = step.front().origin;
  step.push_back(change);
  step = Fold(step);
  for (Change& joined : step) joined.origin = origin;
  newest->bytes = BytesOf(step);
  if (step.empty()) done_.erase(std::prev(newest.base()));
  Tell();
}

void History::ForgetOldest() {
  std::size_t bytes = 0;
  for (const Entry& entry : done_) bytes += entry.bytes;
  while (done_.size() > 1 && (done_.size() > limits_.steps || bytes > limits_.bytes)) {
    bytes -= done_.front().bytes;
    done_.pop_front();
  }
}

void History::Tell() const {
  if (listener_) listener_();
}

}  // namespace stations
