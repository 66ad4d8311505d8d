// SPDX-License-Identifier: MIT

#include "views/xmap/pending_crosspoints.h"

#include <set>

#include "model/system_model.h"

namespace views {
PendingCrosspoints::PendingCrosspoints(QObject* parent) : QObject(parent) {
  timer_.setSingleShot(true);
  timer_.setTimerType(Qt::PreciseTimer);
  connect(&timer_, &QTimer::timeout, this, &PendingCrosspoints::Expire);
}

void PendingCrosspoints::Sent(const Crosspoint& crosspoint) {
  std::erase_if(pending_, [&](const Pending& old) { return old.crosspoint == crosspoint; });
  pending_.push_back({crosspoint, QDeadlineTimer(kLongestPending, Qt::PreciseTimer)});
  if (!timer_.isActive()) timer_.start(kLongestPending);
  Q_EMIT Changed(crosspoint, true);
}

void PendingCrosspoints::Reported(int output) {
  EndWhere([output](const Pending& pending) {
    return output == model::kAll || pending.crosspoint.output == output;
  });
}

void PendingCrosspoints::Expire() {
  std::set<int> outputs;
  EndWhere([&outputs](const Pending& pending) {
    if (!pending.until.hasExpired()) return false;
    outputs.insert(pending.crosspoint.output);
    return true;
  });
  for (const int output : outputs) Q_EMIT GivenUp(output);
  // Rounded up, so that next time something has expired.
  if (!pending_.empty()) {
    timer_.start(static_cast<int>(pending_.front().until.remainingTime()) + 1);
  }
}

template <typename Condition>
void PendingCrosspoints::EndWhere(Condition condition) {
  std::erase_if(pending_, [&](const Pending& pending) {
    if (!condition(pending)) return false;
    Q_EMIT Changed(pending.crosspoint, false);
    return true;
  });
}

}  // namespace views
