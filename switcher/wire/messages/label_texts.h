// SPDX-License-Identifier: MIT
//
// 0xF9, both directions: all labels of one kind.  8 * labels + 4 bytes: code, selector byte,
// eight characters for each label, checksum, end byte.  The console sends the labels in the
// order of the 0xF7 before it; the switcher sends them in the order of the stations.

#ifndef SWITCHER_WIRE_MESSAGES_LABEL_TEXTS_H_
#define SWITCHER_WIRE_MESSAGES_LABEL_TEXTS_H_

#include <cstdint>
#include <span>
#include <string>
#include <vector>

#include "switcher/wire/decode_status.h"
#include "switcher/wire/values.h"

namespace switcher {

// Characters of a label on the wire.
inline constexpr std::size_t kLabelLength = 8;

struct LabelTexts {
  int selector = 0;                 // kOutputLabels or kInputLabels; seven bits travel
  std::vector<std::string> labels;  // kLabelLength raw bytes each, code page 1252

  bool operator==(const LabelTexts&) const = default;
};

// The message.  A character travels as its whole byte, also 0xFF.
// REQUIRES: every label has kLabelLength bytes
Bytes EncodeLabelTexts(const LabelTexts& texts);

// Reads the label texts of a system of `labelCount` labels.  The checks come in this order:
// length, selector, checksum, end byte.  *texts is filled only for Ok.  A selector above seven
// bits names no labels and is WrongChannel.
DecodeStatus ParseLabelTexts(std::span<const std::uint8_t> message, int labelCount,
                             LabelTexts* texts);

}  // namespace switcher

#endif  // SWITCHER_WIRE_MESSAGES_LABEL_TEXTS_H_
