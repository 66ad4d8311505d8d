// SPDX-License-Identifier: MIT

#include "gateway/panel_frame.h"

#include <algorithm>
#include <utility>

namespace gateway {

int TcpChecksum(std::span<const std::uint8_t> frame) {
  int sum = 0;
  for (std::size_t i = 1; i + 2 < frame.size(); ++i) sum = (sum + frame[i]) & 0x7F;
  return sum;
}

bool ChecksumMatches(std::span<const std::uint8_t> frame) {
  return frame.size() >= 2 && frame[frame.size() - 2] == TcpChecksum(frame);
}

FrameShape ShapeOf(std::uint8_t first) {
  switch (first) {
    case kKeepAlivePoll:
    case kLinkUp:
      return FrameShape::Single;
    case kTakeType:
    case kServiceRequestType:
    case kConnectionType:
    case kIgnoredType:
    case kButtonProgrammingType:
      return FrameShape::Terminated;
    default:
      return FrameShape::None;
  }
}

Bytes WholeFrames(std::span<const std::uint8_t> bytes) {
  Bytes whole;
  while (!bytes.empty()) {
    std::size_t length = 1;
    const FrameShape shape = ShapeOf(bytes.front());
    if (shape == FrameShape::Terminated) {
      const auto terminator = std::find(bytes.begin(), bytes.end(), kTerminator);
      if (terminator == bytes.end()) break;
      length = static_cast<std::size_t>(terminator - bytes.begin()) + 1;
    }
    const auto frame = bytes.first(length);
    if (shape != FrameShape::None) whole.insert(whole.end(), frame.begin(), frame.end());
    bytes = bytes.subspan(length);
  }
  return whole;
}

int PairValue(std::uint8_t low, std::uint8_t high) { return low + 128 * high; }

void FrameBuilder::PutByte(int value) { frame_.push_back(static_cast<std::uint8_t>(value & 0x7F)); }

void FrameBuilder::PutPair(int value) {
  PutByte(value);
  PutByte(value >> 7);
}

Bytes FrameBuilder::Finish() {
  frame_.push_back(0);
  frame_.push_back(kTerminator);
  frame_[frame_.size() - 2] = static_cast<std::uint8_t>(TcpChecksum(frame_));
  return std::move(frame_);
}

}  // namespace gateway
