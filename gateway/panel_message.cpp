// SPDX-License-Identifier: MIT

#include "gateway/panel_message.h"

#include <memory>
#include <utility>

namespace gateway {

Message FixedMessage(MessageId id, Bytes bytes) {
  return {id, [shared = std::make_shared<const Bytes>(std::move(bytes))] { return *shared; }};
}

}  // namespace gateway
