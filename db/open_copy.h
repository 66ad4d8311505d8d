// SPDX-License-Identifier: MIT

#ifndef DB_OPEN_COPY_H_
#define DB_OPEN_COPY_H_

#include <filesystem>
#include <memory>

#include "db/jet/database.h"
#include "model/status.h"

namespace db {

// Opens a copy of the database to be read; the file is not changed.  Only a sound one is opened:
// of a damaged one nobody knows what it held (3049, with the first that is wrong).
model::Status OpenCopy(const std::filesystem::path& path, std::unique_ptr<jet::Database>* copy);

}  // namespace db

#endif  // DB_OPEN_COPY_H_
