// SPDX-License-Identifier: MIT

#include "app/log/repeated_lines.h"

#include <algorithm>

namespace app {
namespace {

// Noise names outputs that no system has: so many different lines are remembered at most.
constexpr std::size_t kMost = 2000;

// Whether the minute that began at `start` is over.  A clock that was put back ends it, too: else
// nothing would be written until it is as late as before.
bool IsOver(const QDateTime& start, const QDateTime& now) {
  const qint64 passed = start.secsTo(now);
  return !start.isValid() || passed < 0 || passed >= RepeatedLines::kQuietSeconds;
}

}  // namespace

int RepeatedLines::Count(const QString& line, const QDateTime& now) {
  if (IsOver(minute_, now)) BeginMinute(now);
  if (!entries_.contains(line)) {
    if (entries_.size() >= kMost) ForgetOld(now);
    if (++new_ > kMostNew || entries_.size() >= kMost) {
      ++uncounted_;
      return 0;
    }
  }
  Entry& entry = entries_[line];
  ++entry.unwritten;
  if (!IsOver(entry.writtenAt, now)) return 0;
  entry.writtenAt = now;
  return std::exchange(entry.unwritten, 0);
}

void RepeatedLines::BeginMinute(const QDateTime& now) {
  minute_ = now;
  new_ = 0;
  leftOut_ += std::exchange(uncounted_, 0);
}

// What was written longer ago would be written again at once: nothing is lost but its count, which
// stands in no line any more.
void RepeatedLines::ForgetOld(const QDateTime& now) {
  std::erase_if(entries_, [&](const auto& line) {
    if (!IsOver(line.second.writtenAt, now)) return false;
    leftOut_ += line.second.unwritten;
    return true;
  });
}

int RepeatedLines::TakeLeftOut(const QDateTime& now) {
  if (uncounted_ > 0 && IsOver(minute_, now)) BeginMinute(now);
  return std::exchange(leftOut_, 0);
}

int RepeatedLines::TakeAllLeftOut() {
  return std::exchange(leftOut_, 0) + std::exchange(uncounted_, 0);
}

bool RepeatedLines::IsForgotten(const QDateTime& now) const {
  return !HasLeftOut() && IsOver(minute_, now) &&
         std::ranges::all_of(entries_, [&](const auto& line) {
           return line.second.unwritten == 0 && IsOver(line.second.writtenAt, now);
         });
}

}  // namespace app
