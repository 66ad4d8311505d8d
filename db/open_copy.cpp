// SPDX-License-Identifier: MIT

#include "db/open_copy.h"

#include <cstdint>
#include <system_error>
#include <utility>

#include "db/damage.h"
#include "db/file_status.h"
#include "files/file.h"
#include "files/whole_file.h"

namespace db {

model::Status OpenCopy(const std::filesystem::path& path, std::unique_ptr<jet::Database>* copy) {
  files::File file;
  std::uint64_t size = 0;
  if (!files::File::OpenToRead(path, &file) && !file.Size(&size) && size > kLargestCopy) {
    return StatusOf(files::Failure("read", path, files::Error::TooLarge));
  }
  std::unique_ptr<jet::Database> database;
  if (jet::Status status = jet::Database::Open(path, jet::Access::ReadOnly, &database);
      !status.ok()) {
    return status;
  }
  Damage damage;
  if (model::Status status = FindDamage(*database, &damage); !status.ok()) return status;
  if (!damage.IsSound()) {
    return jet::Status(jet::ErrorNumber::Damaged,
                       "The file is damaged: " + damage.problems.front());
  }
  *copy = std::move(database);
  return {};
}

}  // namespace db
