// SPDX-License-Identifier: MIT
//
// Sizes and colours of the crosspoint grid.

#ifndef VIEWS_XMAP_XMAP_LOOK_H_
#define VIEWS_XMAP_XMAP_LOOK_H_

#include <QColor>
#include <QFont>
#include <QPalette>
#include <QTransform>

#include "views/rules/xmap_grid.h"

namespace views {

// In logical pixels.
struct XmapMetrics {
  int cellWidth = 20;   // of a body column and of the column with the row numbers
  int cellHeight = 20;  // of a body row and of the row with the column numbers
  int labelWidth = 67;
  int labelHeight = 120;
  QFont font;  // of the header
};

inline constexpr int kSmallestZoom = 75;  // per cent
inline constexpr int kLargestZoom = 200;

// The sizes for a matrix; above 99 channels the columns are wider.  `zoom` in per cent.
XmapMetrics MetricsFor(int channelCount, int zoom);

// The distance between the letters of a column label, so that `letters` of them fit into
// `height` pixels.  REQUIRES: letters >= 1
double LetterPitch(double lineSpacing, int height, int letters);

inline constexpr QColor kGridGround{0xFF, 0xFF, 0xFF};
inline constexpr QColor kPlainBand{0xFE, 0xFF, 0xF4};
inline constexpr QColor kGridLine{0xC8, 0xC8, 0xC8};

// The lines between header cells of this ground.
QColor HeaderLine(const QColor& ground);

// The ground of the body cells of a grid row.  REQUIRES: row >= 2
QColor BandColour(int row, const QPalette& palette);

// `wanted` where it stands out from the ground, else black or white, whichever does.
QColor StandingOut(const QColor& wanted, const QColor& ground);

// Grid lines as rectangles that cover whole device pixels, so that they are equally wide at
// every device pixel ratio.
class DeviceLines {
 public:
  // `toDevice` is the painter's device transform; it only scales and shifts.
  explicit DeviceLines(const QTransform& toDevice);

  // The line at the inside of the edge x = `right`, from `top` to `bottom`.
  QRectF RightEdge(double right, double top, double bottom) const;
  // The line at the inside of the edge y = `bottom`, from `left` to `right`.
  QRectF BottomEdge(double bottom, double left, double right) const;

 private:
  QTransform toDevice_;
  QTransform fromDevice_;
  double width_;  // in device pixels
};

}  // namespace views

#endif  // VIEWS_XMAP_XMAP_LOOK_H_
