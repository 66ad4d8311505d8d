// SPDX-License-Identifier: MIT

#include "tests/support/socket_peer.h"

#include <netinet/in.h>
#include <poll.h>
#include <sys/socket.h>
#include <unistd.h>

#include <array>
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

}  // namespace

bool SocketPeer::Connect(int port) {
  sockaddr_in address{};
  address.sin_family = AF_INET;
  address.sin_port = htons(static_cast<std::uint16_t>(port));
  address.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
  Take(socket(AF_INET, SOCK_STREAM | SOCK_CLOEXEC, 0));
  return connect(descriptor_, reinterpret_cast<sockaddr*>(&address), sizeof address) == 0;
}

bool SocketPeer::ConnectByIpv6(int port) {
  sockaddr_in6 address{};
  address.sin6_family = AF_INET6;
  address.sin6_port = htons(static_cast<std::uint16_t>(port));
  address.sin6_addr = in6addr_loopback;
  Take(socket(AF_INET6, SOCK_STREAM | SOCK_CLOEXEC, 0));
  return connect(descriptor_, reinterpret_cast<sockaddr*>(&address), sizeof address) == 0;
}

void SocketPeer::Take(int descriptor) {
  Close();
  descriptor_ = descriptor;
}

bool SocketPeer::Send(std::string_view hex) const { return SendBytes(FromHex(hex)); }

bool SocketPeer::SendBytes(std::span<const std::uint8_t> bytes) const {
  while (!bytes.empty()) {
    const ssize_t n = send(descriptor_, bytes.data(), bytes.size(), MSG_NOSIGNAL);
    if (n <= 0) return false;
    bytes = bytes.subspan(static_cast<std::size_t>(n));
  }
  return true;
}

std::string SocketPeer::Receive(std::size_t count, milliseconds within) const {
  const auto deadline = steady_clock::now() + within;
  std::vector<std::uint8_t> received(count);
  std::size_t size = 0;
  while (size < count && WaitReadable(descriptor_, deadline)) {
    const ssize_t n = recv(descriptor_, received.data() + size, count - size, 0);
    if (n <= 0) break;
    size += static_cast<std::size_t>(n);
  }
  received.resize(size);
  return Hex(received);
}

bool SocketPeer::WaitForClose() const {
  const auto deadline = steady_clock::now() + kPatience;
  std::array<std::uint8_t, 4096> dropped{};
  while (WaitReadable(descriptor_, deadline)) {
    if (recv(descriptor_, dropped.data(), dropped.size(), 0) <= 0) return true;
  }
  return false;
}

void SocketPeer::Close() {
  if (descriptor_ >= 0) close(std::exchange(descriptor_, -1));
}

void SocketPeer::Reset() {
  const linger atOnce{.l_onoff = 1, .l_linger = 0};
  setsockopt(descriptor_, SOL_SOCKET, SO_LINGER, &atOnce, sizeof atOnce);
  Close();
}

}  // namespace test
