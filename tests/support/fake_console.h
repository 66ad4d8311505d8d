// SPDX-License-Identifier: MIT

#ifndef TESTS_SUPPORT_FAKE_CONSOLE_H_
#define TESTS_SUPPORT_FAKE_CONSOLE_H_

#include <chrono>

#include "tests/support/socket_peer.h"

namespace test {

// A listening socket on the loopback address, and the one connection on which a test plays the
// console.
class FakeConsole : public SocketPeer {
 public:
  FakeConsole();
  ~FakeConsole() { StopListening(); }

  int Port() const { return port_; }

  // Waits for a connection, which replaces the one before; false when none comes.
  bool Accept(std::chrono::milliseconds within = kPatience);

  // Listens no more: whoever tries to connect is refused.
  void StopListening();

 private:
  int listener_ = -1;
  int port_ = 0;
};

}  // namespace test

#endif  // TESTS_SUPPORT_FAKE_CONSOLE_H_
