// SPDX-License-Identifier: MIT
//
// How libFuzzer changes a database file: mostly within pages, so that all else stays where the
// file's pointers say it is, and often to numbers that mean something there.

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <random>

extern "C" std::size_t LLVMFuzzerMutate(std::uint8_t* data, std::size_t size, std::size_t maxSize);

namespace {

class Mutator {
 public:
  Mutator(std::uint8_t* data, std::size_t size, std::size_t pageSize, unsigned seed)
      : data_(data), pageSize_(pageSize), pages_(size / pageSize), random_(seed) {}

  std::size_t Below(std::size_t limit) { return random_() % limit; }

  void ChangePages() {
    if (Below(24) == 0) {
      std::memmove(data_ + Below(pages_) * pageSize_, data_ + Below(pages_) * pageSize_, pageSize_);
      return;
    }
    for (std::size_t times = 1 + Below(4); times > 0; --times) ChangeNumber();
  }

 private:
  // Heads of pages and what follows them decide more than the rest.
  std::size_t Place() {
    const std::size_t page = Below(pages_) * pageSize_;
    return page + (Below(2) == 0 ? Below(96) : Below(pageSize_ - 4));
  }

  void ChangeNumber() {
    std::uint8_t* const at = data_ + Place();
    switch (Below(7)) {
      case 0:
        *at = static_cast<std::uint8_t>(random_());
        break;
      case 1:
        *at ^= static_cast<std::uint8_t>(1U << Below(8));
        break;
      case 2:
        *at = static_cast<std::uint8_t>(*at + Below(17) - 8);
        break;
      case 3:
        Put(at, 2, Below(pageSize_ + 2));
        break;
      case 4:  // a row pointer, or a page number after a byte
        Put(at, 4, Below(pages_ + 1) << 8 | Below(4));
        break;
      case 5:
        Put(at, 4, Below(pages_ + 1));
        break;
      default:
        std::memmove(at, data_ + Place(), 1 + Below(4));
    }
  }

  static void Put(std::uint8_t* at, int bytes, std::size_t value) {
    for (int i = 0; i < bytes; ++i) at[i] = static_cast<std::uint8_t>(value >> (8 * i));
  }

  std::uint8_t* const data_;
  const std::size_t pageSize_;
  const std::size_t pages_;
  std::minstd_rand random_;
};

}  // namespace

extern "C" std::size_t LLVMFuzzerCustomMutator(std::uint8_t* data, std::size_t size,
                                               std::size_t maxSize, unsigned seed) {
  constexpr std::size_t kVersionAt = 0x14;
  if (size < 4 * 4096) return LLVMFuzzerMutate(data, size, maxSize);
  const std::size_t pageSize = data[kVersionAt] == 0 ? 2048 : 4096;
  const std::size_t whole = size / pageSize * pageSize;
  Mutator mutator(data, size, pageSize, seed);
  const std::size_t what = mutator.Below(16);
  if (what == 0) return LLVMFuzzerMutate(data, size, maxSize);
  const std::size_t room = std::min(maxSize - whole, pageSize - 1);
  if (what < 6 && room > 0) {
    return whole + LLVMFuzzerMutate(data + whole, std::min(size - whole, room), room);
  }
  mutator.ChangePages();
  return size;
}
