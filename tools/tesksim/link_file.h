// SPDX-License-Identifier: MIT

#ifndef TESKSIM_LINK_FILE_H_
#define TESKSIM_LINK_FILE_H_

#include <filesystem>
#include <utility>

#include "model/status.h"

namespace tesksim {

// A symbolic link with a fixed name to a terminal whose name changes.  It is removed when this
// goes.
class LinkFile {
 public:
  // An empty path makes no link; all operations then do nothing.
  explicit LinkFile(std::filesystem::path path) : path_(std::move(path)) {}
  ~LinkFile() { Remove(); }
  LinkFile(const LinkFile&) = delete;
  LinkFile& operator=(const LinkFile&) = delete;

  // Makes the link, or makes it point to `target` from now on, in one step.  Replaces another
  // symbolic link of that name and fails for anything else that stands there.
  model::Status PointTo(const std::filesystem::path& target);

  // Removes the link unless somebody has made it point elsewhere.
  void Remove();

 private:
  std::filesystem::path path_;
  std::filesystem::path target_;  // empty: no link made
};

}  // namespace tesksim

#endif  // TESKSIM_LINK_FILE_H_
