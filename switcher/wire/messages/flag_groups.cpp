// SPDX-License-Identifier: MIT

#include "switcher/wire/messages/flag_groups.h"

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
    for (std::size_t i = 0; i < 8 && first + i < flags.size(); ++i) {
      if (flags[first + i] != 0) value |= 1 << i;
    }
    writer.PutPair(value);
  }
}

}  // namespace switcher
