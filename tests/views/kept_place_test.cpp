// SPDX-License-Identifier: MIT

#include "views/window_place/kept_place.h"

#include <gtest/gtest.h>

#include <QSettings>

#include "config/window_settings.h"

namespace views {
namespace {

class KeptPlaceTest : public testing::Test {
 protected:
  KeptPlaceTest() { Store().clear(); }

  static QSettings& Store() {
    static QSettings store(QSettings::NativeFormat, QSettings::UserScope, QStringLiteral("Orvo"),
                           QStringLiteral("Orvo Intercom Control"));
    return store;
  }
  static QString Kept(const char* key) {
    return config::WindowSettings(QStringLiteral("Aids")).Text(QLatin1String(key));
  }
};

TEST_F(KeptPlaceTest, AWindowComesUpWhereItWasClosed) {
  {
    QWidget first;
    first.setGeometry(5, 6, 300, 200);
    new KeptPlace(first, QStringLiteral("EventLog"));
    EXPECT_EQ(first.size(), QSize(300, 200)) << "it was never closed";
    first.show();
    first.move(40, 60);
    first.resize(320, 240);
    first.close();
  }
  EXPECT_EQ(Kept("EventLogLeft"), QStringLiteral("600"));
  EXPECT_EQ(Kept("EventLogWidth"), QStringLiteral("4800"));
  QWidget second;
  new KeptPlace(second, QStringLiteral("EventLog"));
  EXPECT_EQ(second.pos(), QPoint(40, 60));
  EXPECT_EQ(second.size(), QSize(320, 240));
  QWidget other;
  other.resize(111, 99);
  new KeptPlace(other, QStringLiteral("Help"));
  EXPECT_EQ(other.size(), QSize(111, 99));
}

TEST_F(KeptPlaceTest, TheSectionOfTheRequiredPlacesIsNotTouched) {
  QWidget window;
  new KeptPlace(window, QStringLiteral("Help"));
  window.show();
  window.close();
  QSettings store(QSettings::NativeFormat, QSettings::UserScope, QStringLiteral("Orvo"),
                  QStringLiteral("Orvo Intercom Control"));
  EXPECT_EQ(store.childGroups(), QStringList(QStringLiteral("Aids")));
}

TEST_F(KeptPlaceTest, APlaceThatIsOnNoScreenBecomesOneThatIs) {
  config::WindowSettings settings(QStringLiteral("Aids"));
  for (const char* const key : {"HelpLeft", "HelpTop"}) {
    settings.SetText(QLatin1String(key), QStringLiteral("900000"));
  }
  for (const char* const key : {"HelpWidth", "HelpHeight"}) {
    settings.SetText(QLatin1String(key), QStringLiteral("3000"));
  }
  QWidget window;
  new KeptPlace(window, QStringLiteral("Help"));
  EXPECT_LT(window.x(), 2000);
  EXPECT_LT(window.y(), 2000);
  EXPECT_EQ(window.size(), QSize(200, 200));
}

TEST_F(KeptPlaceTest, AMaximisedWindowKeepsThePlaceThatItGoesBackTo) {
  {
    QWidget first;
    first.setGeometry(40, 60, 320, 240);
    new KeptPlace(first, QStringLiteral("Help"));
    first.show();
    first.close();
  }
  {
    QWidget second;
    new KeptPlace(second, QStringLiteral("Help"));
    second.showMaximized();
    second.close();
  }
  EXPECT_EQ(Kept("HelpWidth"), QStringLiteral("4800"));
}

}  // namespace
}  // namespace views
