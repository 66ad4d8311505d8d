// SPDX-License-Identifier: MIT

#include "config/window_settings.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <sys/stat.h>

#include <QDir>
#include <QFile>
#include <QTemporaryDir>
#include <filesystem>
#include <string>
#include <vector>

#include "tests/support/full_disk.h"

namespace config {
namespace {

class WindowSettingsTest : public testing::Test {
 protected:
  WindowSettingsTest() {
    QSettings::setPath(QSettings::NativeFormat, QSettings::UserScope, folder_.path());
  }

  QTemporaryDir folder_;
};

TEST_F(WindowSettingsTest, FirstStartHasTheDefaults) {
  const WindowSettings settings{QString()};
  EXPECT_EQ(settings.Twips(QStringLiteral("MainLeft")), 1000);
  EXPECT_EQ(settings.Twips(QStringLiteral("MainTop")), 1000);
  EXPECT_EQ(settings.Twips(QStringLiteral("MainWidth")), 6500);
  EXPECT_EQ(settings.Twips(QStringLiteral("MainHeight")), 6500);
  EXPECT_EQ(settings.Twips(QStringLiteral("ButnsLeft")), 0);
  EXPECT_EQ(settings.Twips(QStringLiteral("ButnsTop")), 0);
  EXPECT_EQ(settings.Twips(QStringLiteral("ButnsWidth")), 8900);
  EXPECT_EQ(settings.Twips(QStringLiteral("ButnsHeight")), 6100);
  EXPECT_EQ(settings.Twips(QStringLiteral("AlphasLeft")), 300);
  EXPECT_EQ(settings.Twips(QStringLiteral("AlphasTop")), 300);
  EXPECT_EQ(settings.Twips(QStringLiteral("AlphasWidth")), 10000);
  EXPECT_EQ(settings.Twips(QStringLiteral("AlphasHeight")), 9000);
  EXPECT_EQ(settings.Twips(QStringLiteral("XmapLeft")), 500);
  EXPECT_EQ(settings.Twips(QStringLiteral("XmapTop")), 500);
  EXPECT_EQ(settings.Twips(QStringLiteral("XmapWidth")), 10000);
  EXPECT_EQ(settings.Twips(QStringLiteral("XmapHeight")), 9000);
}

TEST_F(WindowSettingsTest, TextIsKeptAsItIsAcrossRuns) {
  {
    WindowSettings settings{QString()};
    settings.SetText(QStringLiteral("XmapLeft"), QStringLiteral("6507.5"));
  }
  const WindowSettings settings{QString()};
  EXPECT_EQ(settings.Text(QStringLiteral("XmapLeft")), QStringLiteral("6507.5"));
  EXPECT_EQ(settings.Twips(QStringLiteral("XmapLeft")), 6508);
}

TEST_F(WindowSettingsTest, JunkIsANumberAllTheSame) {
  WindowSettings settings{QString()};
  settings.SetText(QStringLiteral("XmapLeft"), QStringLiteral("junk"));
  settings.SetText(QStringLiteral("XmapTop"), QStringLiteral("1e30"));
  EXPECT_EQ(settings.Twips(QStringLiteral("XmapLeft")), 0);
  EXPECT_EQ(settings.Twips(QStringLiteral("XmapTop")), 1000000);
}

// The user's file itself, as it was and as it is left.
class SettingsFileTest : public WindowSettingsTest {
 protected:
  QString Path() const {
    return folder_.filePath(QStringLiteral("Orvo/Orvo Intercom Control.conf"));
  }
  QByteArray Bytes() const {
    QFile file(Path());
    EXPECT_TRUE(file.open(QIODevice::ReadOnly));
    return file.readAll();
  }
  void Write(const QByteArray& bytes) {
    ASSERT_TRUE(QDir(folder_.path()).mkpath(QStringLiteral("Orvo")));
    QFile file(Path());
    ASSERT_TRUE(file.open(QIODevice::WriteOnly));
    ASSERT_EQ(file.write(bytes), bytes.size());
  }
};

TEST_F(SettingsFileTest, SectionSettingsDecidesOnEveryRun) {
  Write("[Settings]\nMainLeft=1500\nXmapWidth=9000\n");
  {
    WindowSettings settings{QString()};
    EXPECT_EQ(settings.Text(QStringLiteral("MainLeft")), QStringLiteral("1500"));
    EXPECT_EQ(settings.Text(QStringLiteral("XmapWidth")), QStringLiteral("9000"));
    EXPECT_EQ(settings.Text(QStringLiteral("MainTop")), QStringLiteral("1000"));
    settings.SetText(QStringLiteral("MainLeft"), QStringLiteral("1600"));
  }
  EXPECT_EQ(Bytes(), "[Settings]\nMainLeft=1600\nXmapWidth=9000\n");
  Write("[Settings]\nMainLeft=1700\n");
  EXPECT_EQ(WindowSettings(QString()).Text(QStringLiteral("MainLeft")), QStringLiteral("1700"));
}

TEST_F(SettingsFileTest, AConsoleWithASectionOfItsOwnLeavesTheOthersAlone) {
  Write("[Settings]\nMainTop=1700\n");
  {
    WindowSettings settings(QStringLiteral("Console Studio A"));
    EXPECT_EQ(settings.Text(QStringLiteral("MainTop")), QStringLiteral("1000"));
    settings.SetText(QStringLiteral("MainLeft"), QStringLiteral("1600"));
  }
  EXPECT_EQ(Bytes(),
            "[Console%20Studio%20A]\nMainLeft=1600\n\n"
            "[Settings]\nMainTop=1700\n");
}

TEST_F(SettingsFileTest, ASlashInASectionsNameMakesNoOtherSection) {
  WindowSettings(QStringLiteral("Settings/North\\South"))
      .SetText(QStringLiteral("MainLeft"), QStringLiteral("1600"));
  EXPECT_EQ(Bytes(), "[Settings-North-South]\nMainLeft=1600\n");
}

TEST_F(SettingsFileTest, ConsolesThatRunAtTheSameTimeDoNotOverwriteOneAnother) {
  {
    WindowSettings one{QString()};
    WindowSettings other(QStringLiteral("Studio A"));
    one.SetText(QStringLiteral("MainLeft"), QStringLiteral("1100"));
    other.SetText(QStringLiteral("MainLeft"), QStringLiteral("1200"));
    one.SetText(QStringLiteral("MainTop"), QStringLiteral("1110"));
    other.SetText(QStringLiteral("MainTop"), QStringLiteral("1210"));
    EXPECT_EQ(one.Text(QStringLiteral("MainLeft")), QStringLiteral("1100"));
    EXPECT_EQ(other.Text(QStringLiteral("MainLeft")), QStringLiteral("1200"));
  }
  EXPECT_EQ(Bytes(),
            "[Settings]\nMainLeft=1100\nMainTop=1110\n\n"
            "[Studio%20A]\nMainLeft=1200\nMainTop=1210\n");
}

TEST(PlacesSectionTest, TheSettingsFileNamesIt) {
  EXPECT_EQ(PlacesSection(IniFile("[CONFIGURATION]\r\nCOM Port=1\r\n")), QString());
  EXPECT_EQ(PlacesSection(IniFile("[WINDOW PLACES]\r\nSection=\r\n")), QString());
  EXPECT_EQ(PlacesSection(IniFile("[Window Places]\nsection = Studio \xC3\x84\n")),
            QStringLiteral("Studio Ä"));
}

TEST(PlacesSectionTest, IsWrittenIntoTheSettingsFile) {
  IniFile file("[CONFIGURATION]\r\nCOM Port=1\r\n");
  SetPlacesSection(QStringLiteral("Console Studio Ä"), file);
  EXPECT_EQ(file.Text(),
            "[CONFIGURATION]\r\nCOM Port=1\r\n"
            "[WINDOW PLACES]\r\nSection=Console Studio \xC3\x84\r\n");
}

// A pipe would be waited for, a device read for ever, and either replaced by a file.
TEST_F(WindowSettingsTest, WhatIsNoFileIsSaidAndLeftAlone) {
  const QString name = folder_.filePath(QStringLiteral("Orvo/Orvo Intercom Control.conf"));
  ASSERT_TRUE(QDir(folder_.path()).mkdir(QStringLiteral("Orvo")));
  const std::filesystem::path path = name.toStdString();
  const auto expectUnused = [&](const char* why) {
    SCOPED_TRACE(why);
    WindowSettings settings{QString()};
    EXPECT_EQ(settings.Problem().Number(), 75);
    EXPECT_EQ(settings.Problem().Description(),
              std::string("Cannot read Orvo Intercom Control.conf: ") + why);
    EXPECT_EQ(settings.Text(QStringLiteral("MainLeft")), QStringLiteral("1000"));
    settings.SetText(QStringLiteral("MainLeft"), QStringLiteral("1600"));
    EXPECT_EQ(settings.Text(QStringLiteral("MainLeft")), QStringLiteral("1000"));
  };
  ASSERT_EQ(mkfifo(path.c_str(), 0666), 0);
  expectUnused("It is no ordinary file");
  EXPECT_TRUE(std::filesystem::is_fifo(path));
  std::filesystem::remove(path);
  std::filesystem::create_symlink("/dev/zero", path);
  expectUnused("It is no ordinary file");
  EXPECT_TRUE(std::filesystem::is_symlink(path));
  EXPECT_TRUE(std::filesystem::is_character_file(path));
  std::filesystem::remove(path);
  ASSERT_TRUE(QFile(name).open(QIODevice::WriteOnly));
  std::filesystem::resize_file(path, std::uintmax_t{3} << 30);
  expectUnused("It is too large");
  EXPECT_EQ(std::filesystem::file_size(path), std::uintmax_t{3} << 30);
}

TEST_F(WindowSettingsTest, AFullDiskIsSaidOnceAndNothingIsLostWhenThereIsRoom) {
  WindowSettings settings{QString()};
  std::vector<std::string> told;
  QObject::connect(&settings, &WindowSettings::Failed,
                   [&](const QString& why) { told.push_back(why.toStdString()); });
  QObject::connect(&settings, &WindowSettings::Written, [&] { told.emplace_back("written"); });
  settings.SetText(QStringLiteral("MainLeft"), QStringLiteral("1500"));
  settings.Write();
  EXPECT_THAT(told, testing::IsEmpty());
  {
    const test::FullDisk full(0);
    settings.SetText(QStringLiteral("MainLeft"), QStringLiteral("1600"));
    settings.Write();
    settings.SetText(QStringLiteral("MainTop"), QStringLiteral("1700"));
    settings.Write();
  }
  EXPECT_THAT(told, testing::ElementsAre("Cannot write Orvo Intercom Control.conf"));
  EXPECT_EQ(settings.Text(QStringLiteral("MainLeft")), QStringLiteral("1600"));
  settings.Write();
  EXPECT_THAT(told, testing::ElementsAre("Cannot write Orvo Intercom Control.conf", "written"));
  QFile file(folder_.filePath(QStringLiteral("Orvo/Orvo Intercom Control.conf")));
  ASSERT_TRUE(file.open(QIODevice::ReadOnly));
  EXPECT_EQ(file.readAll().toStdString(), "[Settings]\nMainLeft=1600\nMainTop=1700\n");
}

TEST_F(SettingsFileTest, AGarbledLineHidesNoFullDisk) {
  Write("[Settings]\nMainTop=1700\ngarbled\n");
  WindowSettings settings{QString()};
  EXPECT_EQ(settings.Text(QStringLiteral("MainTop")), QStringLiteral("1700"));
  std::vector<std::string> told;
  QObject::connect(&settings, &WindowSettings::Failed,
                   [&](const QString& why) { told.push_back(why.toStdString()); });
  QObject::connect(&settings, &WindowSettings::Written, [&] { told.emplace_back("written"); });
  {
    const test::FullDisk full(0);
    settings.SetText(QStringLiteral("MainLeft"), QStringLiteral("1600"));
    settings.Write();
  }
  EXPECT_THAT(told, testing::ElementsAre("Cannot write Orvo Intercom Control.conf"));
  settings.Write();
  EXPECT_THAT(told, testing::ElementsAre("Cannot write Orvo Intercom Control.conf", "written"));
  EXPECT_EQ(Bytes(), "[Settings]\nMainLeft=1600\nMainTop=1700\n");
}

TEST_F(WindowSettingsTest, AHealthyStoreHasNoProblem) {
  EXPECT_TRUE(WindowSettings{QString()}.Problem().ok());
  WindowSettings{QString()}.SetText(QStringLiteral("MainLeft"), QStringLiteral("1600"));
  EXPECT_TRUE(WindowSettings{QString()}.Problem().ok());
  EXPECT_TRUE(QFile::exists(folder_.filePath(QStringLiteral("Orvo/Orvo Intercom Control.conf"))));
}

}  // namespace
}  // namespace config
