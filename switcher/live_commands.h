// SPDX-License-Identifier: MIT

#ifndef SWITCHER_LIVE_COMMANDS_H_
#define SWITCHER_LIVE_COMMANDS_H_

#include <cstdint>

#include "model/locks.h"
#include "switcher/message_sender.h"

namespace switcher {

// The commands that act on the running switcher at once.  Each writes its message, sets
// SendBusy until the output has drained, and reports a failure or a refusal to the operator itself;
// it then returns false.
class LiveCommands {
 public:
  // With `locks`, which must outlive the object, what these lock is refused.  Without them, as for
  // those whom the locks of the console do not concern, everything is sent.
  explicit LiveCommands(const MessageSender::Services& services,
                        const model::Locks* locks = nullptr)
      : sender_(services), reporter_(services.reporter), locks_(locks) {}

  // Whether a take of an output (from 1), or any command, is refused because of a lock.  The
  // operator is told so.
  bool RefusesTake(int destination) const;
  bool RefusesAll() const;

  // Makes or breaks the crosspoint of an output and an input channel, both from 1 and at most
  // 256.  `action` is a TakeAction, or what a panel asked for.
  bool SendTake(int destination, int source, std::uint8_t action);

  // Sets the gain of input `channel` (0-based, 0..63) to `gain` (0..127).
  bool SendGain(int channel, int gain);

 private:
  const MessageSender sender_;
  model::ErrorReporter& reporter_;
  const model::Locks* locks_;
};

}  // namespace switcher

#endif  // SWITCHER_LIVE_COMMANDS_H_
