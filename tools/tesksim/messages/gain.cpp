// SPDX-License-Identifier: MIT

#include "tools/tesksim/messages/gain.h"

#include "switcher/wire/message_table.h"
#include "switcher/wire/messages/gain.h"

namespace tesksim {

Outcome GainHandler::Accept(std::span<const std::uint8_t> message) {
  const auto gain = switcher::ParseGain(message);
  if (!gain.has_value()) return {};
  const int input = gain->input + 1;
  Outcome outcome{.result = Outcome::Result::Refused,
                  .text = "input " + std::to_string(input) + " step " + std::to_string(gain->step)};
  if (!state_.HasChannel(input)) return outcome;
  state_.gains[static_cast<std::size_t>(gain->input)] = static_cast<std::int16_t>(gain->step);
  outcome.result = Outcome::Result::Done;
  return outcome;
}

}  // namespace tesksim
