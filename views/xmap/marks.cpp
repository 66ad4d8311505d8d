// SPDX-License-Identifier: MIT

#include "views/xmap/marks.h"

#include <QCoreApplication>
#include <QPainterPath>

#include "views/widgets/contrast.h"

namespace views {
namespace {

// The marks are designed for this cell height.
constexpr double kDesignHeight = 20;

// By the mark.
constexpr const char* kNames[] = {QT_TRANSLATE_NOOP("views::Marks", "No crosspoint"),
                                  QT_TRANSLATE_NOOP("views::Marks", "Crosspoint"),
                                  QT_TRANSLATE_NOOP("views::Marks", "Inhibited"),
                                  QT_TRANSLATE_NOOP("views::Marks", "Priority crosspoint"),
                                  QT_TRANSLATE_NOOP("views::Marks", "Reserved mark")};

}  // namespace

QString MarkName(rules::Mark mark) {
  return QCoreApplication::translate("views::Marks", kNames[static_cast<std::size_t>(mark)]);
}

QColor MarkInk(rules::Mark mark, const QColor& ground) {
  const bool dark = IsDark(ground);
  switch (mark) {
    case rules::Mark::Crosspoint:
      return dark ? QColor(0x6D, 0xB9, 0xF2) : QColor(0x00, 0x60, 0xA0);
    case rules::Mark::Inhibit:
      return dark ? QColor(0xFF, 0x8A, 0x80) : QColor(0xB0, 0x00, 0x20);
    case rules::Mark::Priority:
      return dark ? QColor(0xFF, 0xB7, 0x4D) : QColor(0xA8, 0x43, 0x00);
    case rules::Mark::Reserved:
      return dark ? QColor(0xD3, 0xA4, 0xF5) : QColor(0x5B, 0x2A, 0x86);
    case rules::Mark::None:
      break;
  }
  return dark ? QColor(Qt::white) : QColor(Qt::black);
}

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
  for (const rules::Mark mark : kMarks) {
    QPixmap pixmap((QSizeF(cell) * ratio).toSize());
    pixmap.setDevicePixelRatio(ratio);
    pixmap.fill(Qt::transparent);
    QPainter painter(&pixmap);
    PaintMark(painter, QRectF(QPointF(0, 0), cell), mark, MarkInk(mark, ground));
    painter.end();
    pixmaps_[static_cast<std::size_t>(mark) - 1] = pixmap;
  }
}

}  // namespace views
