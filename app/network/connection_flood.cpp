// SPDX-License-Identifier: MIT

#include "app/network/connection_flood.h"

#include <algorithm>

namespace app {
namespace {

// So many addresses are told apart: a stranger may have more than there is memory.
constexpr std::size_t kMostAddresses = 256;

}  // namespace

ConnectionFlood::ConnectionFlood(HintStrip& hints, std::chrono::milliseconds minute)
    : hints_(hints) {
  minute_.setInterval(minute);
  connect(&minute_, &QTimer::timeout, this, &ConnectionFlood::EndMinute);
}

void ConnectionFlood::Note(const std::string& address) {
  if (!minute_.isActive()) minute_.start();
  ++count_;
  if (byWho_.size() < kMostAddresses || byWho_.contains(address)) ++byWho_[address];
  if (count_ <= kMost || isFlooded_) return;
  isFlooded_ = true;
  const QString text = tr("Connections flood in from the network, more than %1 within a minute, "
                          "most of them from %2")
                           .arg(QString::number(kMost), QString::fromStdString(Busiest()));
  hints_.Give(Hint::ConnectionFlood, text);
  Q_EMIT Happened(text);
}

void ConnectionFlood::EndMinute() {
  if (isFlooded_ && count_ <= kMost) {
    isFlooded_ = false;
    hints_.Withdraw(Hint::ConnectionFlood);
    Q_EMIT Happened(tr("No more connections flood in"));
  }
  if (count_ == 0) minute_.stop();
  count_ = 0;
  byWho_.clear();
}

std::string ConnectionFlood::Busiest() const {
  const auto busiest = std::max_element(
      byWho_.begin(), byWho_.end(),
      [](const auto& one, const auto& other) { return one.second < other.second; });
  return busiest->first;
}

}  // namespace app
