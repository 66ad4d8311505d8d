// SPDX-License-Identifier: MIT
//
// Bytes as text, so that tests spell them out.

#ifndef TESTS_SUPPORT_HEX_H_
#define TESTS_SUPPORT_HEX_H_

#include <cstdint>
#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace test {

// "FD 02 00 FF" to bytes.  White space between the digits is skipped; anything else that is
// no pair of hexadecimal digits throws std::invalid_argument, which fails the test.
std::vector<std::uint8_t> FromHex(std::string_view text);

// Bytes to "FD 02 00 FF".
std::string Hex(std::span<const std::uint8_t> bytes);

// The bytes `count` times over, each time with a blank behind them.
std::string Times(int count, std::string_view hex);

}  // namespace test

#endif  // TESTS_SUPPORT_HEX_H_
