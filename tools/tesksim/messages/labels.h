// SPDX-License-Identifier: MIT

#ifndef TESKSIM_MESSAGES_LABELS_H_
#define TESKSIM_MESSAGES_LABELS_H_

#include <optional>

#include "switcher/wire/messages/label_order.h"
#include "switcher/wire/values.h"
#include "tools/tesksim/message_handler.h"
#include "tools/tesksim/switcher_state.h"

namespace tesksim {

// 0xF7 and 0xF9: replace all output labels (selector 20) or all input labels (10).  0xF7 names
// the stations in the order in which their labels come, 0xF9 brings the labels; the second is
// refused without the first.  An order must name every label's station once, and holds for one
// 0xF9.
class LabelsHandler : public MessageHandler {
 public:
  explicit LabelsHandler(SwitcherState& state) : state_(state) {}
  Outcome Accept(std::span<const std::uint8_t> message) override;
  switcher::Bytes Report(int selector) const override;

 private:
  Outcome AcceptOrder(std::span<const std::uint8_t> message);
  Outcome AcceptTexts(std::span<const std::uint8_t> message);
  bool IsComplete(const switcher::LabelOrder& order) const;

  SwitcherState& state_;
  std::optional<switcher::LabelOrder> order_;  // for the texts that come next
};

}  // namespace tesksim

#endif  // TESKSIM_MESSAGES_LABELS_H_
