// SPDX-License-Identifier: MIT

#ifndef TESTS_JET_MEMORY_DISK_H_
#define TESTS_JET_MEMORY_DISK_H_

#include <cstdint>
#include <memory>
#include <vector>

#include "db/jet/page_file.h"

namespace test {

// A file that outlives the database on it, so that a test can look at its bytes, open it again
// and make its reads and writes fail.
class MemoryDisk {
 public:
  MemoryDisk() = default;
  explicit MemoryDisk(std::vector<std::uint8_t> bytes) : content(std::move(bytes)) {}
  MemoryDisk(const MemoryDisk&) = delete;
  MemoryDisk& operator=(const MemoryDisk&) = delete;

  // A handle of the file.  The disk must outlive it.
  std::unique_ptr<jet::PageFile> NewFile();

  std::vector<std::uint8_t> content;
  int writes = 0;              // tried so far
  int writesUntilFull = -1;    // so many more succeed; -1 for all
  int fullFor = -1;            // so many then fail, having written half; -1 for all that follow
  int readsUntilFailure = -1;  // so many more succeed; -1 for all
  bool truncateFails = false;
};

}  // namespace test

#endif  // TESTS_JET_MEMORY_DISK_H_
