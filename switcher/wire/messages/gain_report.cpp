// SPDX-License-Identifier: MIT

#include "switcher/wire/messages/gain_report.h"

#include <utility>

#include "switcher/wire/message_table.h"

namespace switcher {

DecodeStatus ParseGainReport(std::span<const std::uint8_t> message, int channelCount,
                             std::vector<std::int16_t>* steps) {
  if (message.size() != MessageLength(kGainReportCode, channelCount)) {
    return DecodeStatus::WrongSize;
  }
  WireReader reader(message.subspan(1));
  std::vector<std::int16_t> received;
  received.reserve(static_cast<std::size_t>(channelCount));
  for (int channel = 0; channel < channelCount; ++channel) {
    int value = 0;
    reader.GetByte(&value);
    received.push_back(static_cast<std::int16_t>(value & 0x7F));
  }
  if (const DecodeStatus status = reader.Finish(); status != DecodeStatus::Ok) return status;
  *steps = std::move(received);
  return DecodeStatus::Ok;
}

Bytes EncodeGainReport(std::span<const std::int16_t> steps) {
  WireWriter writer(kGainReportCode);
  for (const std::int16_t step : steps) writer.PutByte(step & 0x7F);
  return writer.Finish();
}

}  // namespace switcher
