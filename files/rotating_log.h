// SPDX-License-Identifier: MIT

#ifndef FILES_ROTATING_LOG_H_
#define FILES_ROTATING_LOG_H_

#include <cstdint>
#include <filesystem>
#include <string_view>
#include <utility>

#include "files/line_file.h"
#include "files/whole_file.h"

namespace files {

// A log in a few files of bounded size: "Teskctl.log" is written; when it is full it becomes
// "Teskctl.1.log", that one "Teskctl.2.log" and so on, and the last one goes.
//
// A line is kept as LineFile keeps it.
class RotatingLog {
 public:
  struct Limits {
    std::uint64_t bytes = 1 << 20;  // of each file; a longer line has one to itself
    int files = 5;                  // at least 1
  };

  // Nothing is made or opened before the first line.
  explicit RotatingLog(std::filesystem::path path) : RotatingLog(std::move(path), Limits()) {}
  RotatingLog(std::filesystem::path path, const Limits& limits)
      : file_(std::move(path)), limits_(limits) {}

  // Adds a line, given without its line end.  When a full file cannot make way, the line is added
  // to it all the same, past the limit, and the failure is returned.
  Outcome Add(std::string_view line);

  // The file before the present one by so many; the present one for 0.
  std::filesystem::path Older(int files) const;

 private:
  // Renames the files, the present one too.
  Outcome MakeWay() const;

  LineFile file_;
  const Limits limits_;
};

}  // namespace files

#endif  // FILES_ROTATING_LOG_H_
