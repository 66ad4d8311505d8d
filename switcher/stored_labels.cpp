// SPDX-License-Identifier: MIT

#include "switcher/stored_labels.h"

#include <algorithm>

#include "db/jet/text_codec.h"
#include "db/station_fields.h"
#include "switcher/wire/messages/label_order.h"
#include "switcher/wire/messages/label_texts.h"

namespace switcher {

std::string WireLabel(std::string_view label, bool hidden) {
  std::u16string units;
  jet::AppendUnits(label, &units);  // what comes from the database is always UTF-8
  std::string bytes(kLabelLength, ' ');
  for (std::size_t i = 0; i < std::min(units.size(), bytes.size()); ++i) {
    const int byte = jet::ByteOfUnit(units[i]);
    bytes[i] = static_cast<char>(byte >= 0 ? byte : units[i] & 0xFF);
  }
  if (hidden) bytes[0] = kHiddenMark;
  return bytes;
}

std::string LabelFromWire(std::string_view bytes) {
  const std::size_t length = bytes.find_last_not_of(' ') + 1;
  std::u16string units;
  for (const char byte : bytes.substr(0, length)) {
    units += jet::UnitOfByte(static_cast<std::uint8_t>(byte));
  }
  std::string label;
  jet::AppendUtf8(units, &label);
  return label;
}

const char* LabelFieldOf(int selector) {
  return selector == kInputLabels ? db::kInLabelField : db::kLabelField;
}

}  // namespace switcher
