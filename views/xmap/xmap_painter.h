// SPDX-License-Identifier: MIT

#ifndef VIEWS_XMAP_XMAP_PAINTER_H_
#define VIEWS_XMAP_XMAP_PAINTER_H_

#include <QPainter>
#include <QPalette>
#include <QRegion>
#include <vector>

#include "views/rules/inhibit_block.h"
#include "views/rules/xmap_grid.h"
#include "views/xmap/marks.h"
#include "views/xmap/xmap_look.h"

namespace views {

// A crosspoint by its channels, from 1; 0, 0 is none.
struct Crosspoint {
  int output = 0;
  int input = 0;

  bool operator==(const Crosspoint&) const = default;
};

// What the body of the crosspoint map looks like at the moment, beside its marks.
struct XmapScene {
  XmapMetrics metrics;
  QPalette palette;
  QPoint origin;  // where the crosspoint of output 1 and input 1 begins
  Crosspoint current;
  rules::CellBlock block;  // the chosen cells, when they are more than the current one
  bool hasFocus = false;
  bool crosshair = true;
  bool hatched = false;             // what it shows may not be true any more
  std::vector<Crosspoint> pending;  // sent, and not reported by the switcher yet

  // A cell, grid line included.
  QRect CellRect(const Crosspoint& cell) const;
  // The same of all cells of a block; an empty one of an empty block.
  QRect BlockRect(const rules::CellBlock& cells) const;
};

// Paints the body of the crosspoint map.
//
// It draws whole bands and grid lines as rectangles and then the marks, instead of asking a
// delegate for each cell.  The cost depends on the cells in sight, not on the size of the matrix.
class XmapPainter {
 public:
  // `grid` must outlive the painter.
  explicit XmapPainter(const rules::XmapGrid& grid) : grid_(grid) {}

  // Paints what lies in `dirty`; `painter` must be fresh.
  void Paint(QPainter& painter, const QRegion& dirty, const XmapScene& scene);

 private:
  void PaintCells(QPainter& painter, const QRect& dirty, const XmapScene& scene) const;
  void PaintCrosshair(QPainter& painter, const XmapScene& scene) const;
  static void PaintBlock(QPainter& painter, const XmapScene& scene);
  static void PaintCurrentCell(QPainter& painter, const XmapScene& scene);
  static void PaintPending(QPainter& painter, const XmapScene& scene);

  const rules::XmapGrid& grid_;
  QPixmap hatch_;           // a square of it
  MarkPixmaps tipMarks_;    // on the bands with the tool-tip colour
  MarkPixmaps plainMarks_;  // on the others
};

}  // namespace views

#endif  // VIEWS_XMAP_XMAP_PAINTER_H_
