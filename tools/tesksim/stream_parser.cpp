// SPDX-License-Identifier: MIT

#include "tools/tesksim/stream_parser.h"

#include <numeric>
#include <utility>

namespace tesksim {

namespace {

// Whether the last byte but one is the checksum of those between it and the code.
bool HasChecksum(const Bytes& message) {
  const auto sum = std::accumulate(message.begin() + 1, message.end() - 2, 0U);
  return (sum & 0x7FU) == message[message.size() - 2];
}

}  // namespace

bool IsPoll(std::uint8_t byte) { return !switcher::PollName(byte).empty(); }

std::string_view MessageName(std::uint8_t code) {
  const switcher::MessageKind* const kind = switcher::FindMessage(code);
  return kind != nullptr && kind->ToSwitcher() ? kind->name : std::string_view();
}

std::optional<std::uint8_t> MessageCodeOf(std::string_view name) {
  for (const switcher::MessageKind& kind : switcher::kMessages) {
    if (kind.ToSwitcher() && kind.name == name) return kind.code;
  }
  return std::nullopt;
}

std::vector<Received> StreamParser::Feed(std::span<const std::uint8_t> bytes, Time now) {
  std::vector<Received> found;
  if (bytes.empty()) return found;
  if (const auto deadline = Deadline(); deadline.has_value() && now >= *deadline) GiveUp(&found);
  for (const std::uint8_t byte : bytes) Add(byte, &found);
  lastByte_ = now;
  return found;
}

void StreamParser::Add(std::uint8_t byte, std::vector<Received>* found) {
  if (!message_.empty()) {
    if (message_.front() == switcher::kAlphaLabelsCode) {
      AddToLabelTexts(byte, found);
      return;
    }
    const bool ends = byte == switcher::kEndOfMessage;
    if (ends || (byte < 0x80 && message_.size() < kLongestMessage)) {
      message_.push_back(byte);
      if (ends) Complete(Received::Kind::Message, found);
      return;
    }
    Complete(Received::Kind::Broken, found);
  }
  if (IsPoll(byte)) {
    found->push_back({Received::Kind::Poll, {byte}});
  } else if (!MessageName(byte).empty()) {
    message_.push_back(byte);
  } else if (!found->empty() && found->back().kind == Received::Kind::Noise) {
    found->back().bytes.push_back(byte);
  } else {
    found->push_back({Received::Kind::Noise, {byte}});
  }
}

void StreamParser::AddToLabelTexts(std::uint8_t byte, std::vector<Received>* found) {
  message_.push_back(byte);
  const bool ends = byte == switcher::kEndOfMessage;
  if (message_.size() < labelMessageSize_) {
    if (ends && firstEndByte_ == 0) firstEndByte_ = message_.size() - 1;
  } else if (firstEndByte_ != 0 && !(ends && HasChecksum(message_))) {
    EndAtFirstEndByte(found);
  } else if (ends) {
    Complete(Received::Kind::Message, found);
  } else if (message_.size() == kLongestMessage) {
    Complete(Received::Kind::Broken, found);
  }
}

// What stands behind is shorter than a whole label message, so this comes to an end.
void StreamParser::EndAtFirstEndByte(std::vector<Received>* found) {
  const auto behind = message_.begin() + static_cast<std::ptrdiff_t>(firstEndByte_) + 1;
  const Bytes rest(behind, message_.end());
  message_.erase(behind, message_.end());
  Complete(Received::Kind::Message, found);
  for (const std::uint8_t byte : rest) Add(byte, found);
}

void StreamParser::Complete(Received::Kind kind, std::vector<Received>* found) {
  firstEndByte_ = 0;
  found->push_back({kind, std::exchange(message_, {})});
}

std::vector<Received> StreamParser::GiveUp() {
  std::vector<Received> found;
  GiveUp(&found);
  return found;
}

void StreamParser::GiveUp(std::vector<Received>* found) {
  while (!message_.empty()) {
    if (firstEndByte_ != 0) {
      EndAtFirstEndByte(found);
    } else {
      Complete(Received::Kind::Broken, found);
    }
  }
}

std::optional<Time> StreamParser::Deadline() const {
  if (message_.empty()) return std::nullopt;
  return lastByte_ + kGap;
}

}  // namespace tesksim
