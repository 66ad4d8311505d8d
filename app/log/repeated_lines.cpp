// SPDX-License-Identifier: MIT

#include "app/log/repeated_lines.h"

namespace app {
namespace {

// Noise names outputs that no system has: so many different lines are remembered at most.
constexpr std::size_t kMost = 2000;

}  // namespace

int RepeatedLines::Count(const QString& line, const QDateTime& now) {
  if (!minute_.isValid() || minute_.secsTo(now) >= kQuietSeconds) {
    minute_ = now;
    new_ = 0;
    leftOut_ += std::exchange(uncounted_, 0);
  }
  if (!entries_.contains(line) && ++new_ > kMostNew) {
    ++uncounted_;
    return 0;
  }
  if (entries_.size() >= kMost) entries_.clear();
  Entry& entry = entries_[line];
  ++entry.unwritten;
  if (entry.writtenAt.isValid() && entry.writtenAt.secsTo(now) < kQuietSeconds) return 0;
  entry.writtenAt = now;
  return std::exchange(entry.unwritten, 0);
}

}  // namespace app
