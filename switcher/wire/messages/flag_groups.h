// SPDX-License-Identifier: MIT
//
// On/off members in groups of eight, as the map, inhibit, relay and button messages carry them.

#ifndef SWITCHER_WIRE_MESSAGES_FLAG_GROUPS_H_
#define SWITCHER_WIRE_MESSAGES_FLAG_GROUPS_H_

#include <cstdint>
#include <span>

#include "switcher/wire/values.h"

namespace switcher {

// Reads flags.size() / 8 groups; each flag becomes 0 or 1.  Returns false when bytes are
// missing.  REQUIRES: flags.size() is a multiple of eight
bool GetFlagGroups(WireReader& reader, std::span<std::uint8_t> flags);

// Appends the groups of `flags`; any value but 0 is "on".  A last group that is not full has
// its missing members off.
void PutFlagGroups(WireWriter& writer, std::span<const std::uint8_t> flags);

}  // namespace switcher

#endif  // SWITCHER_WIRE_MESSAGES_FLAG_GROUPS_H_
