// SPDX-License-Identifier: MIT

#include "views/widgets/icon.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <QApplication>
#include <QFile>
#include <QPalette>

namespace views {
namespace {

// How many pixels of the picture are of about this colour.
int CountPixels(const QImage& image, const QColor& colour) {
  int count = 0;
  for (int y = 0; y < image.height(); ++y) {
    for (int x = 0; x < image.width(); ++x) {
      const QColor pixel = image.pixelColor(x, y);
      if (pixel.alpha() > 200 && qAbs(pixel.red() - colour.red()) < 12 &&
          qAbs(pixel.green() - colour.green()) < 12 && qAbs(pixel.blue() - colour.blue()) < 12) {
        ++count;
      }
    }
  }
  return count;
}

bool IsEmpty(const QImage& image) {
  for (int y = 0; y < image.height(); ++y) {
    for (int x = 0; x < image.width(); ++x) {
      if (image.pixelColor(x, y).alpha() > 100) return false;
    }
  }
  return true;
}

TEST(Icon, EveryGroupIsThere) {
  const QStringList names = IconNames();
  for (const char* const name : {"teskctl",
                                 "xpoint-map",
                                 "station-labels",
                                 "button-programming",
                                 "input-levels",
                                 "qdv-status",
                                 "send-data",
                                 "retrieve-data",
                                 "send-inhibits",
                                 "download-alphas",
                                 "send-button-data",
                                 "send-single-station",
                                 "send-opto-data",
                                 "take",
                                 "sum",
                                 "call",
                                 "listen",
                                 "priority-listen",
                                 "toggle-inhibit",
                                 "refresh-map",
                                 "first",
                                 "back10",
                                 "prev",
                                 "next",
                                 "fwd10",
                                 "last",
                                 "cascade",
                                 "tile-horizontal",
                                 "tile-vertical",
                                 "arrange-icons",
                                 "contents",
                                 "about",
                                 "exit",
                                 "find",
                                 "event-log",
                                 "recent-changes",
                                 "export",
                                 "link-up",
                                 "link-down",
                                 "demo",
                                 "unsent-badge",
                                 "msg-ok",
                                 "msg-fail"}) {
    EXPECT_TRUE(names.contains(QLatin1String(name))) << name;
  }
}

TEST(Icon, EveryDrawingDrawsSomethingAtEverySize) {
  for (const QString& name : IconNames()) {
    SCOPED_TRACE(name.toStdString());
    const QIcon icon = Icon(name);
    ASSERT_FALSE(icon.isNull());
    for (const int size : {16, 22, 32}) {
      const QPixmap pixmap = icon.pixmap(QSize(size, size), 1.0);
      EXPECT_EQ(pixmap.size(), QSize(size, size));
      EXPECT_FALSE(IsEmpty(pixmap.toImage()));
    }
  }
}

TEST(Icon, DrawingsCarryTheirLicenceAndNoText) {
  for (const QString& name : IconNames()) {
    SCOPED_TRACE(name.toStdString());
    QFile file(QStringLiteral(":/icons/%1.svg").arg(name));
    ASSERT_TRUE(file.open(QIODevice::ReadOnly));
    const QByteArray drawing = file.readAll();
    EXPECT_TRUE(drawing.startsWith("<!-- SPDX-License-Identifier: MIT -->\n"));
    EXPECT_TRUE(drawing.contains("viewBox=\"0 0 16 16\""));
    EXPECT_FALSE(drawing.contains("<text"));
  }
}

TEST(Icon, UnknownNameIsNull) { EXPECT_TRUE(Icon(QStringLiteral("no-such-icon")).isNull()); }

TEST(Icon, TwiceThePixelsOnAFineScreen) {
  const QPixmap pixmap = Icon(QStringLiteral("take")).pixmap(QSize(16, 16), 2.0);
  EXPECT_EQ(pixmap.size(), QSize(32, 32));
  EXPECT_EQ(pixmap.devicePixelRatio(), 2.0);
}

TEST(Icon, LinesFollowThePalette) {
  const QIcon icon = Icon(QStringLiteral("exit"));
  const QPalette before = QApplication::palette();
  for (const QColor& ink : {QColor(0xEE, 0xEE, 0x10), QColor(0x10, 0x20, 0x30)}) {
    QPalette palette = before;
    palette.setColor(QPalette::Active, QPalette::ButtonText, ink);
    QApplication::setPalette(palette);
    EXPECT_GT(CountPixels(icon.pixmap(QSize(32, 32), 1.0).toImage(), ink), 30)
        << ink.name().toStdString();
  }
  QApplication::setPalette(before);
}

TEST(Icon, DisabledIconIsFainter) {
  const QIcon icon = Icon(QStringLiteral("sum"));
  EXPECT_NE(icon.pixmap(QSize(16, 16), 1.0, QIcon::Disabled).toImage(),
            icon.pixmap(QSize(16, 16), 1.0).toImage());
}

TEST(Icon, ASelectedIconIsAllInTheInkOfSelections) {
  const QImage image =
      Icon(QStringLiteral("msg-ok")).pixmap(QSize(32, 32), 1.0, QIcon::Selected).toImage();
  const QColor ink = QApplication::palette().color(QPalette::HighlightedText);
  EXPECT_GT(CountPixels(image, ink), 60);
  EXPECT_EQ(CountPixels(image, QColor(0x23, 0x9A, 0x48)), 0);
}

TEST(Icon, ItIsNotStretchedToASizeThatIsNotSquare) {
  const QImage square = Icon(QStringLiteral("msg-ok")).pixmap(QSize(16, 16), 1.0).toImage();
  const QImage wide = Icon(QStringLiteral("msg-ok")).pixmap(QSize(26, 16), 1.0).toImage();
  EXPECT_EQ(wide.copy(5, 0, 16, 16), square);
}

TEST(Icon, BadgeIsLaidOver) {
  const QIcon plain = Icon(QStringLiteral("send-inhibits"));
  const QIcon badged = Icon(QStringLiteral("send-inhibits"), QStringLiteral("unsent-badge"));
  const QColor badge(0xD9, 0x73, 0x0D);
  EXPECT_EQ(CountPixels(plain.pixmap(QSize(32, 32), 1.0).toImage(), badge), 0);
  EXPECT_GT(CountPixels(badged.pixmap(QSize(32, 32), 1.0).toImage(), badge), 30);
}

}  // namespace
}  // namespace views
