// SPDX-License-Identifier: MIT

#include "switcher/wire/messages/flag_groups.h"

#include <cstddef>

namespace switcher {

namespace {

constexpr std::size_t kMembers = 8;  // of a group

// Written out: of a loop the compiler makes twice the instructions.
std::uint8_t GroupOf(std::span<const std::uint8_t, kMembers> flags) {
  const auto bit = [&](std::size_t i) { return (flags[i] != 0 ? 1 : 0) << i; };
  return static_cast<std::uint8_t>(bit(0) | bit(1) | bit(2) | bit(3) | bit(4) | bit(5) | bit(6) |
                                   bit(7));
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
  const std::size_t full = flags.size() / kMembers;
  Bytes groups((flags.size() + kMembers - 1) / kMembers);
  auto group = groups.begin();
  for (auto members = flags.first(full * kMembers); !members.empty();
       members = members.subspan(kMembers)) {
    *group++ = GroupOf(members.first<kMembers>());
  }
  for (std::size_t i = full * kMembers; i < flags.size(); ++i) {
    if (flags[i] != 0) *group |= static_cast<std::uint8_t>(1U << (i % kMembers));
  }
  writer.PutPairs(groups);
}

}  // namespace switcher
