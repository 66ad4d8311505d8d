// SPDX-License-Identifier: MIT

#include "tools/tesksim/messages/inhibits.h"

#include "switcher/frame.h"
#include "switcher/messages/inhibit_row.h"

namespace tesksim {

bool InhibitsHandler::Handles(std::uint8_t code) const { return code == switcher::kInhibitRowCode; }

Outcome InhibitsHandler::Accept(std::span<const std::uint8_t> message) {
  switcher::InhibitRow row;
  switch (switcher::ParseInhibitRow(message, state_.ChannelCount(), &row)) {
    case switcher::DecodeStatus::Ok:
      break;
    case switcher::DecodeStatus::WrongChannel:
      return {.result = Outcome::Result::Refused, .text = "output " + std::to_string(row.output)};
    default:
      return {};
  }
  for (int input = 1; input <= state_.ChannelCount(); ++input) {
    state_.inhibits.At(row.output, input) = row.inhibited[static_cast<std::size_t>(input - 1)];
  }
  return {.result = Outcome::Result::Done, .text = DescribeInhibits(state_, row.output)};
}

}  // namespace tesksim
