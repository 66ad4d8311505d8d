// SPDX-License-Identifier: MIT

#ifndef GATEWAY_PAUSE_TIMER_H_
#define GATEWAY_PAUSE_TIMER_H_

#include <chrono>
#include <functional>

namespace gateway {

// Calls back once, later, from the event loop.
class PauseTimer {
 public:
  virtual ~PauseTimer() = default;

  // Calls `handler` once `pause` has passed, never earlier and as little later as can be.  A call
  // that is still to come is dropped.
  virtual void Start(std::chrono::milliseconds pause, std::function<void()> handler) = 0;

  // Drops a call that is still to come.
  virtual void Stop() = 0;
};

}  // namespace gateway

#endif  // GATEWAY_PAUSE_TIMER_H_
