// SPDX-License-Identifier: MIT

#include "switcher/wire/messages/flag_groups.h"

#include <algorithm>
#include <array>

namespace switcher {
namespace {

// A group of eight members, the first of them in bit 0: each becomes the lowest bit of its byte,
// and the product has all of these side by side in its highest one.
std::uint8_t GroupOf(std::span<const std::uint8_t, 8> flags) {
  const std::uint8_t* const p = flags.data();
  const std::uint64_t bytes = p[0] | (std::uint64_t{p[1]} << 8) | (std::uint64_t{p[2]} << 16) |
                              (std::uint64_t{p[3]} << 24) | (std::uint64_t{p[4]} << 32) |
                              (std::uint64_t{p[5]} << 40) | (std::uint64_t{p[6]} << 48) |
                              (std::uint64_t{p[7]} << 56);
  constexpr std::uint64_t kLow = 0x7F7F7F7F7F7F7F7F;
  const std::uint64_t on = (((bytes & kLow) + kLow) | bytes) >> 7 & 0x0101010101010101;
  return static_cast<std::uint8_t>((on * 0x0102040810204080) >> 56);
}

}  // namespace

bool GetFlagGroups(WireReader& reader, std::span<std::uint8_t> flags) {
  for (std::size_t first = 0; first < flags.size(); first += 8) {
    int value = 0;
    if (!reader.GetPair(&value)) return false;
    for (std::size_t i = 0; i < 8; ++i) {
      flags[first + i] = static_cast<std::uint8_t>((value >> i) & 1);
    }
  }
  return true;
}

void PutFlagGroups(WireWriter& writer, std::span<const std::uint8_t> flags) {
  for (; flags.size() >= 8; flags = flags.subspan(8)) writer.PutPair(GroupOf(flags.first<8>()));
  if (flags.empty()) return;
  std::array<std::uint8_t, 8> last{};
  std::ranges::copy(flags, last.begin());
  writer.PutPair(GroupOf(last));
}

}  // namespace switcher
