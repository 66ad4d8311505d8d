// SPDX-License-Identifier: MIT

#include "db/jet/open_stream.h"

#ifdef _WIN32
#include <cstring>
#include <string>
#endif

namespace jet {

std::FILE* OpenStream(const std::filesystem::path& path, const char* mode) {
#ifdef _WIN32
  const std::wstring wide(mode, mode + std::strlen(mode));
  return _wfopen(path.c_str(), wide.c_str());
#else
  return std::fopen(path.c_str(), mode);
#endif
}

}  // namespace jet
