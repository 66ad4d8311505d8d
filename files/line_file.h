// SPDX-License-Identifier: MIT

#ifndef FILES_LINE_FILE_H_
#define FILES_LINE_FILE_H_

#include <cstdint>
#include <filesystem>
#include <memory>
#include <string>
#include <string_view>
#include <utility>

#include "files/file.h"
#include "files/whole_file.h"

namespace files {

// A file that lines are added to.
//
// What is added is in the system's hands when Append() returns, so that a program that is killed
// loses none.  A file that does not end in a line end, because it was torn off there, gets one
// first: the torn line stays one of its own.  After a failure the next lines are tried all the
// same, in the same place.  A file that was deleted or replaced meanwhile is not written any more:
// the lines go into the one that has its name, made anew if need be.
class LineFile {
 public:
  // Nothing is made or opened yet.
  explicit LineFile(std::filesystem::path path) : path_(std::move(path)) {}

  const std::filesystem::path& Path() const { return path_; }

  // Opens the file, making it if need be; does nothing while it is open and has its name.
  Outcome Open();
  void Close() { file_.reset(); }
  bool IsOpen() const { return file_ != nullptr; }

  // Adds whole lines, each with its line end, to the file, which is opened if need be.
  Outcome Append(std::string_view lines);

  // So long the open file is; what a failure may have left behind its lines is not counted.
  std::uint64_t Size() const { return size_; }

  // The open file; null when it is closed.  It stays open for whoever keeps it.
  const std::shared_ptr<File>& Opened() const { return file_; }

 private:
  const std::filesystem::path path_;
  std::shared_ptr<File> file_;
  std::uint64_t size_ = 0;
  bool hasTornEnd_ = false;  // the file found does not end in a line end
};

}  // namespace files

#endif  // FILES_LINE_FILE_H_
