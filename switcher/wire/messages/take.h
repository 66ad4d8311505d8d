// SPDX-License-Identifier: MIT
//
// 0xFD, console to switcher: make or break one crosspoint.  Nine bytes: code, action pair,
// source pair, destination pair, checksum, end byte.  Channels are 0-based on the wire.

#ifndef SWITCHER_WIRE_MESSAGES_TAKE_H_
#define SWITCHER_WIRE_MESSAGES_TAKE_H_

#include <cstddef>
#include <cstdint>
#include <optional>
#include <span>

#include "switcher/wire/message_table.h"
#include "switcher/wire/values.h"

namespace switcher {

inline constexpr std::size_t kTakeLength = MessageLength(kTakeCode);

// Action bytes.  Bit 1 is set to make a crosspoint and clear to break it.
enum class TakeAction : std::uint8_t {
  BreakSum = 0x00,
  MakeSum = 0x02,
  Take = 0x03,  // make, and release the destination's other sources
  BreakCall = 0x84,
  MakeCall = 0x86,
  BreakPriorityListen = 0x88,
  MakePriorityListen = 0x8A,
};

struct Take {
  int destination = 1;      // output channel, from 1
  int source = 1;           // input channel, from 1
  std::uint8_t action = 0;  // a TakeAction, or what a panel asked for

  bool operator==(const Take&) const = default;
};

// The nine bytes.  Only eight bits of a channel number travel.
// REQUIRES: destination and source within 1..256
Bytes EncodeTake(const Take& take);

// Reads a take message; none when its length, checksum or end byte is wrong.
std::optional<Take> ParseTake(std::span<const std::uint8_t> message);

}  // namespace switcher

#endif  // SWITCHER_WIRE_MESSAGES_TAKE_H_
