// SPDX-License-Identifier: MIT

#include "db/file_copy.h"

#include <gtest/gtest.h>

#include "tests/support/temporary_folder.h"

namespace db {
namespace {

namespace fs = std::filesystem;
using test::ReadFile;
using test::WriteFile;

class FileCopyTest : public testing::Test {
 protected:
  test::TemporaryFolder folder_;
  const fs::path from_ = folder_ / "WorkingDb.md$";
  const fs::path to_ = folder_ / "Tesk.mdb";
};

TEST_F(FileCopyTest, CopyHasTheSameBytes) {
  const std::string bytes("a\0b\r\n\xFF", 6);
  WriteFile(from_, bytes);
  ASSERT_TRUE(CopyFile(from_, to_).ok());
  EXPECT_EQ(ReadFile(to_), bytes);
}

TEST_F(FileCopyTest, CopyOfAReadOnlyFileCanBeWritten) {
  WriteFile(from_, "x");
  fs::permissions(from_, fs::perms::owner_read);
  ASSERT_TRUE(CopyFile(from_, to_).ok());
  EXPECT_NE(fs::status(to_).permissions() & fs::perms::owner_write, fs::perms::none);
}

TEST_F(FileCopyTest, CopyingNothingSaysSo) {
  const model::Status status = CopyFile(from_, to_);
  EXPECT_EQ(status.Number(), 3024);
  EXPECT_NE(status.Description().find("WorkingDb.md$"), std::string::npos);
}

TEST_F(FileCopyTest, ReplacesTheWholeFile) {
  WriteFile(from_, std::string(200000, 'n'));
  WriteFile(to_, "old");
  ASSERT_TRUE(ReplaceFile(from_, to_).ok());
  EXPECT_EQ(ReadFile(to_), std::string(200000, 'n'));
  EXPECT_EQ(ReadFile(from_), std::string(200000, 'n'));
  EXPECT_FALSE(fs::exists(folder_ / "Tesk.mdb.new"));
}

TEST_F(FileCopyTest, MakesAFileThatIsNotThere) {
  WriteFile(from_, "new");
  ASSERT_TRUE(ReplaceFile(from_, to_).ok());
  EXPECT_EQ(ReadFile(to_), "new");
}

TEST_F(FileCopyTest, KeepsThePermissionsOfTheReplacedFile) {
  WriteFile(from_, "new");
  WriteFile(to_, "old");
  const fs::perms permissions = fs::perms::owner_read | fs::perms::group_read;
  fs::permissions(to_, permissions);
  ASSERT_TRUE(ReplaceFile(from_, to_).ok());
  EXPECT_EQ(fs::status(to_).permissions(), permissions);
  EXPECT_EQ(ReadFile(to_), "new");
}

TEST_F(FileCopyTest, ReplacesWhatALinkLeadsTo) {
  WriteFile(from_, "new");
  const fs::path real = folder_ / "elsewhere.mdb";
  WriteFile(real, "old");
  fs::create_symlink(real, to_);
  ASSERT_TRUE(ReplaceFile(from_, to_).ok());
  EXPECT_TRUE(fs::is_symlink(to_));
  EXPECT_EQ(ReadFile(real), "new");
}

TEST_F(FileCopyTest, AFailureLeavesTheOldFile) {
  WriteFile(to_, "old");
  EXPECT_EQ(ReplaceFile(from_, to_).Number(), 3024);
  EXPECT_EQ(ReadFile(to_), "old");
  EXPECT_FALSE(fs::exists(folder_ / "Tesk.mdb.new"));
}

TEST_F(FileCopyTest, AFullDiskIsAnErrorAndLeavesTheOldFile) {
  WriteFile(from_, std::string(100000, 'n'));
  WriteFile(to_, "old");
  // Writing beside the file goes to a device that is always full.
  fs::create_symlink("/dev/full", folder_ / "Tesk.mdb.new");
  const model::Status status = ReplaceFile(from_, to_);
  EXPECT_EQ(status.Number(), 3026) << status.Description();
  EXPECT_EQ(ReadFile(to_), "old");
}

TEST_F(FileCopyTest, AFolderInTheWayIsAnErrorAndLeavesTheOldFile) {
  WriteFile(from_, "new");
  WriteFile(to_, "old");
  fs::create_directory(folder_ / "Tesk.mdb.new");
  WriteFile(folder_ / "Tesk.mdb.new/x", "x");
  EXPECT_FALSE(ReplaceFile(from_, to_).ok());
  EXPECT_EQ(ReadFile(to_), "old");
}

TEST_F(FileCopyTest, RemovingWhatIsNotThereIsASuccess) {
  EXPECT_TRUE(RemoveFile(from_).ok());
  WriteFile(from_, "x");
  EXPECT_TRUE(RemoveFile(from_).ok());
  EXPECT_FALSE(fs::exists(from_));
}

}  // namespace
}  // namespace db
