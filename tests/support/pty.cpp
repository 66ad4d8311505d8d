// SPDX-License-Identifier: MIT

#include "tests/support/pty.h"

#include <fcntl.h>
#include <stdlib.h>
#include <termios.h>
#include <unistd.h>

#include <array>
#include <stdexcept>
#include <utility>

#include "tests/support/hex.h"

namespace test {

Pty::Pty() : master_(posix_openpt(O_RDWR | O_NOCTTY | O_NONBLOCK | O_CLOEXEC)) {
  if (master_ < 0 || grantpt(master_) != 0 || unlockpt(master_) != 0) {
    throw std::runtime_error("no pseudo terminal to be had");
  }
  device_ = ptsname(master_);
  // Without this the terminal would echo and translate what it is sent until a port opens it.
  termios settings{};
  tcgetattr(master_, &settings);
  cfmakeraw(&settings);
  tcsetattr(master_, TCSANOW, &settings);
}

Pty::~Pty() { Close(); }

void Pty::Send(std::string_view hex) const {
  const auto bytes = FromHex(hex);
  if (write(master_, bytes.data(), bytes.size()) != static_cast<ssize_t>(bytes.size())) {
    throw std::runtime_error("the pseudo terminal takes no bytes");
  }
}

std::string Pty::Receive() const {
  std::vector<std::uint8_t> received;
  std::array<std::uint8_t, 4096> block{};
  for (;;) {
    const ssize_t count = read(master_, block.data(), block.size());
    if (count <= 0) return Hex(received);
    received.insert(received.end(), block.begin(), block.begin() + count);
  }
}

void Pty::Close() {
  const int master = std::exchange(master_, -1);
  if (master >= 0) close(master);
}

}  // namespace test
