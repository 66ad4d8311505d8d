// SPDX-License-Identifier: MIT

#include "db/file_copy.h"

#include <cerrno>
#include <cstdio>
#include <memory>
#include <string>
#include <system_error>
#include <vector>

#ifdef _WIN32
#include <io.h>
#else
#include <fcntl.h>
#include <unistd.h>
#endif

#include "db/jet/open_stream.h"
#include "db/jet/status.h"

namespace db {

namespace {

namespace fs = std::filesystem;

struct CloseFile {
  void operator()(std::FILE* file) const { std::fclose(file); }
};
using File = std::unique_ptr<std::FILE, CloseFile>;

std::string Name(const fs::path& path) {
  const std::u8string name = path.filename().u8string();
  return {name.begin(), name.end()};
}

// "Cannot write Tesk.mdb: No space left on device", under the number that fits.
model::Status Failure(const char* what, const fs::path& path, std::error_code error) {
  using jet::ErrorNumber;
  ErrorNumber number = ErrorNumber::DiskError;
  if (error == std::errc::no_such_file_or_directory) number = ErrorNumber::FileNotFound;
  if (error == std::errc::no_space_on_device) number = ErrorNumber::DiskFull;
  if (error == std::errc::permission_denied || error == std::errc::operation_not_permitted ||
      error == std::errc::read_only_file_system) {
    number = ErrorNumber::CannotOpen;
  }
  return jet::Status(number,
                     std::string("Cannot ") + what + " " + Name(path) + ": " + error.message());
}

std::error_code LastError() { return {errno, std::generic_category()}; }

bool BringToDisk(std::FILE* file) {
  if (std::fflush(file) != 0) return false;
#ifdef _WIN32
  return _commit(_fileno(file)) == 0;
#else
  return fsync(fileno(file)) == 0;
#endif
}

// Makes a rename last through a power cut.  Where a folder cannot be brought to the disk the
// rename is still whole, only perhaps not the last word; that is no failure.
void BringFolderToDisk([[maybe_unused]] const fs::path& folder) {
#ifndef _WIN32
  const int handle = open(folder.empty() ? "." : folder.c_str(), O_RDONLY | O_CLOEXEC);
  if (handle < 0) return;
  (void)fsync(handle);
  close(handle);
#endif
}

model::Status WriteCopy(const fs::path& from, const fs::path& to) {
  const File source(jet::OpenStream(from, "rb"));
  if (!source) return Failure("read", from, LastError());
  File copy(jet::OpenStream(to, "wb"));
  if (!copy) return Failure("write", to, LastError());
  std::vector<char> block(std::size_t{1} << 16);
  for (;;) {
    const std::size_t count = std::fread(block.data(), 1, block.size(), source.get());
    if (count == 0) break;
    if (std::fwrite(block.data(), 1, count, copy.get()) != count) {
      return Failure("write", to, LastError());
    }
  }
  if (std::ferror(source.get()) != 0) return Failure("read", from, LastError());
  if (!BringToDisk(copy.get())) return Failure("write", to, LastError());
  if (std::fclose(copy.release()) != 0) return Failure("write", to, LastError());
  return {};
}

// What a link leads to, over several links if need be.  The last one need not be there: a drive
// that is away is no reason to put a file in the link's place.
fs::path Target(fs::path path) {
  constexpr int kMostLinks = 40;  // as the system follows
  std::error_code error;
  for (int links = 0; links < kMostLinks && fs::is_symlink(path, error); ++links) {
    const fs::path next = fs::read_symlink(path, error);
    if (error) break;
    path = path.parent_path() / next;
  }
  return path;
}

}  // namespace

model::Status CopyFile(const fs::path& from, const fs::path& to) {
  std::error_code error;
  fs::copy_file(from, to, error);
  if (error) return Failure("copy", from, error);
  fs::permissions(to, fs::perms::owner_read | fs::perms::owner_write, fs::perm_options::add, error);
  if (error) return Failure("write", to, error);
  return {};
}

model::Status ReplaceFile(const fs::path& from, const fs::path& to) {
  const fs::path beside = Beside(to);
  std::error_code error;
  const fs::file_status replaced = fs::status(to, error);
  model::Status status = WriteCopy(from, beside);
  if (status.ok() && fs::exists(replaced)) {
    fs::permissions(beside, replaced.permissions(), error);
    if (error) status = Failure("write", beside, error);
  }
  if (status.ok()) status = PutInPlace(to);
  if (!status.ok()) fs::remove(beside, error);  // what cannot be removed is overwritten next time
  return status;
}

fs::path Beside(const fs::path& to) {
  fs::path beside = Target(to);
  beside += ".new";
  return beside;
}

model::Status BringToDisk(const fs::path& path) {
  const File file(jet::OpenStream(path, "r+b"));
  if (!file || !BringToDisk(file.get())) return Failure("write", path, LastError());
  return {};
}

model::Status PutInPlace(const fs::path& to) {
  const fs::path beside = Beside(to);
  const fs::path target = Target(to);
  std::error_code error;
  fs::rename(beside, target, error);
  if (error) return Failure("replace", target, error);
  BringFolderToDisk(target.parent_path());
  return {};
}

model::Status RemoveFile(const fs::path& path) {
  std::error_code error;
  fs::remove(path, error);
  if (error) return Failure("delete", path, error);
  return {};
}

}  // namespace db
