// SPDX-License-Identifier: MIT
//
// Where there is only the standard library: the same without owners, without a disk that can be
// waited for, and without locks.

#include <algorithm>
#include <cerrno>
#include <cstdio>
#include <cstring>
#include <string>

#include "files/file.h"

namespace files {

namespace {

namespace fs = std::filesystem;

std::error_code LastError() { return {errno, std::generic_category()}; }

std::FILE* OpenStream(const fs::path& path, const char* mode) {
  errno = 0;
#ifdef _WIN32
  return _wfopen(path.c_str(), std::wstring(mode, mode + std::strlen(mode)).c_str());
#else
  return std::fopen(path.c_str(), mode);
#endif
}

std::FILE* OpenRegular(const fs::path& path, const char* mode, std::error_code* error) {
  const fs::file_status found = fs::status(path, *error);
  if (found.type() == fs::file_type::none) return nullptr;
  *error = {};
  if (fs::exists(found) && !fs::is_regular_file(found)) {
    *error = Error::NotAFile;
    return nullptr;
  }
  std::FILE* const stream = OpenStream(path, mode);
  if (stream == nullptr) *error = LastError();
  return stream;
}

bool Seek(std::FILE* stream, std::uint64_t offset) {
#ifdef _WIN32
  return _fseeki64(stream, static_cast<long long>(offset), SEEK_SET) == 0;
#else
  return std::fseek(stream, static_cast<long>(offset), SEEK_SET) == 0;
#endif
}

}  // namespace

struct File::Handle {
  // Unbuffered, so that a write that has returned is with the operating system.
  Handle(std::FILE* opened, fs::path named)
      : stream(opened), path(fs::absolute(std::move(named), ignored)) {
    std::setvbuf(stream, nullptr, _IONBF, 0);
  }
  ~Handle() { std::fclose(stream); }
  Handle(const Handle&) = delete;
  Handle& operator=(const Handle&) = delete;

  std::error_code ignored;
  std::FILE* const stream;
  const fs::path path;
};

File::File() = default;
File::~File() = default;
File::File(File&& other) noexcept = default;
File& File::operator=(File&& other) noexcept = default;

bool File::IsOpen() const { return handle_ != nullptr; }
void File::Close() { handle_.reset(); }

std::error_code File::OpenToRead(const fs::path& path, File* file) {
  std::error_code error;
  std::FILE* const stream = OpenRegular(path, "rb", &error);
  if (stream != nullptr) file->handle_ = std::make_unique<Handle>(stream, path);
  return error;
}

std::error_code File::OpenToEdit(const fs::path& path, File* file) {
  std::error_code error;
  std::FILE* const stream = OpenRegular(path, "r+b", &error);
  if (stream != nullptr) file->handle_ = std::make_unique<Handle>(stream, path);
  return error;
}

std::error_code File::Create(const fs::path& path, Rights rights, File* file) {
  std::FILE* const stream = OpenStream(path, "w+bx");
  if (stream == nullptr) return LastError();
  file->handle_ = std::make_unique<Handle>(stream, path);
  std::error_code error;
  if (rights == Rights::Private) {
    fs::permissions(path, fs::perms::owner_read | fs::perms::owner_write, error);
  }
  return {};
}

std::error_code File::OpenForLock(const fs::path& path, File* file) {
  const std::error_code error = Create(path, Rights::OfFolder, file);
  return error == std::errc::file_exists ? OpenToRead(path, file) : error;
}

// Where nothing says which file is open, one of that name is taken for it.
bool File::IsAt(const fs::path& path) const {
  std::error_code error;
  return fs::is_regular_file(path, error);
}

std::error_code File::Size(std::uint64_t* size) const {
  std::error_code error;
  *size = fs::file_size(handle_->path, error);
  return error;
}

std::error_code File::Read(std::uint64_t offset, std::span<std::uint8_t> bytes) const {
  errno = 0;
  if (!Seek(handle_->stream, offset)) return LastError();
  if (std::fread(bytes.data(), 1, bytes.size(), handle_->stream) == bytes.size()) return {};
  const bool failed = std::ferror(handle_->stream) != 0;
  std::clearerr(handle_->stream);
  return failed ? LastError() : std::error_code(Error::Shortened);
}

std::error_code File::Write(std::uint64_t offset, std::span<const std::uint8_t> bytes) const {
  errno = 0;
  if (!Seek(handle_->stream, offset)) return LastError();
  if (std::fwrite(bytes.data(), 1, bytes.size(), handle_->stream) == bytes.size()) return {};
  std::clearerr(handle_->stream);
  return LastError();
}

std::error_code File::Truncate(std::uint64_t size) const {
  std::error_code error;
  fs::resize_file(handle_->path, size, error);
  return error;
}

std::error_code File::Sync() const {
  return std::fflush(handle_->stream) == 0 ? std::error_code() : LastError();
}

std::error_code File::TakeRightsOf(const fs::path& other) const {
  std::error_code error;
  const fs::file_status wanted = fs::status(other, error);
  if (!error) fs::permissions(handle_->path, wanted.permissions(), error);
  return error;
}

std::error_code File::LetOwnerWrite() const {
  std::error_code error;
  fs::permissions(handle_->path, fs::perms::owner_read | fs::perms::owner_write,
                  fs::perm_options::add, error);
  return error;
}

std::error_code File::Lock() const { return std::make_error_code(std::errc::no_lock_available); }

std::error_code KindOf(const fs::path& path, Kind* kind) {
  std::error_code error;
  const fs::file_status found = fs::symlink_status(path, error);
  *kind = Kind::Nothing;
  if (found.type() == fs::file_type::not_found) return {};
  if (error) return error;
  *kind = fs::is_regular_file(found) ? Kind::Regular
          : fs::is_symlink(found)    ? Kind::Link
                                     : Kind::Other;
  return {};
}

bool IsWriteProtected(const fs::path& path) {
  constexpr fs::perms kWrite =
      fs::perms::owner_write | fs::perms::group_write | fs::perms::others_write;
  std::error_code error;
  const fs::file_status found = fs::status(path, error);
  return fs::exists(found) && (found.permissions() & kWrite) == fs::perms::none;
}

// Only a try tells.
std::error_code CheckFolder(const fs::path& folder) {
  const fs::path path = folder / "WorkingDb.try";
  {
    File file;
    const std::error_code error = File::Create(path, Rights::Private, &file);
    if (error == std::errc::file_exists) return {};
    if (error) return error;
  }
  std::error_code error;
  fs::remove(path, error);
  return error;
}

void SyncFolder(const fs::path& /*folder*/) {}

}  // namespace files
