// SPDX-License-Identifier: MIT
//
// The files of the operating system.  Everything that the program keeps goes through here, so
// that nothing but a regular file is ever opened, waited for or replaced, and no file is made
// through a link that somebody has laid there.

#ifndef FILES_FILE_H_
#define FILES_FILE_H_

#include <cstddef>
#include <cstdint>
#include <filesystem>
#include <memory>
#include <span>
#include <system_error>

namespace files {

// Reasons that are not the system's own.
enum class Error {
  NotAFile = 1,    // a folder, a pipe, a device, a socket
  TooLarge,        // larger than its reader takes
  WriteProtected,  // there, and not to be changed
  Shortened,       // has become shorter while it was open
};
std::error_code make_error_code(Error error);

// Whom a new file is for.  Never may others write it.
enum class Rights {
  OfFolder,  // as usual for the user; whoever may write in the folder may use it, too
  Private,   // its owner alone
};

// An open regular file.  It is closed with the object.
class File {
 public:
  File();
  ~File();
  File(File&& other) noexcept;
  File& operator=(File&& other) noexcept;

  // Opens a file that is there; a link to one counts.  NotAFile at once for anything else.
  static std::error_code OpenToRead(const std::filesystem::path& path, File* file);
  static std::error_code OpenToEdit(const std::filesystem::path& path, File* file);

  // Makes a file and opens it to be edited.  std::errc::file_exists when the name is taken, be it
  // by a link that leads nowhere.
  static std::error_code Create(const std::filesystem::path& path, Rights rights, File* file);

  // Opens a file for a lock to be held on it, making it if need be; never through a link.  One
  // that may only be read is enough.
  static std::error_code OpenForLock(const std::filesystem::path& path, File* file);

  bool IsOpen() const;
  // Whether it is what stands under a name still; false for another file and for none, and when the
  // system does not know it any more.
  bool IsAt(const std::filesystem::path& path) const;
  void Close();

  std::error_code Size(std::uint64_t* size) const;
  // Reads all of `bytes` from `offset` on.  Shortened when the file ends before.
  std::error_code Read(std::uint64_t offset, std::span<std::uint8_t> bytes) const;
  // Writes all of them.  The file grows when they reach past its end.
  std::error_code Write(std::uint64_t offset, std::span<const std::uint8_t> bytes) const;
  std::error_code Truncate(std::uint64_t size) const;
  // Brings the file to the disk, so that a power cut finds it there.
  std::error_code Sync() const;

  // Takes over owner, group and mode of another file, as far as the system lets it.
  std::error_code TakeRightsOf(const std::filesystem::path& other) const;

  // Lets its owner read and write it, as far as the system lets it.
  std::error_code LetOwnerWrite() const;

  // Locks the file for this object alone, without waiting; the lock goes when it is closed, however
  // the process ends.  std::errc::resource_unavailable_try_again when another one holds it.
  std::error_code Lock() const;

 private:
  struct Handle;
  std::unique_ptr<Handle> handle_;
};

// What stands under a name, links not followed.
enum class Kind { Nothing, Regular, Link, Other };
std::error_code KindOf(const std::filesystem::path& path, Kind* kind);

// Whether a file that is there may not be written: by anybody, or by this user.
bool IsWriteProtected(const std::filesystem::path& path);

// Whether files can be made in a folder: success, or why not.
std::error_code CheckFolder(const std::filesystem::path& folder);

// Brings the names in a folder to the disk.  Where a system cannot, its files are whole all the
// same, only perhaps not the last ones.
void SyncFolder(const std::filesystem::path& folder);

}  // namespace files

template <>
struct std::is_error_code_enum<files::Error> : std::true_type {};

#endif  // FILES_FILE_H_
