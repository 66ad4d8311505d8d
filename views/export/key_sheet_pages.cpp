// SPDX-License-Identifier: MIT

#include "views/export/key_sheet_pages.h"

#include <QColor>
#include <QPen>
#include <QStringList>

#include <algorithm>
#include <cmath>

#include "model/padded.h"
#include "stations/operations.h"

namespace views {
namespace {

constexpr int kKeysPerRow = 8;
constexpr int kKeyRows = 4;
constexpr qreal kKeyHeight = 108;
constexpr qreal kOperationHeight = 14;
constexpr int kCaptionSize = kPaperTextSize + 3;
constexpr int kTargetsSize = 6;

const QString kBetweenTargets = QStringLiteral(", ");
const QString kOthers = QStringLiteral(" …");

constexpr qreal kSlack = 0.5;  // a width is not quite the sum of those of its parts

// The targets in lines that end between labels, wherever a label could be broken: as many as there
// is room for; "…" stands for the others.
QStringList TargetLines(const QFontMetricsF& metrics, const QRectF& room, const QString& targets) {
  const qreal width = room.width() - kSlack;
  const qreal fitting = std::floor(room.height() / metrics.lineSpacing());
  const auto count = static_cast<qsizetype>(std::max(1.0, fitting));
  const auto wide = [&metrics](const QString& text) { return metrics.horizontalAdvance(text); };
  QStringList lines(QString{});
  for (const QString& label : targets.split(kBetweenTargets)) {
    QString& line = lines.back();
    const QString longer = line.isEmpty() ? label : line + kBetweenTargets + label;
    if (line.isEmpty() || wide(longer + u',') <= width) {
      line = longer;
    } else {
      line += u',';
      lines.append(label);
    }
    if (lines.size() > count) break;
  }
  if (lines.size() <= count) return lines;
  lines.removeLast();
  QString& last = lines.back();
  while (wide(last + kOthers) > width && last.contains(kBetweenTargets)) {
    last.truncate(last.lastIndexOf(kBetweenTargets) + 1);
  }
  last += kOthers;
  return lines;
}

}  // namespace

bool KeySheetPages::Draw(const rules::KeySheet& sheet) {
  if (!document_.IsOpen()) return false;
  const qreal top = document_.BeginPage(QString::fromStdString(rules::TitleOf(sheet)));
  if (!document_.IsOpen()) return false;
  const qreal width = document_.Width() / kKeysPerRow;
  const qreal height = std::min(kKeyHeight, (document_.Height() - top) / kKeyRows);
  for (std::size_t i = 0; i < sheet.keys.size(); ++i) {
    const auto column = static_cast<qreal>(i % kKeysPerRow);
    const auto row = static_cast<qreal>(i / kKeysPerRow);
    DrawKey(QRectF(column * width, top + row * height, width, height), static_cast<int>(i) + 1,
            sheet.keys[i]);
  }
  return true;
}

void KeySheetPages::DrawKey(const QRectF& place, int button, const rules::KeyLegend& key) {
  QPainter& painter = document_.Painter();
  const stations::Operation& operation = stations::OperationOf(key.type);
  painter.setPen(QPen(PaperLine(), kHairline, Qt::DashLine));  // to be cut along
  painter.setBrush(Qt::NoBrush);
  painter.drawRect(place);
  painter.setPen(Qt::black);

  QRectF line(place.left(), place.top() + 2, place.width(), kPaperLineHeight);
  document_.SetFont(kPaperTextSize);
  document_.DrawText(line, Qt::AlignLeft | Qt::AlignVCenter,
                     QStringLiteral("Btn - ") + QString::fromStdString(model::Padded(button, 2)));
  line.moveTop(line.bottom() + 2);
  line.setHeight(kPaperLineHeight + 4);
  DrawCaption(line, QString::fromStdString(key.caption));
  line.moveTop(line.bottom() + 2);
  line.setHeight(kOperationHeight);
  painter.fillRect(line, QColor::fromRgb(operation.colour));
  document_.SetFont(kPaperTextSize, true);
  document_.DrawText(line, Qt::AlignCenter, QString::fromLatin1(operation.label));
  DrawTargets(QRectF(place.left() + kPaperCellMargin, line.bottom() + 2,
                     place.width() - 2 * kPaperCellMargin, place.bottom() - line.bottom() - 4),
              QString::fromStdString(key.targets));
}

// A wide label is written smaller: what is read at arm's length is not to be cut off.
void KeySheetPages::DrawCaption(const QRectF& line, const QString& caption) {
  const qreal room = line.width() - 2 * kPaperCellMargin;
  for (int size = kCaptionSize; size >= kTargetsSize; --size) {
    if (document_.SetFont(size, true).horizontalAdvance(caption) <= room) break;
  }
  document_.DrawText(line, Qt::AlignCenter, caption);
}

void KeySheetPages::DrawTargets(const QRectF& room, const QString& targets) {
  QPainter& painter = document_.Painter();
  const QFontMetricsF metrics = document_.SetFont(kTargetsSize);
  painter.save();
  painter.setClipRect(room);
  QPointF at(room.left(), room.top() + metrics.ascent());
  for (const QString& line : TargetLines(metrics, room, targets)) {
    painter.drawText(at, line);
    at.ry() += metrics.lineSpacing();
  }
  painter.restore();
}

}  // namespace views
