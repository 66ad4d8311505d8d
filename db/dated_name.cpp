// SPDX-License-Identifier: MIT

#include "db/dated_name.h"

#include <ctime>
#include <string>
#include <system_error>

#include "db/file_status.h"
#include "files/file.h"
#include "files/local_time.h"
#include "files/whole_file.h"

namespace db {

namespace {

namespace fs = std::filesystem;

bool IsFree(const fs::path& path) {
  files::Kind kind = files::Kind::Nothing;
  return !files::KindOf(path, &kind) && kind == files::Kind::Nothing;
}

}  // namespace

model::Status DatedName(const fs::path& file, std::string_view what, fs::path* name) {
  constexpr int kMost = 1000;  // a folder that cannot be looked at has no free name
  const std::string begin =
      "-" + std::string(what) + "-" + files::LocalTimeText(std::time(nullptr), "%Y-%m-%d");
  for (int number = 1; number <= kMost; ++number) {
    *name = file.parent_path() / file.stem();
    *name += begin + (number > 1 ? "-" + std::to_string(number) : "");
    *name += file.extension();
    if (IsFree(*name)) return {};
  }
  return StatusOf(files::Failure("make", *name, std::make_error_code(std::errc::file_exists)));
}

}  // namespace db
