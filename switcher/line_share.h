// SPDX-License-Identifier: MIT

#ifndef SWITCHER_LINE_SHARE_H_
#define SWITCHER_LINE_SHARE_H_

#include <chrono>
#include <cstddef>
#include <functional>
#include <utility>

#include "switcher/serial_port.h"

namespace switcher {

// What the network panels may have of the line.  The poll and the operator's commands go first:
// they are written at once, and panels' takes only while little waits on the line, which can be
// sent before the next poll.  So however many takes come, the operator's is on the wire within the
// time of the little, and every poll finds the output drained.
class LineShare {
 public:
  // So many bytes may wait on the line, a take included: 44 ms, and what the port holds without
  // making its sender wait.
  static constexpr std::size_t kMostBehind = 256;

  // So long before a poll everything is to be sent.
  static constexpr std::chrono::milliseconds kBeforePoll{20};

  // The time to the next poll; negative while there are none.
  using UntilPoll = std::function<std::chrono::milliseconds()>;

  // `port` must outlive the object.
  LineShare(const SerialPort& port, UntilPoll untilPoll)
      : port_(port), untilPoll_(std::move(untilPoll)) {}

  // Whether a take may be written now.
  bool HasRoom() const;

 private:
  const SerialPort& port_;
  const UntilPoll untilPoll_;
};

}  // namespace switcher

#endif  // SWITCHER_LINE_SHARE_H_
