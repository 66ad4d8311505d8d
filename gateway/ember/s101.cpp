// SPDX-License-Identifier: MIT

#include "gateway/ember/s101.h"

#include <algorithm>
#include <array>

namespace ember {

namespace {

constexpr std::uint8_t kBegin = 0xFE;
constexpr std::uint8_t kEnd = 0xFF;
constexpr std::uint8_t kEscape = 0xFD;
constexpr std::uint8_t kEscaped = 0x20;       // what an escaped byte is combined with
constexpr std::uint8_t kFirstEscaped = 0xF8;  // this byte and those above are
constexpr std::uint8_t kOtherFraming = 0xF8;  // begins it, outside a frame

constexpr std::uint8_t kSlot = 0x00;
constexpr std::uint8_t kEmberMessage = 0x0E;
constexpr std::uint8_t kVersion = 0x01;
constexpr std::uint8_t kGlow = 0x01;

enum FrameCommand : std::uint8_t { kPacket = 0x00, kKeepAlive = 0x01, kKeepAliveAnswer = 0x02 };

enum PacketFlag : std::uint8_t { kFirst = 0x80, kLast = 0x40, kEmpty = 0x20 };

// The bytes of a body before the number of its application bytes, that number included.
constexpr std::size_t kPacketHead = 7;

constexpr std::uint16_t kGoodRemainder = 0xF0B8;

constexpr std::array<std::uint16_t, 256> CrcTable() {
  std::array<std::uint16_t, 256> table{};
  for (unsigned i = 0; i < 256; ++i) {
    unsigned value = i;
    for (int bit = 0; bit < 8; ++bit)
      value = (value & 1U) != 0 ? (value >> 1U) ^ 0x8408U : value >> 1U;
    table[i] = static_cast<std::uint16_t>(value);
  }
  return table;
}

// Without the complement at the end.
std::uint16_t Remainder(std::span<const std::uint8_t> bytes) {
  static constexpr std::array<std::uint16_t, 256> kTable = CrcTable();
  unsigned crc = 0xFFFF;
  for (const std::uint8_t byte : bytes) crc = (crc >> 8U) ^ kTable[(crc ^ byte) & 0xFFU];
  return static_cast<std::uint16_t>(crc);
}

void AppendEscaped(std::uint8_t byte, Bytes* frame) {
  if (byte >= kFirstEscaped) {
    frame->push_back(kEscape);
    byte ^= kEscaped;
  }
  frame->push_back(byte);
}

void AppendFrame(Bytes body, Bytes* frames) {
  const std::uint16_t crc = Crc(body);
  body.push_back(static_cast<std::uint8_t>(crc & 0xFFU));
  body.push_back(static_cast<std::uint8_t>(crc >> 8U));
  frames->push_back(kBegin);
  for (const std::uint8_t byte : body) AppendEscaped(byte, frames);
  frames->push_back(kEnd);
}

Bytes KeepAliveFrame(FrameCommand command) {
  Bytes frame;
  AppendFrame({kSlot, kEmberMessage, command, kVersion}, &frame);
  return frame;
}

}  // namespace

std::uint16_t Crc(std::span<const std::uint8_t> bytes) {
  return static_cast<std::uint16_t>(~Remainder(bytes));
}

Bytes Packets(std::span<const std::uint8_t> message) {
  Bytes frames;
  std::size_t at = 0;
  do {
    const std::size_t size = std::min(kPacketSize, message.size() - at);
    unsigned flags = 0;
    if (at == 0) flags |= kFirst;
    if (at + size == message.size()) flags |= kLast;
    // Two application bytes: the version of Glow, 2.31.
    Bytes body{kSlot, kEmberMessage, kPacket, kVersion, static_cast<std::uint8_t>(flags), kGlow,
               2,     0x1F,          0x02};
    const auto piece = message.subspan(at, size);
    body.insert(body.end(), piece.begin(), piece.end());
    AppendFrame(std::move(body), &frames);
    at += size;
  } while (at < message.size());
  return frames;
}

Bytes KeepAliveRequest() { return KeepAliveFrame(kKeepAlive); }
Bytes KeepAliveResponse() { return KeepAliveFrame(kKeepAliveAnswer); }

bool FrameReader::Read(std::span<const std::uint8_t> bytes, std::vector<Event>* events) {
  return std::all_of(bytes.begin(), bytes.end(),
                     [&](std::uint8_t byte) { return Take(byte, events); });
}

bool FrameReader::Take(std::uint8_t byte, std::vector<Event>* events) {
  switch (state_) {
    case State::LengthSize:
      lengthBytes_ = byte & 0x07;
      rawLeft_ = 0;
      state_ = lengthBytes_ > 0 ? State::Length : State::Outside;
      return true;
    case State::Length:
      rawLeft_ = rawLeft_ << 8U | byte;
      if (rawLeft_ > kLongestFrame) return false;
      if (--lengthBytes_ == 0) state_ = rawLeft_ > 0 ? State::Raw : State::Outside;
      return true;
    case State::Raw:
      if (--rawLeft_ == 0) state_ = State::Outside;
      return true;
    case State::Outside:
    case State::Frame:
    case State::Escape:
      break;
  }
  if (byte == kBegin) {
    body_.clear();
    state_ = State::Frame;
    return true;
  }
  if (state_ == State::Outside) {
    if (byte == kOtherFraming) state_ = State::LengthSize;
    return true;
  }
  if (byte == kEnd) {
    state_ = State::Outside;
    const bool isKept = EndFrame(events);
    body_.clear();
    return isKept;
  }
  if (state_ == State::Frame && byte == kEscape) {
    state_ = State::Escape;
    return true;
  }
  if (body_.size() >= kLongestFrame) return false;
  body_.push_back(state_ == State::Escape ? static_cast<std::uint8_t>(byte ^ kEscaped) : byte);
  state_ = State::Frame;
  return true;
}

bool FrameReader::EndFrame(std::vector<Event>* events) {
  if (body_.size() < 6 || Remainder(body_) != kGoodRemainder) return true;
  if (body_[0] != kSlot || body_[1] != kEmberMessage) return true;
  if (body_[2] == kKeepAlive) events->push_back({Kind::KeepAliveRequest, {}});
  if (body_[2] == kKeepAliveAnswer) events->push_back({Kind::KeepAliveResponse, {}});
  if (body_[2] != kPacket) return true;

  const std::size_t end = body_.size() - 2;
  if (end < kPacketHead || body_[5] != kGlow) return true;
  const std::size_t begin = kPacketHead + body_[6];
  if (begin > end) return true;
  const std::uint8_t flags = body_[4];
  if ((flags & kFirst) != 0) {
    isBegun_ = true;
    message_.clear();
  }
  if (!isBegun_) return true;
  if ((flags & kEmpty) == 0) {
    if (message_.size() + (end - begin) > kLongestMessage) return false;
    message_.insert(message_.end(), body_.begin() + static_cast<std::ptrdiff_t>(begin),
                    body_.begin() + static_cast<std::ptrdiff_t>(end));
  }
  if ((flags & kLast) != 0) {
    isBegun_ = false;
    if (!message_.empty()) events->push_back({Kind::Message, std::move(message_)});
    message_.clear();
  }
  return true;
}

}  // namespace ember
