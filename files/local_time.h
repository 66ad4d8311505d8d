// SPDX-License-Identifier: MIT
//
// The clock on the wall.  All may be called in any thread.

#ifndef FILES_LOCAL_TIME_H_
#define FILES_LOCAL_TIME_H_

#include <ctime>
#include <optional>
#include <string>

namespace files {

// An instant on that clock; nothing when it does not know it.
std::optional<std::tm> LocalTime(std::time_t instant);

// The same in the form of strftime(); at most 31 characters long.  Empty when the clock does not
// know it.
std::string LocalTimeText(std::time_t instant, const char* format);

}  // namespace files

#endif  // FILES_LOCAL_TIME_H_
