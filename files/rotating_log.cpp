// SPDX-License-Identifier: MIT

#include "files/rotating_log.h"

#include <string>
#include <system_error>

namespace files {

std::filesystem::path RotatingLog::Older(int files) const {
  const std::filesystem::path& path = file_.Path();
  if (files == 0) return path;
  std::filesystem::path older = path.parent_path() / path.stem();
  older += "." + std::to_string(files);
  older += path.extension();
  return older;
}

Outcome RotatingLog::Add(std::string_view line) {
  if (Outcome outcome = file_.Open(); !outcome.ok()) return outcome;
  Outcome rotated;
  if (file_.Size() > 0 && file_.Size() + line.size() + 1 > limits_.bytes) {
    file_.Close();
    rotated = MakeWay();
  }
  const Outcome added = file_.Append(std::string(line) + '\n');
  return rotated.ok() ? added : rotated;
}

Outcome RotatingLog::MakeWay() const {
  if (limits_.files == 1) return Remove(file_.Path());
  // Up to the first name that is free only: a rotation that failed half-way leaves a gap, and what
  // stands behind it is not to move on with every line.
  std::error_code error;
  int free = 1;
  while (free < limits_.files - 1 && std::filesystem::exists(Older(free), error)) ++free;
  for (int files = free; files >= 1; --files) {
    std::filesystem::rename(Older(files - 1), Older(files), error);
    if (error && error != std::errc::no_such_file_or_directory) {
      return Failure("rename", Older(files - 1), error);
    }
  }
  return {};
}

}  // namespace files
