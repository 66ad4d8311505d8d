// SPDX-License-Identifier: MIT

#ifndef BENCH_SWITCHER_LINE_H_
#define BENCH_SWITCHER_LINE_H_

#include <atomic>
#include <chrono>
#include <condition_variable>
#include <cstdint>
#include <mutex>
#include <optional>
#include <string>
#include <thread>
#include <vector>

#include "tests/support/pty.h"

namespace bench {

// The far end of a console's serial line, without a pace: answers the polls like a switcher of
// 64 channels, so that the console finds its map complete and the link up, and notes when other
// messages arrive.
class SwitcherLine {
 public:
  using Clock = std::chrono::steady_clock;

  SwitcherLine();
  ~SwitcherLine();

  const std::string& Device() const { return pty_.Device(); }

  // Sends the map row of an output (from 1) with one source (from 1), and returns when its last
  // byte was handed to the line.
  Clock::time_point SendRow(int output, int source);

  // Waits for the next take message; the time when its last byte arrived.
  std::optional<Clock::time_point> WaitForTake(std::chrono::milliseconds within);

  // Whether the console has polled with the keep-alive, that is, has map and tally.
  bool IsUp() const { return up_; }

 private:
  void Serve();
  void Handle(std::uint8_t byte);
  void Write(const std::vector<std::uint8_t>& bytes);

  test::Pty pty_;
  std::mutex writing_;
  std::atomic<bool> up_ = false;
  std::atomic<bool> ending_ = false;
  std::vector<std::uint8_t> message_;
  std::mutex mutex_;
  std::condition_variable arrived_;
  std::optional<Clock::time_point> take_;  // guarded by mutex_
  std::thread server_;
};

}  // namespace bench

#endif  // BENCH_SWITCHER_LINE_H_
