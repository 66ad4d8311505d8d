// SPDX-License-Identifier: MIT

#include "db/local_time.h"

#include <array>

namespace db {

std::string LocalTimeText(std::time_t instant, const char* format) {
  std::array<char, 32> text{};
  std::tm local{};
  // Unlike std::localtime() it shares nothing with other threads.
  if (localtime_r(&instant, &local) == nullptr) return {};
  (void)std::strftime(text.data(), text.size(), format, &local);
  return text.data();
}

}  // namespace db
