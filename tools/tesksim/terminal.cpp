// SPDX-License-Identifier: MIT

#include "tools/tesksim/terminal.h"

#include <fcntl.h>
#include <poll.h>
#include <stdlib.h>
#include <sys/ioctl.h>
#include <termios.h>
#include <unistd.h>

#include <cerrno>
#include <system_error>
#include <utility>

namespace tesksim {

namespace {

constexpr int kOpenFlags = O_RDWR | O_NOCTTY | O_NONBLOCK | O_CLOEXEC;

model::Status Failure(const std::string& what) {
  const int number = errno;
  return {number, what + ": " + std::generic_category().message(number)};
}

// 57600 baud, 8 data bits, no parity, 1 stop bit, and every byte as it is.
bool MakeRaw(int fd) {
  termios settings{};
  if (tcgetattr(fd, &settings) != 0) return false;
  cfmakeraw(&settings);
  settings.c_cflag &= ~static_cast<tcflag_t>(CSTOPB);
  settings.c_cflag |= CLOCAL | CREAD;
  return cfsetispeed(&settings, B57600) == 0 && cfsetospeed(&settings, B57600) == 0 &&
         tcsetattr(fd, TCSANOW, &settings) == 0;
}

Terminal::Io Judge(ssize_t result, std::size_t* count) {
  *count = result > 0 ? static_cast<std::size_t>(result) : 0;
  if (result > 0) return Terminal::Io::Done;
  if (result < 0 && (errno == EAGAIN || errno == EINTR)) return Terminal::Io::Later;
  return Terminal::Io::Gone;
}

}  // namespace

model::Status Terminal::Open() {
  model::Status status = IsDevice() ? OpenDevice() : OpenPseudoTerminal();
  if (!status.ok()) Close();
  return status;
}

model::Status Terminal::OpenDevice() {
  path_ = device_;
  fd_ = open(device_.c_str(), kOpenFlags);
  if (fd_ < 0 || ioctl(fd_, TIOCEXCL) != 0 || !MakeRaw(fd_))
    return Failure("cannot use " + device_);
  return {};
}

model::Status Terminal::OpenPseudoTerminal() {
  fd_ = posix_openpt(kOpenFlags);
  if (fd_ < 0 || grantpt(fd_) != 0 || unlockpt(fd_) != 0) return Failure("no pseudo terminal");
  const char* const name = ptsname(fd_);
  if (name == nullptr) return Failure("no pseudo terminal");
  path_ = name;

  // The settings stay with the terminal.  Without them it would echo what it is sent until its
  // user has set his own.  Having been open once, it also tells when nobody has it open.
  const int other = open(path_.c_str(), kOpenFlags);
  if (other < 0) return Failure("cannot open " + path_);
  const bool raw = MakeRaw(other);
  model::Status status = raw ? model::Status() : Failure("cannot set up " + path_);
  close(other);
  return status;
}

void Terminal::Close() {
  if (fd_ >= 0) close(std::exchange(fd_, -1));
}

bool Terminal::HasPeer() const {
  if (IsDevice()) return true;
  pollfd state{.fd = fd_, .events = POLLIN, .revents = 0};
  return poll(&state, 1, 0) == 0 || (state.revents & POLLIN) != 0;
}

void Terminal::DiscardUnread() {
  if (IsDevice()) return;
  const int other = open(path_.c_str(), kOpenFlags);
  if (other < 0) return;  // somebody has it for himself already; he reads what is there
  tcflush(other, TCIFLUSH);
  close(other);
}

Terminal::Io Terminal::Read(std::span<std::uint8_t> buffer, std::size_t* count) {
  return Judge(read(fd_, buffer.data(), buffer.size()), count);
}

Terminal::Io Terminal::Write(std::span<const std::uint8_t> bytes, std::size_t* count) {
  return Judge(write(fd_, bytes.data(), bytes.size()), count);
}

}  // namespace tesksim
