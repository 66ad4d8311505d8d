// SPDX-License-Identifier: MIT

#ifndef SWITCHER_SERIAL_PORT_H_
#define SWITCHER_SERIAL_PORT_H_

#include <cstddef>
#include <cstdint>

#include "model/status.h"
#include "switcher/wire/values.h"

namespace switcher {

// Error numbers of the serial line, as the operator sees them in a report.
inline constexpr int kPortNotOpen = 8018;
inline constexpr int kPortWriteFailed = 8020;
inline constexpr int kPortUnavailable = 8005;  // busy, missing or not permitted

// What a serial port tells its owner.  Handlers run one at a time and never inside Write().
class SerialPortEvents {
 public:
  virtual ~SerialPortEvents() = default;

  // Bytes have arrived; Read() gives them.
  virtual void DataReceived() = 0;

  // The output has drained while the send threshold was 1.
  virtual void OutputDrained() = 0;

  // The device has gone.  The port is closed already.
  virtual void PortLost() = 0;
};

// A serial line of 57600 baud, 8 data bits, no parity, 1 stop bit, no flow control.
class SerialPort {
 public:
  virtual ~SerialPort() = default;

  // Who is told of events; null for nobody.  The receiver must outlive the port or be taken
  // away first.
  virtual void SetEvents(SerialPortEvents* events) = 0;

  // Opens port `number` (1 for COM1).  The number stays set when opening fails.
  virtual model::Status Open(int number) = 0;

  // Sends what the output buffer holds, unless the line has stalled, and closes the port.
  virtual void Close() = 0;
  virtual bool IsOpen() const = 0;

  // The number last given to Open(), 0 before.
  virtual int Number() const = 0;

  // All bytes that have arrived and were not read yet; empty when there are none.
  virtual Bytes Read() = 0;

  // Hands one byte to the line.  The output buffer is small: when it is full, Write() waits for
  // room at the pace of the line.  Bytes that arrive meanwhile are kept; DataReceived() comes
  // after the caller has returned to the event loop.  Fails when the port is not open, the
  // device has gone, or the line has taken no byte for two seconds; then also at once, until the
  // line takes a byte again.
  virtual model::Status Write(std::uint8_t byte) = 0;

  // The bytes handed over that the line has not sent yet, as far as the platform tells and the pace
  // of the line allows (512 at most of what only the pace says); 0 when the port is not open.
  virtual std::size_t Unsent() const = 0;

  // 1 asks for one OutputDrained() when the output is empty (at the next turn of the event loop
  // if it is empty already); 0 asks for none.
  virtual void SetSendThreshold(int threshold) = 0;
};

}  // namespace switcher

#endif  // SWITCHER_SERIAL_PORT_H_
