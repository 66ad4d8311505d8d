// SPDX-License-Identifier: MIT

#ifndef TESKPANEL_HEX_H_
#define TESKPANEL_HEX_H_

#include <cstdint>
#include <string>

namespace teskpanel {

// Two digits: "0F".
inline std::string Hex(std::uint8_t byte) {
  constexpr char kDigits[] = "0123456789ABCDEF";
  return {kDigits[byte >> 4], kDigits[byte & 15]};
}

}  // namespace teskpanel

#endif  // TESKPANEL_HEX_H_
