// SPDX-License-Identifier: MIT

#ifndef GATEWAY_PANEL_MESSAGE_H_
#define GATEWAY_PANEL_MESSAGE_H_

#include <cstdint>
#include <functional>
#include <tuple>

#include "gateway/panel_frame.h"

namespace gateway {

// What a message to panels is, as far as its way to them cares.
struct MessageId {
  enum class Kind : std::uint8_t {
    Other,  // never replaced by another
    ConnectionRequest,
    KeepAlive,
    Row,     // first: the channel
    Map,     // first channel, count
    Labels,  // first: kind
    StationList,
    ButtonProgramming,
  };

  Kind kind = Kind::Other;
  int first = 0;
  int count = 0;

  bool operator==(const MessageId&) const = default;
  bool operator<(const MessageId& other) const {
    return std::tie(kind, first, count) < std::tie(other.kind, other.first, other.count);
  }
};

// A message for panels.  Its bytes are asked for when its turn comes, for each slot.  Without any
// it is passed over, and what is for all goes to nobody else either.
struct Message {
  MessageId id;
  std::function<Bytes()> bytes;
};

// A message whose bytes are known.
Message FixedMessage(MessageId id, Bytes bytes);

}  // namespace gateway

#endif  // GATEWAY_PANEL_MESSAGE_H_
