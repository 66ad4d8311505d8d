// SPDX-License-Identifier: MIT

#ifndef TESTS_SUPPORT_SOCKET_PEER_H_
#define TESTS_SUPPORT_SOCKET_PEER_H_

#include <chrono>
#include <cstddef>
#include <cstdint>
#include <span>
#include <string>
#include <string_view>

namespace test {

// One end of a TCP connection in the hands of a test.  Every wait has a deadline.
class SocketPeer {
 public:
  static constexpr std::chrono::milliseconds kPatience = std::chrono::seconds(60);

  SocketPeer() = default;
  ~SocketPeer() { Close(); }
  SocketPeer(const SocketPeer&) = delete;
  SocketPeer& operator=(const SocketPeer&) = delete;

  // Connects to a port of the loopback address, of IPv4 or of IPv6; false when nobody listens.
  bool Connect(int port);
  bool ConnectByIpv6(int port);

  // Takes over a connected socket; it replaces the one before.
  void Take(int descriptor);

  // Sends bytes, given as hexadecimal text or as they are.  Waits for room.  False when the
  // other side has closed.
  bool Send(std::string_view hex) const;
  bool SendBytes(std::span<const std::uint8_t> bytes) const;

  // Waits until `count` bytes have come and returns them as "FD 02 00"; fewer when the other
  // side closes or is too slow.
  std::string Receive(std::size_t count, std::chrono::milliseconds within = kPatience) const;

  // Whether the other side closes; what it sent before is dropped.
  bool WaitForClose() const;

  // End the connection: in order, and with a reset.
  void Close();
  void Reset();

 private:
  int descriptor_ = -1;
};

}  // namespace test

#endif  // TESTS_SUPPORT_SOCKET_PEER_H_
