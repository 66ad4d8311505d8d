// SPDX-License-Identifier: MIT

#include "files/rotating_log.h"

#include <array>
#include <span>
#include <string>
#include <system_error>

namespace files {

std::filesystem::path RotatingLog::Older(int files) const {
  if (files == 0) return path_;
  std::filesystem::path older = path_.parent_path() / path_.stem();
  older += "." + std::to_string(files);
  older += path_.extension();
  return older;
}

Outcome RotatingLog::Add(std::string_view line) {
  Outcome rotated;
  if (!file_.IsOpen()) {
    if (Outcome outcome = Open(); !outcome.ok()) return outcome;
  }
  if (end_ > 0 && end_ + line.size() + 1 > limits_.bytes) {
    rotated = Rotate();
    if (!file_.IsOpen()) return rotated;
  }
  std::string text = endsInLine_ ? "\n" : "";
  text += line;
  text += '\n';
  const std::span bytes(reinterpret_cast<const std::uint8_t*>(text.data()), text.size());
  if (const std::error_code error = file_.Write(end_, bytes)) {
    (void)file_.Truncate(end_);  // what was written of it
    return Failure("write", path_, error);
  }
  end_ += text.size();
  endsInLine_ = false;
  return rotated;
}

Outcome RotatingLog::Open() {
  std::error_code error = File::OpenToEdit(path_, &file_);
  if (error == std::errc::no_such_file_or_directory) {
    error = File::Create(path_, Rights::OfFolder, &file_);
  }
  if (!error) error = file_.Size(&end_);
  endsInLine_ = false;
  if (!error && end_ > 0) {
    std::array<std::uint8_t, 1> last{};
    error = file_.Read(end_ - 1, last);
    endsInLine_ = last[0] != '\n';
  }
  if (!error) return {};
  file_.Close();
  return Failure("open", path_, error);
}

Outcome RotatingLog::Rotate() {
  file_.Close();
  const Outcome moved = MakeWay();
  const Outcome opened = Open();
  return moved.ok() ? opened : moved;
}

Outcome RotatingLog::MakeWay() const {
  if (limits_.files == 1) return Remove(path_);
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
