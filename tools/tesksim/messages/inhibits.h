// SPDX-License-Identifier: MIT

#ifndef TESKSIM_MESSAGES_INHIBITS_H_
#define TESKSIM_MESSAGES_INHIBITS_H_

#include "switcher/wire/values.h"
#include "tools/tesksim/message_handler.h"
#include "tools/tesksim/switcher_state.h"

namespace tesksim {

// 0xF5: replaces the inhibits of one output.  Crosspoints that stand already are left alone.
class InhibitsHandler : public MessageHandler {
 public:
  explicit InhibitsHandler(SwitcherState& state) : state_(state) {}
  Outcome Accept(std::span<const std::uint8_t> message) override;
  switcher::Bytes Report(int output) const override;

 private:
  SwitcherState& state_;
};

}  // namespace tesksim

#endif  // TESKSIM_MESSAGES_INHIBITS_H_
