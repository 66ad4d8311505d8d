// SPDX-License-Identifier: MIT

#include "app/refusals.h"

#include <utility>

namespace app {
namespace {

// Noise names outputs that no system has: so many different refusals are remembered at most.
constexpr std::size_t kMost = 2000;

}  // namespace

int Refusals::Count(std::string_view description, switcher::DecodeStatus status,
                    const QDateTime& now) {
  if (entries_.size() >= kMost) entries_.clear();
  Entry& entry = entries_[{std::string(description), status}];
  ++entry.unspoken;
  if (entry.spokenAt.isValid() && entry.spokenAt.secsTo(now) < kQuietSeconds) return 0;
  entry.spokenAt = now;
  return std::exchange(entry.unspoken, 0);
}

}  // namespace app
