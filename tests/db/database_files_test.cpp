// SPDX-License-Identifier: MIT

#include "db/database_files.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <string>
#include <vector>

#include "db/schema.h"
#include "tests/db/database_files_fixture.h"
#include "tests/support/another_user.h"
#include "tests/support/full_disk.h"
#include "tests/support/temporary_folder.h"

namespace db {
namespace {

namespace fs = std::filesystem;
using test::ReadFile;
using test::WriteFile;

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
  const std::vector<std::string> kept = FilesThatBegin("Tesk-unsaved-20");
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

TEST_F(DatabaseFilesTest, AMissingFolderIsAnError) {
  DatabaseFiles files(folder_ / "missing/Tesk.mdb", folder_ / "missing/WorkingDb.md$");
  EXPECT_FALSE(files.Open().ok());
  EXPECT_TRUE(files.SaveAndClose().ok());
}

}  // namespace
}  // namespace db
