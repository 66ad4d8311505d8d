// SPDX-License-Identifier: MIT

#include "tests/support/fake_serial_port.h"

#include <utility>

#include "tests/support/hex.h"

namespace test {

model::Status FakeSerialPort::Open(int number) {
  ++openCount;
  number_ = number;
  if (unavailable) return {switcher::kPortUnavailable, "The port is not available"};
  open_ = true;
  return {};
}

switcher::Bytes FakeSerialPort::Read() { return std::exchange(incoming_, {}); }

model::Status FakeSerialPort::Write(std::uint8_t byte) {
  if (!open_) return {switcher::kPortNotOpen, "The port is not open"};
  if (writesUntilFailure == 0) return {switcher::kPortWriteFailed, "The line takes no bytes"};
  if (writesUntilFailure > 0) --writesUntilFailure;
  written_.push_back(byte);
  if (!sendsAtOnce) ++unsent;
  return {};
}

std::string FakeSerialPort::TakeWritten() { return Hex(std::exchange(written_, {})); }

void FakeSerialPort::Deliver(std::string_view hex) { Deliver(FromHex(hex)); }

void FakeSerialPort::Deliver(const switcher::Bytes& bytes) {
  incoming_.insert(incoming_.end(), bytes.begin(), bytes.end());
  events_->DataReceived();
}

void FakeSerialPort::Drain() {
  unsent = 0;
  if (sendThreshold == 1) events_->OutputDrained();
}

void FakeSerialPort::Vanish() {
  open_ = false;
  events_->PortLost();
}

}  // namespace test
