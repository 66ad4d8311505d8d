// SPDX-License-Identifier: MIT

#include "tests/soak/good_panel.h"

#include <algorithm>

namespace soak {

namespace {

constexpr std::chrono::seconds kPollEvery{2};

}  // namespace

bool GoodPanel::Step() {
  const bool connected = socket_.Poll();
  for (auto frame = socket_.TakeFrame(); !frame.empty(); frame = socket_.TakeFrame()) Handle(frame);
  const auto now = Clock::now();
  if (waiting_) {
    longest_ =
        std::max(longest_, std::chrono::duration_cast<std::chrono::milliseconds>(now - polled_));
  } else if (asked_ && now - polled_ > kPollEvery) {
    socket_.Send("F5");
    polled_ = now;
    waiting_ = true;
  }
  return connected;
}

void GoodPanel::Handle(const std::vector<std::uint8_t>& frame) {
  switch (frame[0]) {
    case 0x81:
      asked_ = true;
      socket_.Send("81 33 33 FF F2 00 01 00 00 00 00 00 00 01 FF");
      break;
    case 0xF4:
    case 0xF1:
      waiting_ = false;
      break;
    case 0xF6:
      ReadMap(frame);
      break;
    default:
      break;
  }
}

void GoodPanel::ReadMap(const std::vector<std::uint8_t>& frame) {
  std::size_t at = 2;
  const auto pair = [&] {
    const int value = frame.at(at) + 128 * frame.at(at + 1);
    at += 2;
    return value;
  };
  const int count = pair();
  const int first = pair() + 1;
  for (int output = first; output < first + count; ++output) {
    const int sources = pair();
    ++at;  // the status
    std::string row;
    for (int i = 0; i < sources; ++i) row += (row.empty() ? "" : " ") + std::to_string(pair() + 1);
    rows_.at(static_cast<std::size_t>(output)) = row.empty() ? "none" : row;
  }
}

void GoodPanel::Take(int output, int input, bool make) {
  std::vector<std::uint8_t> frame{
      0xFE, static_cast<std::uint8_t>(make ? 36 : 32), 0x00, static_cast<std::uint8_t>(output - 1),
      0x00, static_cast<std::uint8_t>(input - 1),      0x00};
  frame.push_back(static_cast<std::uint8_t>((frame[1] + frame[3] + frame[5]) & 0x7F));
  frame.push_back(0xFF);
  socket_.Send(frame);
}

std::string GoodPanel::Row(int output) const { return rows_.at(static_cast<std::size_t>(output)); }

}  // namespace soak
