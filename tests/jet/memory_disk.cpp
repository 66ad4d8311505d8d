// SPDX-License-Identifier: MIT

#include "tests/jet/memory_disk.h"

#include <algorithm>

namespace test {
namespace {

using jet::ErrorNumber;
using jet::Status;

class DiskFile : public jet::PageFile {
 public:
  explicit DiskFile(MemoryDisk& disk) : disk_(disk) {}

  Status Size(std::uint64_t* size) override {
    *size = disk_.content.size();
    return {};
  }

  Status Read(std::uint64_t offset, std::span<std::uint8_t> bytes) override {
    if (disk_.readsUntilFailure == 0) return Status(ErrorNumber::DiskError, "The disk is broken");
    if (disk_.readsUntilFailure > 0) --disk_.readsUntilFailure;
    if (offset + bytes.size() > disk_.content.size()) {
      return Status(ErrorNumber::DiskError, "Read past the end of the file");
    }
    std::copy_n(disk_.content.begin() + static_cast<std::ptrdiff_t>(offset), bytes.size(),
                bytes.begin());
    return {};
  }

  Status Write(std::uint64_t offset, std::span<const std::uint8_t> bytes) override {
    ++disk_.writes;
    const bool isFull = disk_.writesUntilFull == 0 && disk_.fullFor != 0;
    if (disk_.writesUntilFull > 0) --disk_.writesUntilFull;
    if (isFull) {
      if (disk_.fullFor > 0) --disk_.fullFor;
      bytes = bytes.first(bytes.size() / 2);
    }
    const std::size_t end = offset + bytes.size();
    if (end > disk_.content.size()) disk_.content.resize(end);
    std::copy(bytes.begin(), bytes.end(),
              disk_.content.begin() + static_cast<std::ptrdiff_t>(offset));
    return isFull ? Status(ErrorNumber::DiskFull, "The disk is full") : Status();
  }

  Status Truncate(std::uint64_t size) override {
    if (disk_.truncateFails) return Status(ErrorNumber::DiskError, "The disk is broken");
    disk_.content.resize(size);
    return {};
  }

 private:
  MemoryDisk& disk_;
};

}  // namespace

std::unique_ptr<jet::PageFile> MemoryDisk::NewFile() { return std::make_unique<DiskFile>(*this); }

}  // namespace test
