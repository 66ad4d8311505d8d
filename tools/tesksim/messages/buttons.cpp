// SPDX-License-Identifier: MIT

#include "tools/tesksim/messages/buttons.h"

#include <algorithm>
#include <utility>

#include "switcher/wire/message_table.h"
#include "switcher/wire/messages/button_data.h"

namespace tesksim {

namespace {

constexpr int kMostGroups = 32;

// How many groups for each button a message of this size carries.  A size that no number of
// groups gives leads to one that does not fit the message, so that it is found to be wrong.
int GroupsPerButton(std::size_t messageSize) {
  constexpr int kFixed = 5;  // code, station pair, checksum, end byte
  constexpr int kPair = 2;
  constexpr int kPairsOfButton = 2;  // type and first station
  const int pairs = (static_cast<int>(messageSize) - kFixed) / (kPair * kButtons);
  return std::clamp(pairs - kPairsOfButton, 0, kMostGroups);
}

}  // namespace

Outcome ButtonsHandler::Accept(std::span<const std::uint8_t> message) {
  switcher::ButtonData data;
  const auto status = switcher::ParseButtonData(message, state_.Sizes().stations, kButtons,
                                                GroupsPerButton(message.size()), &data);
  std::string text = "station " + std::to_string(data.station);
  if (status != switcher::DecodeStatus::Ok) return Rejected(status, std::move(text));
  for (int button = 1; button <= kButtons; ++button) {
    const switcher::ButtonData::Button& received =
        data.buttons[static_cast<std::size_t>(button - 1)];
    ButtonProgram program{.type = received.type, .first = received.first, .members = {}};
    for (std::size_t member = 0; member < received.targets.size(); ++member) {
      program.members.set(member, received.targets[member] != 0);
    }
    state_.buttons[data.station][button] = program;
  }
  return {.result = Outcome::Result::Done, .text = std::move(text)};
}

switcher::Bytes ButtonsHandler::Report(int station) const {
  const auto members = static_cast<std::size_t>(state_.Sizes().stations / 8 * 8);
  switcher::ButtonData data{.station = station, .buttons = {}};
  for (int button = 1; button <= kButtons; ++button) {
    const ButtonProgram& program = state_.buttons[station][button];
    switcher::ButtonData::Button sent{.type = program.type, .first = program.first, .targets = {}};
    for (std::size_t member = 0; member < members; ++member) {
      sent.targets.push_back(program.members.test(member) ? 1 : 0);
    }
    data.buttons.push_back(std::move(sent));
  }
  return switcher::EncodeButtonData(data);
}

}  // namespace tesksim
