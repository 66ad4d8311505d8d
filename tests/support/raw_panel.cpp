// SPDX-License-Identifier: MIT

#include "tests/support/raw_panel.h"

#include <arpa/inet.h>
#include <fcntl.h>
#include <netinet/in.h>
#include <netinet/tcp.h>
#include <sys/socket.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <cerrno>
#include <utility>

#include "tests/support/hex.h"

namespace test {

RawPanel::RawPanel(int port, int receiveBuffer, const char* from)
    : socket_(socket(AF_INET, SOCK_STREAM, 0)) {
  if (receiveBuffer > 0) {
    setsockopt(socket_, SOL_SOCKET, SO_RCVBUF, &receiveBuffer, sizeof receiveBuffer);
  }
  sockaddr_in address{};
  address.sin_family = AF_INET;
  if (from != nullptr) {
    address.sin_addr.s_addr = inet_addr(from);
    if (bind(socket_, reinterpret_cast<const sockaddr*>(&address), sizeof address) != 0) {
      Close();
      return;
    }
  }
  address.sin_port = htons(static_cast<std::uint16_t>(port));
  address.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
  if (connect(socket_, reinterpret_cast<const sockaddr*>(&address), sizeof address) != 0) {
    Close();
    return;
  }
  const int on = 1;
  setsockopt(socket_, IPPROTO_TCP, TCP_NODELAY, &on, sizeof on);
  fcntl(socket_, F_SETFL, O_NONBLOCK);
}

RawPanel::~RawPanel() { Close(); }

RawPanel::RawPanel(RawPanel&& other) noexcept
    : socket_(std::exchange(other.socket_, -1)), received_(std::move(other.received_)) {}

RawPanel& RawPanel::operator=(RawPanel&& other) noexcept {
  std::swap(socket_, other.socket_);
  std::swap(received_, other.received_);
  return *this;
}

void RawPanel::Send(std::string_view hex) { Send(FromHex(hex)); }

void RawPanel::Send(const std::vector<std::uint8_t>& bytes) { (void)SendSome(bytes); }

std::size_t RawPanel::SendSome(std::span<const std::uint8_t> bytes) {
  if (!IsConnected()) return 0;
  const ssize_t sent = send(socket_, bytes.data(), bytes.size(), MSG_NOSIGNAL);
  return static_cast<std::size_t>(std::max<ssize_t>(sent, 0));
}

bool RawPanel::Poll() {
  if (!IsConnected()) return false;
  std::array<std::uint8_t, 65536> block{};
  for (;;) {
    const ssize_t count = recv(socket_, block.data(), block.size(), 0);
    if (count > 0) {
      received_.insert(received_.end(), block.begin(), block.begin() + count);
      continue;
    }
    if (count < 0 && (errno == EAGAIN || errno == EINTR)) return true;
    Close();
    return false;
  }
}

std::vector<std::uint8_t> RawPanel::TakeFrame() {
  if (received_.empty()) return {};
  auto end = received_.begin() + 1;
  if (received_.front() != 0xF4 && received_.front() != 0xF1) {
    end = std::find(received_.begin(), received_.end(), 0xFF);
    if (end == received_.end()) return {};
    ++end;
  }
  std::vector<std::uint8_t> frame(received_.begin(), end);
  received_.erase(received_.begin(), end);
  return frame;
}

void RawPanel::Close() {
  if (IsConnected()) close(std::exchange(socket_, -1));
}

void RawPanel::Reset() {
  const linger reset{.l_onoff = 1, .l_linger = 0};
  setsockopt(socket_, SOL_SOCKET, SO_LINGER, &reset, sizeof reset);
  Close();
}

}  // namespace test
