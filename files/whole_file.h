// SPDX-License-Identifier: MIT
//
// Files read, copied and replaced as a whole.

#ifndef FILES_WHOLE_FILE_H_
#define FILES_WHOLE_FILE_H_

#include <cstdint>
#include <filesystem>
#include <memory>
#include <string>
#include <string_view>
#include <system_error>

#include "files/file.h"

namespace files {

// How an operation on named files went.
struct [[nodiscard]] Outcome {
  std::error_code error;  // none: success
  std::string text;       // of a failure: "Cannot write Tesk.mdb: No space left on device"

  bool ok() const { return !error; }
};

// The failure of doing `what` ("write") to a file.
Outcome Failure(const char* what, const std::filesystem::path& path, std::error_code error);

// Reads a file of at most `most` bytes; a larger one is TooLarge and not read.
Outcome ReadWhole(const std::filesystem::path& path, std::uint64_t most, std::string* bytes);

// Copies a file of at most `most` bytes to a name that must not be taken.  The copy has the
// original's rights and may be written by its owner, whatever the original allows.  After a failure
// there is no copy.
Outcome Copy(const std::filesystem::path& from, const std::filesystem::path& to,
             std::uint64_t most);

// Whether two files have the same bytes.
Outcome Compare(const std::filesystem::path& one, const std::filesystem::path& other, bool* same);

// Deletes a file or a link; one that is not there is a success, anything else stays (NotAFile).
Outcome Remove(const std::filesystem::path& path);

// A file on its way to another's name.  It is made beside it and gets the name when it is whole and
// on the disk: at any instant, through crashes and power cuts, the name stands for the old file or
// for the new one.
//
// A link stays, and what it leads to is replaced, whether that is there or not.
class Replacement {
 public:
  Replacement() = default;
  // What was begun and not put in place is deleted.
  ~Replacement();
  Replacement(const Replacement&) = delete;
  Replacement& operator=(const Replacement&) = delete;

  // Makes the new file, empty.  What an earlier attempt has left beside the name is deleted.
  // NotAFile when the name, or the one beside it, stands for anything but a regular file;
  // WriteProtected when the file there is.
  Outcome Begin(const std::filesystem::path& name);

  // Writes a copy of another file of at most `most` bytes into the new file.  REQUIRES: begun.
  Outcome Fill(const std::filesystem::path& from, std::uint64_t most);

  // The new file, to be written.  REQUIRES: begun.
  const std::shared_ptr<File>& NewFile() const { return file_; }

  // Gives the new file the rights of the old one, if there is one, brings it to the disk and
  // renames it.  After a failure the old file is as it was.
  Outcome PutInPlace();

 private:
  std::filesystem::path name_;
  std::filesystem::path target_;  // what the name leads to
  std::filesystem::path beside_;
  std::shared_ptr<File> file_;
  bool replaces_ = false;  // there is an old file
};

// The name beside `name` under which its replacement is made.
std::filesystem::path Beside(const std::filesystem::path& name);

// Replaces a file by these bytes, or by a copy of another file of at most `most` bytes.
Outcome Replace(const std::filesystem::path& name, std::string_view bytes);
Outcome ReplaceByCopy(const std::filesystem::path& name, const std::filesystem::path& from,
                      std::uint64_t most);

}  // namespace files

#endif  // FILES_WHOLE_FILE_H_
