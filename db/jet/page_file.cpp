// SPDX-License-Identifier: MIT

#include "db/jet/page_file.h"

#include <algorithm>
#include <string>
#include <utility>

#include "db/jet/system_error.h"
#include "files/whole_file.h"

namespace jet {
namespace {

// What the operating system says of an operation that was tried on the file.
Status SystemError(std::error_code error, const std::string& tried) {
  return Status(NumberOf(error), tried + ": " + error.message());
}

class DiskPageFile : public PageFile {
 public:
  explicit DiskPageFile(std::shared_ptr<files::File> file) : file_(std::move(file)) {}

  Status Size(std::uint64_t* size) override {
    const std::error_code error = file_->Size(size);
    return error ? SystemError(error, "The file has no size") : Status();
  }

  Status Read(std::uint64_t offset, std::span<std::uint8_t> bytes) override {
    const std::error_code error = file_->Read(offset, bytes);
    return error ? SystemError(error, "The file cannot be read") : Status();
  }

  Status Write(std::uint64_t offset, std::span<const std::uint8_t> bytes) override {
    const std::error_code error = file_->Write(offset, bytes);
    return error ? SystemError(error, "The file cannot be written") : Status();
  }

  Status Truncate(std::uint64_t size) override {
    const std::error_code error = file_->Truncate(size);
    return error ? SystemError(error, "The file cannot be cut") : Status();
  }

 private:
  const std::shared_ptr<files::File> file_;
};

Status Named(const std::filesystem::path& path, std::error_code error, const char* tried) {
  return SystemError(error, "\"" + path.string() + "\" cannot be " + tried);
}

}  // namespace

std::unique_ptr<PageFile> MakePageFile(std::shared_ptr<files::File> file) {
  return std::make_unique<DiskPageFile>(std::move(file));
}

Status OpenPageFile(const std::filesystem::path& path, bool writable,
                    std::unique_ptr<PageFile>* file) {
  files::File opened;
  const std::error_code error =
      writable ? files::File::OpenToEdit(path, &opened) : files::File::OpenToRead(path, &opened);
  if (error) return Named(path, error, "opened");
  *file = MakePageFile(std::make_shared<files::File>(std::move(opened)));
  return {};
}

Status CreatePageFile(const std::filesystem::path& path, std::unique_ptr<PageFile>* file) {
  if (const files::Outcome removed = files::Remove(path); !removed.ok()) {
    return Named(path, removed.error, "replaced");
  }
  files::File created;
  if (const auto error = files::File::Create(path, files::Rights::OfFolder, &created)) {
    return Named(path, error, "opened");
  }
  *file = MakePageFile(std::make_shared<files::File>(std::move(created)));
  return {};
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
