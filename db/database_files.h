// SPDX-License-Identifier: MIT

#ifndef DB_DATABASE_FILES_H_
#define DB_DATABASE_FILES_H_

#include <cstdint>
#include <filesystem>
#include <memory>
#include <string>

#include "db/damage.h"
#include "db/jet/database.h"
#include "db/jet/format.h"
#include "db/jet/record_set.h"
#include "db/kept_file.h"
#include "db/salvage.h"
#include "model/status.h"

namespace db {

inline constexpr char kMainFile[] = "Tesk.mdb";
inline constexpr char kWorkingCopy[] = "WorkingDb.md$";

// The largest database file, of either format.
inline constexpr std::uint64_t kLargestFile = jet::kJet4.maxFileSize;

// What is done when there is no main file.
enum class WhenMissing { Create, Fail };

// What an operation reports that needs the database when it is not open.
model::Status NotOpen();

// The database of a run.  The main file is never edited: it is copied to a working copy, which
// every change goes to at once, and the copy replaces it when the run ends as it should.  After
// a crash the main file is what it was at the start.
class DatabaseFiles {
 public:
  DatabaseFiles(std::filesystem::path mainFile, std::filesystem::path workingCopy,
                WhenMissing whenMissing = WhenMissing::Create);
  ~DatabaseFiles();
  DatabaseFiles(const DatabaseFiles&) = delete;
  DatabaseFiles& operator=(const DatabaseFiles&) = delete;

  // Creates the main file with the default contents when there is none and it may, replaces a stale
  // working copy by a fresh one, opens it and both tables, each on its first record.  A table
  // without a record is a failure (3021).  The main file is created beside its name and gets it
  // when it is whole; what a failure leaves there is deleted.
  model::Status Open();

  // Replaces the main file by the working copy, unless they are the same, closes the database and
  // deletes the copy.  A damaged main file is replaced only when something was edited, and kept
  // beside it ("Tesk-damaged-DATE.mdb"); putting indexes right, as Open() does, is no edit.
  //
  // When the main file cannot be replaced it is as it was, the database stays open as it is, and
  // this may be called again. After a failed Open() it does nothing but delete what that has made
  // of a working copy.  *saved says whether the main file was replaced.
  model::Status SaveAndClose(bool* saved = nullptr);

  // Closes the database and leaves the main file as it is.  The working copy is kept beside it as
  // "Tesk-unsaved-DATE.mdb", whose name is *kept.  Where that fails it keeps its own name, *kept,
  // and its content until the next Open(); where not all of it could be written, it may be damaged.
  // REQUIRES: IsOpen()
  model::Status CloseWithoutSaving(std::filesystem::path* kept);

  // All bytes of the working copy, with everything that was edited so far; of the main file as it
  // is now.
  model::Status ReadWorkingCopy(std::string* bytes);
  model::Status ReadMainFile(std::string* bytes) const;

  // Whether `path` stands for the main file or for the working copy, by whatever name.
  bool IsOwnFile(const std::filesystem::path& path) const;

  // Whether nothing that is edited can be saved, as things stand.
  bool IsWriteProtected() const;

  // What Open() found to be damaged, also when it failed for that.
  const Damage& DamageFound() const { return damage_; }

  // Whether a table can be made for all of the stations first..last, as the database is now.  It
  // can always in a file that was sound when it was opened; else a station that cannot be read, or
  // found by its number, is a failure (3049), and so are counts that are lost.
  model::Status CheckTable(Table table, int first, int last) const;

  // Writes what survives of the main file into a new file beside it, "Tesk-salvaged-DATE.mdb",
  // whose name is *salvaged.
  model::Status SalvageMainFile(Fill fill, std::filesystem::path* salvaged,
                                SalvageReport* report) const;

  bool IsOpen() const { return database_ != nullptr; }

  // The database; null when it is not open.
  jet::Database* Database() const { return database_.get(); }

  // The shared record sets; null when the database is not open.  Stations are in the order of
  // their numbers, and whoever walks them goes back to where he found them (KeepPosition).
  jet::RecordSet* Stations() const { return stations_.get(); }
  jet::RecordSet* DbInfo() const { return dbInfo_.get(); }

 private:
  model::Status CreateMainFile() const;
  model::Status OpenWorkingCopy();
  model::Status OpenTables(jet::Database& database);
  bool IsAsOpened() const;
  bool DiffersFromMainFile() const;
  model::Status ReplaceMainFile();
  void Close();

  const std::filesystem::path mainFile_;
  const std::filesystem::path workingCopy_;
  const WhenMissing whenMissing_;
  std::unique_ptr<jet::Database> database_;
  std::unique_ptr<jet::RecordSet> stations_;
  std::unique_ptr<jet::RecordSet> dbInfo_;
  Damage damage_;
  KeptFile kept_;
  std::uint64_t changesOfOpening_ = 0;
  bool copyIsOurs_ = false;  // made, or begun, by Open() and not deleted since
};

}  // namespace db

#endif  // DB_DATABASE_FILES_H_
