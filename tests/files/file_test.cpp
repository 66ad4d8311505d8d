// SPDX-License-Identifier: MIT

#include "files/file.h"

#include <gtest/gtest.h>
#include <sys/socket.h>
#include <sys/stat.h>
#include <sys/un.h>
#include <sys/wait.h>
#include <unistd.h>

#include <array>
#include <cstring>
#include <functional>
#include <string>

#include "tests/support/temporary_folder.h"

namespace files {
namespace {

namespace fs = std::filesystem;
using test::ReadFile;
using test::WriteFile;

std::span<const std::uint8_t> Bytes(std::string_view text) {
  return {reinterpret_cast<const std::uint8_t*>(text.data()), text.size()};
}

// Whether it holds for a user who is not the superuser.
bool AsNobody(const std::function<bool()>& holds) {
  const pid_t child = fork();
  if (child == 0) {
    constexpr uid_t kNobody = 65534;
    if (geteuid() == 0 && (setgid(kNobody) != 0 || setuid(kNobody) != 0)) _exit(2);
    _exit(holds() ? 0 : 1);
  }
  int status = 0;
  return waitpid(child, &status, 0) == child && WIFEXITED(status) && WEXITSTATUS(status) == 0;
}

class FileTest : public testing::Test {
 protected:
  FileTest() { umask_ = umask(022); }
  ~FileTest() override { umask(umask_); }

  mode_t ModeOf(const fs::path& path) {
    struct stat found {};
    EXPECT_EQ(stat(path.c_str(), &found), 0) << path;
    return found.st_mode & 07777;
  }

  test::TemporaryFolder folder_;
  const fs::path path_ = folder_ / "file";
  mode_t umask_ = 0;
};

TEST_F(FileTest, ReadsAndWritesByPosition) {
  WriteFile(path_, "0123456789");
  File file;
  ASSERT_FALSE(File::OpenToEdit(path_, &file));
  std::uint64_t size = 0;
  ASSERT_FALSE(file.Size(&size));
  EXPECT_EQ(size, 10U);
  ASSERT_FALSE(file.Write(8, Bytes("abc")));
  std::array<std::uint8_t, 3> bytes{};
  ASSERT_FALSE(file.Read(7, bytes));
  EXPECT_EQ(std::string(bytes.begin(), bytes.end()), "7ab");
  EXPECT_EQ(file.Read(9, bytes), Error::Shortened);
  ASSERT_FALSE(file.Truncate(2));
  EXPECT_FALSE(file.Sync());
  file.Close();
  EXPECT_FALSE(file.IsOpen());
  EXPECT_EQ(ReadFile(path_), "01");
}

TEST_F(FileTest, ALinkToAFileCounts) {
  WriteFile(path_, "x");
  fs::create_symlink("file", folder_ / "link");
  File file;
  EXPECT_FALSE(File::OpenToRead(folder_ / "link", &file));
  EXPECT_FALSE(File::OpenToEdit(folder_ / "link", &file));
}

TEST_F(FileTest, WhatIsMissingIsSaid) {
  File file;
  EXPECT_EQ(File::OpenToRead(path_, &file), std::errc::no_such_file_or_directory);
  EXPECT_FALSE(file.IsOpen());
}

// None of them is waited for.
TEST_F(FileTest, NothingButAFileIsOpened) {
  ASSERT_EQ(mkfifo((folder_ / "pipe").c_str(), 0666), 0);
  const int handle = socket(AF_UNIX, SOCK_STREAM, 0);
  sockaddr_un address{};
  address.sun_family = AF_UNIX;
  std::strncpy(address.sun_path, (folder_ / "socket").c_str(), sizeof address.sun_path - 1);
  ASSERT_EQ(bind(handle, reinterpret_cast<const sockaddr*>(&address), sizeof address), 0);
  fs::create_directory(folder_ / "folder");
  fs::create_symlink("/dev/zero", folder_ / "device");
  for (const char* const name : {"pipe", "socket", "folder", "device"}) {
    SCOPED_TRACE(name);
    File file;
    EXPECT_EQ(File::OpenToRead(folder_ / name, &file), Error::NotAFile);
    EXPECT_EQ(File::OpenToEdit(folder_ / name, &file), Error::NotAFile);
    EXPECT_EQ(File::OpenForLock(folder_ / name, &file), Error::NotAFile);
    EXPECT_EQ(File::Create(folder_ / name, Rights::OfFolder, &file), std::errc::file_exists);
    EXPECT_FALSE(file.IsOpen());
  }
  close(handle);
}

TEST_F(FileTest, ANewFileIsNotMadeThroughALink) {
  fs::create_symlink("elsewhere", path_);
  File file;
  EXPECT_EQ(File::Create(path_, Rights::OfFolder, &file), std::errc::file_exists);
  EXPECT_EQ(File::OpenForLock(path_, &file), Error::NotAFile);
  EXPECT_FALSE(fs::exists(folder_ / "elsewhere"));
  WriteFile(folder_ / "elsewhere", "x");
  EXPECT_EQ(File::OpenForLock(path_, &file), Error::NotAFile);
}

TEST_F(FileTest, ANewFileIsThere) {
  File file;
  ASSERT_FALSE(File::Create(path_, Rights::OfFolder, &file));
  ASSERT_FALSE(file.Write(0, Bytes("new")));
  std::array<std::uint8_t, 3> bytes{};
  EXPECT_FALSE(file.Read(0, bytes));
  EXPECT_EQ(ReadFile(path_), "new");
  EXPECT_EQ(File::Create(path_, Rights::OfFolder, &file), std::errc::file_exists);
}

TEST_F(FileTest, ANewFileHasTheRightsOfItsFolder) {
  struct Case {
    mode_t folder;
    mode_t mask;
    mode_t file;
  };
  constexpr Case kCases[] = {
      {0755, 022, 0644},
      {0755, 077, 0600},
      {0700, 022, 0644},
      // Who may write in the folder may use the file.
      {0775, 022, 0664},
      {0770, 077, 0660},
      {02775, 077, 0660},
      // Never may everybody write it.
      {0777, 0, 0664},
      {0777, 077, 0664},
      {01777, 022, 0664},
  };
  for (const Case& each : kCases) {
    SCOPED_TRACE(testing::Message() << std::oct << each.folder << " with umask " << each.mask);
    ASSERT_EQ(chmod(folder_.Path().c_str(), each.folder), 0);
    umask(each.mask);
    File file;
    ASSERT_FALSE(File::Create(path_, Rights::OfFolder, &file));
    EXPECT_EQ(ModeOf(path_), each.file);
    fs::remove(path_);
    ASSERT_FALSE(File::OpenForLock(path_, &file));
    EXPECT_EQ(ModeOf(path_), each.file);
    fs::remove(path_);
    ASSERT_FALSE(File::Create(path_, Rights::Private, &file));
    EXPECT_EQ(ModeOf(path_), 0600U);
    fs::remove(path_);
  }
}

TEST_F(FileTest, TakesOwnerGroupAndMode) {
  WriteFile(path_, "old");
  ASSERT_EQ(chmod(path_.c_str(), 0640), 0);
  if (geteuid() == 0) {
    ASSERT_EQ(chown(path_.c_str(), 12, 34), 0);
  }
  File file;
  ASSERT_FALSE(File::Create(folder_ / "new", Rights::Private, &file));
  ASSERT_FALSE(file.TakeRightsOf(path_));
  struct stat wanted {};
  struct stat found {};
  ASSERT_EQ(stat(path_.c_str(), &wanted), 0);
  ASSERT_EQ(stat((folder_ / "new").c_str(), &found), 0);
  EXPECT_EQ(found.st_uid, wanted.st_uid);
  EXPECT_EQ(found.st_gid, wanted.st_gid);
  EXPECT_EQ(found.st_mode, wanted.st_mode);
}

// The owner may not be given away; the mode is taken all the same.
TEST_F(FileTest, TakesWhatItMay) {
  WriteFile(path_, "old");
  ASSERT_EQ(chmod(path_.c_str(), 0664), 0);
  ASSERT_EQ(chmod(folder_.Path().c_str(), 0777), 0);
  EXPECT_TRUE(AsNobody([&] {
    File file;
    return !File::Create(folder_ / "new", Rights::Private, &file) && !file.TakeRightsOf(path_);
  }));
  EXPECT_EQ(ModeOf(folder_ / "new"), 0664U);
}

TEST_F(FileTest, ALockKeepsOthersOut) {
  File first;
  ASSERT_FALSE(File::OpenForLock(path_, &first));
  EXPECT_FALSE(first.Lock());
  File second;
  ASSERT_FALSE(File::OpenForLock(path_, &second));
  EXPECT_EQ(second.Lock(), std::errc::resource_unavailable_try_again);
  first.Close();
  EXPECT_FALSE(second.Lock());
}

TEST_F(FileTest, ALockTakesNoRightToWrite) {
  ASSERT_EQ(chmod(folder_.Path().c_str(), 0755), 0);
  WriteFile(path_, "");
  ASSERT_EQ(chmod(path_.c_str(), 0444), 0);
  EXPECT_TRUE(AsNobody([&] {
    File file;
    return !File::OpenForLock(path_, &file) && !file.Lock();
  }));
}

TEST_F(FileTest, TellsWhatANameStandsFor) {
  Kind kind = Kind::Other;
  EXPECT_FALSE(KindOf(path_, &kind));
  EXPECT_EQ(kind, Kind::Nothing);
  WriteFile(path_, "");
  EXPECT_FALSE(KindOf(path_, &kind));
  EXPECT_EQ(kind, Kind::Regular);
  fs::create_symlink("nowhere", folder_ / "link");
  EXPECT_FALSE(KindOf(folder_ / "link", &kind));
  EXPECT_EQ(kind, Kind::Link);
  EXPECT_FALSE(KindOf(folder_.Path(), &kind));
  EXPECT_EQ(kind, Kind::Other);
  EXPECT_EQ(KindOf(path_ / "below", &kind), std::errc::not_a_directory);
}

TEST_F(FileTest, AFileWithoutAnyRightToWriteIsProtectedFromEverybody) {
  EXPECT_FALSE(IsWriteProtected(path_)) << "it is not there";
  WriteFile(path_, "");
  EXPECT_FALSE(IsWriteProtected(path_));
  ASSERT_EQ(chmod(path_.c_str(), 0444), 0);
  EXPECT_TRUE(IsWriteProtected(path_));
}

TEST_F(FileTest, AFileIsProtectedFromThoseWhoMayNotWriteIt) {
  ASSERT_EQ(chmod(folder_.Path().c_str(), 0755), 0);
  WriteFile(path_, "");
  // Others may only read what is the superuser's; who is none takes the right from himself.
  ASSERT_EQ(chmod(path_.c_str(), geteuid() == 0 ? 0644 : 0444), 0);
  EXPECT_TRUE(AsNobody([&] { return IsWriteProtected(path_); }));
  ASSERT_EQ(chmod(path_.c_str(), 0666), 0);
  EXPECT_TRUE(AsNobody([&] { return !IsWriteProtected(path_); }));
}

TEST_F(FileTest, AFolderSaysWhyNoFileCanBeMadeInIt) {
  EXPECT_FALSE(CheckFolder(folder_.Path()));
  EXPECT_EQ(CheckFolder(folder_ / "missing"), std::errc::no_such_file_or_directory);
  ASSERT_EQ(chmod(folder_.Path().c_str(), 0555), 0);
  EXPECT_TRUE(
      AsNobody([&] { return CheckFolder(folder_.Path()) == std::errc::permission_denied; }));
  ASSERT_EQ(chmod(folder_.Path().c_str(), 0755), 0);
}

}  // namespace
}  // namespace files
