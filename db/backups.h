// SPDX-License-Identifier: MIT

#ifndef DB_BACKUPS_H_
#define DB_BACKUPS_H_

#include <cstddef>
#include <ctime>
#include <filesystem>
#include <string_view>
#include <utility>
#include <vector>

#include "model/status.h"

namespace db {

// Dated copies of the database in a folder of their own, `Backups`:
// "Tesk-2026-11-21-180512-before-retrieval.mdb".  Files of other names there are nobody's business.
class Backups {
 public:
  // So many are kept; the oldest go.
  static constexpr std::size_t kKept = 20;

  // Why a copy was made; its name says it.
  enum class Cause {
    BeforeRetrieval,  // what the switcher was about to overwrite
    Daily,            // a day of running
    BeforeSaving,     // Tesk.mdb as it was before this run's changes replaced it
    BeforeRestoring,  // what an older copy was about to overwrite
  };

  struct Copy {
    std::filesystem::path path;
    std::tm time{};  // of the clock on the wall
    Cause cause = Cause::Daily;
  };

  // The folder need not be there before the first copy.
  explicit Backups(std::filesystem::path folder) : folder_(std::move(folder)) {}

  // Where a copy made now, for this reason, belongs.  A second one of the same second and cause
  // has the same place.
  std::filesystem::path PathOf(Cause cause, std::time_t now) const;

  // Writes a copy, the bytes of a whole database, to the place that PathOf() has given for it and
  // brings it to the disk; when the newest copy has the same bytes, no second one is written.
  // *holder is the file that holds them.  After a copy was written the oldest are deleted, those
  // that can be; the new one stays, even when the clock was set back.  A failure leaves no part of
  // a copy and deletes nothing.  It may take its time, and may be called in any thread, in one at
  // a time.
  model::Status Keep(const std::filesystem::path& path, std::string_view bytes,
                     std::filesystem::path* holder = nullptr) const;

  // The copies that there are, the newest first; none while there is no folder.  A failure when the
  // folder cannot be read.
  model::Status List(std::vector<Copy>* copies) const;

 private:
  // Deletes what a crash has left of copies that were being written.
  void DeleteUnfinished() const;

  std::filesystem::path folder_;
};

}  // namespace db

#endif  // DB_BACKUPS_H_
