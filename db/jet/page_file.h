// SPDX-License-Identifier: MIT
//
// The only code that reads and writes the file.

#ifndef DB_JET_PAGE_FILE_H_
#define DB_JET_PAGE_FILE_H_

#include <cstdint>
#include <filesystem>
#include <memory>
#include <span>
#include <vector>

#include "db/jet/status.h"
#include "files/file.h"

namespace jet {

// Bytes that can be read and written by position.
class PageFile {
 public:
  virtual ~PageFile() = default;

  virtual Status Size(std::uint64_t* size) = 0;
  // Reads exactly bytes.size() bytes.
  virtual Status Read(std::uint64_t offset, std::span<std::uint8_t> bytes) = 0;
  // Writes all bytes; the file grows when they reach past its end.
  virtual Status Write(std::uint64_t offset, std::span<const std::uint8_t> bytes) = 0;
  // Cuts the file to `size`.
  virtual Status Truncate(std::uint64_t size) = 0;
};

// A file on disk.  It is closed with the object.
// FileNotFound, CannotOpen (no permission, or not a file), DiskError.
Status OpenPageFile(const std::filesystem::path& path, bool writable,
                    std::unique_ptr<PageFile>* file);
// The same for a new file; a file or a link of that name is deleted before.
Status CreatePageFile(const std::filesystem::path& path, std::unique_ptr<PageFile>* file);
// The same for a file that is open.
std::unique_ptr<PageFile> MakePageFile(std::shared_ptr<files::File> file);

// The twin in memory.
class MemoryPageFile : public PageFile {
 public:
  MemoryPageFile() = default;
  explicit MemoryPageFile(std::vector<std::uint8_t> content) : content_(std::move(content)) {}

  Status Size(std::uint64_t* size) override;
  Status Read(std::uint64_t offset, std::span<std::uint8_t> bytes) override;
  Status Write(std::uint64_t offset, std::span<const std::uint8_t> bytes) override;
  Status Truncate(std::uint64_t size) override;

  const std::vector<std::uint8_t>& Content() const { return content_; }

 private:
  std::vector<std::uint8_t> content_;
};

}  // namespace jet

#endif  // DB_JET_PAGE_FILE_H_
