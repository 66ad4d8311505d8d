// SPDX-License-Identifier: MIT

#include "switcher/wire/values.h"

#include <cstddef>
#include <utility>

namespace switcher {

bool WireReader::GetByte(int* value) {
  if (rest_.empty()) return false;
  *value = rest_[0];
  checksum_ = (checksum_ + *value) & 0x7F;
  rest_ = rest_.subspan(1);
  return true;
}

bool WireReader::GetPair(int* value) {
  if (rest_.size() < 2) return false;
  *value = (rest_[0] & 0x7F) | (rest_[1] * 128);
  checksum_ = (checksum_ + *value) & 0x7F;
  rest_ = rest_.subspan(2);
  return true;
}

DecodeStatus WireReader::Finish() {
  if (GetRaw() != checksum_) return DecodeStatus::ChecksumFailed;
  return GetRaw() == kEndOfMessage ? DecodeStatus::Ok : DecodeStatus::MissingEnd;
}

int WireReader::GetRaw() {
  if (rest_.empty()) return -1;
  const int byte = rest_[0];
  rest_ = rest_.subspan(1);
  return byte;
}

void WireWriter::PutByte(int value) {
  message_.push_back(static_cast<std::uint8_t>(value));
  checksum_ = (checksum_ + value) & 0x7F;
}

void WireWriter::PutPair(int value) {
  message_.push_back(static_cast<std::uint8_t>(value & 0x7F));
  message_.push_back(static_cast<std::uint8_t>((value >> 7) & 1));
  checksum_ = (checksum_ + value) & 0x7F;
}

void WireWriter::PutPairs(std::span<const std::uint8_t> values) {
  const std::size_t before = message_.size();
  message_.resize(before + 2 * values.size());
  auto next = message_.begin() + static_cast<std::ptrdiff_t>(before);
  int sum = checksum_;
  for (const std::uint8_t value : values) {
    *next++ = value & 0x7F;
    *next++ = value >> 7;
    sum += value;
  }
  checksum_ = sum & 0x7F;
}

Bytes WireWriter::Finish() {
  message_.push_back(static_cast<std::uint8_t>(checksum_));
  message_.push_back(kEndOfMessage);
  return std::move(message_);
}

}  // namespace switcher
