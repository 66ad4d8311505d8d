// SPDX-License-Identifier: MIT

#include "stations/history.h"

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
      if (!done_.empty() && undone_.empty()) {
        Join(changes);
        break;
      }
      [[fallthrough]];
    case Origin::Operator:
    case Origin::Restore:
    case Origin::Comparison:
    case Origin::Backup:
      Add(Fold(changes));
      break;
  }
}

void History::Add(Step step) {
  if (step.empty()) return;
  const std::size_t bytes = BytesOf(step);
  undone_.clear();
  done_.push_back({.step = std::move(step), .bytes = bytes});
  ForgetOldest();
  Tell();
}

// Together they may come to nothing.
void History::Join(std::span<const Change> changes) {
  Step step = std::move(done_.back().step);
  done_.pop_back();
  const Origin origin = step.front().origin;
  step.insert(step.end(), changes.begin(), changes.end());
  step = Fold(step);
  for (Change& change : step) change.origin = origin;
  if (step.empty()) {
    Tell();
  } else {
    Add(std::move(step));
  }
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
