// SPDX-License-Identifier: MIT
//
// The marks of the crosspoint map: their names, colours and shapes.  Each has a shape of its own,
// so that they can be told apart without their colours.

#ifndef VIEWS_XMAP_MARKS_H_
#define VIEWS_XMAP_MARKS_H_

#include <QColor>
#include <QPainter>
#include <QPixmap>
#include <QSize>
#include <QString>

#include <array>

#include "views/rules/xmap_grid.h"

namespace views {

inline constexpr std::array kMarks = {rules::Mark::Crosspoint, rules::Mark::Inhibit,
                                      rules::Mark::Priority, rules::Mark::Reserved};

// "Inhibited"; "No crosspoint" for none.
QString MarkName(rules::Mark mark);

// The ink of a mark on a ground, light or dark.
QColor MarkInk(rules::Mark mark, const QColor& ground);

// Draws a mark in the middle of a cell, grid line included in its size: crosspoint a disc,
// inhibit a diagonal cross, priority a triangle, reserved a hollow square.  The size of the mark
// goes by the cell's height.
void PaintMark(QPainter& painter, const QRectF& cell, rules::Mark mark, const QColor& ink);

// Marks drawn once and kept, for one cell size, device pixel ratio and kind of ground at a time.
class MarkPixmaps {
 public:
  // Makes the pixmaps fit; does nothing when they do.
  void Prepare(const QSize& cell, qreal ratio, bool darkGround);

  // The pixmap of a cell with this mark on a clear ground.  REQUIRES: mark is not None
  const QPixmap& Get(rules::Mark mark) const {
    return pixmaps_[static_cast<std::size_t>(mark) - 1];
  }

 private:
  QSize cell_;
  qreal ratio_ = 0;
  bool darkGround_ = false;
  std::array<QPixmap, kMarks.size()> pixmaps_;
};

}  // namespace views

#endif  // VIEWS_XMAP_MARKS_H_
