// SPDX-License-Identifier: MIT

#include "files/line_file.h"

#include <array>
#include <span>
#include <system_error>

namespace files {

Outcome LineFile::Open() {
  if (IsOpen() && file_->IsAt(path_)) return {};
  Close();
  File opened;
  std::error_code error = File::OpenToEdit(path_, &opened);
  if (error == std::errc::no_such_file_or_directory) {
    error = File::Create(path_, Rights::OfFolder, &opened);
  }
  if (!error) error = opened.Size(&size_);
  std::array<std::uint8_t, 1> last{'\n'};
  if (!error && size_ > 0) error = opened.Read(size_ - 1, last);
  if (error) return Failure("open", path_, error);
  hasTornEnd_ = last[0] != '\n';
  file_ = std::make_shared<File>(std::move(opened));
  return {};
}

Outcome LineFile::Append(std::string_view lines) {
  if (Outcome outcome = Open(); !outcome.ok()) return outcome;
  std::string text = hasTornEnd_ ? "\n" : "";
  text += lines;
  const std::span bytes(reinterpret_cast<const std::uint8_t*>(text.data()), text.size());
  if (const std::error_code error = file_->Write(size_, bytes)) {
    // What was written of it would be a torn line in the middle.  A file that cannot even be cut is
    // opened anew with the next line.
    if (file_->Truncate(size_)) Close();
    return Failure("write", path_, error);
  }
  size_ += text.size();
  hasTornEnd_ = false;
  return {};
}

}  // namespace files
