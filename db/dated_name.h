// SPDX-License-Identifier: MIT

#ifndef DB_DATED_NAME_H_
#define DB_DATED_NAME_H_

#include <filesystem>
#include <string_view>

#include "model/status.h"

namespace db {

// A free name beside a file: "Tesk-damaged-2026-04-17.mdb" for Tesk.mdb and "damaged", with
// "-2" and so on behind the day when that one is taken.  When all are taken, or the folder cannot
// be looked at, there is none (3204).
model::Status DatedName(const std::filesystem::path& file, std::string_view what,
                        std::filesystem::path* name);

}  // namespace db

#endif  // DB_DATED_NAME_H_
