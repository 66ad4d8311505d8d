// SPDX-License-Identifier: MIT

#ifndef TESKSIM_MESSAGES_OPTOS_H_
#define TESKSIM_MESSAGES_OPTOS_H_

#include "switcher/wire/values.h"
#include "tools/tesksim/message_handler.h"
#include "tools/tesksim/switcher_state.h"

namespace tesksim {

// 0xE1: replaces the programming of all opto inputs, 64 stations for each.
class OptosHandler : public MessageHandler {
 public:
  explicit OptosHandler(SwitcherState& state) : state_(state) {}
  Outcome Accept(std::span<const std::uint8_t> message) override;
  switcher::Bytes Report(int /*number*/) const override;

 private:
  SwitcherState& state_;
};

}  // namespace tesksim

#endif  // TESKSIM_MESSAGES_OPTOS_H_
