// SPDX-License-Identifier: MIT
//
// 0xE2, switcher to console: the gain steps of all inputs.  channels + 3 bytes: code, one byte
// per channel, checksum, end byte.

#ifndef SWITCHER_WIRE_MESSAGES_GAIN_REPORT_H_
#define SWITCHER_WIRE_MESSAGES_GAIN_REPORT_H_

#include <cstdint>
#include <span>
#include <vector>

#include "switcher/wire/decode_status.h"
#include "switcher/wire/values.h"

namespace switcher {

// Reads a gain report of a system of `channelCount` channels.  *steps (channelCount elements,
// 0..127, element 0 is input 1) is filled only for Ok.
DecodeStatus ParseGainReport(std::span<const std::uint8_t> message, int channelCount,
                             std::vector<std::int16_t>* steps);

// The message for the steps of all channels, each 0..127.
Bytes EncodeGainReport(std::span<const std::int16_t> steps);

}  // namespace switcher

#endif  // SWITCHER_WIRE_MESSAGES_GAIN_REPORT_H_
