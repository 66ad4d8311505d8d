// SPDX-License-Identifier: MIT

#ifndef TESTS_FUZZ_FUZZED_SYSTEM_H_
#define TESTS_FUZZ_FUZZED_SYSTEM_H_

#include <cstdint>

#include "tests/support/message_codecs.h"

namespace fuzz {

// The system that the first byte of an input stands for: of 0 to 127 channels, or of an even number
// up to 256.
inline test::MessageCounts SystemOf(std::uint8_t byte) {
  const int channels = byte < 128 ? byte : 2 * byte - 254;
  return {.channels = channels,
          .stations = channels,
          .labels = channels,
          .buttons = 4,
          .optos = 2,
          .relays = 16,
          .targets = channels / 8 * 8};
}

}  // namespace fuzz

#endif  // TESTS_FUZZ_FUZZED_SYSTEM_H_
