// SPDX-License-Identifier: MIT
//
// A database file that is kept when another one takes its name.

#ifndef DB_KEPT_FILE_H_
#define DB_KEPT_FILE_H_

#include <cstdint>
#include <filesystem>
#include <optional>
#include <utility>

#include "model/status.h"

namespace db {

class KeptFile {
 public:
  explicit KeptFile(std::filesystem::path file) : file_(std::move(file)) {}

  // Notes which file has the name now.  Nothing is kept of it so far.
  void Note();

  // Copies the file to a free name beside it, "Tesk-damaged-DATE.mdb"; one that has come in its
  // place since it was noted to "Tesk-replaced-DATE.mdb".  Nothing is done when there is no file,
  // or when it was kept before.
  model::Status Keep();

  // The file has not been replaced after all: deletes the copy that the last Keep() has made.
  void TakeBack();

 private:
  // What tells one file of the name from another.
  struct Stamp {
    std::uintmax_t size = 0;
    std::filesystem::file_time_type time;
    bool operator==(const Stamp&) const = default;
  };

  std::optional<Stamp> StampNow() const;

  const std::filesystem::path file_;
  std::optional<Stamp> noted_;
  std::optional<Stamp> kept_;
  std::filesystem::path copy_;  // made by the last Keep(); none: empty
};

}  // namespace db

#endif  // DB_KEPT_FILE_H_
