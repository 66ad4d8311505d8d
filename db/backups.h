// SPDX-License-Identifier: MIT

#ifndef DB_BACKUPS_H_
#define DB_BACKUPS_H_

#include <cstddef>
#include <ctime>
#include <filesystem>
#include <string>
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

  // Copies the database `file`, whole and brought to the disk; `now` names it.  A second copy of
  // the same second and cause replaces the first.  Then the oldest are deleted; this one stays,
  // even when the clock was set back.  A failure leaves no part of a copy and deletes nothing.
  model::Status Keep(const std::filesystem::path& file, Cause cause, std::time_t now);

  // The copies that there are, the newest first; none while there is no folder.  A failure when the
  // folder cannot be read.
  model::Status List(std::vector<Copy>* copies) const;

 private:
  const std::filesystem::path folder_;
};

}  // namespace db

#endif  // DB_BACKUPS_H_
