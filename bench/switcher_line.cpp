// SPDX-License-Identifier: MIT

#include "bench/switcher_line.h"

#include <poll.h>
#include <unistd.h>

#include <array>
#include <utility>

namespace bench {

namespace {

constexpr int kChannels = 64;

void AppendPair(std::vector<std::uint8_t>& message, int value) {
  message.push_back(static_cast<std::uint8_t>(value & 0x7F));
  message.push_back(static_cast<std::uint8_t>(value / 128));
}

std::vector<std::uint8_t> Row(int output, int source) {
  std::vector<std::uint8_t> message{0xF3};
  AppendPair(message, output - 1);
  AppendPair(message, 0);
  int sum = output - 1;
  for (int group = 0; group < kChannels / 8; ++group) {
    const int flags = (source - 1) / 8 == group ? 1 << ((source - 1) % 8) : 0;
    AppendPair(message, flags);
    sum += flags;
  }
  message.push_back(static_cast<std::uint8_t>(sum % 128));
  message.push_back(0xFF);
  return message;
}

std::vector<std::uint8_t> Tally() {
  std::vector<std::uint8_t> message{0xE4};
  message.resize(1 + 2 * 64 + 1, 0);
  message.push_back(0xFF);
  return message;
}

}  // namespace

SwitcherLine::SwitcherLine() : server_([this] { Serve(); }) {}

SwitcherLine::~SwitcherLine() {
  ending_ = true;
  server_.join();
}

void SwitcherLine::Write(const std::vector<std::uint8_t>& bytes) {
  const std::lock_guard lock(writing_);
  for (std::size_t sent = 0; sent < bytes.size() && !ending_;) {
    const ssize_t count = write(pty_.Master(), bytes.data() + sent, bytes.size() - sent);
    if (count > 0) {
      sent += static_cast<std::size_t>(count);
    } else {
      std::this_thread::sleep_for(std::chrono::milliseconds(1));
    }
  }
}

SwitcherLine::Clock::time_point SwitcherLine::SendRow(int output, int source) {
  Write(Row(output, source));
  return Clock::now();
}

std::optional<SwitcherLine::Clock::time_point> SwitcherLine::WaitForTake(
    std::chrono::milliseconds within) {
  std::unique_lock lock(mutex_);
  arrived_.wait_for(lock, within, [this] { return take_.has_value(); });
  return std::exchange(take_, std::nullopt);
}

void SwitcherLine::Serve() {
  std::array<std::uint8_t, 4096> block{};
  while (!ending_) {
    pollfd waiting{.fd = pty_.Master(), .events = POLLIN, .revents = 0};
    poll(&waiting, 1, 20);
    const ssize_t count = read(pty_.Master(), block.data(), block.size());
    for (ssize_t i = 0; i < count; ++i) Handle(block[static_cast<std::size_t>(i)]);
    // Without a console at the other end the terminal is readable at once and has nothing.
    if (count < 0) std::this_thread::sleep_for(std::chrono::milliseconds(1));
  }
}

void SwitcherLine::Handle(std::uint8_t byte) {
  if (message_.empty()) {
    if (byte == 0xE5) {
      for (int output = 1; output <= kChannels; ++output) Write(Row(output, output));
    } else if (byte == 0xE4) {
      Write(Tally());
    } else if (byte == 0xED) {
      Write({0xEB});
      up_ = true;
    } else {
      message_.push_back(byte);
    }
    return;
  }
  message_.push_back(byte);
  if (byte != 0xFF) return;
  if (message_[0] == 0xFD) {
    const std::lock_guard lock(mutex_);
    take_ = Clock::now();
    arrived_.notify_all();
  }
  message_.clear();
}

}  // namespace bench
