// SPDX-License-Identifier: MIT

#ifndef TESKSIM_MESSAGES_BUTTONS_H_
#define TESKSIM_MESSAGES_BUTTONS_H_

#include "switcher/wire/values.h"
#include "tools/tesksim/message_handler.h"
#include "tools/tesksim/switcher_state.h"

namespace tesksim {

// 0xFB: replaces the button programming of one station.  What comes may carry any number of
// groups up to all 256 stations; what is sent carries as many as the system has stations for.
class ButtonsHandler : public MessageHandler {
 public:
  explicit ButtonsHandler(SwitcherState& state) : state_(state) {}
  Outcome Accept(std::span<const std::uint8_t> message) override;
  switcher::Bytes Report(int station) const override;

 private:
  SwitcherState& state_;
};

}  // namespace tesksim

#endif  // TESKSIM_MESSAGES_BUTTONS_H_
