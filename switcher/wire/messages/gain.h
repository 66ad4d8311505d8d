// SPDX-License-Identifier: MIT
//
// 0xE3, console to switcher: set the gain of one input.  Five bytes: code, input, gain step,
// checksum, end byte.

#ifndef SWITCHER_WIRE_MESSAGES_GAIN_H_
#define SWITCHER_WIRE_MESSAGES_GAIN_H_

#include <cstdint>
#include <optional>
#include <span>

#include "switcher/wire/values.h"

namespace switcher {

struct Gain {
  int input = 0;  // 0-based, 0..63
  int step = 0;   // 0..127; step - 100 is the level in dB

  bool operator==(const Gain&) const = default;
};

// The five bytes.  An input above 63 is folded into 0..63, a step into 0..127.
Bytes EncodeGain(const Gain& gain);

// Reads a gain message; none when its length, checksum or end byte is wrong.
std::optional<Gain> ParseGain(std::span<const std::uint8_t> message);

}  // namespace switcher

#endif  // SWITCHER_WIRE_MESSAGES_GAIN_H_
