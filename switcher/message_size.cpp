// SPDX-License-Identifier: MIT

#include "switcher/message_size.h"

#include "switcher/wire/message_table.h"

namespace switcher {

MessageSize& MessageSize::operator+=(const MessageSize& other) {
  bytes += other.bytes;
  values += other.values;
  return *this;
}

MessageSize SizeOf(std::span<const std::uint8_t> message) {
  constexpr int kAroundValues = 3;  // code, checksum and end byte
  const int bytes = static_cast<int>(message.size());
  return {.bytes = bytes,
          .values = (bytes - kAroundValues) / FindMessage(message.front())->valueBytes};
}

}  // namespace switcher
