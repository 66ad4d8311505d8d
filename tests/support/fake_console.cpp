// SPDX-License-Identifier: MIT

#include "tests/support/fake_console.h"

#include <netinet/in.h>
#include <poll.h>
#include <sys/socket.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <cstdint>
#include <stdexcept>
#include <utility>
#include <vector>

#include "tests/support/hex.h"

namespace test {

namespace {

using std::chrono::milliseconds;
using std::chrono::steady_clock;

bool WaitReadable(int descriptor, steady_clock::time_point deadline) {
  const auto left = std::chrono::ceil<milliseconds>(deadline - steady_clock::now());
  pollfd state{.fd = descriptor, .events = POLLIN, .revents = 0};
  return left.count() > 0 && poll(&state, 1, static_cast<int>(left.count())) > 0;
}

void CloseDescriptor(int& descriptor) {
  if (descriptor >= 0) close(std::exchange(descriptor, -1));
}

}  // namespace

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

FakeConsole::~FakeConsole() {
  Close();
  StopListening();
}

bool FakeConsole::Accept(milliseconds within) {
  Close();
  if (!WaitReadable(listener_, steady_clock::now() + within)) return false;
  connection_ = accept4(listener_, nullptr, nullptr, SOCK_CLOEXEC);
  return connection_ >= 0;
}

void FakeConsole::Send(std::string_view hex) const {
  const auto bytes = FromHex(hex);
  if (send(connection_, bytes.data(), bytes.size(), MSG_NOSIGNAL) !=
      static_cast<ssize_t>(bytes.size())) {
    throw std::runtime_error("the panel takes no bytes");
  }
}

std::string FakeConsole::Receive(std::size_t count, milliseconds within) const {
  const auto deadline = steady_clock::now() + within;
  std::vector<std::uint8_t> received(count);
  std::size_t size = 0;
  while (size < count && WaitReadable(connection_, deadline)) {
    const ssize_t n = recv(connection_, received.data() + size, count - size, 0);
    if (n <= 0) break;
    size += static_cast<std::size_t>(n);
  }
  received.resize(size);
  return Hex(received);
}

bool FakeConsole::WaitForClose() const {
  const auto deadline = steady_clock::now() + std::chrono::seconds(20);
  std::array<std::uint8_t, 4096> dropped{};
  while (WaitReadable(connection_, deadline)) {
    if (recv(connection_, dropped.data(), dropped.size(), 0) <= 0) return true;
  }
  return false;
}

void FakeConsole::Close() { CloseDescriptor(connection_); }

void FakeConsole::Reset() {
  const linger atOnce{.l_onoff = 1, .l_linger = 0};
  setsockopt(connection_, SOL_SOCKET, SO_LINGER, &atOnce, sizeof atOnce);
  Close();
}

void FakeConsole::StopListening() { CloseDescriptor(listener_); }

}  // namespace test
