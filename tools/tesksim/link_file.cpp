// SPDX-License-Identifier: MIT

#include "tools/tesksim/link_file.h"

#include <cerrno>
#include <string>
#include <system_error>

namespace tesksim {

namespace fs = std::filesystem;

model::Status LinkFile::PointTo(const fs::path& target) {
  if (path_.empty()) return {};
  std::error_code error;
  const fs::file_status standing = fs::symlink_status(path_, error);
  if (fs::exists(standing) && !fs::is_symlink(standing)) {
    return {EEXIST, path_.string() + " exists and is no symbolic link"};
  }

  fs::path fresh = path_;
  fresh += ".new";
  if (fs::is_symlink(fs::symlink_status(fresh, error))) fs::remove(fresh, error);
  fs::create_symlink(target, fresh, error);
  if (!error) fs::rename(fresh, path_, error);
  if (error) return {error.value(), "cannot make " + path_.string() + ": " + error.message()};
  target_ = target;
  return {};
}

void LinkFile::Remove() {
  if (target_.empty()) return;
  std::error_code error;
  if (fs::read_symlink(path_, error) == target_) fs::remove(path_, error);
  target_.clear();
}

}  // namespace tesksim
