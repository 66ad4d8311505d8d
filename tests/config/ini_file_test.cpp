// SPDX-License-Identifier: MIT

#include "config/ini_file.h"

#include <gtest/gtest.h>
#include <sys/stat.h>

#include <QFile>
#include <QTemporaryDir>

namespace config {
namespace {

TEST(IniFile, FindsValuesWithoutRegardToCase) {
  const IniFile file("[other]\nCOM Port=9\n[Configuration]\r\n com PORT = 3 \r\nApp Path=/a\\\r\n");
  EXPECT_EQ(file.Value("CONFIGURATION", "COM Port"), "3");
  EXPECT_EQ(file.Value("CONFIGURATION", "App Path"), "/a\\");
  EXPECT_EQ(file.Value("CONFIGURATION", "IP Port"), "");
  EXPECT_EQ(file.Value("MISSING", "COM Port"), "");
}

TEST(IniFile, CommentsAndJunkAreNoKeys) {
  const IniFile file("COM Port=7\n[C]\n;COM Port=1\njunk\n=5\n[\n[C]\nCOM Port=2\n");
  EXPECT_EQ(file.Value("C", "COM Port"), "");
  EXPECT_EQ(file.Value("C", "junk"), "");
}

TEST(IniFile, QuotesAroundAValueAreDropped) {
  const IniFile file("[C]\na=\"x y \"\nb='z'\nc=\"\nd=\"q'\n");
  EXPECT_EQ(file.Value("C", "a"), "x y ");
  EXPECT_EQ(file.Value("C", "b"), "z");
  EXPECT_EQ(file.Value("C", "c"), "\"");
  EXPECT_EQ(file.Value("C", "d"), "\"q'");
}

TEST(IniFile, AByteOrderMarkHidesNoSection) {
  const IniFile file("\xEF\xBB\xBF[C]\na=1\n");
  EXPECT_EQ(file.Value("C", "a"), "1");
}

TEST(IniFile, ANewFileHasCrLf) {
  IniFile file;
  file.SetValue("CONFIGURATION", "COM Port", "1");
  file.SetValue("CONFIGURATION", "App Path", "/a\\");
  EXPECT_EQ(file.Text(), "[CONFIGURATION]\r\nCOM Port=1\r\nApp Path=/a\\\r\n");
}

TEST(IniFile, ChangingAValueKeepsEveryOtherByte) {
  IniFile file(
      "; installed by Jo\n\n[SERIAL DEVICES]\nCOM1 = /dev/ttyUSB0\n\n"
      "[configuration]\n  com port =  1  \n; keep me\nExtra=yes\n\n[Z]\nlast");
  file.SetValue("CONFIGURATION", "COM Port", "2");
  file.SetValue("CONFIGURATION", "Demo Mode", "0");
  EXPECT_EQ(file.Text(),
            "; installed by Jo\n\n[SERIAL DEVICES]\nCOM1 = /dev/ttyUSB0\n\n"
            "[configuration]\n  com port =  2\n; keep me\nExtra=yes\nDemo Mode=0\n\n[Z]\nlast");
}

TEST(IniFile, AnEqualValueLeavesItsLineAsItIs) {
  IniFile file("[C]\na =  \"1\"  \n");
  file.SetValue("C", "a", "1");
  EXPECT_EQ(file.Text(), "[C]\na =  \"1\"  \n");
}

TEST(IniFile, AnEmptyValueCanBeFilledAndEmptied) {
  IniFile file("[C]\r\na=\r\nb= \r\n");
  file.SetValue("C", "a", "1");
  file.SetValue("C", "b", "2");
  EXPECT_EQ(file.Text(), "[C]\r\na=1\r\nb= 2\r\n");
  file.SetValue("C", "a", "");
  EXPECT_EQ(file.Text(), "[C]\r\na=\r\nb= 2\r\n");
}

TEST(IniFile, AMissingSectionGoesToTheEnd) {
  IniFile file("[Z]\nlast");
  file.SetValue("C", "a", "1");
  EXPECT_EQ(file.Text(), "[Z]\nlast\n[C]\na=1\n");
}

TEST(IniFile, JunkIsKept) {
  using namespace std::string_literals;
  const std::string junk = "\0\xFF[[[=\r\r\n]=\n\n\x01"s;
  IniFile file(junk);
  EXPECT_EQ(file.Text(), junk);
  file.SetValue("C", "a", "1");
  EXPECT_EQ(file.Text().substr(0, junk.size()), junk);
  EXPECT_EQ(file.Value("C", "a"), "1");
}

TEST(IniFile, SavesAndLoads) {
  const QTemporaryDir folder;
  const std::filesystem::path path = folder.filePath(QStringLiteral("a.ini")).toStdString();
  IniFile file("junk");
  ASSERT_TRUE(IniFile::Load(path, &file).ok());
  EXPECT_EQ(file.Text(), "");
  file.SetValue("C", "a", "\xC3\xA9");
  ASSERT_TRUE(file.Save(path).ok());
  IniFile again;
  ASSERT_TRUE(IniFile::Load(path, &again).ok());
  EXPECT_EQ(again.Text(), "[C]\r\na=\xC3\xA9\r\n");
}

TEST(IniFile, AFileThatCannotBeReadIsAnError) {
  const QTemporaryDir folder;  // a folder is there and is no file
  IniFile file("junk");
  const model::Status status = IniFile::Load(folder.path().toStdString(), &file);
  EXPECT_EQ(status.Number(), 75);
  EXPECT_EQ(file.Text(), "");
}

// None of them is waited for or read to an end that does not come, and none is replaced.
TEST(IniFile, WhatIsNoSettingsFileIsRefusedAndLeftAlone) {
  const QTemporaryDir folder;
  const std::filesystem::path path = folder.filePath(QStringLiteral("a.ini")).toStdString();
  const auto expectRefused = [&](const char* why) {
    SCOPED_TRACE(why);
    IniFile file("junk");
    model::Status status = IniFile::Load(path, &file);
    EXPECT_EQ(status.Number(), 75);
    EXPECT_EQ(status.Description(), std::string("Cannot read a.ini: ") + why);
    EXPECT_EQ(file.Text(), "");
  };
  const auto expectKept = [&](const char* why) {
    const model::Status status = IniFile("[C]\n").Save(path);
    EXPECT_EQ(status.Number(), 75);
    EXPECT_EQ(status.Description(), std::string("Cannot replace a.ini: ") + why);
  };
  ASSERT_EQ(mkfifo(path.c_str(), 0666), 0);
  expectRefused("It is no ordinary file");
  expectKept("It is no ordinary file");
  EXPECT_TRUE(std::filesystem::is_fifo(path));
  std::filesystem::remove(path);
  std::filesystem::create_symlink("/dev/zero", path);
  expectRefused("It is no ordinary file");
  expectKept("It is no ordinary file");
  EXPECT_TRUE(std::filesystem::is_character_file(path));
  std::filesystem::remove(path);
  ASSERT_TRUE(IniFile("[C]\n").Save(path).ok());
  std::filesystem::resize_file(path, std::uintmax_t{3} << 30);
  expectRefused("It is too large");
}

// A link that was laid where the new file is made.
TEST(IniFile, IsNotWrittenThroughAPlantedLink) {
  const QTemporaryDir folder;
  const std::filesystem::path path = folder.filePath(QStringLiteral("a.ini")).toStdString();
  const std::filesystem::path victim = folder.filePath(QStringLiteral("victim")).toStdString();
  std::filesystem::create_symlink("victim", path.string() + ".new");
  ASSERT_TRUE(IniFile("[C]\n").Save(path).ok());
  EXPECT_FALSE(std::filesystem::exists(victim));
  EXPECT_TRUE(std::filesystem::is_regular_file(path));
}

TEST(IniFile, AWriteProtectedFileIsNotReplaced) {
  const QTemporaryDir folder;
  const std::filesystem::path path = folder.filePath(QStringLiteral("a.ini")).toStdString();
  ASSERT_TRUE(IniFile("[C]\n").Save(path).ok());
  std::filesystem::permissions(path, std::filesystem::perms::owner_read);
  const model::Status status = IniFile("[D]\n").Save(path);
  EXPECT_EQ(status.Description(), "Cannot replace a.ini: It is write-protected");
}

TEST(IniFile, AFileThatCannotBeWrittenIsAnError) {
  const QTemporaryDir folder;
  const std::filesystem::path path =
      folder.filePath(QStringLiteral("missing/folder/a.ini")).toStdString();
  const model::Status status = IniFile("[C]\n").Save(path);
  EXPECT_FALSE(status.ok());
  EXPECT_EQ(status.Number(), 75);
  EXPECT_NE(status.Description(), "");
}

TEST(IniFile, SavingTheSameBytesDoesNotTouchTheFile) {
  const QTemporaryDir folder;
  const QString name = folder.filePath(QStringLiteral("a.ini"));
  const std::filesystem::path path = name.toStdString();
  ASSERT_TRUE(IniFile("[C]\na=1\n").Save(path).ok());
  const auto before = std::filesystem::last_write_time(path) - std::chrono::hours(1);
  std::filesystem::last_write_time(path, before);
  ASSERT_TRUE(IniFile("[C]\na=1\n").Save(path).ok());
  EXPECT_EQ(std::filesystem::last_write_time(path), before);
}

TEST(IniFile, TheEntriesOfASection) {
  const IniFile file(
      "[A]\r\nOne = 1\r\n; a comment\r\n\r\nword\r\n[B]\r\nTwo=2\r\n[a]\r\nThree=\"3\"");
  using Entries = std::vector<IniFile::Entry>;
  EXPECT_EQ(file.Entries("A"), (Entries{{"One", "1"}, {"word", ""}, {"Three", "3"}}));
  EXPECT_EQ(file.Entries("C"), Entries{});
}

}  // namespace
}  // namespace config
