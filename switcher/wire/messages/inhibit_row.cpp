// SPDX-License-Identifier: MIT

#include "switcher/wire/messages/inhibit_row.h"

#include "switcher/wire/message_table.h"
#include "switcher/wire/messages/flag_row.h"

namespace switcher {

Bytes EncodeInhibitRow(int output, std::string_view inhibits, int channelCount) {
  return EncodeFlagRow(kInhibitRowCode, output, inhibits, channelCount);
}

DecodeStatus ParseInhibitRow(std::span<const std::uint8_t> message, int channelCount,
                             InhibitRow* row) {
  return ParseFlagRow(kInhibitRowCode, message, channelCount, channelCount, &row->output,
                      &row->inhibited);
}

}  // namespace switcher
