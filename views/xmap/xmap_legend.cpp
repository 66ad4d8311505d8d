// SPDX-License-Identifier: MIT

#include "views/xmap/xmap_legend.h"

#include <QBuffer>
#include <QGuiApplication>
#include <QPainter>

#include "views/xmap/mark_painter.h"
#include "views/xmap/xmap_look.h"

namespace views {
namespace {

constexpr int kMarkSize = 16;
constexpr int kSpace = 12;  // between two entries
constexpr int kGap = 3;     // between a mark and its name

struct Entry {
  rules::Mark mark;
  const char* name;
};

constexpr Entry kEntries[] = {
    {rules::Mark::Crosspoint, QT_TRANSLATE_NOOP("views::XmapLegend", "Crosspoint")},
    {rules::Mark::Inhibit, QT_TRANSLATE_NOOP("views::XmapLegend", "Inhibited")},
    {rules::Mark::Priority, QT_TRANSLATE_NOOP("views::XmapLegend", "Priority crosspoint")},
    {rules::Mark::Reserved, QT_TRANSLATE_NOOP("views::XmapLegend", "Reserved mark")},
};

}  // namespace

XmapLegend::XmapLegend(QWidget* parent) : QWidget(parent) {
  setObjectName(QStringLiteral("aidLegend"));
  QStringList names;
  for (const Entry& entry : kEntries) names.append(tr(entry.name));
  setAccessibleName(tr("Marks of the crosspoint map: %1").arg(names.join(QStringLiteral(", "))));
  setSizePolicy(QSizePolicy::Fixed, QSizePolicy::Preferred);
}

QString XmapLegend::Tip(const QPalette& palette) {
  const QColor ground = palette.color(QPalette::Inactive, QPalette::ToolTipBase);
  QString tip = QStringLiteral("<table cellspacing='2'>");
  for (const Entry& entry : kEntries) {
    const qreal ratio = qGuiApp->devicePixelRatio();
    QPixmap pixmap((QSizeF(kMarkSize, kMarkSize) * ratio).toSize());
    pixmap.fill(Qt::transparent);
    QPainter painter(&pixmap);
    PaintMark(painter, pixmap.rect(), entry.mark, MarkInk(entry.mark, ground));
    painter.end();
    QByteArray png;
    QBuffer buffer(&png);
    buffer.open(QIODevice::WriteOnly);
    pixmap.save(&buffer, "PNG");
    tip += QStringLiteral(
               "<tr><td><img width='%1' height='%1' src='data:image/png;base64,%2'></td>"
               "<td>%3</td></tr>")
               .arg(QString::number(kMarkSize), QString::fromLatin1(png.toBase64()),
                    tr(entry.name).toHtmlEscaped());
  }
  return tip + QStringLiteral("</table>");
}

QSize XmapLegend::sizeHint() const {
  int width = 0;
  for (const Entry& entry : kEntries) {
    width += kMarkSize + kGap + fontMetrics().horizontalAdvance(tr(entry.name)) + kSpace;
  }
  return QSize(width - kSpace, qMax(kMarkSize, fontMetrics().height()));
}

void XmapLegend::paintEvent(QPaintEvent*) {
  QPainter painter(this);
  const QColor ground = palette().color(QPalette::Window);
  painter.setPen(palette().color(QPalette::WindowText));
  int x = 0;
  for (const Entry& entry : kEntries) {
    const QRectF mark(x, (height() - kMarkSize) / 2.0, kMarkSize, kMarkSize);
    PaintMark(painter, mark, entry.mark, MarkInk(entry.mark, ground));
    x += kMarkSize + kGap;
    const int width = fontMetrics().horizontalAdvance(tr(entry.name));
    painter.drawText(QRect(x, 0, width + 1, height()), Qt::AlignVCenter | Qt::TextSingleLine,
                     tr(entry.name));
    x += width + kSpace;
  }
}

}  // namespace views
