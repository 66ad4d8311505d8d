// SPDX-License-Identifier: MIT

#include "files/local_time.h"

#include <array>

namespace files {

// Unlike std::localtime() the system's own calls share nothing with other threads.
std::optional<std::tm> LocalTime(std::time_t instant) {
  std::tm local{};
#ifdef _WIN32
  const bool isKnown = localtime_s(&local, &instant) == 0;
#else
  const bool isKnown = localtime_r(&instant, &local) != nullptr;
#endif
  return isKnown ? std::optional(local) : std::nullopt;
}

std::string LocalTimeText(std::time_t instant, const char* format) {
  const std::optional<std::tm> local = LocalTime(instant);
  if (!local) return {};
  std::array<char, 32> text{};
  (void)std::strftime(text.data(), text.size(), format, &*local);
  return text.data();
}

}  // namespace files
