// SPDX-License-Identifier: MIT

#ifndef TESTS_SUPPORT_RAW_PANEL_H_
#define TESTS_SUPPORT_RAW_PANEL_H_

#include <chrono>
#include <cstddef>
#include <cstdint>
#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace test {

// A network panel that is no more than a socket: what it sends is the caller's affair, well
// formed or not.  For measuring and for hostile peers.
class RawPanel {
 public:
  using Clock = std::chrono::steady_clock;

  // Connects to `port` of this machine; IsConnected() tells whether it could.  `receiveBuffer`
  // bounds the system's receive buffer, for panels that do not read; 0 leaves it.
  // `from` is the address of this machine that it comes from, such as "127.0.0.2"; null leaves it.
  explicit RawPanel(int port, int receiveBuffer = 0, const char* from = nullptr);
  ~RawPanel();
  RawPanel(RawPanel&& other) noexcept;
  RawPanel& operator=(RawPanel&& other) noexcept;

  bool IsConnected() const { return socket_ >= 0; }
  int Socket() const { return socket_; }

  // Sends bytes given as hexadecimal text, or as they are.  What the network does not take is
  // lost, as is everything once the console has closed the connection.
  void Send(std::string_view hex);
  void Send(const std::vector<std::uint8_t>& bytes);
  // Sends as many of the bytes as the network takes at once, and returns how many.
  std::size_t SendSome(std::span<const std::uint8_t> bytes);

  // Appends what has arrived to Received().  False once the connection has ended.
  bool Poll();
  std::vector<std::uint8_t>& Received() { return received_; }

  // Takes the first whole frame off Received(), or a single byte; empty when there is none.
  std::vector<std::uint8_t> TakeFrame();

  void Close();
  // Closes with a reset.
  void Reset();

 private:
  int socket_ = -1;
  std::vector<std::uint8_t> received_;
};

}  // namespace test

#endif  // TESTS_SUPPORT_RAW_PANEL_H_
