// SPDX-License-Identifier: MIT

#include "switcher/wire/messages/gain.h"

#include "switcher/wire/message_table.h"

namespace switcher {

Bytes EncodeGain(const Gain& gain) {
  WireWriter writer(kGainCode);
  writer.PutByte(gain.input & 0x3F);
  writer.PutByte(gain.step & 0x7F);
  return writer.Finish();
}

std::optional<Gain> ParseGain(std::span<const std::uint8_t> message) {
  if (message.size() != MessageLength(kGainCode) || message[0] != kGainCode) return std::nullopt;
  WireReader reader(message.subspan(1));
  Gain gain;
  reader.GetByte(&gain.input);
  reader.GetByte(&gain.step);
  if (reader.Finish() != DecodeStatus::Ok) return std::nullopt;
  return gain;
}

}  // namespace switcher
