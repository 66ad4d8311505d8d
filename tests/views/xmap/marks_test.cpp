// SPDX-License-Identifier: MIT

#include "views/xmap/marks.h"

#include <gtest/gtest.h>

#include <QImage>
#include <QPainter>

#include "views/widgets/contrast.h"

namespace views {
namespace {

using rules::Mark;

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

TEST(Marks, EveryMarkHasAShapeOfItsOwn) {
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

TEST(Marks, MarksLeaveTheGridLineAndTheOutlineFree) {
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

TEST(Marks, DiscIsRoundAndInTheMiddle) {
  const QImage image = Draw(Mark::Crosspoint, 20);
  for (int y = 0; y < 19; ++y) {
    for (int x = 0; x < 19; ++x) {
      // The rasteriser rounds opposite edges differently by a few shades of 255.
      EXPECT_NEAR(image.pixelColor(x, y).red(), image.pixelColor(18 - x, 18 - y).red(), 12);
    }
  }
  EXPECT_NEAR(Ink(image), 113, 4);  // pi * 6 * 6
}

TEST(Marks, NoMarkDrawsNothing) { EXPECT_EQ(Ink(Draw(Mark::None, 20)), 0); }

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

TEST(Marks, MarksCanBeReadOnEveryGround) {
  for (const QColor& ground :
       {QColor(0xFF, 0xFF, 0xFF), QColor(0xFE, 0xFF, 0xF4), QColor(0xFF, 0xFF, 0xDC),
        QColor(0x00, 0x00, 0x00), QColor(0x35, 0x35, 0x35), QColor(0x3A, 0x3A, 0x2C)}) {
    for (const Mark mark : kMarks) {
      EXPECT_GE(Contrast(MarkInk(mark, ground), ground), 4.5)
          << ground.name().toStdString() << ", mark " << static_cast<int>(mark);
    }
  }
}

TEST(Marks, InkGoesByTheGroundNotByTheTheme) {
  EXPECT_EQ(MarkInk(Mark::Crosspoint, QColor(0xFE, 0xFF, 0xF4)), QColor(0x00, 0x60, 0xA0));
  EXPECT_EQ(MarkInk(Mark::Crosspoint, QColor(0x20, 0x20, 0x20)), QColor(0x6D, 0xB9, 0xF2));
  EXPECT_EQ(MarkInk(Mark::Inhibit, Qt::white), QColor(0xB0, 0x00, 0x20));
  EXPECT_EQ(MarkInk(Mark::Inhibit, Qt::black), QColor(0xFF, 0x8A, 0x80));
  EXPECT_EQ(MarkInk(Mark::Priority, Qt::white), QColor(0xA8, 0x43, 0x00));
  EXPECT_EQ(MarkInk(Mark::Priority, Qt::black), QColor(0xFF, 0xB7, 0x4D));
  EXPECT_EQ(MarkInk(Mark::Reserved, Qt::white), QColor(0x5B, 0x2A, 0x86));
  EXPECT_EQ(MarkInk(Mark::Reserved, Qt::black), QColor(0xD3, 0xA4, 0xF5));
}

}  // namespace
}  // namespace views
