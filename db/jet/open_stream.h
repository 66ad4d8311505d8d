// SPDX-License-Identifier: MIT

#ifndef DB_JET_OPEN_STREAM_H_
#define DB_JET_OPEN_STREAM_H_

#include <cstdio>
#include <filesystem>

namespace jet {

// std::fopen for a path: every character of it counts, also where the narrow form would lose
// some.  Null, with errno set, when the file cannot be opened.
std::FILE* OpenStream(const std::filesystem::path& path, const char* mode);

}  // namespace jet

#endif  // DB_JET_OPEN_STREAM_H_
