// SPDX-License-Identifier: MIT
//
// Cutting the byte stream from the switcher into messages, and the single bytes that supervise
// the link.

#ifndef SWITCHER_WIRE_FRAME_H_
#define SWITCHER_WIRE_FRAME_H_

#include <cstddef>
#include <cstdint>

#include "switcher/wire/values.h"

namespace switcher {

// Codes of the messages that the console sends.
inline constexpr std::uint8_t kTakeCode = 0xFD;
inline constexpr std::uint8_t kGainCode = 0xE3;
inline constexpr std::uint8_t kLabelOrderCode = 0xF7;

// Codes of the messages that the switcher sends; tables travel under them in both directions.
inline constexpr std::uint8_t kGainReportCode = 0xE2;
inline constexpr std::uint8_t kCrosspointRowCode = 0xF3;
inline constexpr std::uint8_t kAlphaLabelsCode = 0xF9;
inline constexpr std::uint8_t kButtonDataCode = 0xFB;
inline constexpr std::uint8_t kRelayRowCode = 0xF4;
inline constexpr std::uint8_t kInhibitRowCode = 0xF5;
inline constexpr std::uint8_t kTallyCode = 0xE4;
inline constexpr std::uint8_t kOptoDataCode = 0xE1;

// Single bytes, outside any message.
inline constexpr std::uint8_t kPollMap = 0xE5;          // to the switcher: send the whole map
inline constexpr std::uint8_t kPollTally = 0xE4;        // to the switcher: send the tally
inline constexpr std::uint8_t kPollKeepAlive = 0xED;    // to the switcher: answer with 0xEB
inline constexpr std::uint8_t kRetrieveRequest = 0xE7;  // to the switcher: send all tables
inline constexpr std::uint8_t kLinkAnswer = 0xEB;       // from the switcher

// Whether messages with this code come from the switcher.
bool IsReceivedCode(std::uint8_t code);

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
