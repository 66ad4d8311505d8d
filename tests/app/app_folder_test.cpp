// SPDX-License-Identifier: MIT

#include "app/app_folder.h"

#include <gtest/gtest.h>

#include <QDir>
#include <QFile>
#include <QTemporaryDir>

namespace app {
namespace {

void WriteFile(const QString& path, const char* text) {
  QFile file(path);
  ASSERT_TRUE(file.open(QIODevice::WriteOnly));
  file.write(text);
}

QByteArray ReadFile(const QString& path) {
  QFile file(path);
  return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray("(none)");
}

class AppFolderTest : public testing::Test {
 protected:
  QTemporaryDir root_;
  QString user_ = root_.filePath(QStringLiteral("user/data"));
};

TEST_F(AppFolderTest, IsTheProgramsOwnWhereItCanBeWritten) {
  model::Status prepared(1, "left from before");
  EXPECT_EQ(AppFolder(root_.path(), user_, &prepared), root_.path());
  EXPECT_TRUE(prepared.ok());
  EXPECT_FALSE(QDir(user_).exists());
}

TEST_F(AppFolderTest, IsTheUsersWhereTheProgramsCannotBeWritten) {
  // A folder that nobody can write, not even the superuser: there is none.
  model::Status prepared(1, "left from before");
  EXPECT_EQ(AppFolder(root_.filePath(QStringLiteral("missing")), user_, &prepared), user_);
  EXPECT_TRUE(prepared.ok()) << prepared.Description();
  EXPECT_TRUE(QDir(user_).exists());
}

TEST_F(AppFolderTest, TheUserFolderTakesOverWhatTheProgramFolderHolds) {
  WriteFile(root_.filePath(QStringLiteral("Tesk.mdb")), "database");
  WriteFile(root_.filePath(QStringLiteral("Orvotesk.ini")), "settings");
  WriteFile(root_.filePath(QStringLiteral("WorkingDb.md$")), "stale");
  EXPECT_TRUE(PrepareUserFolder(root_.path(), user_).ok());
  EXPECT_EQ(ReadFile(user_ + QStringLiteral("/Tesk.mdb")), "database");
  EXPECT_EQ(ReadFile(user_ + QStringLiteral("/Orvotesk.ini")), "settings");
  EXPECT_EQ(ReadFile(user_ + QStringLiteral("/WorkingDb.md$")), "(none)");
}

TEST_F(AppFolderTest, TheUsersOwnFilesAreNotReplaced) {
  WriteFile(root_.filePath(QStringLiteral("Tesk.mdb")), "database");
  QDir().mkpath(user_);
  WriteFile(user_ + QStringLiteral("/Tesk.mdb"), "mine");
  EXPECT_TRUE(PrepareUserFolder(root_.path(), user_).ok());
  EXPECT_EQ(ReadFile(user_ + QStringLiteral("/Tesk.mdb")), "mine");
}

TEST_F(AppFolderTest, ACopyOfAReadOnlyFileCanBeWritten) {
  const QString original = root_.filePath(QStringLiteral("Tesk.mdb"));
  WriteFile(original, "database");
  QFile::setPermissions(original, QFile::ReadOwner | QFile::ReadOther);
  EXPECT_TRUE(PrepareUserFolder(root_.path(), user_).ok());
  EXPECT_TRUE(QFile::permissions(user_ + QStringLiteral("/Tesk.mdb")) & QFile::WriteOwner);
}

TEST_F(AppFolderTest, WhatCannotBeCopiedIsNamedAndTheRestIsCopied) {
  QDir(root_.path()).mkdir(QStringLiteral("Tesk.mdb"));  // is there and is no file
  WriteFile(root_.filePath(QStringLiteral("Orvotesk.ini")), "settings");
  const model::Status status = PrepareUserFolder(root_.path(), user_);
  EXPECT_EQ(status.Number(), 75);
  EXPECT_TRUE(
      status.Description().starts_with("Cannot copy " + root_.path().toStdString() + "/Tesk.mdb: "))
      << status.Description();
  EXPECT_EQ(ReadFile(user_ + QStringLiteral("/Orvotesk.ini")), "settings");
}

}  // namespace
}  // namespace app
