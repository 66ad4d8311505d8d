// SPDX-License-Identifier: MIT
//
// The part of BER that Glow is made of: tag, length, value.

#ifndef GATEWAY_EMBER_BER_H_
#define GATEWAY_EMBER_BER_H_

#include <cstddef>
#include <cstdint>
#include <initializer_list>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "gateway/ember/bytes.h"

namespace ember {

// Where an element stands: the numbers from the root down, or the numbers of a list of sources.
using Path = std::vector<int>;

// Tag bytes.
enum BerTag : std::uint8_t {
  kBoolean = 0x01,
  kInteger = 0x02,
  kReal = 0x09,
  kUtf8 = 0x0C,
  kRelativeOid = 0x0D,
  kSequence = 0x30,
  kSet = 0x31,
};

// The tag bytes of context `number` and of application `number`, both of what holds others.
// REQUIRES: number <= 30
constexpr std::uint8_t Context(unsigned number) {
  return static_cast<std::uint8_t>(0xA0U + number);
}
constexpr std::uint8_t Application(unsigned number) {
  return static_cast<std::uint8_t>(0x60U + number);
}

// A value as it was read; it refers to the bytes that it was read from.
struct Tlv {
  std::uint8_t tag = 0;
  std::span<const std::uint8_t> value;  // of one that holds no others
  std::vector<Tlv> children;            // of one that does

  // The first child with this tag; null without one.
  const Tlv* Child(std::uint8_t childTag) const;
  // What context `number` wraps; null where there is none or it is empty.
  const Tlv* Field(unsigned number) const;
};

// Deeper nesting than this is refused.
inline constexpr int kDeepestBer = 32;

// More values than these are refused, in all: eight times what a take of all targets of the largest
// system has.
inline constexpr std::size_t kMostBer = 16384;

// Reads values, one behind the other.  Nothing when a value reaches beyond its parent, does not
// end, has more than four bytes of length, or is nested too deeply, or when there are too many.
std::optional<std::vector<Tlv>> ParseBer(std::span<const std::uint8_t> bytes);

// What a value says; nothing when it is of another type or cannot be read.
std::optional<std::int64_t> ReadInteger(const Tlv* tlv);  // up to 8 bytes
std::optional<bool> ReadBoolean(const Tlv* tlv);
std::optional<std::string> ReadUtf8(const Tlv* tlv);
std::optional<double> ReadReal(const Tlv* tlv);
std::optional<Path> ReadOid(const Tlv* tlv);  // a number that no int holds: unreadable

// Building, always with definite lengths in their shortest form.
Bytes BerValue(std::uint8_t tag, std::span<const std::uint8_t> value);
Bytes BerValue(std::uint8_t tag, std::initializer_list<Bytes> parts);
Bytes BerInteger(int value);
Bytes BerBoolean(bool value);
Bytes BerUtf8(std::string_view text);
Bytes BerOid(std::span<const int> numbers);  // REQUIRES: none is negative

}  // namespace ember

#endif  // GATEWAY_EMBER_BER_H_
