// SPDX-License-Identifier: MIT
//
// 0xE4, switcher to console: which QDV units respond.  131 bytes, whatever the size of the
// system: code, 64 pairs, checksum, end byte.

#ifndef SWITCHER_WIRE_MESSAGES_TALLY_H_
#define SWITCHER_WIRE_MESSAGES_TALLY_H_

#include <array>
#include <cstdint>
#include <span>

#include "switcher/wire/decode_status.h"
#include "switcher/wire/values.h"

namespace switcher {

inline constexpr std::size_t kTallyPoints = 64;
using TallyValues = std::array<std::int16_t, kTallyPoints>;  // 0..255, 0 = not responding

// Reads a tally message.  *values is filled only for Ok.
DecodeStatus ParseTally(std::span<const std::uint8_t> message, TallyValues* values);

// The message for the values, each 0..255.
Bytes EncodeTally(const TallyValues& values);

}  // namespace switcher

#endif  // SWITCHER_WIRE_MESSAGES_TALLY_H_
