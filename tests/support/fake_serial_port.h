// SPDX-License-Identifier: MIT

#ifndef TESTS_SUPPORT_FAKE_SERIAL_PORT_H_
#define TESTS_SUPPORT_FAKE_SERIAL_PORT_H_

#include <string>

#include "switcher/serial_port.h"

namespace test {

// A serial port without a device: keeps what is written, delivers what the test says.
class FakeSerialPort : public switcher::SerialPort {
 public:
  void SetEvents(switcher::SerialPortEvents* events) override { events_ = events; }
  model::Status Open(int number) override;
  void Close() override { open_ = false; }
  bool IsOpen() const override { return open_; }
  int Number() const override { return number_; }
  switcher::Bytes Read() override;
  model::Status Write(std::uint8_t byte) override;
  std::size_t Unsent() const override { return unsent; }
  void SetSendThreshold(int threshold) override { sendThreshold = threshold; }

  // The bytes written since the last call, as "FD 02 00".
  std::string TakeWritten();

  // The device delivers these bytes, in one read.
  void Deliver(std::string_view hex);
  void Deliver(const switcher::Bytes& bytes);

  // All that was written is on the wire: the send event comes when it was asked for.
  void Drain();

  // The device goes away.
  void Vanish();

  bool unavailable = false;     // the next Open() fails
  int writesUntilFailure = -1;  // so many more writes succeed; -1 for all
  bool sendsAtOnce = true;      // else what is written stays unsent until it drains
  std::size_t unsent = 0;
  int sendThreshold = 0;
  int openCount = 0;

 private:
  switcher::SerialPortEvents* events_ = nullptr;
  bool open_ = false;
  int number_ = 0;
  switcher::Bytes incoming_;
  switcher::Bytes written_;
};

}  // namespace test

#endif  // TESTS_SUPPORT_FAKE_SERIAL_PORT_H_
