// SPDX-License-Identifier: MIT

#include "switcher/send.h"

namespace switcher {

model::Status WriteMessage(SerialPort& port, std::span<const std::uint8_t> message) {
  for (const std::uint8_t byte : message) {
    if (model::Status status = port.Write(byte); !status.ok()) return status;
  }
  return {};
}

void AskForSendEvent(SerialPort& port) {
  if (port.IsOpen()) port.SetSendThreshold(1);
}

}  // namespace switcher
