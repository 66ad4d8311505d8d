// SPDX-License-Identifier: MIT

#include "gateway/ember/ber.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <limits>

namespace ember {

namespace {

constexpr unsigned kHoldsOthers = 0x20;
constexpr unsigned kLongTag = 0x1F;

class BerParser {
 public:
  // `most` is how many values may still be read.
  BerParser(std::span<const std::uint8_t> bytes, std::size_t& most) : left_(bytes), most_(most) {}

  // Reads values up to the end, or, `untilMark`, up to the two zero bytes that end an indefinite
  // length.
  bool ParseAll(bool untilMark, int depth, std::vector<Tlv>* values) {
    while (!left_.empty()) {
      if (untilMark && left_.size() >= 2 && left_[0] == 0 && left_[1] == 0) {
        left_ = left_.subspan(2);
        return true;
      }
      if (!ParseOne(depth, &values->emplace_back())) return false;
    }
    return !untilMark;
  }

 private:
  std::uint8_t Next() {
    const std::uint8_t byte = left_.front();
    left_ = left_.subspan(1);
    return byte;
  }

  // Nothing in *length stands for an indefinite one.
  bool ParseLength(std::optional<std::size_t>* length) {
    if (left_.empty()) return false;
    const std::uint8_t first = Next();
    if (first == 0x80) {
      length->reset();
      return true;
    }
    if (first < 0x80) {
      *length = first;
      return true;
    }
    const std::size_t count = first & 0x7FU;
    if (count > 4 || count > left_.size()) return false;
    std::size_t value = 0;
    for (std::size_t i = 0; i < count; ++i) value = value << 8U | Next();
    *length = value;
    return true;
  }

  bool ParseOne(int depth, Tlv* tlv) {
    if (depth > kDeepestBer || most_ == 0) return false;
    --most_;
    tlv->tag = Next();
    if ((tlv->tag & kLongTag) == kLongTag) {
      // None of Glow's: the rest of the tag is passed over.
      while (!left_.empty() && (left_.front() & 0x80U) != 0) Next();
      if (left_.empty()) return false;
      Next();
    }
    std::optional<std::size_t> length;
    if (!ParseLength(&length)) return false;
    const bool holdsOthers = (tlv->tag & kHoldsOthers) != 0;
    if (!length.has_value()) {
      return holdsOthers && ParseAll(true, depth + 1, &tlv->children);
    }
    if (*length > left_.size()) return false;
    const auto value = left_.first(*length);
    left_ = left_.subspan(*length);
    if (!holdsOthers) {
      tlv->value = value;
      return true;
    }
    return BerParser(value, most_).ParseAll(false, depth + 1, &tlv->children);
  }

  std::span<const std::uint8_t> left_;
  std::size_t& most_;
};

bool IsTyped(const Tlv* tlv, BerTag tag) { return tlv != nullptr && tlv->tag == tag; }

void AppendLength(std::size_t length, Bytes* bytes) {
  if (length < 0x80) {
    bytes->push_back(static_cast<std::uint8_t>(length));
    return;
  }
  unsigned count = 1;
  while (count < sizeof length && (length >> (8U * count)) != 0) ++count;
  bytes->push_back(static_cast<std::uint8_t>(0x80U | count));
  while (count > 0) bytes->push_back(static_cast<std::uint8_t>(length >> (8U * --count)));
}

std::int64_t SignedNumber(std::span<const std::uint8_t> bytes) {
  std::uint64_t value = (bytes.front() & 0x80U) != 0 ? ~std::uint64_t{0} : 0;
  for (const std::uint8_t byte : bytes) value = value << 8U | byte;
  return static_cast<std::int64_t>(value);
}

}  // namespace

const Tlv* Tlv::Child(std::uint8_t childTag) const {
  const auto child = std::find_if(children.begin(), children.end(),
                                  [&](const Tlv& each) { return each.tag == childTag; });
  return child == children.end() ? nullptr : &*child;
}

const Tlv* Tlv::Field(unsigned number) const {
  const Tlv* const context = Child(Context(number));
  return context == nullptr || context->children.empty() ? nullptr : &context->children.front();
}

std::optional<std::vector<Tlv>> ParseBer(std::span<const std::uint8_t> bytes) {
  std::vector<Tlv> values;
  std::size_t most = kMostBer;
  if (!BerParser(bytes, most).ParseAll(false, 1, &values)) return std::nullopt;
  return values;
}

std::optional<std::int64_t> ReadInteger(const Tlv* tlv) {
  if (!IsTyped(tlv, kInteger) || tlv->value.empty() || tlv->value.size() > 8) return std::nullopt;
  return SignedNumber(tlv->value);
}

std::optional<bool> ReadBoolean(const Tlv* tlv) {
  if (!IsTyped(tlv, kBoolean) || tlv->value.size() != 1) return std::nullopt;
  return tlv->value[0] != 0;
}

std::optional<std::string> ReadUtf8(const Tlv* tlv) {
  if (!IsTyped(tlv, kUtf8)) return std::nullopt;
  return std::string(tlv->value.begin(), tlv->value.end());
}

// The mantissa is 1.xxx, whatever its length: moved until its first bit stands before the point.
std::optional<double> ReadReal(const Tlv* tlv) {
  if (!IsTyped(tlv, kReal)) return std::nullopt;
  std::span<const std::uint8_t> value = tlv->value;
  if (value.empty()) return 0.0;
  const unsigned first = value[0];
  value = value.subspan(1);
  if (value.empty()) {
    switch (first) {
      case 0x40:
        return std::numeric_limits<double>::infinity();
      case 0x41:
        return -std::numeric_limits<double>::infinity();
      case 0x42:
        return std::numeric_limits<double>::quiet_NaN();
      default:
        return std::nullopt;
    }
  }
  const std::size_t exponentSize = (first & 0x03U) + 1;
  if ((first & 0x80U) == 0 || exponentSize > 3 || value.size() <= exponentSize) return std::nullopt;
  const auto exponent = static_cast<int>(SignedNumber(value.first(exponentSize)));
  value = value.subspan(exponentSize);
  double mantissa = 0;
  for (const std::uint8_t byte : value) mantissa = mantissa * 256 + byte;
  if (mantissa == 0) return 0.0;
  if (!std::isfinite(mantissa)) return std::nullopt;
  const double number = std::ldexp(mantissa, exponent - std::ilogb(mantissa));
  return (first & 0x40U) != 0 ? -number : number;
}

std::optional<Path> ReadOid(const Tlv* tlv) {
  if (!IsTyped(tlv, kRelativeOid)) return std::nullopt;
  Path path;
  std::int64_t number = 0;
  bool isOpen = false;
  for (const std::uint8_t byte : tlv->value) {
    number = number << 7U | (byte & 0x7FU);
    if (number > std::numeric_limits<int>::max()) return std::nullopt;
    isOpen = (byte & 0x80U) != 0;
    if (isOpen) continue;
    path.push_back(static_cast<int>(number));
    number = 0;
  }
  if (isOpen) return std::nullopt;
  return path;
}

Bytes BerValue(std::uint8_t tag, std::span<const std::uint8_t> value) {
  Bytes bytes;
  bytes.reserve(value.size() + 6);
  bytes.push_back(tag);
  AppendLength(value.size(), &bytes);
  bytes.insert(bytes.end(), value.begin(), value.end());
  return bytes;
}

Bytes BerValue(std::uint8_t tag, std::initializer_list<Bytes> parts) {
  std::size_t size = 0;
  for (const Bytes& part : parts) size += part.size();
  Bytes bytes;
  bytes.reserve(size + 6);
  bytes.push_back(tag);
  AppendLength(size, &bytes);
  for (const Bytes& part : parts) bytes.insert(bytes.end(), part.begin(), part.end());
  return bytes;
}

Bytes BerInteger(int value) {
  Bytes bytes{static_cast<std::uint8_t>(value)};
  for (int rest = value >> 8; rest != (static_cast<std::int8_t>(bytes.back()) < 0 ? -1 : 0);
       rest >>= 8) {
    bytes.push_back(static_cast<std::uint8_t>(rest));
  }
  std::reverse(bytes.begin(), bytes.end());
  return BerValue(kInteger, bytes);
}

Bytes BerBoolean(bool value) {
  return {kBoolean, 1, static_cast<std::uint8_t>(value ? 0xFF : 0x00)};
}

Bytes BerUtf8(std::string_view text) { return BerValue(kUtf8, Bytes(text.begin(), text.end())); }

Bytes BerOid(std::span<const int> numbers) {
  Bytes bytes;
  for (const int number : numbers) {
    const auto value = static_cast<unsigned>(number);
    unsigned shift = 28;
    while (shift > 0 && value >> shift == 0) shift -= 7;
    for (; shift > 0; shift -= 7) {
      bytes.push_back(static_cast<std::uint8_t>(0x80U | (value >> shift & 0x7FU)));
    }
    bytes.push_back(static_cast<std::uint8_t>(value & 0x7FU));
  }
  return BerValue(kRelativeOid, bytes);
}

}  // namespace ember
