// SPDX-License-Identifier: MIT

#include "app/network/listen_again.h"

#include <chrono>

namespace app {
namespace {

constexpr std::chrono::seconds kPause{5};

}  // namespace

ListenAgain::ListenAgain(gateway::Listener& listener) : listener_(listener) {
  timer_.setInterval(kPause);
  connect(&timer_, &QTimer::timeout, this, &ListenAgain::Try);
}

void ListenAgain::Begin(int port) {
  port_ = port;
  timer_.start();
}

void ListenAgain::Try() {
  if (!listener_.Start(port_).ok()) return;
  Stop();
  Q_EMIT Listening();
}

}  // namespace app
