// SPDX-License-Identifier: MIT

#include "switcher/wire/messages/flag_groups.h"

#include <algorithm>

namespace switcher {

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
  for (std::size_t first = 0; first < flags.size(); first += 8) {
    int value = 0;
    int bit = 1;
    for (const std::uint8_t flag :
         flags.subspan(first, std::min<std::size_t>(8, flags.size() - first))) {
      value |= flag != 0 ? bit : 0;
      bit *= 2;
    }
    writer.PutPair(value);
  }
}

}  // namespace switcher
