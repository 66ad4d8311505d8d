// SPDX-License-Identifier: MIT
//
// 0xF7, console to switcher: the order in which the label texts of the next message stand.
// 2 * labels + 5 bytes: code, selector pair, one pair (station number, 0-based) for each label,
// checksum, end byte.

#ifndef SWITCHER_WIRE_MESSAGES_LABEL_ORDER_H_
#define SWITCHER_WIRE_MESSAGES_LABEL_ORDER_H_

#include <cstdint>
#include <optional>
#include <span>
#include <vector>

#include "switcher/wire/label_selector.h"
#include "switcher/wire/values.h"

namespace switcher {

struct LabelOrder {
  int selector = 0;
  std::vector<int> stations;  // from 1

  bool operator==(const LabelOrder&) const = default;
};

// The message.  Only eight bits of a station number travel: 257 arrives as 1.
Bytes EncodeLabelOrder(const LabelOrder& order);

// Reads a label order of `labelCount` labels; none when its length, checksum or end byte is
// wrong.  Of a value above 255 the low eight bits count.
std::optional<LabelOrder> ParseLabelOrder(std::span<const std::uint8_t> message, int labelCount);

}  // namespace switcher

#endif  // SWITCHER_WIRE_MESSAGES_LABEL_ORDER_H_
