// SPDX-License-Identifier: MIT

#ifndef SWITCHER_LIVE_COMMANDS_H_
#define SWITCHER_LIVE_COMMANDS_H_

#include <cstdint>

#include "switcher/message_sender.h"

namespace switcher {

// The commands that act on the running switcher at once.  Each writes its message, sets
// SendBusy until the output has drained, and reports a failure to the operator itself; it then
// returns false.
class LiveCommands {
 public:
  explicit LiveCommands(const MessageSender::Services& services) : sender_(services) {}

  // Makes or breaks the crosspoint of an output and an input channel, both from 1 and at most
  // 256.  `action` is a TakeAction, or what a panel asked for.
  bool SendTake(int destination, int source, std::uint8_t action);

  // Sets the gain of input `channel` (0-based, 0..63) to `gain` (0..127).
  bool SendGain(int channel, int gain);

 private:
  const MessageSender sender_;
};

}  // namespace switcher

#endif  // SWITCHER_LIVE_COMMANDS_H_
