// SPDX-License-Identifier: MIT

#include "app/run/app_folder.h"

#include <fcntl.h>
#include <gtest/gtest.h>
#include <stdlib.h>
#include <sys/stat.h>

#include <filesystem>

#include "tests/support/another_user.h"
#include "tests/support/full_disk.h"
#include "tests/support/temporary_folder.h"

namespace app {
namespace {

namespace fs = std::filesystem;
using test::ReadFile;
using test::WriteFile;

class AppFolderTest : public testing::Test {
 protected:
  void SetUp() override {
    fs::permissions(root_.Path(), fs::perms::all);
    fs::create_directory(program_);
  }
  void TearDown() override { fs::permissions(program_, fs::perms::owner_all); }

  static QString Name(const fs::path& path) { return QString::fromStdString(path.string()); }

  // Nobody but the superuser may write there.
  void LockProgramFolder() { ASSERT_EQ(chmod(program_.c_str(), 0555), 0); }

  model::Status Choose(AppFolder* folder) const {
    const test::AnotherUser nobody;
    return ChooseAppFolder(Name(program_), Name(user_), folder);
  }

  // The user's folder, made and filled.
  AppFolder TheUsers() {
    AppFolder folder{.path = Name(user_), .program = Name(program_), .lacks = {}};
    fs::create_directories(user_);
    PrepareAppFolder(&folder);
    return folder;
  }

  test::TemporaryFolder root_;
  fs::path program_ = root_ / "program";
  fs::path user_ = root_ / "user/data";
};

TEST_F(AppFolderTest, IsTheProgramsOwnWhereItCanBeWritten) {
  ASSERT_EQ(chmod(program_.c_str(), 0777), 0);
  AppFolder folder;
  ASSERT_TRUE(Choose(&folder).ok());
  EXPECT_EQ(folder.path, Name(program_));
  EXPECT_FALSE(folder.IsTheUsers());
  PrepareAppFolder(&folder);
  EXPECT_TRUE(folder.lacks.ok());
  EXPECT_EQ(OtherDatabase(folder), QString());
  EXPECT_FALSE(fs::exists(user_));
}

TEST_F(AppFolderTest, IsTheUsersWhereTheProgramsMayNotBeWritten) {
  LockProgramFolder();
  AppFolder folder;
  ASSERT_TRUE(Choose(&folder).ok());
  EXPECT_EQ(folder.path, Name(user_));
  EXPECT_TRUE(folder.IsTheUsers());
  EXPECT_TRUE(fs::is_directory(user_));
}

// A drive that is away for a while must not put the console on other tables.
TEST_F(AppFolderTest, AnyOtherFailureIsSaidAndMakesNoOtherFolder) {
  fs::remove(program_);
  AppFolder folder;
  const model::Status status = Choose(&folder);
  EXPECT_EQ(status.Number(), 75);
  EXPECT_EQ(status.Description(),
            "Cannot write in " + program_.string() + ": No such file or directory");
  EXPECT_EQ(folder.path, QString());
  EXPECT_FALSE(fs::exists(user_));
  fs::create_directory(program_);
  ASSERT_EQ(chmod(program_.c_str(), 0777), 0);
  ASSERT_TRUE(Choose(&folder).ok());
  EXPECT_EQ(folder.path, Name(program_));
}

TEST_F(AppFolderTest, TheUserFolderTakesOverWhatTheProgramFolderHolds) {
  WriteFile(program_ / "Tesk.mdb", "database");
  WriteFile(program_ / "Orvotesk.ini", "settings");
  WriteFile(program_ / "WorkingDb.md$", "stale");
  EXPECT_TRUE(TheUsers().lacks.ok());
  EXPECT_EQ(ReadFile(user_ / "Tesk.mdb"), "database");
  EXPECT_EQ(ReadFile(user_ / "Orvotesk.ini"), "settings");
  EXPECT_FALSE(fs::exists(user_ / "WorkingDb.md$"));
}

TEST_F(AppFolderTest, TheUsersOwnFilesAreNotReplaced) {
  WriteFile(program_ / "Tesk.mdb", "database");
  fs::create_directories(user_);
  WriteFile(user_ / "Tesk.mdb", "mine");
  EXPECT_TRUE(TheUsers().lacks.ok());
  EXPECT_EQ(ReadFile(user_ / "Tesk.mdb"), "mine");
}

TEST_F(AppFolderTest, ACopyOfAReadOnlyFileCanBeWritten) {
  WriteFile(program_ / "Tesk.mdb", "database");
  ASSERT_EQ(chmod((program_ / "Tesk.mdb").c_str(), 0444), 0);
  EXPECT_TRUE(TheUsers().lacks.ok());
  EXPECT_NE(fs::status(user_ / "Tesk.mdb").permissions() & fs::perms::owner_write, fs::perms::none);
}

TEST_F(AppFolderTest, WhatCannotBeCopiedIsNamedAndTheRestIsCopied) {
  ASSERT_EQ(mkfifo((program_ / "Tesk.mdb").c_str(), 0666), 0);
  WriteFile(program_ / "Orvotesk.ini", "settings");
  const AppFolder folder = TheUsers();
  EXPECT_EQ(folder.lacks.Number(), 75);
  EXPECT_EQ(folder.lacks.Description(), "Cannot read Tesk.mdb: It is no ordinary file");
  EXPECT_FALSE(fs::exists(user_ / "Tesk.mdb"));
  EXPECT_EQ(ReadFile(user_ / "Orvotesk.ini"), "settings");
}

// The half of it would be taken for the house's database at the next start.
TEST_F(AppFolderTest, ACopyThatDoesNotFitLeavesNothing) {
  WriteFile(program_ / "Tesk.mdb", std::string(300000, 'x'));
  const test::FullDisk full(100000);
  const AppFolder folder = TheUsers();
  EXPECT_EQ(folder.lacks.Description(), "Cannot write Tesk.mdb.new: File too large");
  EXPECT_TRUE(fs::is_empty(user_));
}

TEST_F(AppFolderTest, TwoDatabasesThatDifferAreNamedWithTheirDates) {
  WriteFile(program_ / "Tesk.mdb", "the house's");
  fs::create_directories(user_);
  WriteFile(user_ / "Tesk.mdb", "an old copy");
  const timespec times[2] = {{.tv_sec = 1700000000, .tv_nsec = 0},
                             {.tv_sec = 1700000000, .tv_nsec = 0}};
  const timespec older[2] = {{.tv_sec = 1600000000, .tv_nsec = 0},
                             {.tv_sec = 1600000000, .tv_nsec = 0}};
  ASSERT_EQ(utimensat(AT_FDCWD, (program_ / "Tesk.mdb").c_str(), times, 0), 0);
  ASSERT_EQ(utimensat(AT_FDCWD, (user_ / "Tesk.mdb").c_str(), older, 0), 0);
  setenv("TZ", "UTC", 1);
  EXPECT_EQ(OtherDatabase(TheUsers()).toStdString(),
            "There Are Two Databases\r\rThe program's folder cannot be written, so this console "
            "works on\r" +
                user_.string() + "/Tesk.mdb (2020-09-13 12:26:40)\rand not on\r" +
                program_.string() +
                "/Tesk.mdb (2023-11-14 22:13:20)\rThey differ. Before anything is sent to the "
                "switcher, make sure that it is the right one.");
}

TEST_F(AppFolderTest, TwoDatabasesThatAreTheSameAreNotNamed) {
  WriteFile(program_ / "Tesk.mdb", "the house's");
  EXPECT_EQ(OtherDatabase(TheUsers()), QString());
}

// Whether they differ cannot be told.
TEST_F(AppFolderTest, ADatabaseThatCannotBeComparedIsNamed) {
  ASSERT_EQ(mkfifo((program_ / "Tesk.mdb").c_str(), 0666), 0);
  fs::create_directories(user_);
  WriteFile(user_ / "Tesk.mdb", "mine");
  const QString text = OtherDatabase(TheUsers());
  EXPECT_TRUE(text.startsWith(QStringLiteral("There Are Two Databases\r\r")));
  EXPECT_TRUE(text.contains(QStringLiteral(
      "\rIt cannot be compared: Cannot read Tesk.mdb: It is no ordinary file. Before ")))
      << text.toStdString();
  EXPECT_FALSE(text.contains(QStringLiteral("They differ"))) << text.toStdString();
}

}  // namespace
}  // namespace app
