// SPDX-License-Identifier: MIT

#ifndef GATEWAY_TAKE_FRAME_H_
#define GATEWAY_TAKE_FRAME_H_

#include <cstddef>
#include <cstdint>
#include <optional>
#include <span>

namespace gateway {

// The bytes of a whole take frame.
inline constexpr std::size_t kTakeLength = 9;

// What a take frame asks for.
struct PanelTake {
  int destination = 1;  // output channel, from 1
  int source = 1;       // input channel, from 1
  std::uint8_t action = 0;

  bool operator==(const PanelTake&) const = default;
};

// Reads a whole take frame; none when its checksum or its length is wrong, or a byte that is no
// data stands among its data.
std::optional<PanelTake> ParseTakeFrame(std::span<const std::uint8_t> frame);

// The action byte for a panel's command code; 0 for every code that is not known.
std::uint8_t ActionOfCommand(int code);

}  // namespace gateway

#endif  // GATEWAY_TAKE_FRAME_H_
