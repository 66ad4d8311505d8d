// SPDX-License-Identifier: MIT

#include "views/xmap/xmap_look.h"

#include <algorithm>
#include <cmath>

#include "views/widgets/contrast.h"
#include "views/widgets/fixed_font.h"
#include "views/window_place/twips.h"

namespace views {
namespace {

constexpr double kHeaderPointSize = 8;
constexpr double kLeastContrast = 2.5;
constexpr double kHeaderLineShare = 0.25;

int Zoomed(int twips, int zoom) {
  return static_cast<int>(std::lround(ToPixels(twips) * zoom / 100.0));
}

}  // namespace

XmapMetrics MetricsFor(int channelCount, int zoom) {
  XmapMetrics metrics;
  metrics.cellWidth = Zoomed(channelCount >= rules::kManyChannels ? 350 : 300, zoom);
  metrics.cellHeight = Zoomed(300, zoom);
  metrics.labelWidth = Zoomed(1000, zoom);
  metrics.labelHeight = Zoomed(1800, zoom);
  metrics.font = FixedFont(kHeaderPointSize * zoom / 100.0);
  metrics.font.setWeight(QFont::Medium);
  return metrics;
}

double LetterPitch(double lineSpacing, int height, int letters) {
  return std::min(lineSpacing, static_cast<double>(height) / letters);
}

QColor HeaderLine(const QColor& ground) {
  return Blend(IsDark(ground) ? Qt::white : Qt::black, ground, kHeaderLineShare);
}

QColor BandColour(int row, const QPalette& palette) {
  return rules::XmapGrid::HasTipColour(row) ? palette.color(QPalette::Active, QPalette::ToolTipBase)
                                            : kPlainBand;
}

QColor StandingOut(const QColor& wanted, const QColor& ground) {
  if (Contrast(wanted, ground) >= kLeastContrast) return wanted;
  return IsDark(ground) ? Qt::white : Qt::black;
}

DeviceLines::DeviceLines(const QTransform& toDevice)
    : toDevice_(toDevice),
      fromDevice_(toDevice.inverted()),
      width_(std::max(1.0, std::floor(toDevice.m11()))) {}

QRectF DeviceLines::RightEdge(double right, double top, double bottom) const {
  const double edge = std::round(toDevice_.map(QPointF(right, 0)).x());
  const double first = std::round(toDevice_.map(QPointF(0, top)).y());
  const double last = std::round(toDevice_.map(QPointF(0, bottom)).y());
  return fromDevice_.mapRect(QRectF(edge - width_, first, width_, last - first));
}

QRectF DeviceLines::BottomEdge(double bottom, double left, double right) const {
  const double edge = std::round(toDevice_.map(QPointF(0, bottom)).y());
  const double first = std::round(toDevice_.map(QPointF(left, 0)).x());
  const double last = std::round(toDevice_.map(QPointF(right, 0)).x());
  return fromDevice_.mapRect(QRectF(first, edge - width_, last - first, width_));
}

}  // namespace views
