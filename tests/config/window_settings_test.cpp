// SPDX-License-Identifier: MIT

#include "config/window_settings.h"

#include <gtest/gtest.h>

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

}  // namespace
}  // namespace config
