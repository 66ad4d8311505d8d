// SPDX-License-Identifier: MIT

#include "switcher/wire/messages/relay_row.h"

#include "switcher/wire/message_table.h"
#include "switcher/wire/messages/flag_row.h"

namespace switcher {

Bytes EncodeRelayRow(int output, std::string_view relays, int relayCount) {
  return EncodeFlagRow(kRelayRowCode, output, relays, relayCount);
}

DecodeStatus ParseRelayRow(std::span<const std::uint8_t> message, int channelCount, int relayCount,
                           RelayRow* row) {
  return ParseFlagRow(kRelayRowCode, message, channelCount, relayCount, &row->output, &row->relays);
}

}  // namespace switcher
