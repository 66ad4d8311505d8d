// SPDX-License-Identifier: MIT

#include "views/widgets/scaled_font.h"

#include <QFontInfo>
#include <QFontMetrics>

#include <algorithm>

namespace views {
namespace {

constexpr double kStep = 0.02;

}  // namespace

double ScaleOf(const QFont& font) { return QFontInfo(font).pixelSize() / kUsualFont; }

QFont Scaled(const QFont& font, double scale) {
  QFont scaled = font;
  // A font whose size is given in pixels has none in points of its own.
  const double points = font.pointSizeF() > 0 ? font.pointSizeF() : QFontInfo(font).pointSizeF();
  scaled.setPointSizeF(points * scale);
  return scaled;
}

QFont Fitting(const QFont& font, const QString& text, int room, double least) {
  QFont fitting = font;
  for (double scale = 1; QFontMetrics(fitting).horizontalAdvance(text) > room && scale > least;) {
    scale = std::max(least, scale - kStep);
    fitting = Scaled(font, scale);
  }
  return fitting;
}

}  // namespace views
