// SPDX-License-Identifier: MIT

#include "tools/tesksim/messages/inhibits.h"

#include "switcher/wire/message_table.h"
#include "switcher/wire/messages/flag_row.h"
#include "tools/tesksim/state_text.h"

namespace tesksim {

Outcome InhibitsHandler::Accept(std::span<const std::uint8_t> message) {
  switcher::FlagRow row;
  const auto status = switcher::ParseInhibitRow(message, state_.ChannelCount(), &row);
  if (status != switcher::DecodeStatus::Ok) {
    return Rejected(status, "output " + std::to_string(row.output));
  }
  for (int input = 1; input <= state_.ChannelCount(); ++input) {
    state_.inhibits.At(row.output, input) = row.members[static_cast<std::size_t>(input - 1)];
  }
  return {.result = Outcome::Result::Done, .text = DescribeInhibits(state_, row.output)};
}

switcher::Bytes InhibitsHandler::Report(int output) const {
  std::string flags;
  for (const std::uint8_t inhibited : state_.inhibits.Row(output)) {
    flags += inhibited != 0 ? '1' : '0';
  }
  return switcher::EncodeInhibitRow(output, flags, state_.ChannelCount());
}

}  // namespace tesksim
