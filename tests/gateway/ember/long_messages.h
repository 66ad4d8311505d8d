// SPDX-License-Identifier: MIT
//
// The messages that cost the open gateway most, each of as many values as one may have.

#ifndef TESTS_GATEWAY_EMBER_LONG_MESSAGES_H_
#define TESTS_GATEWAY_EMBER_LONG_MESSAGES_H_

#include <vector>

#include "gateway/ember/ber.h"
#include "gateway/ember/glow.h"
#include "gateway/ember/s101.h"

namespace test {

// GetDirectory of the root, of four values each and two around them.
inline constexpr int kManyQuestions = static_cast<int>(ember::kMostBer - 2) / 4;
inline ember::Bytes ManyQuestions() {
  using ember::BerValue;
  const ember::Bytes command =
      BerValue(ember::Application(2), BerValue(ember::Context(0), ember::BerInteger(32)));
  return ember::GlowMessage(std::vector<ember::Bytes>(kManyQuestions, command));
}

// Connections of the matrix, of six values each and seven around them.
inline constexpr int kManyConnections = static_cast<int>(ember::kMostBer - 7) / 6;
inline ember::Bytes ManyConnections(int channels) {
  using ember::BerValue;
  using ember::Context;
  ember::Bytes all;
  for (int i = 0; i < kManyConnections; ++i) {
    const std::vector<int> sources{(i / channels + i) % channels};
    const ember::Bytes connection = BerValue(
        Context(0),
        BerValue(ember::Application(16), {BerValue(Context(0), ember::BerInteger(i % channels)),
                                          BerValue(Context(1), ember::BerOid(sources))}));
    all.insert(all.end(), connection.begin(), connection.end());
  }
  const std::vector<int> matrix{1, 2};
  const std::vector<ember::Bytes> elements{
      BerValue(ember::Application(17), {BerValue(Context(0), ember::BerOid(matrix)),
                                        BerValue(Context(5), BerValue(ember::kSequence, all))})};
  return ember::GlowMessage(elements);
}

// The smallest values, as many as a message has room for: refused when they are too many.
inline ember::Bytes TooManyValues() {
  ember::Bytes values;
  for (std::size_t i = 0; i < ember::FrameReader::kLongestMessage / 2; ++i) {
    values.insert(values.end(), {0x05, 0x00});
  }
  return values;
}

}  // namespace test

#endif  // TESTS_GATEWAY_EMBER_LONG_MESSAGES_H_
