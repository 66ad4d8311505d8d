// SPDX-License-Identifier: MIT
//
// What the inhibit row 0xF5 and the relay row 0xF4 have in common: 2 * groups + 5 bytes: code,
// output pair (0-based), one pair for every eight members (bit 0 is the first of them),
// checksum, end byte.

#ifndef SWITCHER_WIRE_MESSAGES_FLAG_ROW_H_
#define SWITCHER_WIRE_MESSAGES_FLAG_ROW_H_

#include <cstdint>
#include <span>
#include <string_view>
#include <vector>

#include "switcher/wire/decode_status.h"
#include "switcher/wire/message_table.h"
#include "switcher/wire/values.h"

namespace switcher {

// The message `code` for output `output` (from 1), from the first `memberCount` members of a
// stored flag string.  A last group that is not full has its missing members off.
Bytes EncodeFlagRow(MessageCode code, int output, std::string_view flags, int memberCount);

// Reads a row of `memberCount` members, sent as messages of `code` are, in a system of
// `channelCount` outputs; the code byte is the caller's to judge.  The checks come in this order:
// length, output number, checksum, end byte.  *output (from 1) is read before the length is judged,
// and 0 when the message is too short to name it; *members (memberCount elements, 0 or 1) is filled
// only for Ok.  A member count that is no multiple of eight makes every row one of the wrong size.
DecodeStatus ParseFlagRow(MessageCode code, std::span<const std::uint8_t> message, int channelCount,
                          int memberCount, int* output, std::vector<std::uint8_t>* members);

}  // namespace switcher

#endif  // SWITCHER_WIRE_MESSAGES_FLAG_ROW_H_
