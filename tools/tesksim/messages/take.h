// SPDX-License-Identifier: MIT

#ifndef TESKSIM_MESSAGES_TAKE_H_
#define TESKSIM_MESSAGES_TAKE_H_

#include "tools/tesksim/message_handler.h"
#include "tools/tesksim/switcher_state.h"

namespace tesksim {

// 0xFD: makes or breaks one crosspoint.
//
// Bit 1 of the action makes, else it breaks.  Action 3 also releases the output's other
// sources.  Bit 7 makes the crosspoint a priority one (call, priority listen); a later make
// without it turns it into an ordinary one again.  Breaking asks for no kind.  Making an
// inhibited crosspoint is refused, and then nothing else of the output changes either; breaking
// is not, or what was made before the inhibit could never be released.
//
// Every take within the matrix is answered with the output's row; so is a refused one, unless
// the output itself does not exist.
class TakeHandler : public MessageHandler {
 public:
  explicit TakeHandler(SwitcherState& state) : state_(state) {}
  Outcome Accept(std::span<const std::uint8_t> message) override;

 private:
  SwitcherState& state_;
};

}  // namespace tesksim

#endif  // TESKSIM_MESSAGES_TAKE_H_
