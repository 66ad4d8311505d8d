// SPDX-License-Identifier: MIT

#ifndef TESKSIM_MESSAGES_GAIN_H_
#define TESKSIM_MESSAGES_GAIN_H_

#include "tools/tesksim/message_handler.h"
#include "tools/tesksim/switcher_state.h"

namespace tesksim {

// 0xE3: sets the gain of one input.  Nothing answers it; the next map brings a gain report.
class GainHandler : public MessageHandler {
 public:
  explicit GainHandler(SwitcherState& state) : state_(state) {}
  Outcome Accept(std::span<const std::uint8_t> message) override;

 private:
  SwitcherState& state_;
};

}  // namespace tesksim

#endif  // TESKSIM_MESSAGES_GAIN_H_
