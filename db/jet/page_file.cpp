// SPDX-License-Identifier: MIT

#include "db/jet/page_file.h"

#include <algorithm>
#include <cerrno>
#include <cstdio>
#include <string>
#include <system_error>

#include "db/jet/open_stream.h"

namespace jet {
namespace {

std::string Reason(int error) { return std::generic_category().message(error); }

// What the operating system's `error` means for an operation that was tried on the file.
Status SystemError(int error, const char* tried) {
  const std::string text = std::string(tried) + ": " + Reason(error);
  switch (error) {
    case ENOENT:
    case ENOTDIR:
      return Status(ErrorNumber::FileNotFound, text);
    case EACCES:
    case EPERM:
    case EROFS:
    case EISDIR:
    case ETXTBSY:
      return Status(ErrorNumber::CannotOpen, text);
    case ENOSPC:
    case EFBIG:
#ifdef EDQUOT  // quotas are not known everywhere
    case EDQUOT:
#endif
      return Status(ErrorNumber::DiskFull, text);
    default:
      return Status(ErrorNumber::DiskError, text);
  }
}

// Unbuffered, so that a write that has returned is with the operating system.
class DiskPageFile : public PageFile {
 public:
  DiskPageFile(std::FILE* stream, std::filesystem::path path)
      : stream_(stream), path_(std::move(path)) {
    std::setvbuf(stream_, nullptr, _IONBF, 0);
  }
  ~DiskPageFile() override { std::fclose(stream_); }
  DiskPageFile(const DiskPageFile&) = delete;
  DiskPageFile& operator=(const DiskPageFile&) = delete;

  Status Size(std::uint64_t* size) override {
    errno = 0;
    if (std::fseek(stream_, 0, SEEK_END) != 0) return SystemError(errno, "The file has no size");
    const long end = std::ftell(stream_);
    if (end < 0) return SystemError(errno, "The file has no size");
    *size = static_cast<std::uint64_t>(end);
    return {};
  }

  Status Read(std::uint64_t offset, std::span<std::uint8_t> bytes) override {
    errno = 0;
    if (!Seek(offset)) return SystemError(errno, "The file cannot be read");
    if (std::fread(bytes.data(), 1, bytes.size(), stream_) == bytes.size()) return {};
    if (std::ferror(stream_) != 0) {
      std::clearerr(stream_);
      return SystemError(errno, "The file cannot be read");
    }
    std::clearerr(stream_);
    return Status(ErrorNumber::DiskError, "The file has become shorter while it was open");
  }

  Status Write(std::uint64_t offset, std::span<const std::uint8_t> bytes) override {
    errno = 0;
    if (!Seek(offset)) return SystemError(errno, "The file cannot be written");
    if (std::fwrite(bytes.data(), 1, bytes.size(), stream_) == bytes.size()) return {};
    std::clearerr(stream_);
    return SystemError(errno, "The file cannot be written");
  }

  Status Truncate(std::uint64_t size) override {
    std::error_code error;
    std::filesystem::resize_file(path_, size, error);
    return error ? SystemError(error.value(), "The file cannot be cut") : Status();
  }

 private:
  // The largest file of the format, 2 GiB, is within the reach of `long` everywhere.
  bool Seek(std::uint64_t offset) {
    return std::fseek(stream_, static_cast<long>(offset), SEEK_SET) == 0;
  }

  std::FILE* const stream_;
  const std::filesystem::path path_;
};

Status OpenMode(const std::filesystem::path& path, const char* mode,
                std::unique_ptr<PageFile>* file) {
  std::error_code ignored;
  // A stream on a folder opens in some systems, one on a pipe waits for its other end.
  const auto type = std::filesystem::status(path, ignored).type();
  if (type != std::filesystem::file_type::regular &&
      type != std::filesystem::file_type::not_found && type != std::filesystem::file_type::none) {
    return Status(ErrorNumber::CannotOpen, "\"" + path.string() + "\" is not a file");
  }
  errno = 0;
  std::FILE* stream = OpenStream(path, mode);
  if (stream == nullptr) {
    const std::string tried = "\"" + path.string() + "\" cannot be opened";
    return SystemError(errno, tried.c_str());
  }
  *file = std::make_unique<DiskPageFile>(stream, std::filesystem::absolute(path, ignored));
  return {};
}

}  // namespace

Status OpenPageFile(const std::filesystem::path& path, bool writable,
                    std::unique_ptr<PageFile>* file) {
  return OpenMode(path, writable ? "r+b" : "rb", file);
}

Status CreatePageFile(const std::filesystem::path& path, std::unique_ptr<PageFile>* file) {
  return OpenMode(path, "w+b", file);
}

Status MemoryPageFile::Size(std::uint64_t* size) {
  *size = content_.size();
  return {};
}

Status MemoryPageFile::Read(std::uint64_t offset, std::span<std::uint8_t> bytes) {
  if (offset > content_.size() || content_.size() - offset < bytes.size()) {
    return Status(ErrorNumber::DiskError, "The file ends before the bytes to be read");
  }
  std::copy_n(content_.begin() + static_cast<std::ptrdiff_t>(offset), bytes.size(), bytes.begin());
  return {};
}

Status MemoryPageFile::Write(std::uint64_t offset, std::span<const std::uint8_t> bytes) {
  if (content_.size() < offset + bytes.size()) content_.resize(offset + bytes.size());
  std::copy(bytes.begin(), bytes.end(), content_.begin() + static_cast<std::ptrdiff_t>(offset));
  return {};
}

Status MemoryPageFile::Truncate(std::uint64_t size) {
  if (size < content_.size()) content_.resize(size);
  return {};
}

}  // namespace jet
