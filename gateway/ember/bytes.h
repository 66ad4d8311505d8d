// SPDX-License-Identifier: MIT

#ifndef GATEWAY_EMBER_BYTES_H_
#define GATEWAY_EMBER_BYTES_H_

#include <cstdint>
#include <vector>

namespace ember {

using Bytes = std::vector<std::uint8_t>;

}  // namespace ember

#endif  // GATEWAY_EMBER_BYTES_H_
