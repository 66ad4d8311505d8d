// SPDX-License-Identifier: MIT

#ifndef SWITCHER_MESSAGE_SIZE_H_
#define SWITCHER_MESSAGE_SIZE_H_

#include <cstdint>
#include <span>

namespace switcher {

// How long messages of tables are.
struct MessageSize {
  int bytes = 0;
  int values = 0;  // that the progress is told of

  MessageSize& operator+=(const MessageSize& other);
};

// How long this one is.  REQUIRES: it is whole, from its code to its end byte.
MessageSize SizeOf(std::span<const std::uint8_t> message);

}  // namespace switcher

#endif  // SWITCHER_MESSAGE_SIZE_H_
