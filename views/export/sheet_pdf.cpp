// SPDX-License-Identifier: MIT

#include "views/export/sheet_pdf.h"

#include <QFontMetricsF>
#include <QPainter>
#include <algorithm>
#include <iterator>
#include <span>

#include "views/export/paged_document.h"
#include "views/xmap/marks.h"

namespace views {
namespace {

constexpr int kChannelsPerPage = 64;
constexpr qreal kMapLabelWidth = 62;

const QColor kCaptionGround(0xE8, 0xE8, 0xE8);

QString Text(const std::string& text) { return QString::fromStdString(text); }

void DrawRow(PagedDocument& document, const std::vector<std::string>& row,
             const std::vector<qreal>& widths, qreal top) {
  QPainter& painter = document.Painter();
  qreal left = 0;
  for (std::size_t i = 0; i < row.size(); ++i) {
    const QRectF cell(left, top, widths[i], kPaperLineHeight);
    painter.setPen(QPen(PaperLine(), kHairline));
    painter.drawRect(cell);
    painter.setPen(Qt::black);
    document.DrawText(cell, Qt::AlignLeft | Qt::AlignVCenter, Text(row[i]));
    left += widths[i];
  }
}

// What each column needs for its longest text, all of them scaled down to the page when that is
// too much.
std::vector<qreal> ColumnWidths(const QFontMetricsF& metrics, const rules::Sheet& sheet,
                                qreal room) {
  std::vector<qreal> widths;
  qreal sum = 0;
  for (std::size_t column = 0; column < sheet.captions.size(); ++column) {
    qreal width = metrics.horizontalAdvance(Text(sheet.captions[column]));
    for (const std::vector<std::string>& row : sheet.rows) {
      width = std::max(width, metrics.horizontalAdvance(Text(row[column])));
    }
    widths.push_back(std::min(width, room / 3) + 2 * kPaperCellMargin + 1);
    sum += widths.back();
  }
  if (sum > room) {
    for (qreal& width : widths) width *= room / sum;
  } else if (!widths.empty()) {
    widths.back() += room - sum;  // notes stand last
  }
  return widths;
}

// What the marks mean, at the right of the title.
void DrawLegend(PagedDocument& document) {
  QPainter& painter = document.Painter();
  const QFontMetricsF metrics = document.SetFont(kPaperTextSize);
  qreal right = document.Width();
  for (auto entry = std::rbegin(rules::kExportedMarks); entry != std::rend(rules::kExportedMarks);
       ++entry) {
    const QString word = QString::fromLatin1(entry->legend);
    right -= metrics.horizontalAdvance(word);
    painter.setPen(Qt::black);
    painter.drawText(QPointF(right, kPaperLineHeight - 2), word);
    right -= kPaperLineHeight;
    painter.save();
    PaintMark(painter, QRectF(right - 2, 0, kPaperLineHeight, kPaperLineHeight), entry->mark,
              MarkInk(entry->mark, Qt::white));
    painter.restore();
    right -= kPaperLineHeight;
  }
}

// A part of the map: outputs and inputs from these on.
void DrawMapPage(PagedDocument& document, qreal top, const rules::XmapGrid& grid, int firstOutput,
                 int firstInput) {
  DrawLegend(document);
  QPainter& painter = document.Painter();
  const int channels = grid.ChannelCount();
  const int outputs = std::min(kChannelsPerPage, channels - firstOutput + 1);
  const int inputs = std::min(kChannelsPerPage, channels - firstInput + 1);
  const qreal size = std::min((document.Width() - kMapLabelWidth) / inputs,
                              (document.Height() - top - kMapLabelWidth) / outputs);
  const qreal cell = std::min(size, kPaperLineHeight);
  const int textSize = std::max(3, static_cast<int>(cell) - 2);
  document.SetFont(textSize);
  painter.setPen(Qt::black);
  for (int i = 0; i < outputs; ++i) {
    const int output = firstOutput + i;
    document.DrawText(QRectF(0, top + kMapLabelWidth + i * cell, kMapLabelWidth, cell),
                      Qt::AlignLeft | Qt::AlignVCenter,
                      Text(grid.Number(output) + " " + grid.OutputLabel(output)));
  }
  for (int i = 0; i < inputs; ++i) {
    const int input = firstInput + i;
    painter.save();
    painter.translate(kMapLabelWidth + i * cell, top + kMapLabelWidth);
    painter.rotate(-90);
    document.DrawText(QRectF(0, 0, kMapLabelWidth, cell), Qt::AlignLeft | Qt::AlignVCenter,
                      Text(grid.Number(input) + " " + grid.InputLabel(input)));
    painter.restore();
  }
  for (int i = 0; i < outputs; ++i) {
    const std::span<const rules::Mark> marks = grid.Marks(firstOutput + i);
    for (int k = 0; k < inputs; ++k) {
      const QRectF place(kMapLabelWidth + k * cell, top + kMapLabelWidth + i * cell, cell, cell);
      painter.setPen(QPen(PaperLine(), kHairline));
      painter.setBrush(Qt::NoBrush);
      painter.drawRect(place);
      const rules::Mark mark = marks[static_cast<std::size_t>(firstInput + k - 1)];
      if (mark == rules::Mark::None) continue;
      painter.save();
      PaintMark(painter, place, mark, MarkInk(mark, Qt::white));
      painter.restore();
    }
  }
}

}  // namespace

bool WriteSheetPdf(QIODevice& device, const QString& title, const rules::Sheet& sheet) {
  const auto writer = NewPdf(device, title, QPageSize::A4);
  PagedDocument document(*writer);
  if (!document.IsOpen()) return false;
  QPainter& painter = document.Painter();
  const std::vector<qreal> widths =
      ColumnWidths(document.SetFont(kPaperTextSize, true), sheet, document.Width());
  std::size_t next = 0;
  do {
    qreal top = document.BeginPage(title);
    document.SetFont(kPaperTextSize, true);
    painter.setBrush(kCaptionGround);
    DrawRow(document, sheet.captions, widths, top);
    document.SetFont(kPaperTextSize);
    painter.setBrush(Qt::NoBrush);
    for (top += kPaperLineHeight;
         next < sheet.rows.size() && top + kPaperLineHeight <= document.Height();
         top += kPaperLineHeight) {
      DrawRow(document, sheet.rows[next++], widths, top);
    }
  } while (next < sheet.rows.size());
  return document.End();
}

bool WriteMapPdf(QIODevice& device, const QString& title, const rules::XmapGrid& grid) {
  const auto writer = NewPdf(device, title, QPageSize::A4);
  PagedDocument document(*writer);
  if (!document.IsOpen()) return false;
  for (int output = 1; output <= grid.ChannelCount(); output += kChannelsPerPage) {
    for (int input = 1; input <= grid.ChannelCount(); input += kChannelsPerPage) {
      DrawMapPage(document, document.BeginPage(title), grid, output, input);
    }
  }
  return document.End();
}

}  // namespace views
