// SPDX-License-Identifier: MIT

#include "db/database_files.h"

#include <gtest/gtest.h>
#include <sys/stat.h>

#include <algorithm>
#include <memory>
#include <numeric>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "db/jet/database.h"
#include "db/jet/store.h"
#include "db/jet/table.h"
#include "db/schema.h"
#include "db/station_list.h"
#include "tests/support/another_user.h"
#include "tests/support/damaged_file.h"
#include "tests/support/full_disk.h"
#include "tests/support/temporary_folder.h"

namespace db {
namespace {

namespace fs = std::filesystem;
using test::ReadFile;
using test::WriteFile;

class DatabaseFilesTest : public testing::Test {
 protected:
  void SetLabel(DatabaseFiles& files, const char* label) {
    ASSERT_TRUE(files.Stations()->Edit().ok());
    ASSERT_TRUE(files.Stations()->Set("Label", label).ok());
    ASSERT_TRUE(files.Stations()->Update().ok());
  }

  static std::string Label(DatabaseFiles& files) {
    jet::Value value;
    EXPECT_TRUE(files.Stations()->Get("Label", &value).ok());
    return value.Text();
  }

  test::TemporaryFolder folder_;
  const fs::path main_ = folder_ / kMainFile;
  const fs::path copy_ = folder_ / kWorkingCopy;
};

TEST_F(DatabaseFilesTest, FirstStartCreatesTheDatabaseAndItsCopy) {
  DatabaseFiles files(main_, copy_);
  const model::Status status = files.Open();
  ASSERT_TRUE(status.ok()) << status.Description();
  EXPECT_TRUE(fs::exists(main_));
  EXPECT_EQ(ReadFile(main_), ReadFile(copy_));
  EXPECT_EQ(Label(files), "Sta. 001");
  jet::Value count;
  ASSERT_TRUE(files.DbInfo()->Get("LabelCount", &count).ok());
  EXPECT_EQ(count.Int(), 128);
}

TEST_F(DatabaseFilesTest, StationsAreInTheOrderOfTheirNumbers) {
  DatabaseFiles files(main_, copy_);
  ASSERT_TRUE(files.Open().ok());
  EXPECT_EQ(files.Stations()->IndexName(), "StationNum");
}

TEST_F(DatabaseFilesTest, TheWorkingCopyIsReadWithWhatWasEdited) {
  DatabaseFiles files(main_, copy_);
  std::string bytes;
  EXPECT_EQ(files.ReadWorkingCopy(&bytes).Number(), 3021) << "it is not open";
  ASSERT_TRUE(files.Open().ok());
  SetLabel(files, "Studio 1");
  ASSERT_TRUE(files.ReadWorkingCopy(&bytes).ok());
  const fs::path other = folder_ / "other.mdb";
  WriteFile(other, bytes);
  DatabaseFiles copy(other, folder_ / "other.md$");
  ASSERT_TRUE(copy.Open().ok());
  EXPECT_EQ(Label(copy), "Studio 1");
  ASSERT_TRUE(files.ReadMainFile(&bytes).ok());
  EXPECT_EQ(bytes, ReadFile(main_)) << "as it was before";
}

TEST_F(DatabaseFilesTest, KnowsItsOwnFilesByWhateverName) {
  DatabaseFiles files(main_, copy_);
  EXPECT_TRUE(files.IsOwnFile(main_)) << "it is not there yet";
  ASSERT_TRUE(files.Open().ok());
  EXPECT_TRUE(files.IsOwnFile(main_));
  EXPECT_TRUE(files.IsOwnFile(copy_));
  EXPECT_TRUE(files.IsOwnFile(folder_ / "." / kMainFile));
  fs::create_symlink(copy_, folder_ / "link.mdb");
  EXPECT_TRUE(files.IsOwnFile(folder_ / "link.mdb"));
  EXPECT_FALSE(files.IsOwnFile(folder_ / "copy.mdb"));
  const test::TemporaryFolder other;
  EXPECT_FALSE(files.IsOwnFile(other / kMainFile)) << "a namesake elsewhere";
}

TEST_F(DatabaseFilesTest, ChangesReachTheMainFileAtTheEndOnly) {
  DatabaseFiles files(main_, copy_);
  ASSERT_TRUE(files.Open().ok());
  const std::string before = ReadFile(main_);
  SetLabel(files, "Studio 1");
  EXPECT_EQ(ReadFile(main_), before);
  EXPECT_NE(ReadFile(copy_), before);
  ASSERT_TRUE(files.SaveAndClose().ok());
  EXPECT_FALSE(files.IsOpen());
  EXPECT_FALSE(fs::exists(copy_));
  EXPECT_NE(ReadFile(main_), before);

  DatabaseFiles again(main_, copy_);
  ASSERT_TRUE(again.Open().ok());
  EXPECT_EQ(Label(again), "Studio 1");
}

TEST_F(DatabaseFilesTest, ACrashLosesTheRunAndNothingElse) {
  {
    DatabaseFiles crashed(main_, copy_);
    ASSERT_TRUE(crashed.Open().ok());
    SetLabel(crashed, "lost");
  }
  ASSERT_TRUE(fs::exists(copy_));
  DatabaseFiles files(main_, copy_);
  ASSERT_TRUE(files.Open().ok());
  EXPECT_EQ(Label(files), "Sta. 001");
}

TEST_F(DatabaseFilesTest, AForeignFileIsRefusedAndNotTouched) {
  WriteFile(main_, "this is no database");
  DatabaseFiles files(main_, copy_);
  const model::Status status = files.Open();
  EXPECT_EQ(status.Number(), 3343);
  EXPECT_FALSE(files.IsOpen());
  EXPECT_EQ(files.Stations(), nullptr);
  EXPECT_TRUE(files.SaveAndClose().ok());
  EXPECT_EQ(ReadFile(main_), "this is no database");
  EXPECT_FALSE(fs::exists(copy_));
}

TEST_F(DatabaseFilesTest, AnotherSoftwaresDatabaseWithoutTheTablesIsRefused) {
  WriteFile(main_, ReadFile(std::string(TESK_TEST_DATA) + "/mdb/adox_jet4.mdb"));
  DatabaseFiles files(main_, copy_);
  EXPECT_EQ(files.Open().Number(), 3078);
  EXPECT_FALSE(files.IsOpen());
}

TEST_F(DatabaseFilesTest, EditsAJet3FileAsJet3) {
  WriteFile(main_, ReadFile(std::string(TESK_TEST_DATA) + "/mdb/tesk_jet3.mdb"));
  DatabaseFiles files(main_, copy_);
  ASSERT_TRUE(files.Open().ok());
  EXPECT_EQ(files.Database()->Version(), 3);
  SetLabel(files, "Studio 1");
  ASSERT_TRUE(files.SaveAndClose().ok());
  DatabaseFiles again(main_, copy_);
  ASSERT_TRUE(again.Open().ok());
  EXPECT_EQ(again.Database()->Version(), 3);
  EXPECT_EQ(Label(again), "Studio 1");
}

TEST_F(DatabaseFilesTest, AFailedCopyBackLeavesEverythingAndCanBeTriedAgain) {
  DatabaseFiles files(main_, copy_);
  ASSERT_TRUE(files.Open().ok());
  const std::string before = ReadFile(main_);
  SetLabel(files, "Studio 1");
  {
    const test::FullDisk full(100000);
    const model::Status status = files.SaveAndClose();
    EXPECT_EQ(status.Number(), 3026) << status.Description();
  }
  EXPECT_TRUE(ReadFile(main_) == before);
  ASSERT_TRUE(files.IsOpen());
  EXPECT_EQ(Label(files), "Studio 1");
  SetLabel(files, "Studio 2");
  ASSERT_TRUE(files.SaveAndClose().ok());
  DatabaseFiles again(main_, copy_);
  ASSERT_TRUE(again.Open().ok());
  EXPECT_EQ(Label(again), "Studio 2");
}

TEST_F(DatabaseFilesTest, AFailedCopyBackKeepsTheCurrentStation) {
  DatabaseFiles files(main_, copy_);
  ASSERT_TRUE(files.Open().ok());
  ASSERT_TRUE(files.Stations()->Seek(17).ok());
  SetLabel(files, "Studio 1");
  const test::FullDisk full(100000);
  ASSERT_FALSE(files.SaveAndClose().ok());
  EXPECT_EQ(Label(files), "Studio 1");
}

TEST_F(DatabaseFilesTest, ACopyThatCannotBeReadForAWhileIsStillSavedLater) {
  DatabaseFiles files(main_, copy_);
  ASSERT_TRUE(files.Open().ok());
  SetLabel(files, "Studio 1");
  // Out of sight for a while, as on a network drive that stutters.
  fs::rename(copy_, folder_ / "away");
  EXPECT_EQ(files.SaveAndClose().Number(), 3024);
  EXPECT_EQ(Label(files), "Studio 1");
  fs::rename(folder_ / "away", copy_);
  ASSERT_TRUE(files.SaveAndClose().ok());
  EXPECT_FALSE(fs::exists(copy_));
  DatabaseFiles again(main_, copy_);
  ASSERT_TRUE(again.Open().ok());
  EXPECT_EQ(Label(again), "Studio 1");
}

TEST_F(DatabaseFilesTest, AnEarlierRunsCopyIsNotDeletedByARunThatNeverGotThatFar) {
  WriteFile(copy_, "all that is left of a crashed run");
  fs::create_symlink(folder_ / "missing/Tesk.mdb", main_);
  DatabaseFiles files(main_, copy_);
  EXPECT_FALSE(files.Open().ok());
  EXPECT_TRUE(files.SaveAndClose().ok());
  EXPECT_EQ(ReadFile(copy_), "all that is left of a crashed run");
}

TEST_F(DatabaseFilesTest, AMainFileThatCannotBeSeenIsNotReplacedByANewOne) {
  fs::create_symlink("Tesk.mdb", main_);  // leads to itself: nobody can say what is there
  DatabaseFiles files(main_, copy_);
  const model::Status status = files.Open();
  EXPECT_FALSE(status.ok());
  EXPECT_NE(status.Description().find("Cannot copy Tesk.mdb"), std::string::npos)
      << status.Description();
  EXPECT_TRUE(fs::is_symlink(main_));
}

TEST_F(DatabaseFilesTest, ATableWithoutARecordHasNoLastOne) {
  for (const char* const table : {"Stations", "DbInfo"}) {
    SCOPED_TRACE(table);
    fs::remove(main_);
    {
      DatabaseFiles files(main_, copy_);
      ASSERT_TRUE(files.Open().ok());
      jet::RecordSet& records =
          table == std::string("DbInfo") ? *files.DbInfo() : *files.Stations();
      while (records.RecordCount() > 0) {
        ASSERT_TRUE(records.MoveFirst().ok());
        ASSERT_TRUE(records.Delete().ok());
      }
      ASSERT_TRUE(files.SaveAndClose().ok());
    }
    const std::string before = ReadFile(main_);
    DatabaseFiles files(main_, copy_);
    const model::Status status = files.Open();
    EXPECT_EQ(status.Number(), 3021);
    EXPECT_EQ(status.Description(), "There is no current record");
    EXPECT_FALSE(files.IsOpen());
    EXPECT_TRUE(files.SaveAndClose().ok());
    EXPECT_EQ(ReadFile(main_), before);
    EXPECT_FALSE(fs::exists(copy_));
  }
}

TEST_F(DatabaseFilesTest, ADatabaseWithAPasswordIsRefusedAndNotTouched) {
  std::string bytes = ReadFile(std::string(TESK_TEST_DATA) + "/mdb/tesk_jet4.mdb");
  bytes[0x42] = static_cast<char>(bytes[0x42] ^ 0x61);
  WriteFile(main_, bytes);
  DatabaseFiles files(main_, copy_);
  EXPECT_EQ(files.Open().Number(), 3031);
  EXPECT_FALSE(files.IsOpen());
  EXPECT_TRUE(files.SaveAndClose().ok());
  EXPECT_EQ(ReadFile(main_), bytes);
}

TEST_F(DatabaseFilesTest, BothTablesStandOnTheirFirstRecord) {
  DatabaseFiles files(main_, copy_);
  ASSERT_TRUE(files.Open().ok());
  jet::Value number;
  ASSERT_TRUE(files.Stations()->Get("StationNum", &number).ok());
  EXPECT_EQ(number.Int(), 1);
  EXPECT_EQ(files.Stations()->RecordCount(), 128);
  EXPECT_EQ(files.DbInfo()->RecordCount(), 1);
  jet::Value version;
  ASSERT_TRUE(files.DbInfo()->Get("DbaseVer", &version).ok());
  EXPECT_EQ(version.Text(), "Version 2.12 - 04/17/2002");
}

TEST_F(DatabaseFilesTest, WhatACrashLeftOfANewDatabaseIsNotTakenForOne) {
  WriteFile(folder_ / "Tesk.mdb.new", "half a database");
  DatabaseFiles files(main_, copy_);
  ASSERT_TRUE(files.Open().ok());
  EXPECT_EQ(Label(files), "Sta. 001");
  EXPECT_FALSE(fs::exists(folder_ / "Tesk.mdb.new"));
}

TEST_F(DatabaseFilesTest, ANewDatabaseIsMadeWhereALinkLeads) {
  fs::create_directory(folder_ / "house");
  fs::create_symlink("house/Tesk.mdb", main_);
  DatabaseFiles files(main_, copy_);
  ASSERT_TRUE(files.Open().ok());
  EXPECT_TRUE(fs::is_symlink(main_));
  EXPECT_EQ(ReadFile(folder_ / "house/Tesk.mdb"), ReadFile(copy_));
}

// The copy begins to be written and does not fit.
TEST_F(DatabaseFilesTest, AFullDiskWhileTheWorkingCopyIsMadeIsSaid) {
  ASSERT_TRUE(CreateDatabase(main_).ok());
  const test::FullDisk full(100000);
  DatabaseFiles files(main_, copy_);
  const model::Status status = files.Open();
  EXPECT_EQ(status.Number(), 3026) << status.Description();
  EXPECT_TRUE(files.SaveAndClose().ok());
  EXPECT_FALSE(fs::exists(copy_));
}

// Each is refused at once: nothing is waited for, nothing of it is copied.
TEST_F(DatabaseFilesTest, NothingButAFileIsADatabase) {
  ASSERT_EQ(mkfifo((folder_ / "pipe").c_str(), 0666), 0);
  fs::create_directory(folder_ / "folder");
  for (const char* const name : {"pipe", "folder", "/dev/zero"}) {
    SCOPED_TRACE(name);
    fs::remove(main_);
    fs::create_symlink(name, main_);
    DatabaseFiles files(main_, copy_);
    const model::Status status = files.Open();
    EXPECT_EQ(status.Number(), 3051);
    EXPECT_EQ(status.Description(), "Cannot copy Tesk.mdb: It is no ordinary file");
    EXPECT_TRUE(files.SaveAndClose().ok());
    EXPECT_TRUE(fs::is_symlink(main_));
    EXPECT_FALSE(fs::exists(copy_));
  }
}

TEST_F(DatabaseFilesTest, AFileLargerThanTheFormatIsNotCopied) {
  WriteFile(main_, ReadFile(std::string(TESK_TEST_DATA) + "/mdb/tesk_jet4.mdb"));
  fs::resize_file(main_, std::uintmax_t{3} << 30);  // with nothing in the rest
  DatabaseFiles files(main_, copy_);
  const model::Status status = files.Open();
  EXPECT_EQ(status.Number(), 3049);
  EXPECT_EQ(status.Description(), "Cannot copy Tesk.mdb: It is too large");
  EXPECT_FALSE(fs::exists(copy_));
  EXPECT_TRUE(files.SaveAndClose().ok());
  EXPECT_EQ(fs::file_size(main_), std::uintmax_t{3} << 30);
}

// Where the database is made, saved or worked on stands something else.
TEST_F(DatabaseFilesTest, WhatIsNoFileIsNeverReplaced) {
  ASSERT_EQ(mkfifo((folder_ / "Tesk.mdb.new").c_str(), 0666), 0);
  DatabaseFiles files(main_, copy_);
  EXPECT_EQ(files.Open().Description(), "Cannot delete Tesk.mdb.new: It is no ordinary file");
  EXPECT_FALSE(fs::exists(main_));
  fs::remove(folder_ / "Tesk.mdb.new");
  ASSERT_TRUE(files.Open().ok());
  SetLabel(files, "Studio 1");
  ASSERT_EQ(mkfifo((folder_ / "Tesk.mdb.new").c_str(), 0666), 0);
  EXPECT_EQ(files.SaveAndClose().Number(), 3051);
  EXPECT_TRUE(files.IsOpen());
  EXPECT_TRUE(fs::is_fifo(folder_ / "Tesk.mdb.new"));
  fs::remove(folder_ / "Tesk.mdb.new");
  ASSERT_TRUE(files.SaveAndClose().ok());
  fs::create_directory(copy_);
  EXPECT_EQ(files.Open().Description(), "Cannot delete WorkingDb.md$: It is no ordinary file");
  EXPECT_TRUE(fs::is_directory(copy_));
}

// Somebody has laid links where the console makes its files.
TEST_F(DatabaseFilesTest, NothingIsWrittenThroughAPlantedLink) {
  const fs::path victim = folder_ / "victim";
  WriteFile(victim, "of somebody else");
  fs::create_symlink("victim", folder_ / "Tesk.mdb.new");
  fs::create_symlink("victim", copy_);
  DatabaseFiles files(main_, copy_);
  ASSERT_TRUE(files.Open().ok());
  EXPECT_EQ(ReadFile(victim), "of somebody else");
  EXPECT_FALSE(fs::is_symlink(copy_));
  SetLabel(files, "Studio 1");
  fs::create_symlink("victim", folder_ / "Tesk.mdb.new");
  ASSERT_TRUE(files.SaveAndClose().ok());
  EXPECT_EQ(ReadFile(victim), "of somebody else");
  EXPECT_FALSE(fs::is_symlink(main_));
}

TEST_F(DatabaseFilesTest, WhatMayNotBeMadeIsMissing) {
  DatabaseFiles files(main_, copy_, WhenMissing::Fail);
  const model::Status status = files.Open();
  EXPECT_EQ(status.Number(), 3024);
  EXPECT_EQ(status.Description(), "Cannot copy Tesk.mdb: No such file or directory");
  EXPECT_TRUE(files.SaveAndClose().ok());
  EXPECT_TRUE(fs::is_empty(folder_.Path()));
  ASSERT_TRUE(CreateDatabase(main_).ok());
  EXPECT_TRUE(files.Open().ok());
}

TEST_F(DatabaseFilesTest, AWriteProtectedFileIsNotReplaced) {
  ASSERT_TRUE(CreateDatabase(main_).ok());
  const std::string before = ReadFile(main_);
  fs::permissions(main_, fs::perms::owner_read | fs::perms::group_read);
  DatabaseFiles files(main_, copy_);
  ASSERT_TRUE(files.Open().ok());
  EXPECT_TRUE(files.IsWriteProtected());
  SetLabel(files, "Studio 1");
  const model::Status status = files.SaveAndClose();
  EXPECT_EQ(status.Number(), 3027);
  EXPECT_EQ(status.Description(), "Cannot replace Tesk.mdb: It is write-protected");
  EXPECT_TRUE(files.IsOpen());
  EXPECT_EQ(Label(files), "Studio 1");
  EXPECT_EQ(ReadFile(main_), before);
  fs::permissions(main_, fs::perms::owner_write, fs::perm_options::add);
  EXPECT_FALSE(files.IsWriteProtected());
  ASSERT_TRUE(files.SaveAndClose().ok());
  EXPECT_EQ(fs::status(main_).permissions(),
            fs::perms::owner_read | fs::perms::owner_write | fs::perms::group_read);
  DatabaseFiles again(main_, copy_);
  ASSERT_TRUE(again.Open().ok());
  EXPECT_EQ(Label(again), "Studio 1");
}

// Nothing was edited: there is nothing to save, and nothing to report.
TEST_F(DatabaseFilesTest, AWriteProtectedFileThatWasOnlyReadIsClosedWithoutAWord) {
  ASSERT_TRUE(CreateDatabase(main_).ok());
  fs::permissions(main_, fs::perms::owner_read);
  DatabaseFiles files(main_, copy_);
  ASSERT_TRUE(files.Open().ok());
  EXPECT_TRUE(files.SaveAndClose().ok());
  EXPECT_FALSE(fs::exists(copy_));
  EXPECT_FALSE(fs::exists(folder_ / "Tesk.mdb.new"));
}

// The names of the files in the folder that begin so.
std::vector<std::string> FilesIn(const fs::path& folder, const std::string& begin) {
  std::vector<std::string> names;
  for (const auto& entry : fs::directory_iterator(folder)) {
    std::string name = entry.path().filename().string();
    if (name.starts_with(begin)) names.push_back(std::move(name));
  }
  std::sort(names.begin(), names.end());
  return names;
}

class DamagedDatabaseTest : public DatabaseFilesTest {
 protected:
  void SetUp() override {
    ASSERT_TRUE(CreateDatabase(main_).ok());
    test::ZeroPageOf(main_, "Sta. 012");
    damaged_ = ReadFile(main_);
    ASSERT_TRUE(files_.Open().ok());
    lost_ = files_.DamageFound().missing;
    ASSERT_FALSE(lost_.empty());
  }

  std::string damaged_;
  DatabaseFiles files_{main_, copy_};
  std::vector<int> lost_;
};

TEST_F(DamagedDatabaseTest, IsOpenedAndWhatIsLostIsKnown) {
  EXPECT_FALSE(files_.DamageFound().IsSound());
  EXPECT_TRUE(std::binary_search(lost_.begin(), lost_.end(), 12));
  EXPECT_EQ(Label(files_), "Sta. 001");
}

TEST_F(DamagedDatabaseTest, ATableIsCompleteOnlyWithoutTheLostStations) {
  const model::Status status = files_.CheckTable(Table::Relays, 1, 64);
  EXPECT_EQ(status.Number(), 3049);
  EXPECT_EQ(status.Description(),
            "The database is damaged, stations cannot be read: " + StationList(lost_));
  EXPECT_FALSE(files_.CheckTable(Table::Buttons, 12, 12).ok());
  EXPECT_TRUE(files_.CheckTable(Table::Buttons, 1, 1).ok());
  EXPECT_TRUE(files_.CheckTable(Table::Relays, lost_.back() + 1, 128).ok());
}

TEST_F(DamagedDatabaseTest, IsKeptBeforeItIsReplaced) {
  SetLabel(files_, "Studio 1");
  ASSERT_TRUE(files_.SaveAndClose().ok());
  std::vector<std::string> kept = FilesIn(folder_.Path(), "Tesk-damaged-20");
  ASSERT_EQ(kept.size(), 1U);
  EXPECT_EQ(kept[0].size(), std::string("Tesk-damaged-2026-04-17.mdb").size());
  EXPECT_TRUE(ReadFile(folder_ / kept[0]) == damaged_);
  EXPECT_FALSE(ReadFile(main_) == damaged_);
  // Another time on the same day.
  ASSERT_TRUE(files_.Open().ok());
  SetLabel(files_, "Studio 2");
  ASSERT_TRUE(files_.SaveAndClose().ok());
  kept = FilesIn(folder_.Path(), "Tesk-damaged-20");
  ASSERT_EQ(kept.size(), 2U);
  EXPECT_TRUE(kept[0].ends_with("-2.mdb")) << kept[0];
}

// Without it the only bytes that more could be made of would be gone.
TEST_F(DamagedDatabaseTest, IsNotReplacedWhenItCannotBeKept) {
  SetLabel(files_, "Studio 1");
  {
    const test::FullDisk full(100000);
    EXPECT_EQ(files_.SaveAndClose().Number(), 3026);
  }
  EXPECT_TRUE(ReadFile(main_) == damaged_);
  EXPECT_TRUE(files_.IsOpen());
  EXPECT_TRUE(FilesIn(folder_.Path(), "Tesk-").empty());
  ASSERT_TRUE(files_.SaveAndClose().ok());
  EXPECT_EQ(FilesIn(folder_.Path(), "Tesk-damaged-20").size(), 1U);
}

// Every attempt that fails would leave one more.
TEST_F(DamagedDatabaseTest, IsKeptOnceHoweverOftenClosingFails) {
  SetLabel(files_, "Studio 1");
  fs::permissions(main_, fs::perms::owner_read | fs::perms::group_read);
  for (int attempt = 0; attempt < 3; ++attempt) {
    EXPECT_EQ(files_.SaveAndClose().Number(), 3027);
    EXPECT_TRUE(FilesIn(folder_.Path(), "Tesk-").empty());
  }
  fs::permissions(main_, fs::perms::owner_write, fs::perm_options::add);
  ASSERT_TRUE(files_.SaveAndClose().ok());
  EXPECT_EQ(FilesIn(folder_.Path(), "Tesk-damaged-20").size(), 1U);
}

// Opening a damaged table puts its indexes right in the working copy.  The next opening does so
// again, and finds the same damage.
TEST_F(DamagedDatabaseTest, IsNotTouchedWithoutAnEdit) {
  EXPECT_FALSE(ReadFile(copy_) == damaged_) << "something was put right";
  for (int run = 0; run < 2; ++run) {
    bool saved = true;
    ASSERT_TRUE(files_.SaveAndClose(&saved).ok());
    EXPECT_FALSE(saved);
    EXPECT_FALSE(fs::exists(copy_));
    EXPECT_TRUE(ReadFile(main_) == damaged_);
    EXPECT_TRUE(FilesIn(folder_.Path(), "Tesk-").empty());
    ASSERT_TRUE(files_.Open().ok());
    EXPECT_EQ(files_.DamageFound().missing, lost_);
    EXPECT_FALSE(files_.CheckTable(Table::Relays, 1, 64).ok());
  }
}

TEST_F(DamagedDatabaseTest, WithoutAnEditNothingKeepsItFromBeingClosed) {
  fs::permissions(main_, fs::perms::owner_read);
  EXPECT_TRUE(files_.SaveAndClose().ok());
  ASSERT_TRUE(files_.Open().ok());
  fs::permissions(main_, fs::perms::owner_write, fs::perm_options::add);
  {
    const test::FullDisk full(100000);
    EXPECT_TRUE(files_.SaveAndClose().ok());
  }
  ASSERT_TRUE(files_.Open().ok());
  fs::rename(main_, folder_ / "away");
  EXPECT_TRUE(files_.SaveAndClose().ok());
  EXPECT_FALSE(fs::exists(main_));
  EXPECT_TRUE(ReadFile(folder_ / "away") == damaged_);
}

// What was edited has its place all the same.
TEST_F(DamagedDatabaseTest, ThatIsNotThereAnyMoreNeedsNoKeeping) {
  SetLabel(files_, "Studio 1");
  fs::rename(main_, folder_ / "away");
  ASSERT_TRUE(files_.SaveAndClose().ok());
  EXPECT_TRUE(FilesIn(folder_.Path(), "Tesk-").empty());
  ASSERT_TRUE(files_.Open().ok());
  EXPECT_EQ(Label(files_), "Studio 1");
}

// The house puts its good copy in place while the console still runs.
TEST_F(DamagedDatabaseTest, AGoodFileInItsPlaceStaysOrIsKept) {
  const auto putInPlace = [this] {
    fs::remove(main_);
    ASSERT_TRUE(CreateDatabase(main_).ok());
  };
  putInPlace();
  std::string good = ReadFile(main_);
  ASSERT_TRUE(files_.SaveAndClose().ok());
  EXPECT_TRUE(ReadFile(main_) == good);

  WriteFile(main_, damaged_);
  ASSERT_TRUE(files_.Open().ok());
  SetLabel(files_, "Studio 1");
  putInPlace();
  good = ReadFile(main_);
  ASSERT_TRUE(files_.SaveAndClose().ok());
  EXPECT_TRUE(FilesIn(folder_.Path(), "Tesk-damaged-").empty());
  const std::vector<std::string> kept = FilesIn(folder_.Path(), "Tesk-replaced-20");
  ASSERT_EQ(kept.size(), 1U);
  EXPECT_TRUE(ReadFile(folder_ / kept[0]) == good);
}

TEST_F(DamagedDatabaseTest, IsSalvagedIntoANewFileBesideIt) {
  fs::path salvaged;
  SalvageReport report;
  ASSERT_TRUE(files_.SalvageMainFile(Fill::Defaults, &salvaged, &report).ok());
  EXPECT_EQ(report.missing, lost_);
  EXPECT_EQ(FilesIn(folder_.Path(), "Tesk-salvaged-20"),
            std::vector<std::string>{salvaged.filename().string()});
  EXPECT_TRUE(ReadFile(main_) == damaged_);
  DatabaseFiles whole(salvaged, folder_ / "Other.md$");
  ASSERT_TRUE(whole.Open().ok());
  EXPECT_TRUE(whole.DamageFound().IsSound());
  EXPECT_EQ(whole.Stations()->RecordCount(), 128);
}

TEST_F(DatabaseFilesTest, OfASoundFileNothingIsKeptAndEveryTableIsComplete) {
  DatabaseFiles files(main_, copy_);
  ASSERT_TRUE(files.Open().ok());
  EXPECT_TRUE(files.DamageFound().IsSound());
  EXPECT_TRUE(files.CheckTable(Table::Relays, 1, 64).ok());
  SetLabel(files, "Studio 1");
  ASSERT_TRUE(files.SaveAndClose().ok());
  EXPECT_TRUE(FilesIn(folder_.Path(), "Tesk-").empty());
}

// What keeps it from being opened is damage as well.
TEST_F(DatabaseFilesTest, AFileThatIsTooDamagedToBeOpenedIsKnownToBeDamaged) {
  const std::string whole = ReadFile(std::string(TESK_TEST_DATA) + "/mdb/tesk_jet4.mdb");
  WriteFile(main_, whole.substr(0, 61440));
  DatabaseFiles files(main_, copy_);
  const model::Status status = files.Open();
  EXPECT_EQ(status.Number(), 3049);
  EXPECT_FALSE(files.DamageFound().IsSound());
  EXPECT_FALSE(files.IsOpen());
}

constexpr std::ptrdiff_t kPageBytes = 4096;

// The page of a database on which the tree of an index of the stations begins.
std::size_t RootOf(const fs::path& file, std::string_view name) {
  std::unique_ptr<jet::Database> database;
  std::shared_ptr<jet::Table> table;
  EXPECT_TRUE(jet::Database::Open(file, jet::Access::ReadOnly, &database).ok());
  EXPECT_TRUE(database->GetStore().OpenTable(kStationsTable, &table).ok());
  return table->Def().realIndexes[table->Def().FindIndex(name)->real].root;
}

std::vector<int> Numbers(DatabaseFiles& files) {
  std::vector<int> numbers;
  jet::RecordSet& stations = *files.Stations();
  bool ok = stations.MoveFirst().ok();
  for (; ok && !stations.Eof(); ok = stations.MoveNext().ok()) {
    jet::Value number;
    EXPECT_TRUE(stations.Get("StationNum", &number).ok());
    numbers.push_back(number.Int());
  }
  EXPECT_TRUE(ok);
  return numbers;
}

// The records have all that the index is made of.
TEST_F(DatabaseFilesTest, TheStationsAreThereInOrderWithoutTheRootOfTheirIndex) {
  ASSERT_TRUE(CreateDatabase(main_).ok());
  const auto root = static_cast<std::ptrdiff_t>(RootOf(main_, kStationNumIndex));
  const std::string sound = ReadFile(main_);
  for (const char fill : {'\0', '\xAA'}) {
    std::string damaged = sound;
    std::fill_n(damaged.begin() + root * kPageBytes, kPageBytes, fill);
    WriteFile(main_, damaged);
    DatabaseFiles files(main_, copy_);
    const model::Status status = files.Open();
    ASSERT_TRUE(status.ok()) << status.Description();
    EXPECT_FALSE(files.DamageFound().IsSound()) << "the operator is told";
    EXPECT_TRUE(files.DamageFound().missing.empty());
    std::vector<int> all(128);
    std::iota(all.begin(), all.end(), 1);
    EXPECT_EQ(Numbers(files), all);
    ASSERT_TRUE(files.Stations()->Seek(77).ok());
    EXPECT_EQ(Label(files), "Ext. 013");
    ASSERT_TRUE(files.SaveAndClose().ok());
    EXPECT_TRUE(ReadFile(main_) == damaged) << "nothing was edited";
  }
}

// It may be the only copy of what stands there.
TEST_F(DatabaseFilesTest, WhatStandsWhereAnIndexBeganIsNotWrittenOver) {
  ASSERT_TRUE(CreateDatabase(main_).ok());
  const auto root = static_cast<std::ptrdiff_t>(RootOf(main_, kStationNumIndex));
  std::string damaged = ReadFile(main_);
  const auto records = static_cast<std::ptrdiff_t>(damaged.find("Sta. 012")) / kPageBytes;
  std::swap_ranges(damaged.begin() + root * kPageBytes, damaged.begin() + (root + 1) * kPageBytes,
                   damaged.begin() + records * kPageBytes);
  WriteFile(main_, damaged);
  DatabaseFiles files(main_, copy_);
  EXPECT_EQ(files.Open().Number(), 3049);
  EXPECT_FALSE(files.DamageFound().IsSound());
  EXPECT_TRUE(ReadFile(copy_) == damaged);
}

// Nor is one whose beginning alone was lost, as when the power fails while it is written.
TEST_F(DatabaseFilesTest, ATornPageWhereAnIndexBeganIsNotWrittenOver) {
  ASSERT_TRUE(CreateDatabase(main_).ok());
  const auto root = static_cast<std::ptrdiff_t>(RootOf(main_, kStationNumIndex));
  const std::string sound = ReadFile(main_);
  for (const char fill : {'\0', '\xAA'}) {
    std::string damaged = sound;
    const auto records = static_cast<std::ptrdiff_t>(damaged.find("Sta. 012")) / kPageBytes;
    std::swap_ranges(damaged.begin() + root * kPageBytes, damaged.begin() + (root + 1) * kPageBytes,
                     damaged.begin() + records * kPageBytes);
    std::fill_n(damaged.begin() + root * kPageBytes, 512, fill);
    WriteFile(main_, damaged);
    DatabaseFiles files(main_, copy_);
    EXPECT_EQ(files.Open().Number(), 3049);
    EXPECT_FALSE(files.DamageFound().IsSound());
    EXPECT_TRUE(ReadFile(copy_) == damaged);
  }
}

// Its first page says what it is; without it the stations are there all the same.
TEST_F(DatabaseFilesTest, AHeaderThatIsLostIsDamageWhenThereAreStations) {
  ASSERT_TRUE(CreateDatabase(main_).ok());
  const std::string sound = ReadFile(main_);
  std::string zeroed = sound;
  std::fill_n(zeroed.begin(), 4096, '\0');
  std::string scrambled = sound;
  for (std::size_t at = 0x42; at < 0x6A; ++at) scrambled[at] = static_cast<char>(scrambled[at] ^ 1);
  for (const auto& [bytes, number] : {std::pair(zeroed, 3343), std::pair(scrambled, 3031)}) {
    SCOPED_TRACE(number);
    WriteFile(main_, bytes);
    DatabaseFiles files(main_, copy_);
    const model::Status status = files.Open();
    EXPECT_EQ(status.Number(), number);
    EXPECT_EQ(files.DamageFound().problems, std::vector<std::string>{status.Description()});
    fs::path salvaged;
    SalvageReport report;
    ASSERT_TRUE(files.SalvageMainFile(Fill::Nothing, &salvaged, &report).ok());
    EXPECT_EQ(report.stations, 128);
  }
  WriteFile(main_, "this is no database");
  DatabaseFiles files(main_, copy_);
  EXPECT_FALSE(files.Open().ok());
  EXPECT_TRUE(files.DamageFound().IsSound());
}

TEST_F(DatabaseFilesTest, WithoutADatabaseNoTableIsComplete) {
  DatabaseFiles files(main_, copy_);
  EXPECT_EQ(files.CheckTable(Table::Relays, 1, 64).Number(), 3021);
  WriteFile(main_, "this is no database");
  EXPECT_FALSE(files.Open().ok());
  EXPECT_EQ(files.CheckTable(Table::Relays, 1, 64).Number(), 3021);
}

TEST_F(DatabaseFilesTest, ClosedWithoutSavingWhatWasEditedIsKeptBesideTheMainFile) {
  ASSERT_TRUE(CreateDatabase(main_).ok());
  const std::string before = ReadFile(main_);
  fs::permissions(main_, fs::perms::owner_read);
  for (const char* const label : {"Studio 1", "Studio 2"}) {
    DatabaseFiles files(main_, copy_);
    ASSERT_TRUE(files.Open().ok());
    SetLabel(files, label);
    ASSERT_FALSE(files.SaveAndClose().ok());
    fs::path kept;
    const test::FullDisk full(100000);
    const model::Status status = files.CloseWithoutSaving(&kept);
    ASSERT_TRUE(status.ok()) << status.Description();
    EXPECT_FALSE(files.IsOpen());
    EXPECT_FALSE(fs::exists(copy_));
    EXPECT_TRUE(kept.filename().string().starts_with("Tesk-unsaved-20")) << kept;
    EXPECT_TRUE(files.SaveAndClose().ok()) << "nothing is left to do";
    EXPECT_TRUE(ReadFile(main_) == before);
  }
  const std::vector<std::string> kept = FilesIn(folder_.Path(), "Tesk-unsaved-20");
  ASSERT_EQ(kept.size(), 2U);
  DatabaseFiles again(folder_ / kept[0], copy_);
  ASSERT_TRUE(again.Open().ok());
  EXPECT_EQ(Label(again), "Studio 2");
}

TEST_F(DatabaseFilesTest, ClosedWithoutSavingInAFolderThatIsLockedTheWorkingCopyStays) {
  ASSERT_TRUE(CreateDatabase(main_).ok());
  DatabaseFiles files(main_, copy_);
  ASSERT_TRUE(files.Open().ok());
  SetLabel(files, "Studio 1");
  fs::permissions(folder_.Path(), fs::perms::owner_read | fs::perms::owner_exec |
                                      fs::perms::others_read | fs::perms::others_exec);
  fs::path kept;
  {
    const test::AnotherUser user;
    EXPECT_FALSE(files.CloseWithoutSaving(&kept).ok());
  }
  fs::permissions(folder_.Path(), fs::perms::owner_all);
  EXPECT_EQ(kept, copy_);
  DatabaseFiles again(copy_, folder_ / "Other.md$");
  ASSERT_TRUE(again.Open().ok());
  EXPECT_EQ(Label(again), "Studio 1");
}

TEST(StationList, NamesRunsByTheirEnds) {
  EXPECT_EQ(StationList({}), "");
  EXPECT_EQ(StationList({7}), "7");
  EXPECT_EQ(StationList({1, 2}), "1, 2");
  EXPECT_EQ(StationList({1, 11, 12, 13, 20}), "1, 11 to 13, 20");
}

TEST_F(DatabaseFilesTest, AMissingFolderIsAnError) {
  DatabaseFiles files(folder_ / "missing/Tesk.mdb", folder_ / "missing/WorkingDb.md$");
  EXPECT_FALSE(files.Open().ok());
  EXPECT_TRUE(files.SaveAndClose().ok());
}

}  // namespace
}  // namespace db
