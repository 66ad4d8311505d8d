// SPDX-License-Identifier: MIT

#include "tests/support/fake_console.h"

#include <netinet/in.h>
#include <poll.h>
#include <sys/socket.h>
#include <unistd.h>

#include <stdexcept>
#include <utility>

namespace test {

FakeConsole::FakeConsole() : listener_(socket(AF_INET, SOCK_STREAM | SOCK_CLOEXEC, 0)) {
  sockaddr_in address{};
  address.sin_family = AF_INET;
  address.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
  socklen_t size = sizeof address;
  auto* const any = reinterpret_cast<sockaddr*>(&address);
  if (bind(listener_, any, size) != 0 || listen(listener_, 8) != 0 ||
      getsockname(listener_, any, &size) != 0) {
    throw std::runtime_error("no socket to be had");
  }
  port_ = ntohs(address.sin_port);
}

bool FakeConsole::Accept(std::chrono::milliseconds within) {
  Close();
  pollfd state{.fd = listener_, .events = POLLIN, .revents = 0};
  if (poll(&state, 1, static_cast<int>(within.count())) <= 0) return false;
  const int connection = accept4(listener_, nullptr, nullptr, SOCK_CLOEXEC);
  Take(connection);
  return connection >= 0;
}

void FakeConsole::StopListening() {
  if (listener_ >= 0) close(std::exchange(listener_, -1));
}

}  // namespace test
