// SPDX-License-Identifier: MIT
//
// Cutting the byte stream from the switcher into messages, and the single bytes that supervise
// the link.

#ifndef SWITCHER_WIRE_FRAME_H_
#define SWITCHER_WIRE_FRAME_H_

#include <cstddef>
#include <cstdint>
#include <string_view>

#include "switcher/wire/message_table.h"
#include "switcher/wire/values.h"

namespace switcher {

// Single bytes, outside any message.
inline constexpr std::uint8_t kPollMap = 0xE5;          // to the switcher: send the whole map
inline constexpr std::uint8_t kPollTally = 0xE4;        // to the switcher: send the tally
inline constexpr std::uint8_t kPollKeepAlive = 0xED;    // to the switcher: answer with 0xEB
inline constexpr std::uint8_t kRetrieveRequest = 0xE7;  // to the switcher: send all tables
inline constexpr std::uint8_t kLinkAnswer = 0xEB;       // from the switcher

// What a single byte asks the switcher for, as the simulator names it; empty for any other byte.
std::string_view PollName(std::uint8_t byte);

enum class Cut {
  Empty,        // there was nothing to look at
  DroppedByte,  // the first byte had no top bit and is gone
  NeedMore,     // a message has begun; its end byte has not arrived
  Blocked,      // a whole message with an unknown code stands in front and stays there
  Message,      // one message was cut off
};

// Bytes received and not decoded yet.
struct ReceiveBuffer {
  Bytes bytes;

  // So many of them, from the front, are known to be no end byte: what was searched once is not
  // searched again, however long the end keeps them waiting.
  std::size_t searched = 0;
};

// Cuts at most one message off the front of `buffer` into *message (code to end byte).
//
// A leading byte without its top bit is dropped, one per call, so that a broken stream comes
// back into step byte by byte.  A whole message with an unknown code is left where it stands
// and blocks all that follows: none can come past it until its first byte is dropped.  *message
// is touched only for Cut::Message.
Cut CutMessage(ReceiveBuffer& buffer, Bytes* message);

// Drops the first byte, whatever it is; nothing when the buffer is empty.
void DropFirst(ReceiveBuffer& buffer);

}  // namespace switcher

#endif  // SWITCHER_WIRE_FRAME_H_
