// SPDX-License-Identifier: MIT

#include "switcher/frame.h"

#include <algorithm>

namespace switcher {

bool IsReceivedCode(std::uint8_t code) {
  switch (code) {
    case kGainReportCode:
    case kCrosspointRowCode:
    case kAlphaLabelsCode:
    case kButtonDataCode:
    case kRelayRowCode:
    case kInhibitRowCode:
    case kTallyCode:
    case kOptoDataCode:
      return true;
    default:
      return false;
  }
}

Cut CutMessage(Bytes& rxBuffer, Bytes* message) {
  if (rxBuffer.empty()) return Cut::Empty;
  const std::uint8_t code = rxBuffer.front();
  if ((code & 0x80) == 0) {
    rxBuffer.erase(rxBuffer.begin());
    return Cut::DroppedByte;
  }
  const auto end = std::find(rxBuffer.begin(), rxBuffer.end(), kEndOfMessage);
  if (end == rxBuffer.end()) return Cut::NeedMore;
  if (!IsReceivedCode(code)) return Cut::Blocked;
  message->assign(rxBuffer.begin(), end + 1);
  rxBuffer.erase(rxBuffer.begin(), end + 1);
  return Cut::Message;
}

}  // namespace switcher
