// SPDX-License-Identifier: MIT

#include "views/xmap/xmap_corner.h"

#include <QHelpEvent>
#include <QPainter>
#include <QToolTip>

#include "views/xmap/marks.h"
#include "views/xmap/xmap_legend.h"

namespace views {

XmapCorner::XmapCorner(QWidget* parent) : QWidget(parent) { setAttribute(Qt::WA_OpaquePaintEvent); }

void XmapCorner::SetMetrics(const XmapMetrics& metrics) {
  metrics_ = metrics;
  update();
}

void XmapCorner::paintEvent(QPaintEvent*) {
  QPainter painter(this);
  const QColor ground = palette().color(QPalette::Active, QPalette::Button);
  painter.fillRect(rect(), ground);
  const QColor line = HeaderLine(ground);
  const DeviceLines lines(painter.deviceTransform());
  for (const int right : {metrics_.labelWidth, metrics_.labelWidth + metrics_.cellWidth}) {
    painter.fillRect(lines.RightEdge(right, 0, height()), line);
  }
  for (const int bottom : {metrics_.labelHeight, metrics_.labelHeight + metrics_.cellHeight}) {
    painter.fillRect(lines.BottomEdge(bottom, 0, width()), line);
  }
  const QRectF cell((metrics_.labelWidth - metrics_.cellWidth) / 2.0,
                    (metrics_.labelHeight - metrics_.cellHeight) / 2.0, metrics_.cellWidth,
                    metrics_.cellHeight);
  PaintMark(painter, cell, rules::Mark::Crosspoint, MarkInk(rules::Mark::Crosspoint, ground));
}

bool XmapCorner::event(QEvent* event) {
  if (event->type() == QEvent::ToolTip) {
    QToolTip::showText(static_cast<QHelpEvent*>(event)->globalPos(), XmapLegend::Tip(palette()),
                       this);
    return true;
  }
  return QWidget::event(event);
}

}  // namespace views
