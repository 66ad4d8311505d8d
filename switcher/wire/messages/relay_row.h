// SPDX-License-Identifier: MIT
//
// 0xF4, both directions: the relays of one output.  2 * (relays / 8) + 5 bytes: code, output
// pair (0-based), one pair for every eight relays (bit 0 is the first of them), checksum, end
// byte.

#ifndef SWITCHER_WIRE_MESSAGES_RELAY_ROW_H_
#define SWITCHER_WIRE_MESSAGES_RELAY_ROW_H_

#include <cstdint>
#include <span>
#include <string_view>
#include <vector>

#include "switcher/wire/decode_status.h"
#include "switcher/wire/values.h"

namespace switcher {

struct RelayRow {
  int output = 0;                    // from 1; 0 when the message was too short to name it
  std::vector<std::uint8_t> relays;  // element 0 is relay 1; 1 = assigned

  bool operator==(const RelayRow&) const = default;
};

// The message for output `output` (from 1) of a system of `relayCount` relays, from the stored
// flag string: member r is "1" when relay r is assigned.
Bytes EncodeRelayRow(int output, std::string_view relays, int relayCount);

// Reads a relay row of a system of `channelCount` outputs and `relayCount` relays.  The checks
// come in this order: length, output number, checksum, end byte.  row->output is read before the
// length is judged; row->relays (relayCount elements) is filled only for Ok.  A relay count that
// is no multiple of eight makes every row one of the wrong size.
DecodeStatus ParseRelayRow(std::span<const std::uint8_t> message, int channelCount, int relayCount,
                           RelayRow* row);

}  // namespace switcher

#endif  // SWITCHER_WIRE_MESSAGES_RELAY_ROW_H_
