// SPDX-License-Identifier: MIT

#include "views/xmap/xmap_look.h"

#include <gtest/gtest.h>

#include <QApplication>
#include <QFontInfo>
#include <algorithm>
#include <cmath>

#include "views/window_place/twips.h"

namespace views {
namespace {

TEST(Twips, AreRoundedToTheNearestPixel) {
  EXPECT_EQ(ToPixels(0), 0);
  EXPECT_EQ(ToPixels(7), 0);
  EXPECT_EQ(ToPixels(8), 1);
  EXPECT_EQ(ToPixels(350), 23);
  EXPECT_EQ(ToPixels(1000), 67);
  EXPECT_EQ(ToPixels(6500), 433);
  EXPECT_EQ(ToPixels(-7), 0);
  EXPECT_EQ(ToPixels(-8), -1);
  EXPECT_EQ(ToPixels(-300), -20);
  EXPECT_EQ(ToTwips(433), 6495);
}

TEST(XmapLook, SizesOfTheGrid) {
  const XmapMetrics few = MetricsFor(99, 100);
  EXPECT_EQ(few.cellWidth, 20);
  EXPECT_EQ(few.cellHeight, 20);
  EXPECT_EQ(few.labelWidth, 67);
  EXPECT_EQ(few.labelHeight, 120);
  EXPECT_EQ(few.font.family(), QStringLiteral("Courier New"));
  EXPECT_EQ(few.font.pointSizeF(), 8.0);
  EXPECT_EQ(MetricsFor(100, 100).cellWidth, 23);
  EXPECT_EQ(MetricsFor(100, 100).cellHeight, 20);
}

TEST(XmapLook, SizesAreZoomed) {
  const XmapMetrics small = MetricsFor(64, 75);
  EXPECT_EQ(small.cellWidth, 15);
  EXPECT_EQ(small.labelWidth, 50);
  EXPECT_EQ(small.labelHeight, 90);
  EXPECT_EQ(small.font.pointSizeF(), 6.0);
  EXPECT_EQ(MetricsFor(256, 200).cellWidth, 46);
}

TEST(XmapLook, HeaderFontIsMonospacedAndOfMediumWeight) {
  EXPECT_TRUE(QFontInfo(MetricsFor(64, 100).font).fixedPitch());
  EXPECT_EQ(MetricsFor(64, 100).font.weight(), QFont::Medium);
}

TEST(XmapLook, ElevenLettersFitIntoAColumnLabel) {
  EXPECT_EQ(LetterPitch(12, 120, 8), 12);
  EXPECT_LE(LetterPitch(12, 120, 11) * 11, 120);
  EXPECT_LE(LetterPitch(15, 118, 12) * 12, 118);
}

TEST(XmapLook, HighlightThatDoesNotStandOutGivesWay) {
  const QColor blue(48, 140, 198);
  EXPECT_EQ(StandingOut(blue, Qt::white), blue);
  EXPECT_EQ(StandingOut(QColor(0, 255, 255), Qt::white), QColor(Qt::black));
  EXPECT_EQ(StandingOut(QColor(40, 40, 40), Qt::black), QColor(Qt::white));
}

// At every ratio, lines are whole device pixels, as wide as their neighbours, and end where the
// cell ends.
TEST(XmapLook, GridLinesAreWholeDevicePixels) {
  for (const double ratio : {1.0, 1.25, 1.5, 1.75, 2.0, 3.0}) {
    SCOPED_TRACE(ratio);
    const QTransform toDevice(ratio, 0, 0, ratio, 7 * ratio, 3 * ratio);
    const DeviceLines lines(toDevice);
    for (int cell = 1; cell <= 40; ++cell) {
      const QRectF line = toDevice.mapRect(lines.RightEdge(23 * cell, 0, 20));
      EXPECT_NEAR(line.left(), std::round(line.left()), 1e-6);
      EXPECT_NEAR(line.width(), std::floor(ratio), 1e-6);
      EXPECT_NEAR(line.right(), (23 * cell + 7) * ratio, 0.5 + 1e-6);
      const QRectF bottom = toDevice.mapRect(lines.BottomEdge(20 * cell, 0, 20));
      EXPECT_NEAR(bottom.height(), std::floor(ratio), 1e-6);
      EXPECT_NEAR(bottom.bottom(), (20 * cell + 3) * ratio, 0.5 + 1e-6);
    }
  }
}

}  // namespace
}  // namespace views
