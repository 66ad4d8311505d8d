// SPDX-License-Identifier: MIT
//
// The inhibited sources of one output, 0xF5, and its relays, 0xF4, both in both directions.
// 2 * (members / 8) + 5 bytes: code, output pair (0-based), one pair for every eight members (bit 0
// is the first of them), checksum, end byte.

#ifndef SWITCHER_WIRE_MESSAGES_FLAG_ROW_H_
#define SWITCHER_WIRE_MESSAGES_FLAG_ROW_H_

#include <cstdint>
#include <span>
#include <string_view>
#include <vector>

#include "switcher/wire/decode_status.h"
#include "switcher/wire/values.h"

namespace switcher {

struct FlagRow {
  int output = 0;                     // from 1; 0 when the message was too short to name it
  std::vector<std::uint8_t> members;  // element 0 is input 1 or relay 1; 1 = inhibited, assigned

  bool operator==(const FlagRow&) const = default;
};

// The message for output `output` (from 1) of a system of so many channels or relays, from the
// stored flag string: member c is "1" when source c is inhibited, or relay c assigned.  A last
// group that is not full has its missing members off.
Bytes EncodeInhibitRow(int output, std::string_view inhibits, int channelCount);
Bytes EncodeRelayRow(int output, std::string_view relays, int relayCount);

// Reads a row of a system of `channelCount` outputs and sources, and `relayCount` relays; the code
// byte is the caller's to judge.  The checks come in this order: length, output number, checksum,
// end byte.  row->output is read before the length is judged; row->members (one for each source or
// relay) is filled only for Ok.  A count of members that is no multiple of eight makes every row
// one of the wrong size.
DecodeStatus ParseInhibitRow(std::span<const std::uint8_t> message, int channelCount, FlagRow* row);
DecodeStatus ParseRelayRow(std::span<const std::uint8_t> message, int channelCount, int relayCount,
                           FlagRow* row);

}  // namespace switcher

#endif  // SWITCHER_WIRE_MESSAGES_FLAG_ROW_H_
