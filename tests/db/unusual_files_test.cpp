// SPDX-License-Identifier: MIT

// Where the database is looked for, made or saved stands something else, or there is no room.

#include <gtest/gtest.h>
#include <sys/stat.h>

#include <filesystem>
#include <string>

#include "db/schema.h"
#include "tests/db/database_files_fixture.h"
#include "tests/support/full_disk.h"
#include "tests/support/temporary_folder.h"

namespace db {
namespace {

namespace fs = std::filesystem;
using test::ReadFile;
using test::WriteFile;

using UnusualFilesTest = DatabaseFilesTest;

// The copy begins to be written and does not fit.
TEST_F(UnusualFilesTest, AFullDiskWhileTheWorkingCopyIsMadeIsSaid) {
  ASSERT_TRUE(CreateDatabase(main_).ok());
  const test::FullDisk full(100000);
  DatabaseFiles files(main_, copy_);
  const model::Status status = files.Open();
  EXPECT_EQ(status.Number(), 3026) << status.Description();
  EXPECT_TRUE(files.SaveAndClose().ok());
  EXPECT_FALSE(fs::exists(copy_));
}

// Each is refused at once: nothing is waited for, nothing of it is copied.
TEST_F(UnusualFilesTest, NothingButAFileIsADatabase) {
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

TEST_F(UnusualFilesTest, AFileLargerThanTheFormatIsNotCopied) {
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
TEST_F(UnusualFilesTest, WhatIsNoFileIsNeverReplaced) {
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
TEST_F(UnusualFilesTest, NothingIsWrittenThroughAPlantedLink) {
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

TEST_F(UnusualFilesTest, WhatMayNotBeMadeIsMissing) {
  DatabaseFiles files(main_, copy_, WhenMissing::Fail);
  const model::Status status = files.Open();
  EXPECT_EQ(status.Number(), 3024);
  EXPECT_EQ(status.Description(), "Cannot copy Tesk.mdb: No such file or directory");
  EXPECT_TRUE(files.SaveAndClose().ok());
  EXPECT_TRUE(fs::is_empty(folder_.Path()));
  ASSERT_TRUE(CreateDatabase(main_).ok());
  EXPECT_TRUE(files.Open().ok());
}

TEST_F(UnusualFilesTest, AWriteProtectedFileIsNotReplaced) {
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
TEST_F(UnusualFilesTest, AWriteProtectedFileThatWasOnlyReadIsClosedWithoutAWord) {
  ASSERT_TRUE(CreateDatabase(main_).ok());
  fs::permissions(main_, fs::perms::owner_read);
  DatabaseFiles files(main_, copy_);
  ASSERT_TRUE(files.Open().ok());
  EXPECT_TRUE(files.SaveAndClose().ok());
  EXPECT_FALSE(fs::exists(copy_));
  EXPECT_FALSE(fs::exists(folder_ / "Tesk.mdb.new"));
}

}  // namespace
}  // namespace db
