// SPDX-License-Identifier: MIT

#ifndef DB_FILE_STATUS_H_
#define DB_FILE_STATUS_H_

#include "files/whole_file.h"
#include "model/status.h"

namespace db {

// What became of a whole file, under the number of the database engine that fits, as every failure
// of the database has one.
model::Status StatusOf(const files::Outcome& outcome);

}  // namespace db

#endif  // DB_FILE_STATUS_H_
