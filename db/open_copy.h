// SPDX-License-Identifier: MIT

#ifndef DB_OPEN_COPY_H_
#define DB_OPEN_COPY_H_

#include <cstdint>
#include <filesystem>
#include <memory>

#include "db/jet/database.h"
#include "model/status.h"

namespace db {

// The largest copy that is opened, in bytes.  A database of this system has a few hundred thousand;
// looking for damage in a file of any size would keep the console waiting.
inline constexpr std::uint64_t kLargestCopy = std::uint64_t{64} << 20;

// Opens a copy of the database to be read; the file is not changed.  A larger file is refused with
// that reason.  Only a sound one is opened:
// of a damaged one nobody knows what it held (3049, with the first that is wrong).
model::Status OpenCopy(const std::filesystem::path& path, std::unique_ptr<jet::Database>* copy);

}  // namespace db

#endif  // DB_OPEN_COPY_H_
