// SPDX-License-Identifier: MIT

#include "tools/tesksim/message_handlers.h"

namespace tesksim {

MessageHandlers::MessageHandlers(SwitcherState& state)
    : take_(state),
      gain_(state),
      inhibits_(state),
      relays_(state),
      labels_(state),
      buttons_(state),
      optos_(state) {}

MessageHandler* MessageHandlers::Of(switcher::MessageCode code) {
  switch (code) {
    case switcher::kTakeCode:
      return &take_;
    case switcher::kGainCode:
      return &gain_;
    case switcher::kInhibitRowCode:
      return &inhibits_;
    case switcher::kRelayRowCode:
      return &relays_;
    case switcher::kLabelOrderCode:
    case switcher::kAlphaLabelsCode:
      return &labels_;
    case switcher::kButtonDataCode:
      return &buttons_;
    case switcher::kOptoDataCode:
      return &optos_;
    case switcher::kGainReportCode:
    case switcher::kCrosspointRowCode:
    case switcher::kTallyCode:
      break;
  }
  return nullptr;
}

}  // namespace tesksim
