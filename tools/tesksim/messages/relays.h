// SPDX-License-Identifier: MIT

#ifndef TESKSIM_MESSAGES_RELAYS_H_
#define TESKSIM_MESSAGES_RELAYS_H_

#include "switcher/wire/values.h"
#include "tools/tesksim/message_handler.h"
#include "tools/tesksim/switcher_state.h"

namespace tesksim {

// 0xF4: replaces the relays of one output.
class RelaysHandler : public MessageHandler {
 public:
  explicit RelaysHandler(SwitcherState& state) : state_(state) {}
  Outcome Accept(std::span<const std::uint8_t> message) override;
  switcher::Bytes Report(int output) const override;

 private:
  SwitcherState& state_;
};

}  // namespace tesksim

#endif  // TESKSIM_MESSAGES_RELAYS_H_
