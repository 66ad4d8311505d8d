// SPDX-License-Identifier: MIT
//
// 0xF5, both directions: the inhibited sources of one output.  2 * (channels / 8) + 5 bytes:
// code, output pair (0-based), one pair for every eight sources (bit 0 is the first of them),
// checksum, end byte.

#ifndef SWITCHER_WIRE_MESSAGES_INHIBIT_ROW_H_
#define SWITCHER_WIRE_MESSAGES_INHIBIT_ROW_H_

#include <cstdint>
#include <span>
#include <string_view>
#include <vector>

#include "switcher/wire/decode_status.h"
#include "switcher/wire/values.h"

namespace switcher {

struct InhibitRow {
  int output = 0;                       // from 1; 0 when the message was too short to name it
  std::vector<std::uint8_t> inhibited;  // element 0 is input 1; 1 = inhibited

  bool operator==(const InhibitRow&) const = default;
};

// The message for output `output` (from 1) of a system of `channelCount` channels, from the
// stored flag string: member c is "1" when source c is inhibited.
Bytes EncodeInhibitRow(int output, std::string_view inhibits, int channelCount);

// Reads an inhibit row of a system of `channelCount` channels.  The checks come in this order:
// length, output number, checksum, end byte.  row->output is read before the length is judged;
// row->inhibited (channelCount elements) is filled only for Ok.  A channel count that is no
// multiple of eight makes every row one of the wrong size.
DecodeStatus ParseInhibitRow(std::span<const std::uint8_t> message, int channelCount,
                             InhibitRow* row);

}  // namespace switcher

#endif  // SWITCHER_WIRE_MESSAGES_INHIBIT_ROW_H_
