// SPDX-License-Identifier: MIT

#include "db/database_files.h"

#include <algorithm>
#include <array>
#include <system_error>
#include <utility>
#include <vector>

#include "db/dated_name.h"
#include "db/file_status.h"
#include "db/schema.h"
#include "db/station_list.h"

namespace db {

namespace {

// A table whose end cannot be reached is found out here.  One without a record has no last one.
model::Status ToLastAndFirst(jet::RecordSet& records) {
  if (jet::Status status = records.MoveLast(); !status.ok()) return status;
  if (records.Eof()) {
    return jet::Status(jet::ErrorNumber::NoCurrentRecord, "There is no current record");
  }
  return records.MoveFirst();
}

}  // namespace

model::Status NotOpen() {
  return jet::Status(jet::ErrorNumber::NoCurrentRecord, "The configuration database is not open");
}

DatabaseFiles::DatabaseFiles(std::filesystem::path mainFile, std::filesystem::path workingCopy,
                             WhenMissing whenMissing)
    : mainFile_(std::move(mainFile)),
      workingCopy_(std::move(workingCopy)),
      whenMissing_(whenMissing),
      kept_(mainFile_) {}

DatabaseFiles::~DatabaseFiles() { Close(); }

model::Status DatabaseFiles::Open() {
  Close();
  copyIsOurs_ = false;
  damage_ = {};
  // Only what surely is not there is created: a file that cannot be seen at this moment would
  // be lost.  Copying it fails, and says why.
  std::error_code unseen;
  if (whenMissing_ == WhenMissing::Create && !std::filesystem::exists(mainFile_, unseen) &&
      !unseen) {
    if (model::Status status = CreateMainFile(); !status.ok()) return status;
  }
  if (const auto removed = files::Remove(workingCopy_); !removed.ok()) return StatusOf(removed);
  copyIsOurs_ = true;
  kept_.Note();
  if (const auto copied = files::Copy(mainFile_, workingCopy_, kLargestFile); !copied.ok()) {
    return StatusOf(copied);
  }
  return OpenWorkingCopy();
}

// It gets its name when it is whole: what a crash or a full disk leaves of it must not be taken
// for the house's database at the next start.
model::Status DatabaseFiles::CreateMainFile() const {
  files::Replacement made;
  if (const auto begun = made.Begin(mainFile_); !begun.ok()) return StatusOf(begun);
  model::Status status = CreateDatabase(jet::MakePageFile(made.NewFile()));
  return status.ok() ? StatusOf(made.PutInPlace()) : status;
}

model::Status DatabaseFiles::OpenWorkingCopy() {
  std::unique_ptr<jet::Database> database;
  model::Status status = jet::Database::Open(workingCopy_, jet::Access::ReadWrite, &database);
  if (status.ok()) status = FindDamage(*database, &damage_);
  if (status.ok()) status = OpenTables(*database);
  if (status.ok()) {
    database_ = std::move(database);
    changesOfOpening_ = database_->ChangesWritten();
    return {};
  }
  Close();
  // Whatever the number says: a header that is damaged is that of no database, or of one with a
  // password.
  const bool isDamaged = status.Number() == static_cast<int>(jet::ErrorNumber::Damaged);
  if (damage_.IsSound() && (isDamaged || HasStations(mainFile_))) {
    damage_.problems.push_back(status.Description());
  }
  return status;
}

model::Status DatabaseFiles::OpenTables(jet::Database& database) {
  if (jet::Status status = database.OpenTable(kStationsTable, &stations_); !status.ok()) {
    return status;
  }
  if (jet::Status status = stations_->SetIndex(kStationNumIndex); !status.ok()) return status;
  if (model::Status status = ToLastAndFirst(*stations_); !status.ok()) return status;
  if (jet::Status status = database.OpenTable(kDbInfoTable, &dbInfo_); !status.ok()) return status;
  return ToLastAndFirst(*dbInfo_);
}

model::Status DatabaseFiles::SaveAndClose(bool* saved) {
  bool isReplaced = false;
  if (IsOpen() && !IsAsOpened()) {
    // Pages that a failed write left behind are in memory only: closed now, they would be lost.
    if (model::Status status = database_->Settle(); !status.ok()) return status;
    // Every write is with the operating system when it returns, so the copy is copied while it is
    // open: when that fails the program goes on with it as if nothing had been.
    isReplaced = DiffersFromMainFile();
    if (isReplaced) {
      if (model::Status status = ReplaceMainFile(); !status.ok()) return status;
    }
  }
  if (saved != nullptr) *saved = isReplaced;
  Close();
  // Everything is saved, or what was begun of the copy is of no use to anybody.  If it cannot
  // be deleted, the next start does.
  if (copyIsOurs_) (void)files::Remove(workingCopy_);
  copyIsOurs_ = false;
  return {};
}

// Opening a damaged file may put its indexes right.  That is found out anew every time, and no
// reason to touch the file.
bool DatabaseFiles::IsAsOpened() const {
  return !damage_.IsSound() && database_->ChangesWritten() == changesOfOpening_;
}

// A main file that cannot be looked at is another one.
bool DatabaseFiles::DiffersFromMainFile() const {
  bool same = false;
  return !files::Compare(mainFile_, workingCopy_, &same).ok() || !same;
}

// The bytes of a damaged file are the only ones that somebody may make more of.  They are kept when
// all else is ready, so that a failure leaves no further copy of them.
model::Status DatabaseFiles::ReplaceMainFile() {
  files::Replacement replacement;
  if (const auto begun = replacement.Begin(mainFile_); !begun.ok()) return StatusOf(begun);
  if (const auto filled = replacement.Fill(workingCopy_, kLargestFile); !filled.ok()) {
    return StatusOf(filled);
  }
  if (!damage_.IsSound()) {
    if (model::Status kept = kept_.Keep(); !kept.ok()) return kept;
  }
  const auto replaced = replacement.PutInPlace();
  if (!replaced.ok()) kept_.TakeBack();
  return StatusOf(replaced);
}

model::Status DatabaseFiles::CloseWithoutSaving(std::filesystem::path* kept) {
  model::Status status = database_->Settle();
  Close();
  copyIsOurs_ = false;
  *kept = workingCopy_;
  std::filesystem::path name;
  model::Status named = DatedName(mainFile_, "unsaved", &name);
  if (named.ok()) {
    // It takes no room, so it can be done on a full disk.
    std::error_code error;
    std::filesystem::rename(workingCopy_, name, error);
    if (!error) {
      *kept = name;
    } else {
      named = StatusOf(files::Failure("rename", workingCopy_, error));
    }
  }
  return status.ok() ? named : status;
}

model::Status DatabaseFiles::SalvageMainFile(Fill fill, std::filesystem::path* salvaged,
                                             SalvageReport* report) const {
  if (model::Status status = DatedName(mainFile_, "salvaged", salvaged); !status.ok())
    return status;
  return Salvage(mainFile_, *salvaged, fill, report);
}

model::Status DatabaseFiles::CheckTable(Table table, int first, int last) const {
  if (!IsOpen()) return NotOpen();
  if (damage_.IsSound()) return {};
  Damage now;
  if (model::Status status = FindDamage(*database_, &now); !status.ok()) return status;
  if (!now.isDbInfoReadable) {
    return jet::Status(jet::ErrorNumber::Damaged, "The database is damaged, its counts are lost");
  }
  std::unique_ptr<jet::RecordSet> stations;
  if (jet::Status status = database_->OpenTable(kStationsTable, &stations); !status.ok()) {
    return status;
  }
  if (jet::Status status = stations->SetIndex(kStationNumIndex); !status.ok()) return status;
  const std::vector<int> unreadable = now.Lacking(table);
  std::vector<int> lacking;
  for (int station = first; station <= last; ++station) {
    if (std::ranges::binary_search(unreadable, station) || !stations->Seek(station).ok() ||
        stations->NoMatch()) {
      lacking.push_back(station);
    }
  }
  if (lacking.empty()) return {};
  return jet::Status(jet::ErrorNumber::Damaged,
                     "The database is damaged, stations cannot be read: " + StationList(lacking));
}

model::Status DatabaseFiles::ReadWorkingCopy(std::string* bytes) {
  if (!IsOpen()) return NotOpen();
  // Pages that a failed write left behind are in memory only.
  if (model::Status status = database_->Settle(); !status.ok()) return status;
  return StatusOf(files::ReadWhole(workingCopy_, kLargestFile, bytes));
}

model::Status DatabaseFiles::ReadMainFile(std::string* bytes) const {
  return StatusOf(files::ReadWhole(mainFile_, kLargestFile, bytes));
}

bool DatabaseFiles::IsOwnFile(const std::filesystem::path& path) const {
  return std::ranges::any_of(std::array{&mainFile_, &workingCopy_}, [&](const auto* own) {
    std::error_code unseen;
    return std::filesystem::equivalent(path, *own, unseen) ||
           (path.filename() == own->filename() &&
            std::filesystem::equivalent(path.parent_path(), own->parent_path(), unseen));
  });
}

bool DatabaseFiles::IsWriteProtected() const { return files::IsWriteProtected(mainFile_); }

void DatabaseFiles::Close() {
  stations_.reset();
  dbInfo_.reset();
  database_.reset();
}

}  // namespace db
