// SPDX-License-Identifier: MIT

#include "switcher/wire/messages/take.h"

namespace switcher {

Bytes EncodeTake(const Take& take) {
  WireWriter writer(kTakeCode);
  writer.PutPair(take.action);
  writer.PutPair(take.source - 1);
  writer.PutPair(take.destination - 1);
  return writer.Finish();
}

std::optional<Take> ParseTake(std::span<const std::uint8_t> message) {
  if (message.size() != kTakeLength || message[0] != kTakeCode) return std::nullopt;
  WireReader reader(message.subspan(1));
  int action = 0;
  int source = 0;
  int destination = 0;
  reader.GetPair(&action);
  reader.GetPair(&source);
  reader.GetPair(&destination);
  if (reader.Finish() != DecodeStatus::Ok) return std::nullopt;
  return Take{.destination = destination + 1,
              .source = source + 1,
              .action = static_cast<std::uint8_t>(action & 0xFF)};
}

}  // namespace switcher
