// SPDX-License-Identifier: MIT
//
// A new configuration database from what survives of a damaged one.

#ifndef DB_SALVAGE_H_
#define DB_SALVAGE_H_

#include <filesystem>
#include <memory>
#include <vector>

#include "db/damage.h"
#include "db/jet/page_file.h"
#include "model/status.h"

namespace db {

// What stands in the new file where nothing survived.
enum class Fill {
  Nothing,   // no record; a single field is null
  Defaults,  // what a new database has
};

// What did not survive, whether it was filled or not.  Stations by rising number.
struct SalvageReport {
  int labelCount = 0;                         // stations that there should be
  int stations = 0;                           // of which something survived
  std::vector<int> missing;                   // those of which nothing did
  std::vector<UnreadableStation> incomplete;  // and the fields that did not
  // What stands in the new file as it was found, but may be wrong: flags with other characters than
  // 0 and 1, which may have been so before the damage, and records that contradicted themselves.
  std::vector<UnreadableStation> doubtful;
  // Records above the label count, by rising number: those found without a slot of their own may
  // never have been of this table, and a number far above all others is a damaged one.
  std::vector<int> leftOut;
  bool hasDbInfo = false;
  // Whether the stored count reaches as far as there are stations.  The new file has the one that
  // does.
  bool isCountSound = true;

  bool IsWhole() const {
    return hasDbInfo && isCountSound && missing.empty() && incomplete.empty() && leftOut.empty();
  }
};

// Whether a file, however damaged, has a record of a station that survives.
bool HasStations(const std::filesystem::path& file);

// Writes every record of `damaged` whose bytes survive into the new file `salvaged`.  `damaged` is
// only read, and may be damaged in any way; see jet::Salvage.  When `salvaged` is there already, be
// it as a link, nothing is done (3204); what a failure leaves of it is deleted.
//
// A file without a record that survives is no failure: the report says so, and `salvaged` has none.
model::Status Salvage(const std::filesystem::path& damaged, const std::filesystem::path& salvaged,
                      Fill fill, SalvageReport* report);
// The same for files that are open; `salvaged` is empty.
model::Status Salvage(std::unique_ptr<jet::PageFile> damaged,
                      std::unique_ptr<jet::PageFile> salvaged, Fill fill, SalvageReport* report);

}  // namespace db

#endif  // DB_SALVAGE_H_
