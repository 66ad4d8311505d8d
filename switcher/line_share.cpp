// SPDX-License-Identifier: MIT

#include "switcher/line_share.h"

namespace switcher {

bool LineShare::HasRoom() const {
  const std::chrono::milliseconds left = untilPoll_();
  const bool pollIsNext = left >= left.zero() && left < kBeforePoll;
  return !pollIsNext && port_.Unsent() < kMostBehind;
}

}  // namespace switcher
