// SPDX-License-Identifier: MIT

#ifndef TESTS_SUPPORT_FAKE_PAUSE_TIMER_H_
#define TESTS_SUPPORT_FAKE_PAUSE_TIMER_H_

#include <utility>

#include "gateway/pause_timer.h"

namespace test {

// A timer whose time passes when the test says so.
class FakePauseTimer : public gateway::PauseTimer {
 public:
  void Start(std::chrono::milliseconds pause, std::function<void()> handler) override {
    pause_ = pause;
    handler_ = std::move(handler);
  }
  void Stop() override { handler_ = nullptr; }

  bool IsRunning() const { return handler_ != nullptr; }

  // Lets the pause pass that is running, if one is.
  void Elapse() {
    if (!IsRunning()) return;
    now += static_cast<int>(pause_.count());
    std::exchange(handler_, nullptr)();
  }

  // Lets so much time pass, and the pause that is running if it is over by then.
  void Pass(std::chrono::milliseconds time) {
    pause_ -= time;
    if (pause_.count() <= 0) Elapse();
  }

  // Lets pauses pass until none is running.
  void ElapseAll() {
    while (IsRunning()) Elapse();
  }

  int now = 0;  // milliseconds that have passed

 private:
  std::chrono::milliseconds pause_{0};
  std::function<void()> handler_;
};

}  // namespace test

#endif  // TESTS_SUPPORT_FAKE_PAUSE_TIMER_H_
