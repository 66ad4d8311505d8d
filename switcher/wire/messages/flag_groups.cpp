// SPDX-License-Identifier: MIT

#include "switcher/wire/messages/flag_groups.h"

#include <algorithm>
#include <cstddef>

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
  while (!flags.empty()) {
    const std::size_t count = std::min<std::size_t>(flags.size(), 8);
    int group = 0;
    for (std::size_t i = 0; i < count; ++i) group |= (flags[i] != 0 ? 1 : 0) << i;
    writer.PutPair(group);
    flags = flags.subspan(count);
  }
}

}  // namespace switcher
