// SPDX-License-Identifier: MIT

#include "gateway/take_frame.h"

#include <algorithm>

#include "gateway/panel_frame.h"

namespace gateway {

namespace {

struct CommandAction {
  int code;
  std::uint8_t action;
};

constexpr CommandAction kActions[] = {
    {32, 0}, {33, 136}, {36, 2}, {37, 138}, {161, 132}, {165, 134}, {289, 140}, {293, 142},
};

}  // namespace

std::uint8_t ActionOfCommand(int code) {
  for (const CommandAction& known : kActions) {
    if (known.code == code) return known.action;
  }
  return 0;
}

std::optional<PanelTake> ParseTakeFrame(std::span<const std::uint8_t> frame) {
  if (frame.size() != kTakeLength || !ChecksumMatches(frame)) return std::nullopt;
  // The start of another frame inside this one means that the end of this one is lost.
  if (!std::all_of(frame.begin() + 1, frame.end() - 1, IsData)) return std::nullopt;
  return PanelTake{.destination = PairValue(frame[3], frame[4]) + 1,
                   .source = PairValue(frame[5], frame[6]) + 1,
                   .action = ActionOfCommand(PairValue(frame[1], frame[2]))};
}

}  // namespace gateway
