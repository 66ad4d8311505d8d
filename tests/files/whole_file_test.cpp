// SPDX-License-Identifier: MIT

#include "files/whole_file.h"

#include <gtest/gtest.h>
#include <sys/stat.h>
#include <unistd.h>

#include "tests/support/full_disk.h"
#include "tests/support/temporary_folder.h"

namespace files {
namespace {

namespace fs = std::filesystem;
using test::ReadFile;
using test::WriteFile;

constexpr std::uint64_t kMost = 1 << 20;

class WholeFileTest : public testing::Test {
 protected:
  test::TemporaryFolder folder_;
  const fs::path from_ = folder_ / "WorkingDb.md$";
  const fs::path to_ = folder_ / "Tesk.mdb";
  const fs::path new_ = folder_ / "Tesk.mdb.new";
};

TEST_F(WholeFileTest, IsReadUpToALimit) {
  WriteFile(to_, std::string(1000, 'x'));
  std::string bytes = "junk";
  ASSERT_TRUE(ReadWhole(to_, 1000, &bytes).ok());
  EXPECT_EQ(bytes, std::string(1000, 'x'));
  const Outcome outcome = ReadWhole(to_, 999, &bytes);
  EXPECT_EQ(outcome.error, Error::TooLarge);
  EXPECT_EQ(outcome.text, "Cannot read Tesk.mdb: It is too large");
  EXPECT_EQ(bytes, "");
  EXPECT_EQ(ReadWhole(from_, 1, &bytes).error, std::errc::no_such_file_or_directory);
}

TEST_F(WholeFileTest, CopyHasTheSameBytes) {
  const std::string bytes = std::string("a\0b\r\n\xFF", 6) + std::string(200000, 'n');
  WriteFile(from_, bytes);
  ASSERT_TRUE(Copy(from_, to_, kMost).ok());
  EXPECT_EQ(ReadFile(to_), bytes);
}

TEST_F(WholeFileTest, CopyOfAReadOnlyFileCanBeWritten) {
  WriteFile(from_, "x");
  fs::permissions(from_, fs::perms::owner_read | fs::perms::group_read);
  ASSERT_TRUE(Copy(from_, to_, kMost).ok());
  EXPECT_EQ(fs::status(to_).permissions(),
            fs::perms::owner_read | fs::perms::owner_write | fs::perms::group_read);
}

TEST_F(WholeFileTest, CopyingNothingSaysSo) {
  const Outcome outcome = Copy(from_, to_, kMost);
  EXPECT_EQ(outcome.error, std::errc::no_such_file_or_directory);
  EXPECT_EQ(outcome.text, "Cannot copy WorkingDb.md$: No such file or directory");
}

TEST_F(WholeFileTest, CopyNeverGoesThroughWhatHasItsName) {
  WriteFile(from_, "new");
  WriteFile(folder_ / "elsewhere", "old");
  fs::create_symlink("elsewhere", to_);
  EXPECT_EQ(Copy(from_, to_, kMost).error, std::errc::file_exists);
  EXPECT_EQ(ReadFile(folder_ / "elsewhere"), "old");
}

// A file with nothing in it that would be larger than any disk.
TEST_F(WholeFileTest, AFileThatIsTooLargeIsNotCopied) {
  WriteFile(from_, "");
  fs::resize_file(from_, std::uintmax_t{3} << 30);
  const Outcome outcome = Copy(from_, to_, std::uint64_t{1} << 31);
  EXPECT_EQ(outcome.error, Error::TooLarge);
  EXPECT_FALSE(fs::exists(to_));
}

// The disk takes a part of a block and then no more.
TEST_F(WholeFileTest, CopyToAFullDiskSaysSoAndLeavesNothing) {
  WriteFile(from_, std::string(300000, 'x'));
  const test::FullDisk full(100000);
  const Outcome outcome = Copy(from_, to_, kMost);
  EXPECT_EQ(outcome.error, std::errc::file_too_large);
  EXPECT_EQ(outcome.text, "Cannot write Tesk.mdb: File too large");
  EXPECT_FALSE(fs::exists(to_));
}

TEST_F(WholeFileTest, ComparesByteByByte) {
  bool same = false;
  WriteFile(from_, std::string(200000, 'a'));
  WriteFile(to_, std::string(200000, 'a'));
  ASSERT_TRUE(Compare(from_, to_, &same).ok());
  EXPECT_TRUE(same);
  WriteFile(to_, std::string(199999, 'a') + "b");
  ASSERT_TRUE(Compare(from_, to_, &same).ok());
  EXPECT_FALSE(same);
  WriteFile(to_, std::string(199999, 'a'));
  ASSERT_TRUE(Compare(from_, to_, &same).ok());
  EXPECT_FALSE(same);
  EXPECT_FALSE(Compare(from_, folder_ / "missing", &same).ok());
}

TEST_F(WholeFileTest, ReplacesTheWholeFile) {
  WriteFile(from_, std::string(200000, 'n'));
  WriteFile(to_, "old");
  ASSERT_TRUE(ReplaceByCopy(to_, from_, kMost).ok());
  EXPECT_EQ(ReadFile(to_), std::string(200000, 'n'));
  EXPECT_EQ(ReadFile(from_), std::string(200000, 'n'));
  EXPECT_FALSE(fs::exists(new_));
  ASSERT_TRUE(Replace(to_, "newer").ok());
  EXPECT_EQ(ReadFile(to_), "newer");
}

TEST_F(WholeFileTest, MakesAFileThatIsNotThere) {
  ASSERT_TRUE(Replace(to_, "new").ok());
  EXPECT_EQ(ReadFile(to_), "new");
}

TEST_F(WholeFileTest, KeepsTheRightsOfTheReplacedFile) {
  WriteFile(to_, "old");
  ASSERT_EQ(chmod(to_.c_str(), 0640), 0);
  if (geteuid() == 0) {
    ASSERT_EQ(chown(to_.c_str(), 12, 34), 0);
  }
  struct stat before {};
  struct stat after {};
  ASSERT_EQ(stat(to_.c_str(), &before), 0);
  ASSERT_TRUE(Replace(to_, "new").ok());
  ASSERT_EQ(stat(to_.c_str(), &after), 0);
  EXPECT_EQ(after.st_mode, before.st_mode);
  EXPECT_EQ(after.st_uid, before.st_uid);
  EXPECT_EQ(after.st_gid, before.st_gid);
  EXPECT_EQ(ReadFile(to_), "new");
}

TEST_F(WholeFileTest, AWriteProtectedFileIsNotReplaced) {
  WriteFile(to_, "old");
  ASSERT_EQ(chmod(to_.c_str(), 0444), 0);
  const Outcome outcome = Replace(to_, "new");
  EXPECT_EQ(outcome.error, Error::WriteProtected);
  EXPECT_EQ(outcome.text, "Cannot replace Tesk.mdb: It is write-protected");
  EXPECT_EQ(ReadFile(to_), "old");
  EXPECT_FALSE(fs::exists(new_));
}

TEST_F(WholeFileTest, ReplacesWhatALinkLeadsTo) {
  const fs::path real = folder_ / "elsewhere.mdb";
  WriteFile(real, "old");
  fs::create_symlink(real, to_);
  ASSERT_TRUE(Replace(to_, "new").ok());
  EXPECT_TRUE(fs::is_symlink(to_));
  EXPECT_EQ(ReadFile(real), "new");
  fs::remove(real);
  ASSERT_TRUE(Replace(to_, "newer").ok()) << "also when it leads to nothing yet";
  EXPECT_TRUE(fs::is_symlink(to_));
  EXPECT_EQ(ReadFile(real), "newer");
}

TEST_F(WholeFileTest, NothingButAFileIsReplaced) {
  ASSERT_EQ(mkfifo((folder_ / "pipe").c_str(), 0666), 0);
  fs::create_directory(folder_ / "folder");
  for (const char* const name : {"pipe", "folder", "/dev/null"}) {
    SCOPED_TRACE(name);
    fs::remove(to_);
    fs::create_symlink(name, to_);
    const fs::file_type before = fs::status(to_).type();
    const Outcome outcome = Replace(to_, "new");
    EXPECT_EQ(outcome.error, Error::NotAFile) << outcome.text;
    EXPECT_EQ(fs::status(to_).type(), before);
  }
}

TEST_F(WholeFileTest, AFailureLeavesTheOldFile) {
  WriteFile(to_, "old");
  EXPECT_EQ(ReplaceByCopy(to_, from_, kMost).error, std::errc::no_such_file_or_directory);
  EXPECT_EQ(ReadFile(to_), "old");
  EXPECT_FALSE(fs::exists(new_));
}

TEST_F(WholeFileTest, AFullDiskIsAnErrorAndLeavesTheOldFile) {
  WriteFile(from_, std::string(300000, 'n'));
  WriteFile(to_, "old");
  const test::FullDisk full(100000);
  const Outcome outcome = ReplaceByCopy(to_, from_, kMost);
  EXPECT_EQ(outcome.text, "Cannot write Tesk.mdb.new: File too large");
  EXPECT_EQ(ReadFile(to_), "old");
  EXPECT_FALSE(fs::exists(new_));
}

// A link that somebody has laid where the new file is made leads nowhere that would be written.
TEST_F(WholeFileTest, WhatIsLeftBesideTheNameIsDeletedAndNotFollowed) {
  WriteFile(to_, "old");
  WriteFile(new_, "left by a crash");
  ASSERT_TRUE(Replace(to_, "new").ok());
  EXPECT_EQ(ReadFile(to_), "new");
  const fs::path victim = folder_ / "victim";
  WriteFile(victim, "of somebody else");
  fs::create_symlink("victim", new_);
  ASSERT_TRUE(Replace(to_, "newer").ok());
  EXPECT_EQ(ReadFile(to_), "newer");
  EXPECT_FALSE(fs::is_symlink(to_));
  EXPECT_EQ(ReadFile(victim), "of somebody else");
}

TEST_F(WholeFileTest, SomethingElseBesideTheNameIsAnErrorAndStays) {
  WriteFile(to_, "old");
  fs::create_directory(new_);
  Outcome outcome = Replace(to_, "new");
  EXPECT_EQ(outcome.text, "Cannot delete Tesk.mdb.new: It is no ordinary file");
  EXPECT_TRUE(fs::is_directory(new_));
  fs::remove(new_);
  ASSERT_EQ(mkfifo(new_.c_str(), 0666), 0);
  outcome = Replace(to_, "new");
  EXPECT_EQ(outcome.error, Error::NotAFile);
  EXPECT_TRUE(fs::is_fifo(new_));
  EXPECT_EQ(ReadFile(to_), "old");
}

TEST_F(WholeFileTest, WhatIsNotPutInPlaceIsDeleted) {
  WriteFile(to_, "old");
  {
    Replacement replacement;
    ASSERT_TRUE(replacement.Begin(to_).ok());
    EXPECT_TRUE(fs::exists(new_));
    EXPECT_EQ(Beside(to_), new_);
  }
  EXPECT_FALSE(fs::exists(new_));
  EXPECT_EQ(ReadFile(to_), "old");
}

TEST_F(WholeFileTest, WhileItIsMadeNobodyElseReadsTheNewFile) {
  WriteFile(to_, "old");
  ASSERT_EQ(chmod(to_.c_str(), 0644), 0);
  Replacement replacement;
  ASSERT_TRUE(replacement.Begin(to_).ok());
  EXPECT_EQ(fs::status(new_).permissions(), fs::perms::owner_read | fs::perms::owner_write);
}

TEST_F(WholeFileTest, RemovingWhatIsNotThereIsASuccess) {
  EXPECT_TRUE(Remove(from_).ok());
  WriteFile(from_, "x");
  EXPECT_TRUE(Remove(from_).ok());
  EXPECT_FALSE(fs::exists(from_));
}

TEST_F(WholeFileTest, NothingButAFileOrALinkIsRemoved) {
  WriteFile(to_, "x");
  fs::create_symlink("Tesk.mdb", from_);
  EXPECT_TRUE(Remove(from_).ok());
  EXPECT_FALSE(fs::is_symlink(from_));
  EXPECT_TRUE(fs::exists(to_));
  fs::create_directory(from_);
  EXPECT_EQ(Remove(from_).text, "Cannot delete WorkingDb.md$: It is no ordinary file");
  EXPECT_TRUE(fs::is_directory(from_));
}

}  // namespace
}  // namespace files
