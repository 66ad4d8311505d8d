// SPDX-License-Identifier: MIT

#ifndef TESKSIM_STATE_FILE_H_
#define TESKSIM_STATE_FILE_H_

#include <filesystem>
#include <optional>
#include <string>
#include <utility>

#include "model/status.h"
#include "tools/tesksim/switcher_state.h"

namespace tesksim {

// The file that keeps the state across runs.
class StateFile {
 public:
  // An empty path keeps nothing.
  explicit StateFile(std::filesystem::path path) : path_(std::move(path)) {}

  bool IsUsed() const { return !path_.empty(); }

  // Reads the state of the last run; *state stays empty when there is no such file.  A file
  // that is no state is a failure and must not be written over.
  model::Status Read(std::optional<SwitcherState>* state);

  // Writes the state unless the file holds it already.  The text is written beside the file,
  // brought to the disk and renamed: the file is the old one or the new one, whole.
  model::Status Write(const SwitcherState& state);

 private:
  std::filesystem::path path_;
  std::string kept_;  // what the file is known to hold
};

// Writes the state to any file, in the same way.
model::Status WriteStateTo(const std::filesystem::path& path, const SwitcherState& state);

}  // namespace tesksim

#endif  // TESKSIM_STATE_FILE_H_
