// SPDX-License-Identifier: MIT

#include "views/xmap/xmap_legend.h"

#include <QBuffer>
#include <QGuiApplication>
#include <QPainter>

#include "views/xmap/marks.h"

namespace views {
namespace {

constexpr int kMarkSize = 16;
constexpr int kSpace = 12;  // between two entries
constexpr int kGap = 3;     // between a mark and its name

}  // namespace

XmapLegend::XmapLegend(QWidget* parent) : QWidget(parent) {
  setObjectName(QStringLiteral("aidLegend"));
  QStringList names;
  for (const rules::Mark mark : kMarks) names.append(MarkName(mark));
  setAccessibleName(tr("Marks of the crosspoint map: %1").arg(names.join(QStringLiteral(", "))));
  setSizePolicy(QSizePolicy::Fixed, QSizePolicy::Preferred);
}

QString XmapLegend::Tip(const QPalette& palette) {
  const QColor ground = palette.color(QPalette::Inactive, QPalette::ToolTipBase);
  QString tip = QStringLiteral("<table cellspacing='2'>");
  for (const rules::Mark mark : kMarks) {
    const qreal ratio = qGuiApp->devicePixelRatio();
    QPixmap pixmap((QSizeF(kMarkSize, kMarkSize) * ratio).toSize());
    pixmap.fill(Qt::transparent);
    QPainter painter(&pixmap);
    PaintMark(painter, pixmap.rect(), mark, MarkInk(mark, ground));
    painter.end();
    QByteArray png;
    QBuffer buffer(&png);
    buffer.open(QIODevice::WriteOnly);
    pixmap.save(&buffer, "PNG");
    tip += QStringLiteral(
               "<tr><td><img width='%1' height='%1' src='data:image/png;base64,%2'></td>"
               "<td>%3</td></tr>")
               .arg(QString::number(kMarkSize), QString::fromLatin1(png.toBase64()),
                    MarkName(mark).toHtmlEscaped());
  }
  return tip + QStringLiteral("</table>");
}

QSize XmapLegend::sizeHint() const {
  int width = 0;
  for (const rules::Mark mark : kMarks) {
    width += kMarkSize + kGap + fontMetrics().horizontalAdvance(MarkName(mark)) + kSpace;
  }
  return QSize(width - kSpace, qMax(kMarkSize, fontMetrics().height()));
}

void XmapLegend::paintEvent(QPaintEvent*) {
  QPainter painter(this);
  const QColor ground = palette().color(QPalette::Window);
  painter.setPen(palette().color(QPalette::WindowText));
  int x = 0;
  for (const rules::Mark mark : kMarks) {
    const QRectF place(x, (height() - kMarkSize) / 2.0, kMarkSize, kMarkSize);
    PaintMark(painter, place, mark, MarkInk(mark, ground));
    x += kMarkSize + kGap;
    const int width = fontMetrics().horizontalAdvance(MarkName(mark));
    painter.drawText(QRect(x, 0, width + 1, height()), Qt::AlignVCenter | Qt::TextSingleLine,
                     MarkName(mark));
    x += width + kSpace;
  }
}

}  // namespace views
