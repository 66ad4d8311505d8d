// SPDX-License-Identifier: MIT

#ifndef SWITCHER_WIRE_MESSAGES_ROW_NUMBER_H_
#define SWITCHER_WIRE_MESSAGES_ROW_NUMBER_H_

#include <cstdint>
#include <span>

namespace switcher {

// The output or station number of a message that begins with one, from 1; 0 when the message
// is too short to hold the pair between its code and its end byte.
inline int RowNumber(std::span<const std::uint8_t> message) {
  if (message.size() < 4) return 0;
  return ((message[1] & 0x7F) | (message[2] * 128)) + 1;
}

}  // namespace switcher

#endif  // SWITCHER_WIRE_MESSAGES_ROW_NUMBER_H_
