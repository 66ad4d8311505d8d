// SPDX-License-Identifier: MIT

#include "tools/tesksim/stream_parser.h"

#include <utility>

namespace tesksim {

namespace {

struct MessageCode {
  std::uint8_t code;
  std::string_view name;
};

constexpr MessageCode kMessageCodes[] = {
    {switcher::kTakeCode, "take"},           {switcher::kGainCode, "gain"},
    {switcher::kInhibitRowCode, "inhibits"}, {switcher::kRelayRowCode, "relays"},
    {kLabelOrderCode, "label-order"},        {switcher::kAlphaLabelsCode, "label-texts"},
    {switcher::kButtonDataCode, "buttons"},  {switcher::kOptoDataCode, "optos"},
};

}  // namespace

bool IsPoll(std::uint8_t byte) {
  return byte == switcher::kPollMap || byte == switcher::kPollTally ||
         byte == switcher::kPollKeepAlive || byte == kPollTables;
}

std::string_view MessageName(std::uint8_t code) {
  for (const MessageCode& known : kMessageCodes) {
    if (known.code == code) return known.name;
  }
  return {};
}

std::vector<Received> StreamParser::Feed(std::span<const std::uint8_t> bytes, Time now) {
  std::vector<Received> found;
  if (bytes.empty()) return found;
  if (const auto deadline = Deadline(); deadline.has_value() && now >= *deadline) {
    found.push_back(*GiveUp());
  }
  for (const std::uint8_t byte : bytes) Add(byte, &found);
  lastByte_ = now;
  return found;
}

void StreamParser::Add(std::uint8_t byte, std::vector<Received>* found) {
  if (!message_.empty()) {
    const bool eightBits = message_.front() == switcher::kAlphaLabelsCode;
    if (byte == switcher::kEndOfMessage) {
      message_.push_back(byte);
      found->push_back({Received::Kind::Message, std::exchange(message_, {})});
      return;
    }
    if ((byte < 0x80 || eightBits) && message_.size() < kLongestMessage) {
      message_.push_back(byte);
      return;
    }
    found->push_back(*GiveUp());
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

std::optional<Received> StreamParser::GiveUp() {
  if (message_.empty()) return std::nullopt;
  return Received{Received::Kind::Broken, std::exchange(message_, {})};
}

std::optional<Time> StreamParser::Deadline() const {
  if (message_.empty()) return std::nullopt;
  return lastByte_ + kGap;
}

}  // namespace tesksim
