// SPDX-License-Identifier: MIT

#include "views/xmap/xmap_painter.h"

#include <algorithm>

#include "views/widgets/contrast.h"

namespace views {
namespace {

using rules::Mark;

constexpr int kFirstRow = rules::kFixedCells;
constexpr int kOutlineWidth = 2;
constexpr int kOutlineWidthUnfocused = 1;

// The veil over chosen cells, which leaves their marks and grounds legible.
constexpr int kBlockAlpha = 0x38;

// The lines of the hatch, of no colour that a mark has.
constexpr int kHatchPitch = 16;
constexpr double kHatchWidth = 2.5;
constexpr QColor kHatchInk{0x80, 0x80, 0x80, 0x70};

// A square of the hatch, which goes on at all of its sides.
QPixmap HatchTile(qreal ratio) {
  QPixmap tile((QSizeF(kHatchPitch, kHatchPitch) * ratio).toSize());
  tile.setDevicePixelRatio(ratio);
  tile.fill(Qt::transparent);
  QPainter painter(&tile);
  painter.setRenderHint(QPainter::Antialiasing);
  painter.setPen(QPen(kHatchInk, kHatchWidth));
  for (const int left : {-kHatchPitch, 0, kHatchPitch}) {
    painter.drawLine(QPointF(left - 1, kHatchPitch + 1), QPointF(left + kHatchPitch + 1, -1));
  }
  return tile;
}

}  // namespace

QRect XmapScene::CellRect(const Crosspoint& cell) const {
  return QRect(origin.x() + (cell.input - 1) * metrics.cellWidth,
               origin.y() + (cell.output - 1) * metrics.cellHeight, metrics.cellWidth,
               metrics.cellHeight);
}

QRect XmapScene::BlockRect(const rules::CellBlock& cells) const {
  if (cells.Cells() == 0) return {};
  return CellRect({cells.firstOutput, cells.firstInput}) |
         CellRect({cells.lastOutput, cells.lastInput});
}

void XmapPainter::Paint(QPainter& painter, const QRegion& dirty, const XmapScene& scene) {
  const qreal ratio = painter.device()->devicePixelRatioF();
  const QSize cell(scene.metrics.cellWidth, scene.metrics.cellHeight);
  tipMarks_.Prepare(cell, ratio, IsDark(BandColour(kFirstRow, scene.palette)));
  plainMarks_.Prepare(cell, ratio, IsDark(kPlainBand));
  if (scene.hatched && hatch_.devicePixelRatio() != ratio) hatch_ = QPixmap();
  if (scene.hatched && hatch_.isNull()) hatch_ = HatchTile(ratio);
  for (const QRect& rect : dirty) {
    painter.setClipRect(rect);
    PaintCells(painter, rect, scene);
  }
  painter.setClipRegion(dirty);
  if (scene.current.output >= 1) {
    if (scene.crosshair) PaintCrosshair(painter, scene);
    if (scene.block.Cells() > 1) PaintBlock(painter, scene);
    PaintCurrentCell(painter, scene);
  }
  PaintPending(painter, scene);
}

void XmapPainter::PaintCells(QPainter& painter, const QRect& dirty, const XmapScene& scene) const {
  const int count = grid_.ChannelCount();
  const int width = scene.metrics.cellWidth;
  const int height = scene.metrics.cellHeight;
  const QPoint origin = scene.origin;
  const QRect cells = QRect(origin, QSize(count * width, count * height)) & dirty;
  if (cells != dirty) painter.fillRect(dirty, kGridGround);
  if (cells.isEmpty()) return;

  const int firstOutput = (cells.top() - origin.y()) / height + 1;
  const int lastOutput = (cells.bottom() - origin.y()) / height + 1;
  const int firstInput = (cells.left() - origin.x()) / width + 1;
  const int lastInput = (cells.right() - origin.x()) / width + 1;
  const QColor tipBand = BandColour(kFirstRow, scene.palette);
  const DeviceLines lines(painter.deviceTransform());
  for (int output = firstOutput; output <= lastOutput; ++output) {
    const int top = origin.y() + (output - 1) * height;
    const bool tip = rules::XmapGrid::HasTipColour(output + 1);
    painter.fillRect(QRect(cells.left(), top, cells.width(), height), tip ? tipBand : kPlainBand);
    painter.fillRect(lines.BottomEdge(top + height, cells.left(), cells.right() + 1), kGridLine);
  }
  for (int input = firstInput; input <= lastInput; ++input) {
    const int right = origin.x() + input * width;
    painter.fillRect(lines.RightEdge(right, cells.top(), cells.bottom() + 1), kGridLine);
  }
  // Under the marks, and with the cells when they are scrolled.
  if (scene.hatched) painter.drawTiledPixmap(cells, hatch_, cells.topLeft() - origin);
  for (int output = firstOutput; output <= lastOutput; ++output) {
    const std::span<const Mark> marks = grid_.Marks(output);
    const MarkPixmaps& pixmaps =
        rules::XmapGrid::HasTipColour(output + 1) ? tipMarks_ : plainMarks_;
    const int top = origin.y() + (output - 1) * height;
    for (int input = firstInput; input <= lastInput; ++input) {
      const Mark mark = marks[static_cast<std::size_t>(input - 1)];
      if (mark == Mark::None) continue;
      painter.drawPixmap(QPoint(origin.x() + (input - 1) * width, top), pixmaps.Get(mark));
    }
  }
}

// The grid lines around the current row and column.
void XmapPainter::PaintCrosshair(QPainter& painter, const XmapScene& scene) const {
  const QColor line = scene.palette.color(QPalette::Active, QPalette::Highlight);
  const DeviceLines lines(painter.deviceTransform());
  const QRect cell = scene.CellRect(scene.current);
  const QRect last = scene.CellRect({grid_.ChannelCount(), grid_.ChannelCount()});
  for (const int bottom : {cell.top(), cell.bottom() + 1}) {
    painter.fillRect(lines.BottomEdge(bottom, scene.origin.x(), last.right() + 1), line);
  }
  for (const int right : {cell.left(), cell.right() + 1}) {
    painter.fillRect(lines.RightEdge(right, scene.origin.y(), last.bottom() + 1), line);
  }
}

void XmapPainter::PaintBlock(QPainter& painter, const XmapScene& scene) {
  const QRect block = scene.BlockRect(scene.block).adjusted(0, 0, -1, -1);
  QColor veil = scene.palette.color(QPalette::Active, QPalette::Highlight);
  const QColor outline = StandingOut(veil, kPlainBand);
  veil.setAlpha(kBlockAlpha);
  painter.fillRect(block, veil);
  const QRegion inner(block.adjusted(kOutlineWidth, kOutlineWidth, -kOutlineWidth, -kOutlineWidth));
  for (const QRect& side : QRegion(block) - inner) painter.fillRect(side, outline);
}

void XmapPainter::PaintCurrentCell(QPainter& painter, const XmapScene& scene) {
  const QColor outline = StandingOut(scene.palette.color(QPalette::Active, QPalette::Highlight),
                                     BandColour(scene.current.output + 1, scene.palette));
  const int width = scene.hasFocus ? kOutlineWidth : kOutlineWidthUnfocused;
  QRect cell = scene.CellRect(scene.current);
  cell.adjust(0, 0, -1, -1);  // the grid line stays
  const auto frame = [&painter](const QRect& outer, int line, const QColor& colour) {
    const QRegion inner(outer.adjusted(line, line, -line, -line));
    for (const QRect& side : QRegion(outer) - inner) painter.fillRect(side, colour);
  };
  frame(cell, width, outline);
  cell.adjust(width, width, -width, -width);
  frame(cell, 1, Qt::white);
}

void XmapPainter::PaintPending(QPainter& painter, const XmapScene& scene) {
  for (const Crosspoint& crosspoint : scene.pending) {
    // On the current cell the dots are gaps in its outline, elsewhere dots on the ground.
    const QColor ground = BandColour(crosspoint.output + 1, scene.palette);
    const QColor ink = IsDark(ground) ? Qt::white : Qt::black;
    QPen pen(crosspoint == scene.current ? ground : ink, kOutlineWidth);
    pen.setDashPattern({1, 1});
    pen.setCapStyle(Qt::FlatCap);
    pen.setJoinStyle(Qt::MiterJoin);
    painter.setPen(pen);
    painter.setBrush(Qt::NoBrush);
    painter.drawRect(QRectF(scene.CellRect(crosspoint)).adjusted(1, 1, -2, -2));
  }
}

}  // namespace views
