// SPDX-License-Identifier: MIT

#ifndef SWITCHER_TABLE_H_
#define SWITCHER_TABLE_H_

#include <cstdint>

namespace switcher {

// The tables of the configuration that are sent to the switcher, in the order of a download.
enum class Table : std::uint8_t { Optos, OutputLabels, InputLabels, Inhibits, Relays, Buttons };

}  // namespace switcher

#endif  // SWITCHER_TABLE_H_
