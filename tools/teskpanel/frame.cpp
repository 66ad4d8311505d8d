// SPDX-License-Identifier: MIT

#include "tools/teskpanel/frame.h"

#include <utility>

#include "tools/teskpanel/hex.h"
#include "tools/teskpanel/messages.h"

namespace teskpanel {

namespace {

constexpr std::uint8_t kTypeBit = 0x80;
constexpr std::uint8_t kTerminator = 0xFF;
constexpr std::size_t kShortestFrame = 3;  // type, checksum, terminator

}  // namespace

void FrameCutter::Append(std::span<const std::uint8_t> bytes) {
  if (!problem_.empty()) return;
  buffer_.erase(buffer_.begin(), buffer_.begin() + static_cast<std::ptrdiff_t>(start_));
  scanned_ -= start_;
  start_ = 0;
  buffer_.insert(buffer_.end(), bytes.begin(), bytes.end());
}

FrameCutter::Result FrameCutter::Next(Bytes* frame) {
  if (!problem_.empty()) return Result::Broken;
  if (start_ == buffer_.size()) return Result::NeedMore;

  const std::uint8_t type = buffer_[start_];
  if ((type & kTypeBit) == 0 || type == kTerminator) {
    return Break("0x" + Hex(type) + " stands where a frame should begin");
  }
  if (type == kLinkUpAnswer || type == kLinkDownAnswer) {
    *frame = {type};
    scanned_ = ++start_;
    return Result::Frame;
  }
  if (scanned_ <= start_) scanned_ = start_ + 1;
  while (scanned_ < buffer_.size() && (buffer_[scanned_] & kTypeBit) == 0) ++scanned_;
  if (scanned_ - start_ > kLongestFrame) {
    return Break("a frame of type 0x" + Hex(type) + " does not end");
  }
  if (scanned_ == buffer_.size()) return Result::NeedMore;
  if (buffer_[scanned_] != kTerminator) {
    return Break("0x" + Hex(buffer_[scanned_]) + " stands within a frame of type 0x" + Hex(type));
  }
  ++scanned_;
  frame->assign(buffer_.begin() + static_cast<std::ptrdiff_t>(start_),
                buffer_.begin() + static_cast<std::ptrdiff_t>(scanned_));
  start_ = scanned_;
  return Check(*frame);
}

FrameCutter::Result FrameCutter::Check(const Bytes& frame) {
  if (frame.size() < kShortestFrame) {
    return Break("a frame of type 0x" + Hex(frame.front()) + " is too short");
  }
  int sum = 0;
  for (std::size_t i = 1; i + 2 < frame.size(); ++i) sum = (sum + frame[i]) % 128;
  if (frame[frame.size() - 2] != sum) {
    return Break("a frame of type 0x" + Hex(frame.front()) + " has a wrong checksum");
  }
  return Result::Frame;
}

FrameCutter::Result FrameCutter::Break(std::string problem) {
  problem_ = std::move(problem);
  return Result::Broken;
}

FrameWriter& FrameWriter::Byte(int value) {
  frame_.push_back(static_cast<std::uint8_t>(value));
  sum_ = (sum_ + value) % 128;
  return *this;
}

FrameWriter& FrameWriter::Pair(int value) { return Byte(value % 128).Byte(value / 128); }

Bytes FrameWriter::Finish() {
  frame_.push_back(static_cast<std::uint8_t>(sum_));
  frame_.push_back(kTerminator);
  return std::move(frame_);
}

bool FrameReader::Byte(int* value) {
  if (rest_.empty()) return false;
  *value = rest_.front();
  rest_ = rest_.subspan(1);
  return true;
}

bool FrameReader::Pair(int* value) {
  if (rest_.size() < 2) return false;
  *value = rest_[0] + 128 * rest_[1];
  rest_ = rest_.subspan(2);
  return true;
}

bool FrameReader::Text(std::size_t length, std::string* text) {
  if (rest_.size() < length) return false;
  text->assign(rest_.begin(), rest_.begin() + static_cast<std::ptrdiff_t>(length));
  rest_ = rest_.subspan(length);
  return true;
}

}  // namespace teskpanel
