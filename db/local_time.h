// SPDX-License-Identifier: MIT

#ifndef DB_LOCAL_TIME_H_
#define DB_LOCAL_TIME_H_

#include <ctime>
#include <string>

namespace db {

// An instant on the clock on the wall, in the form of strftime(); at most 31 characters long.
// Empty when that clock does not know it.  May be called in any thread.
std::string LocalTimeText(std::time_t instant, const char* format);

}  // namespace db

#endif  // DB_LOCAL_TIME_H_
