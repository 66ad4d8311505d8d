// SPDX-License-Identifier: MIT

#include "views/window_place/placement.h"

#include <gtest/gtest.h>

#include <QSettings>

#include "views/window_place/twips.h"

namespace views {
namespace {

class PlacementTest : public testing::Test {
 protected:
  PlacementTest() {
    QSettings(QSettings::NativeFormat, QSettings::UserScope, QStringLiteral("Orvo"),
              QStringLiteral("Orvo Intercom Control"))
        .clear();
  }

  // "left top width height" as stored.
  std::string Stored() {
    QStringList texts;
    for (const char* const side : {"Left", "Top", "Width", "Height"}) {
      texts.append(settings_.Text(QStringLiteral("Main") + QLatin1String(side)));
    }
    return texts.join(QLatin1Char(' ')).toStdString();
  }

  config::WindowSettings settings_{QString()};
  Placement placement_{settings_, QStringLiteral("Main")};
};

TEST_F(PlacementTest, DefaultsInPixels) { EXPECT_EQ(placement_.Stored(), QRect(67, 67, 433, 433)); }

TEST_F(PlacementTest, AWindowThatDidNotMoveKeepsItsTexts) {
  placement_.SetRestored(placement_.Stored());
  placement_.Save(QRect(67, 67, 433, 433));
  EXPECT_EQ(Stored(), "1000 1000 6500 6500");
}

TEST_F(PlacementTest, MovedSidesAreStoredInTwips) {
  placement_.SetRestored(placement_.Stored());
  placement_.Save(QRect(-10, 67, 433, 600));
  EXPECT_EQ(Stored(), "-150 1000 6500 9000");
}

// The program goes on after a failed shut-down that has stored its place already.
TEST_F(PlacementTest, MovedAwayStoredAndMovedBack) {
  placement_.SetRestored(placement_.Stored());
  placement_.Save(QRect(200, 67, 433, 433));
  EXPECT_EQ(Stored(), "3000 1000 6500 6500");
  placement_.Save(QRect(67, 67, 433, 433));
  EXPECT_EQ(Stored(), "1005 1000 6500 6500");
}

TEST_F(PlacementTest, TwipsGoToTheNearestPixelOnBothSidesOfZero) {
  EXPECT_EQ(ToPixels(7), 0);
  EXPECT_EQ(ToPixels(8), 1);
  EXPECT_EQ(ToPixels(-7), 0);
  EXPECT_EQ(ToPixels(-8), -1);
  EXPECT_EQ(ToPixels(1000), 67);
  EXPECT_EQ(ToPixels(8900), 593);
  EXPECT_EQ(ToTwips(-3), -45);
}

}  // namespace
}  // namespace views
