// SPDX-License-Identifier: MIT

#include "switcher/line_share.h"

#include <algorithm>

#include "switcher/line_pace.h"
#include "switcher/wire/messages/take.h"

namespace switcher {

using std::chrono::milliseconds;

bool LineShare::HasRoom() const {
  std::size_t room = kMostBehind;
  if (const milliseconds left = untilPoll_(); left >= left.zero()) {
    const milliseconds usable = std::max(left - kBeforePoll, milliseconds(0));
    room = std::min(room, LinePace::BytesIn(usable));
  }
  return port_.Unsent() + kTakeLength <= room;
}

}  // namespace switcher
