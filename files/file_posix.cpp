// SPDX-License-Identifier: MIT
//
// Where there is POSIX.

#include <fcntl.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <utility>

#include "files/file.h"

namespace files {

namespace {

namespace fs = std::filesystem;

std::error_code LastError() { return {errno, std::generic_category()}; }

std::error_code ResultOf(int result) { return result == 0 ? std::error_code() : LastError(); }

// Neither a pipe nor a device is waited for, should one take the place of the file that was looked
// at.
constexpr int kAlways = O_CLOEXEC | O_NONBLOCK | O_NOCTTY;

fs::path FolderOf(const fs::path& path) {
  const fs::path folder = path.parent_path();
  return folder.empty() ? fs::path(".") : folder;
}

// Lets whoever may write in the folder use a file that was made in it: a cautious umask of the one
// who comes first must not lock the others out.
void ShareAsFolder(int handle, const fs::path& path) {
  struct stat folder {};
  struct stat file {};
  if (stat(FolderOf(path).c_str(), &folder) != 0 || fstat(handle, &file) != 0) return;
  mode_t mode = file.st_mode & 07777;
  if ((folder.st_mode & S_IWGRP) != 0) mode |= S_IRGRP | S_IWGRP;
  if ((folder.st_mode & S_IWOTH) != 0) mode |= S_IROTH;
  // Who may not change the mode of his own file works on a system without modes.
  if (mode != (file.st_mode & 07777)) (void)!fchmod(handle, mode);
}

// Errors of systems that know nothing of what was asked for, or allow it to others only.
bool IsNotForUs(int error) {
  return error == EPERM || error == ENOSYS || error == ENOTSUP || error == EINVAL;
}

}  // namespace

struct File::Handle {
  explicit Handle(int number) : descriptor(number) {}
  ~Handle() { close(descriptor); }
  Handle(const Handle&) = delete;
  Handle& operator=(const Handle&) = delete;

  const int descriptor;
};

File::File() = default;
File::~File() = default;
File::File(File&& other) noexcept = default;
File& File::operator=(File&& other) noexcept = default;

bool File::IsOpen() const { return handle_ != nullptr; }
void File::Close() { handle_.reset(); }

namespace {

std::error_code OpenRegular(const fs::path& path, int flags, int* descriptor) {
  struct stat found {};
  // A device may do something when it is opened, so it is not.
  if (stat(path.c_str(), &found) != 0) return LastError();
  if (!S_ISREG(found.st_mode)) return Error::NotAFile;
  *descriptor = open(path.c_str(), flags | kAlways);
  if (*descriptor < 0) return LastError();
  if (fstat(*descriptor, &found) == 0 && S_ISREG(found.st_mode)) return {};
  close(*descriptor);
  return Error::NotAFile;
}

}  // namespace

std::error_code File::OpenToRead(const fs::path& path, File* file) {
  int descriptor = -1;
  if (const auto error = OpenRegular(path, O_RDONLY, &descriptor)) return error;
  file->handle_ = std::make_unique<Handle>(descriptor);
  return {};
}

std::error_code File::OpenToEdit(const fs::path& path, File* file) {
  int descriptor = -1;
  if (const auto error = OpenRegular(path, O_RDWR, &descriptor)) return error;
  file->handle_ = std::make_unique<Handle>(descriptor);
  return {};
}

std::error_code File::Create(const fs::path& path, Rights rights, File* file) {
  constexpr mode_t kShared = S_IRUSR | S_IWUSR | S_IRGRP | S_IWGRP | S_IROTH;
  constexpr mode_t kPrivate = S_IRUSR | S_IWUSR;
  const int descriptor = open(path.c_str(), O_RDWR | O_CREAT | O_EXCL | O_NOFOLLOW | kAlways,
                              rights == Rights::Private ? kPrivate : kShared);
  if (descriptor < 0) return LastError();
  file->handle_ = std::make_unique<Handle>(descriptor);
  if (rights == Rights::OfFolder) ShareAsFolder(descriptor, path);
  return {};
}

std::error_code File::OpenForLock(const fs::path& path, File* file) {
  // On network drives a lock takes the right to write.
  for (const int flags : {O_RDWR, O_RDONLY}) {
    Kind kind = Kind::Nothing;
    if (const auto error = KindOf(path, &kind)) return error;
    if (kind == Kind::Nothing) {
      const auto error = Create(path, Rights::OfFolder, file);
      // Somebody may have made it in between.
      if (error != std::errc::file_exists) return error;
    } else if (kind != Kind::Regular) {
      return Error::NotAFile;
    }
    const int descriptor = open(path.c_str(), flags | O_NOFOLLOW | kAlways);
    if (descriptor >= 0) {
      auto handle = std::make_unique<Handle>(descriptor);
      struct stat found {};
      // Something else may have taken its place since it was looked at.
      if (fstat(descriptor, &found) != 0) return LastError();
      if (!S_ISREG(found.st_mode)) return Error::NotAFile;
      file->handle_ = std::move(handle);
      return {};
    }
    if (flags == O_RDONLY || (errno != EACCES && errno != EPERM && errno != EROFS)) break;
  }
  return LastError();
}

bool File::IsAt(const fs::path& path) const {
  struct stat open {};
  struct stat there {};
  return fstat(handle_->descriptor, &open) == 0 && stat(path.c_str(), &there) == 0 &&
         open.st_dev == there.st_dev && open.st_ino == there.st_ino;
}

std::error_code File::Size(std::uint64_t* size) const {
  struct stat found {};
  if (fstat(handle_->descriptor, &found) != 0) return LastError();
  *size = static_cast<std::uint64_t>(found.st_size);
  return {};
}

std::error_code File::Read(std::uint64_t offset, std::span<std::uint8_t> bytes) const {
  while (!bytes.empty()) {
    const ssize_t count =
        pread(handle_->descriptor, bytes.data(), bytes.size(), static_cast<off_t>(offset));
    if (count == 0) return Error::Shortened;
    if (count < 0 && errno == EINTR) continue;
    if (count < 0) return LastError();
    offset += static_cast<std::uint64_t>(count);
    bytes = bytes.subspan(static_cast<std::size_t>(count));
  }
  return {};
}

std::error_code File::Write(std::uint64_t offset, std::span<const std::uint8_t> bytes) const {
  while (!bytes.empty()) {
    const ssize_t count =
        pwrite(handle_->descriptor, bytes.data(), bytes.size(), static_cast<off_t>(offset));
    if (count < 0 && errno == EINTR) continue;
    if (count < 0) return LastError();
    // A device may take nothing and say nothing of why; it would be asked for ever.
    if (count == 0) return std::make_error_code(std::errc::io_error);
    offset += static_cast<std::uint64_t>(count);
    bytes = bytes.subspan(static_cast<std::size_t>(count));
  }
  return {};
}

std::error_code File::Truncate(std::uint64_t size) const {
  return ResultOf(ftruncate(handle_->descriptor, static_cast<off_t>(size)));
}

std::error_code File::Sync() const {
  // Some file systems have no such operation.
  if (fsync(handle_->descriptor) == 0 || IsNotForUs(errno)) return {};
  return LastError();
}

std::error_code File::TakeRightsOf(const fs::path& other) const {
  struct stat wanted {};
  struct stat present {};
  if (stat(other.c_str(), &wanted) != 0) return LastError();
  if (fstat(handle_->descriptor, &present) != 0) return LastError();
  // The group may be given when the owner may not.  Neither is a reason to fail.
  const bool isOwned = present.st_uid == wanted.st_uid ||
                       fchown(handle_->descriptor, wanted.st_uid, wanted.st_gid) == 0;
  if (!isOwned || present.st_gid != wanted.st_gid) {
    (void)!fchown(handle_->descriptor, static_cast<uid_t>(-1), wanted.st_gid);
  }
  constexpr mode_t kReadAndWrite = 0777;
  if (fchmod(handle_->descriptor, wanted.st_mode & kReadAndWrite) == 0 || IsNotForUs(errno)) {
    return {};
  }
  return LastError();
}

std::error_code File::LetOwnerWrite() const {
  struct stat found {};
  if (fstat(handle_->descriptor, &found) != 0) return LastError();
  const mode_t mode = (found.st_mode & 07777) | S_IRUSR | S_IWUSR;
  if (mode == (found.st_mode & 07777) || fchmod(handle_->descriptor, mode) == 0 ||
      IsNotForUs(errno)) {
    return {};
  }
  return LastError();
}

std::error_code File::Lock() const {
  return ResultOf(flock(handle_->descriptor, LOCK_EX | LOCK_NB));
}

std::error_code KindOf(const fs::path& path, Kind* kind) {
  struct stat found {};
  *kind = Kind::Nothing;
  if (lstat(path.c_str(), &found) != 0) return errno == ENOENT ? std::error_code() : LastError();
  *kind = S_ISREG(found.st_mode)   ? Kind::Regular
          : S_ISLNK(found.st_mode) ? Kind::Link
                                   : Kind::Other;
  return {};
}

bool IsWriteProtected(const fs::path& path) {
  struct stat found {};
  if (stat(path.c_str(), &found) != 0) return false;
  // The superuser may write it all the same; whoever took the rights away meant him, too.
  if ((found.st_mode & (S_IWUSR | S_IWGRP | S_IWOTH)) == 0) return true;
  if (faccessat(AT_FDCWD, path.c_str(), W_OK, AT_EACCESS) == 0) return false;
  return errno == EACCES || errno == EPERM || errno == EROFS;
}

std::error_code CheckFolder(const fs::path& folder) {
  return ResultOf(faccessat(AT_FDCWD, folder.c_str(), W_OK | X_OK, AT_EACCESS));
}

void SyncFolder(const fs::path& folder) {
  const int handle = open(folder.empty() ? "." : folder.c_str(), O_RDONLY | O_DIRECTORY | kAlways);
  if (handle < 0) return;
  (void)fsync(handle);
  close(handle);
}

}  // namespace files
