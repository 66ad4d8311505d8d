// SPDX-License-Identifier: MIT

#include "views/xmap/mark_painter.h"

#include <QPainterPath>

#include "views/xmap/xmap_look.h"

namespace views {
namespace {

// The marks are designed for this cell height.
constexpr double kDesignHeight = 20;

}  // namespace

void PaintMark(QPainter& painter, const QRectF& cell, rules::Mark mark, const QColor& ink) {
  painter.save();
  painter.setRenderHint(QPainter::Antialiasing);
  // The last pixel right and below is the grid line's.
  painter.translate(cell.left() + (cell.width() - 1) / 2, cell.top() + (cell.height() - 1) / 2);
  const double scale = cell.height() / kDesignHeight;
  painter.scale(scale, scale);
  switch (mark) {
    case rules::Mark::Crosspoint:
      painter.setPen(Qt::NoPen);
      painter.setBrush(ink);
      painter.drawEllipse(QPointF(0, 0), 6, 6);
      break;
    case rules::Mark::Inhibit:
      painter.setPen(QPen(ink, 3, Qt::SolidLine, Qt::FlatCap));
      painter.drawLine(QPointF(-5.5, -5.5), QPointF(5.5, 5.5));
      painter.drawLine(QPointF(-5.5, 5.5), QPointF(5.5, -5.5));
      break;
    case rules::Mark::Priority: {
      QPainterPath triangle(QPointF(0, -6.5));
      triangle.lineTo(6.5, 5.5);
      triangle.lineTo(-6.5, 5.5);
      triangle.closeSubpath();
      painter.fillPath(triangle, ink);
      break;
    }
    case rules::Mark::Reserved:
      painter.setPen(QPen(ink, 2.4, Qt::SolidLine, Qt::FlatCap, Qt::MiterJoin));
      painter.setBrush(Qt::NoBrush);
      painter.drawRect(QRectF(-4.8, -4.8, 9.6, 9.6));
      break;
    case rules::Mark::None:
      break;
  }
  painter.restore();
}

void MarkPixmaps::Prepare(const QSize& cell, qreal ratio, bool darkGround) {
  if (cell == cell_ && ratio == ratio_ && darkGround == darkGround_) return;
  cell_ = cell;
  ratio_ = ratio;
  darkGround_ = darkGround;
  const QColor ground = darkGround ? Qt::black : Qt::white;
  for (std::size_t i = 0; i < pixmaps_.size(); ++i) {
    const auto mark = static_cast<rules::Mark>(i + 1);
    QPixmap pixmap((QSizeF(cell) * ratio).toSize());
    pixmap.setDevicePixelRatio(ratio);
    pixmap.fill(Qt::transparent);
    QPainter painter(&pixmap);
    PaintMark(painter, QRectF(QPointF(0, 0), cell), mark, MarkInk(mark, ground));
    painter.end();
    pixmaps_[i] = pixmap;
  }
}

}  // namespace views
