// SPDX-License-Identifier: MIT

#ifndef TESTS_SUPPORT_PTY_H_
#define TESTS_SUPPORT_PTY_H_

#include <string>

namespace test {

// A pseudo terminal: the test holds the far end of the line that a port opens.
class Pty {
 public:
  Pty();
  ~Pty();
  Pty(const Pty&) = delete;
  Pty& operator=(const Pty&) = delete;

  // What to open as the serial device.
  const std::string& Device() const { return device_; }

  // The far end; non-blocking.
  int Master() const { return master_; }

  // Sends bytes, given as hexadecimal text, down the line to the port.
  void Send(std::string_view hex) const;

  // The bytes that have come up the line so far, as "FD 02 00".
  std::string Receive() const;

  // Like the pulling of a USB adapter: the device is gone.
  void Close();

 private:
  int master_ = -1;
  std::string device_;
};

}  // namespace test

#endif  // TESTS_SUPPORT_PTY_H_
