// SPDX-License-Identifier: MIT

#include "tools/tesksim/messages/relays.h"

#include "switcher/wire/message_table.h"
#include "switcher/wire/messages/flag_row.h"
#include "tools/tesksim/state_text.h"

namespace tesksim {

Outcome RelaysHandler::Accept(std::span<const std::uint8_t> message) {
  switcher::FlagRow row;
  const auto status = switcher::ParseRelayRow(message, state_.ChannelCount(), kRelays, &row);
  if (status != switcher::DecodeStatus::Ok) {
    return Rejected(status, "output " + std::to_string(row.output));
  }
  for (std::size_t relay = 0; relay < kRelays; ++relay) {
    state_.relays[row.output].set(relay, row.members[relay] != 0);
  }
  return {.result = Outcome::Result::Done, .text = DescribeRelays(state_, row.output)};
}

switcher::Bytes RelaysHandler::Report(int output) const {
  std::string flags;
  for (std::size_t relay = 0; relay < kRelays; ++relay) {
    flags += state_.relays[output].test(relay) ? '1' : '0';
  }
  return switcher::EncodeRelayRow(output, flags, kRelays);
}

}  // namespace tesksim
