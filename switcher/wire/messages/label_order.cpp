// SPDX-License-Identifier: MIT

#include "switcher/wire/messages/label_order.h"

#include "switcher/wire/message_table.h"

namespace switcher {

Bytes EncodeLabelOrder(const LabelOrder& order) {
  WireWriter writer(kLabelOrderCode);
  writer.PutPair(order.selector);
  for (const int station : order.stations) writer.PutPair(station - 1);
  return writer.Finish();
}

std::optional<LabelOrder> ParseLabelOrder(std::span<const std::uint8_t> message, int labelCount) {
  const std::size_t required = MessageLength(kLabelOrderCode, labelCount);
  if (message.size() != required || message[0] != kLabelOrderCode) return std::nullopt;
  WireReader reader(message.subspan(1));
  int value = 0;
  reader.GetPair(&value);
  LabelOrder order{.selector = value & 0xFF, .stations = {}};
  order.stations.reserve(static_cast<std::size_t>(labelCount));
  for (int label = 1; label <= labelCount; ++label) {
    reader.GetPair(&value);
    order.stations.push_back((value & 0xFF) + 1);
  }
  if (reader.Finish() != DecodeStatus::Ok) return std::nullopt;
  return order;
}

}  // namespace switcher
