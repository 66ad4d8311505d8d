// SPDX-License-Identifier: MIT

#include "switcher/wire/messages/tally.h"

#include "switcher/wire/message_table.h"

namespace switcher {

DecodeStatus ParseTally(std::span<const std::uint8_t> message, TallyValues* values) {
  if (message.size() != MessageLength(kTallyCode)) return DecodeStatus::WrongSize;
  WireReader reader(message.subspan(1));
  TallyValues received{};
  for (std::int16_t& point : received) {
    int value = 0;
    reader.GetPair(&value);
    point = static_cast<std::int16_t>(value & 0xFF);
  }
  if (const DecodeStatus status = reader.Finish(); status != DecodeStatus::Ok) return status;
  *values = received;
  return DecodeStatus::Ok;
}

Bytes EncodeTally(const TallyValues& values) {
  WireWriter writer(kTallyCode);
  for (const std::int16_t value : values) writer.PutPair(value);
  return writer.Finish();
}

}  // namespace switcher
