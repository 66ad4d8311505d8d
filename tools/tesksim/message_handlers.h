// SPDX-License-Identifier: MIT

#ifndef TESKSIM_MESSAGE_HANDLERS_H_
#define TESKSIM_MESSAGE_HANDLERS_H_

#include "switcher/wire/message_table.h"
#include "tools/tesksim/messages/buttons.h"
#include "tools/tesksim/messages/gain.h"
#include "tools/tesksim/messages/inhibits.h"
#include "tools/tesksim/messages/labels.h"
#include "tools/tesksim/messages/optos.h"
#include "tools/tesksim/messages/relays.h"
#include "tools/tesksim/messages/take.h"

namespace tesksim {

// What the switcher understands.
class MessageHandlers {
 public:
  // `state` must outlive them.
  explicit MessageHandlers(SwitcherState& state);

  // Who acts on messages of a code; null for those that only the switcher sends.
  MessageHandler* Of(switcher::MessageCode code);

 private:
  TakeHandler take_;
  GainHandler gain_;
  InhibitsHandler inhibits_;
  RelaysHandler relays_;
  LabelsHandler labels_;
  ButtonsHandler buttons_;
  OptosHandler optos_;
};

}  // namespace tesksim

#endif  // TESKSIM_MESSAGE_HANDLERS_H_
