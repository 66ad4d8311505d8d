// SPDX-License-Identifier: MIT

#ifndef SWITCHER_SEND_H_
#define SWITCHER_SEND_H_

#include <cstdint>
#include <span>

#include "model/status.h"
#include "switcher/serial_port.h"

namespace switcher {

// The title of every report of a failed transmission, to the switcher or from it.
inline constexpr char kSendErrorTitle[] = "Serial Communications Error";

// Writes a message to the port, one write per byte, and stops at the first that fails; what
// was written by then stays written.
model::Status WriteMessage(SerialPort& port, std::span<const std::uint8_t> message);

// Asks for the send event that ends SendBusy, behind a message that was written and behind one
// that could not be: without the event nothing would end the silence of the poll.  A port that
// has closed has no such event; what opens it again ends SendBusy.
void AskForSendEvent(SerialPort& port);

}  // namespace switcher

#endif  // SWITCHER_SEND_H_
