// SPDX-License-Identifier: MIT

#include "views/xmap/mark_painter.h"

#include <gtest/gtest.h>

#include <QImage>
#include <QPainter>

#include "views/xmap/xmap_look.h"

namespace views {
namespace {

using rules::Mark;

constexpr Mark kMarks[] = {Mark::Crosspoint, Mark::Inhibit, Mark::Priority, Mark::Reserved};

// A mark in a cell of this size, black on white.
QImage Draw(Mark mark, int size) {
  QImage image(size, size, QImage::Format_RGB32);
  image.fill(Qt::white);
  QPainter painter(&image);
  PaintMark(painter, QRectF(0, 0, size, size), mark, Qt::black);
  return image;
}

int Ink(const QImage& image) {
  int ink = 0;
  for (int y = 0; y < image.height(); ++y) {
    for (int x = 0; x < image.width(); ++x) ink += 255 - image.pixelColor(x, y).red();
  }
  return ink / 255;
}

TEST(MarkPainter, EveryMarkHasAShapeOfItsOwn) {
  for (const int size : {15, 20, 30, 40}) {
    for (const Mark a : kMarks) {
      for (const Mark b : kMarks) {
        if (a == b) continue;
        const QImage first = Draw(a, size);
        const QImage second = Draw(b, size);
        int different = 0;
        for (int y = 0; y < size; ++y) {
          for (int x = 0; x < size; ++x) {
            if (qAbs(first.pixelColor(x, y).red() - second.pixelColor(x, y).red()) > 128) {
              ++different;
            }
          }
        }
        EXPECT_GT(different, size * size / 14)
            << size << ": " << static_cast<int>(a) << " and " << static_cast<int>(b);
      }
    }
  }
}

TEST(MarkPainter, MarksLeaveTheGridLineAndTheOutlineFree) {
  for (const Mark mark : kMarks) {
    const QImage image = Draw(mark, 20);
    EXPECT_GT(Ink(image), 30) << static_cast<int>(mark);
    for (int i = 0; i < 20; ++i) {
      for (const int edge : {0, 1, 17, 18, 19}) {
        EXPECT_EQ(image.pixelColor(i, edge), QColor(Qt::white)) << static_cast<int>(mark);
        EXPECT_EQ(image.pixelColor(edge, i), QColor(Qt::white)) << static_cast<int>(mark);
      }
    }
  }
}

TEST(MarkPainter, DiscIsRoundAndInTheMiddle) {
  const QImage image = Draw(Mark::Crosspoint, 20);
  for (int y = 0; y < 19; ++y) {
    for (int x = 0; x < 19; ++x) {
      // The rasteriser rounds opposite edges differently by a few shades of 255.
      EXPECT_NEAR(image.pixelColor(x, y).red(), image.pixelColor(18 - x, 18 - y).red(), 12);
    }
  }
  EXPECT_NEAR(Ink(image), 113, 4);  // pi * 6 * 6
}

TEST(MarkPainter, NoMarkDrawsNothing) { EXPECT_EQ(Ink(Draw(Mark::None, 20)), 0); }

TEST(MarkPixmaps, FitTheRatioAndTheGround) {
  MarkPixmaps pixmaps;
  pixmaps.Prepare(QSize(23, 20), 2.0, false);
  EXPECT_EQ(pixmaps.Get(Mark::Crosspoint).size(), QSize(46, 40));
  EXPECT_EQ(pixmaps.Get(Mark::Crosspoint).devicePixelRatio(), 2.0);
  EXPECT_EQ(pixmaps.Get(Mark::Crosspoint).toImage().pixelColor(22, 19), QColor(0x00, 0x60, 0xA0));
  pixmaps.Prepare(QSize(23, 20), 2.0, true);
  EXPECT_EQ(pixmaps.Get(Mark::Crosspoint).toImage().pixelColor(22, 19), QColor(0x6D, 0xB9, 0xF2));
}

TEST(MarkPixmaps, AreDrawnOnceOnly) {
  MarkPixmaps pixmaps;
  pixmaps.Prepare(QSize(20, 20), 1.0, false);
  const qint64 key = pixmaps.Get(Mark::Inhibit).cacheKey();
  pixmaps.Prepare(QSize(20, 20), 1.0, false);
  EXPECT_EQ(pixmaps.Get(Mark::Inhibit).cacheKey(), key);
}

}  // namespace
}  // namespace views
