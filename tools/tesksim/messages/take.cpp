// SPDX-License-Identifier: MIT

#include "tools/tesksim/messages/take.h"

#include "switcher/wire/message_table.h"
#include "switcher/wire/messages/take.h"

namespace tesksim {

namespace {

constexpr int kMakeBit = 0x02;
constexpr int kPriorityBit = 0x80;
constexpr auto kProgramTake = static_cast<std::uint8_t>(switcher::TakeAction::Take);

}  // namespace

Outcome TakeHandler::Accept(std::span<const std::uint8_t> message) {
  const auto take = switcher::ParseTake(message);
  if (!take.has_value()) return {};
  const int output = take->destination;
  const int input = take->source;

  Outcome outcome{.result = Outcome::Result::Refused,
                  .text = "output " + std::to_string(output) + " source " + std::to_string(input) +
                          " action " + std::to_string(take->action),
                  .answerRow = state_.HasChannel(output) ? output : 0};
  if (!state_.HasChannel(output) || !state_.HasChannel(input)) return outcome;

  const bool make = (take->action & kMakeBit) != 0;
  if (make && state_.inhibits.At(output, input) != 0) return outcome;

  if (take->action == kProgramTake) state_.ClearOutput(output);
  Crosspoint& crosspoint = state_.crosspoints.At(output, input);
  if (!make) {
    crosspoint = Crosspoint::Off;
  } else if ((take->action & kPriorityBit) != 0) {
    crosspoint = Crosspoint::Priority;
  } else {
    crosspoint = Crosspoint::Ordinary;
  }
  outcome.result = Outcome::Result::Done;
  return outcome;
}

}  // namespace tesksim
