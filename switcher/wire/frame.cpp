// SPDX-License-Identifier: MIT

#include "switcher/wire/frame.h"

#include <algorithm>

namespace switcher {

std::string_view PollName(std::uint8_t byte) {
  switch (byte) {
    case kPollMap:
      return "map";
    case kPollTally:
      return "tally";
    case kPollKeepAlive:
      return "keep-alive";
    case kRetrieveRequest:
      return "tables";
    default:
      return {};
  }
}

Cut CutMessage(ReceiveBuffer& buffer, Bytes* message) {
  Bytes& bytes = buffer.bytes;
  if (bytes.empty()) return Cut::Empty;
  const std::uint8_t code = bytes.front();
  if ((code & 0x80) == 0) {
    DropFirst(buffer);
    return Cut::DroppedByte;
  }
  const auto unsearched = bytes.begin() + static_cast<std::ptrdiff_t>(buffer.searched);
  const auto end = std::find(unsearched, bytes.end(), kEndOfMessage);
  buffer.searched = static_cast<std::size_t>(end - bytes.begin());
  if (end == bytes.end()) return Cut::NeedMore;
  if (!IsReceivedCode(code)) return Cut::Blocked;
  message->assign(bytes.begin(), end + 1);
  bytes.erase(bytes.begin(), end + 1);
  buffer.searched = 0;
  return Cut::Message;
}

void DropFirst(ReceiveBuffer& buffer) {
  if (buffer.bytes.empty()) return;
  buffer.bytes.erase(buffer.bytes.begin());
  if (buffer.searched > 0) --buffer.searched;
}

}  // namespace switcher
