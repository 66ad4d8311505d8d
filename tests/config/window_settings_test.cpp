// SPDX-License-Identifier: MIT

#include "config/window_settings.h"

#include <gtest/gtest.h>

#include <QDir>
#include <QTemporaryDir>

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
  const WindowSettings settings;
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
    WindowSettings settings;
    settings.SetText(QStringLiteral("XmapLeft"), QStringLiteral("6507.5"));
  }
  const WindowSettings settings;
  EXPECT_EQ(settings.Text(QStringLiteral("XmapLeft")), QStringLiteral("6507.5"));
  EXPECT_EQ(settings.Twips(QStringLiteral("XmapLeft")), 6508);
}

TEST_F(WindowSettingsTest, JunkIsANumberAllTheSame) {
  WindowSettings settings;
  settings.SetText(QStringLiteral("XmapLeft"), QStringLiteral("junk"));
  settings.SetText(QStringLiteral("XmapTop"), QStringLiteral("1e30"));
  EXPECT_EQ(settings.Twips(QStringLiteral("XmapLeft")), 0);
  EXPECT_EQ(settings.Twips(QStringLiteral("XmapTop")), 1000000);
}

// A console's folder, and the places as the console there keeps them.
class ConsolePlacesTest : public WindowSettingsTest {
 protected:
  QString Folder(const char* name) {
    const QDir root(folder_.path());
    EXPECT_TRUE(root.mkpath(QLatin1String(name)));
    return root.filePath(QLatin1String(name));
  }
  static void Keep(const QString& folder, const char* left) {
    WindowSettings(folder).SetText(QStringLiteral("MainLeft"), QLatin1String(left));
  }
  static QString Kept(const QString& folder) {
    return WindowSettings(folder).Text(QStringLiteral("MainLeft"));
  }
};

TEST_F(ConsolePlacesTest, EachConsoleHasItsOwn) {
  const QString first = Folder("first");
  const QString second = Folder("second");
  const QString third = Folder("third");
  Keep(first, "1100");
  EXPECT_EQ(Kept(second), QStringLiteral("1000")) << "not those of another console";
  Keep(second, "1200");
  Keep(third, "1300");
  EXPECT_EQ(Kept(first), QStringLiteral("1100"));
  EXPECT_EQ(Kept(second), QStringLiteral("1200"));
  EXPECT_EQ(Kept(third), QStringLiteral("1300"));
}

TEST_F(ConsolePlacesTest, ConsolesThatRunAtTheSameTimeDoNotOverwriteOneAnother) {
  const QString first = Folder("first");
  const QString second = Folder("second");
  {
    WindowSettings one(first);
    WindowSettings other(second);
    one.SetText(QStringLiteral("MainLeft"), QStringLiteral("1100"));
    other.SetText(QStringLiteral("MainLeft"), QStringLiteral("1200"));
    one.SetText(QStringLiteral("MainTop"), QStringLiteral("1110"));
  }
  EXPECT_EQ(Kept(first), QStringLiteral("1100"));
  EXPECT_EQ(WindowSettings(first).Text(QStringLiteral("MainTop")), QStringLiteral("1110"));
  EXPECT_EQ(Kept(second), QStringLiteral("1200"));
  EXPECT_EQ(WindowSettings(second).Text(QStringLiteral("MainTop")), QStringLiteral("1000"));
}

TEST_F(ConsolePlacesTest, TheFirstOneTakesOverWhatWasKeptBefore) {
  {
    WindowSettings before;
    before.SetText(QStringLiteral("MainLeft"), QStringLiteral("1500"));
  }
  const QString first = Folder("first");
  const QString second = Folder("second");
  EXPECT_EQ(Kept(first), QStringLiteral("1500"));
  EXPECT_EQ(Kept(second), QStringLiteral("1000"));
  Keep(first, "1600");
  EXPECT_EQ(WindowSettings().Text(QStringLiteral("MainLeft")), QStringLiteral("1600"))
      << "under the program's title";
}

TEST_F(ConsolePlacesTest, AConsoleThatWasMovedTakesItsPlacesAlong) {
  const QString first = Folder("first");
  const QString second = Folder("second");
  Keep(first, "1100");
  Keep(second, "1200");
  const QString moved = folder_.filePath(QStringLiteral("moved"));
  ASSERT_TRUE(QDir().rename(first, moved));
  EXPECT_EQ(Kept(second), QStringLiteral("1200")) << "it keeps its own";
  EXPECT_EQ(Kept(moved), QStringLiteral("1100"));
}

}  // namespace
}  // namespace config
