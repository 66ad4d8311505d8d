// SPDX-License-Identifier: MIT

#ifndef TESTS_SUPPORT_DAMAGED_FILE_H_
#define TESTS_SUPPORT_DAMAGED_FILE_H_

#include <algorithm>
#include <stdexcept>
#include <string>

#include "tests/support/temporary_folder.h"

namespace test {

// Zeroes the page of a database file on which a text stands, with all records that are there.
inline void ZeroPageOf(const std::filesystem::path& file, const std::string& text) {
  constexpr std::size_t kPage = 4096;
  std::string bytes = ReadFile(file);
  const std::size_t at = bytes.find(text);
  if (at == std::string::npos) throw std::runtime_error("not in the file: " + text);
  std::fill_n(bytes.begin() + static_cast<std::ptrdiff_t>(at / kPage * kPage), kPage, '\0');
  WriteFile(file, bytes);
}

}  // namespace test

#endif  // TESTS_SUPPORT_DAMAGED_FILE_H_
