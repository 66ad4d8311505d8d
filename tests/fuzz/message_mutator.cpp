// SPDX-License-Identifier: MIT
//
// How libFuzzer changes a stream of messages: as it likes, but now and then it puts a good message
// of the input's system between two others, so that every message is there without a file of its
// own.

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <iterator>
#include <random>
#include <vector>

#include "switcher/wire/frame.h"
#include "tests/fuzz/fuzzed_system.h"

extern "C" std::size_t LLVMFuzzerMutate(std::uint8_t* data, std::size_t size, std::size_t maxSize);

extern "C" std::size_t LLVMFuzzerCustomMutator(std::uint8_t* data, std::size_t size,
                                               std::size_t maxSize, unsigned seed) {
  std::minstd_rand random(seed);
  const auto below = [&](std::size_t limit) { return random() % limit; };
  if (size == 0 || below(8) != 0) return LLVMFuzzerMutate(data, size, maxSize);

  const switcher::MessageKind& kind = switcher::kMessages[below(std::size(switcher::kMessages))];
  const switcher::Bytes message = test::ExampleMessage(kind.code, fuzz::SystemOf(data[0]));
  if (size + message.size() > maxSize) return LLVMFuzzerMutate(data, size, maxSize);
  std::vector<std::uint8_t*> places = {data + 1, data + size};
  for (std::uint8_t* byte = data + 1; byte != data + size; ++byte) {
    if (*byte == switcher::kEndOfMessage) places.push_back(byte + 1);
  }
  std::uint8_t* const place = places[below(places.size())];
  std::copy_backward(place, data + size, data + size + message.size());
  std::ranges::copy(message, place);
  return size + message.size();
}
