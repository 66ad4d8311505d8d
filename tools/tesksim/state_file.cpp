// SPDX-License-Identifier: MIT

#include "tools/tesksim/state_file.h"

#include <fcntl.h>
#include <unistd.h>

#include <array>
#include <cerrno>
#include <cstdio>
#include <memory>
#include <system_error>

#include "tools/tesksim/kept_state.h"

namespace tesksim {

namespace {

struct CloseFile {
  void operator()(std::FILE* file) const { std::fclose(file); }
};
using File = std::unique_ptr<std::FILE, CloseFile>;

// No state is as large; what is larger is not read to its end.
constexpr std::size_t kLargestFile = 64U << 20U;

model::Status Failure(const char* what, const std::filesystem::path& path, int number) {
  return {number, std::string("cannot ") + what + " " + path.string() + ": " +
                      std::generic_category().message(number)};
}

model::Status ReadText(const std::filesystem::path& path, std::string* text) {
  const File file(std::fopen(path.c_str(), "rbe"));
  if (!file) return Failure("read", path, errno);
  std::array<char, 65536> block;
  while (text->size() <= kLargestFile) {
    const std::size_t count = std::fread(block.data(), 1, block.size(), file.get());
    if (count == 0) break;
    text->append(block.data(), count);
  }
  return std::ferror(file.get()) != 0 ? Failure("read", path, errno) : model::Status();
}

model::Status WriteText(const std::filesystem::path& path, const std::string& text) {
  File file(std::fopen(path.c_str(), "wbe"));
  if (!file) return Failure("write", path, errno);
  if (std::fwrite(text.data(), 1, text.size(), file.get()) != text.size() ||
      std::fflush(file.get()) != 0 || fsync(fileno(file.get())) != 0) {
    return Failure("write", path, errno);
  }
  return std::fclose(file.release()) != 0 ? Failure("write", path, errno) : model::Status();
}

model::Status ReplaceText(const std::filesystem::path& path, const std::string& text) {
  std::filesystem::path beside = path;
  beside += ".new";
  model::Status status = WriteText(beside, text);
  if (status.ok() && std::rename(beside.c_str(), path.c_str()) != 0) {
    status = Failure("write", path, errno);
  }
  // What cannot be removed is overwritten the next time.
  if (!status.ok()) (void)std::remove(beside.c_str());
  return status;
}

}  // namespace

model::Status StateFile::Read(std::optional<SwitcherState>* state) {
  std::error_code ignored;  // a file that cannot be seen fails to be read, and says why
  if (!IsUsed() || !std::filesystem::exists(path_, ignored)) return {};
  std::string text;
  if (model::Status status = ReadText(path_, &text); !status.ok()) return status;
  if (const model::Status status = ReadState(text, state); !status.ok()) {
    return {status.Number(), path_.string() + " is no state file: " + status.Description()};
  }
  kept_ = std::move(text);
  return {};
}

model::Status StateFile::Write(const SwitcherState& state) {
  if (!IsUsed()) return {};
  std::string text = WriteState(state);
  if (text == kept_) return {};
  model::Status status = ReplaceText(path_, text);
  if (status.ok()) kept_ = std::move(text);
  return status;
}

model::Status WriteStateTo(const std::filesystem::path& path, const SwitcherState& state) {
  return ReplaceText(path, WriteState(state));
}

}  // namespace tesksim
