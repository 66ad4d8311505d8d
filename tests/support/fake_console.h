// SPDX-License-Identifier: MIT

#ifndef TESTS_SUPPORT_FAKE_CONSOLE_H_
#define TESTS_SUPPORT_FAKE_CONSOLE_H_

#include <chrono>
#include <cstddef>
#include <string>
#include <string_view>

namespace test {

// A listening socket on the loopback address, and the one connection that a test plays the
// console on.  Every wait has a deadline.
class FakeConsole {
 public:
  FakeConsole();
  ~FakeConsole();
  FakeConsole(const FakeConsole&) = delete;
  FakeConsole& operator=(const FakeConsole&) = delete;

  int Port() const { return port_; }

  // Waits for a connection, which replaces the one before; false when none comes.
  bool Accept(std::chrono::milliseconds within = std::chrono::seconds(20));

  // Sends bytes, given as hexadecimal text.
  void Send(std::string_view hex) const;

  // Waits until `count` bytes have come and returns them as "FD 02 00"; fewer when the panel
  // closes or is too slow.
  std::string Receive(std::size_t count,
                      std::chrono::milliseconds within = std::chrono::seconds(20)) const;

  // Whether the panel closes its end; what it sent before is dropped.
  bool WaitForClose() const;

  // Ends the connection: in order, and with a reset.
  void Close();
  void Reset();

  // Listens no more: whoever tries to connect is refused.
  void StopListening();

 private:
  int listener_ = -1;
  int connection_ = -1;
  int port_ = 0;
};

}  // namespace test

#endif  // TESTS_SUPPORT_FAKE_CONSOLE_H_
