// SPDX-License-Identifier: MIT

#include "views/export/sheet_pdf.h"

#include <QFont>
#include <QFontMetricsF>
#include <QPageSize>
#include <QPainter>
#include <QPdfWriter>
#include <algorithm>
#include <iterator>
#include <span>
#include <utility>

#include "model/padded.h"
#include "stations/operations.h"
#include "views/xmap/marks.h"

namespace views {
namespace {

// Pages are measured in points.
constexpr int kPointsPerInch = 72;
constexpr qreal kMargin = 28;
constexpr qreal kTitleHeight = 24;
constexpr int kTitleSize = 13;
constexpr int kTextSize = 8;
constexpr int kSmallTextSize = 6;
constexpr qreal kLineHeight = 12;
constexpr qreal kCellMargin = 3;
constexpr qreal kHairline = 0.4;

constexpr int kKeysPerRow = 8;
constexpr qreal kKeyHeight = 108;
constexpr qreal kTypeHeight = 14;

constexpr int kChannelsPerPage = 64;
constexpr qreal kMapLabelWidth = 62;

const QColor kLine(0x80, 0x80, 0x80);
const QColor kCaptionGround(0xE8, 0xE8, 0xE8);

QString Text(const std::string& text) { return QString::fromStdString(text); }

// A document whose painter draws in points from the upper left of the page's printable part.
class Document {
 public:
  Document(QIODevice& device, const QString& title) : writer_(&device), title_(title) {
    writer_.setCreator(QStringLiteral("Orvo Intercom Control"));
    writer_.setTitle(title);
    writer_.setPageSize(QPageSize(QPageSize::A4));
    writer_.setPageOrientation(QPageLayout::Landscape);
    writer_.setPageMargins(QMarginsF(kMargin, kMargin, kMargin, kMargin), QPageLayout::Point);
    writer_.setResolution(kScale * kPointsPerInch);
    isOpen_ = painter_.begin(&writer_);
    painter_.scale(kScale, kScale);
  }

  bool IsOpen() const { return isOpen_; }
  QPainter& Painter() { return painter_; }
  qreal Width() const { return writer_.width() / qreal(kScale); }
  qreal Height() const { return writer_.height() / qreal(kScale); }

  // Begins a page, with this at its head; returns where its content begins.
  qreal BeginPage(const QString& head) {
    if (!std::exchange(isFirst_, false)) writer_.newPage();
    SetFont(kTitleSize, true);
    painter_.setPen(Qt::black);
    painter_.drawText(QRectF(0, 0, Width(), kTitleHeight), Qt::AlignLeft | Qt::AlignTop, head);
    return kTitleHeight;
  }

  // Sets the font for what is drawn next, `size` points high.
  QFontMetricsF SetFont(int size, bool bold = false) {
    QFont font(QStringLiteral("DejaVu Sans"));
    font.setStyleHint(QFont::SansSerif);
    font.setPixelSize(size);
    font.setBold(bold);
    font.setHintingPreference(QFont::PreferNoHinting);
    painter_.setFont(font);
    return QFontMetricsF(font, &writer_);
  }

  bool End() { return painter_.end(); }

 private:
  static constexpr int kScale = 10;  // dots of the writer to a point

  QPdfWriter writer_;
  const QString title_;
  QPainter painter_;
  bool isOpen_ = false;
  bool isFirst_ = true;
};

void DrawText(QPainter& painter, const QRectF& cell, int flags, const QString& text) {
  const QRectF room = cell.adjusted(kCellMargin, 0, -kCellMargin, 0);
  const QFontMetricsF metrics(painter.font(), painter.device());
  painter.drawText(room, flags, metrics.elidedText(text, Qt::ElideRight, room.width()));
}

void DrawRow(QPainter& painter, const std::vector<std::string>& row,
             const std::vector<qreal>& widths, qreal top) {
  qreal left = 0;
  for (std::size_t i = 0; i < row.size(); ++i) {
    const QRectF cell(left, top, widths[i], kLineHeight);
    painter.setPen(QPen(kLine, kHairline));
    painter.drawRect(cell);
    painter.setPen(Qt::black);
    DrawText(painter, cell, Qt::AlignLeft | Qt::AlignVCenter, Text(row[i]));
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
    widths.push_back(std::min(width, room / 3) + 2 * kCellMargin + 1);
    sum += widths.back();
  }
  if (sum > room) {
    for (qreal& width : widths) width *= room / sum;
  } else if (!widths.empty()) {
    widths.back() += room - sum;  // notes stand last
  }
  return widths;
}

void DrawKey(Document& document, const QRectF& place, int button, const rules::KeyLegend& key) {
  QPainter& painter = document.Painter();
  const stations::Operation& operation = stations::OperationOf(key.type);
  painter.setPen(QPen(kLine, kHairline, Qt::DashLine));  // to be cut along
  painter.setBrush(Qt::NoBrush);
  painter.drawRect(place);
  painter.setPen(Qt::black);

  QRectF line(place.left(), place.top() + 2, place.width(), kLineHeight);
  document.SetFont(kTextSize);
  DrawText(painter, line, Qt::AlignLeft | Qt::AlignVCenter,
           QStringLiteral("Btn - ") + Text(model::Padded(button, 2)));
  line.moveTop(line.bottom() + 2);
  line.setHeight(kLineHeight + 4);
  document.SetFont(kTextSize + 3, true);
  DrawText(painter, line, Qt::AlignCenter, Text(key.caption));
  line.moveTop(line.bottom() + 2);
  line.setHeight(kTypeHeight);
  painter.fillRect(line, QColor::fromRgb(operation.colour));
  document.SetFont(kTextSize, true);
  DrawText(painter, line, Qt::AlignCenter, QString::fromLatin1(operation.label));
  const QRectF rest(place.left() + kCellMargin, line.bottom() + 2, place.width() - 2 * kCellMargin,
                    place.bottom() - line.bottom() - 4);
  document.SetFont(kSmallTextSize);
  painter.save();
  painter.setClipRect(rest);
  painter.drawText(rest, Qt::AlignLeft | Qt::AlignTop | Qt::TextWordWrap, Text(key.targets));
  painter.restore();
}

// What the marks mean, at the right of the title.
void DrawLegend(Document& document) {
  QPainter& painter = document.Painter();
  const QFontMetricsF metrics = document.SetFont(kTextSize);
  qreal right = document.Width();
  for (auto entry = std::rbegin(rules::kExportedMarks); entry != std::rend(rules::kExportedMarks);
       ++entry) {
    const QString word = QString::fromLatin1(entry->legend);
    right -= metrics.horizontalAdvance(word);
    painter.setPen(Qt::black);
    painter.drawText(QPointF(right, kLineHeight - 2), word);
    right -= kLineHeight;
    painter.save();
    PaintMark(painter, QRectF(right - 2, 0, kLineHeight, kLineHeight), entry->mark,
              MarkInk(entry->mark, Qt::white));
    painter.restore();
    right -= kLineHeight;
  }
}

// A part of the map: outputs and inputs from these on.
void DrawMapPage(Document& document, qreal top, const rules::XmapGrid& grid, int firstOutput,
                 int firstInput) {
  DrawLegend(document);
  QPainter& painter = document.Painter();
  const int channels = grid.ChannelCount();
  const int outputs = std::min(kChannelsPerPage, channels - firstOutput + 1);
  const int inputs = std::min(kChannelsPerPage, channels - firstInput + 1);
  const qreal size = std::min((document.Width() - kMapLabelWidth) / inputs,
                              (document.Height() - top - kMapLabelWidth) / outputs);
  const qreal cell = std::min(size, kLineHeight);
  const int textSize = std::max(3, static_cast<int>(cell) - 2);
  document.SetFont(textSize);
  painter.setPen(Qt::black);
  for (int i = 0; i < outputs; ++i) {
    const int output = firstOutput + i;
    DrawText(painter, QRectF(0, top + kMapLabelWidth + i * cell, kMapLabelWidth, cell),
             Qt::AlignLeft | Qt::AlignVCenter,
             Text(grid.Number(output) + " " + grid.OutputLabel(output)));
  }
  for (int i = 0; i < inputs; ++i) {
    const int input = firstInput + i;
    painter.save();
    painter.translate(kMapLabelWidth + i * cell, top + kMapLabelWidth);
    painter.rotate(-90);
    DrawText(painter, QRectF(0, 0, kMapLabelWidth, cell), Qt::AlignLeft | Qt::AlignVCenter,
             Text(grid.Number(input) + " " + grid.InputLabel(input)));
    painter.restore();
  }
  for (int i = 0; i < outputs; ++i) {
    const std::span<const rules::Mark> marks = grid.Marks(firstOutput + i);
    for (int k = 0; k < inputs; ++k) {
      const QRectF place(kMapLabelWidth + k * cell, top + kMapLabelWidth + i * cell, cell, cell);
      painter.setPen(QPen(kLine, kHairline));
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
  Document document(device, title);
  if (!document.IsOpen()) return false;
  QPainter& painter = document.Painter();
  const std::vector<qreal> widths =
      ColumnWidths(document.SetFont(kTextSize, true), sheet, document.Width());
  std::size_t next = 0;
  do {
    qreal top = document.BeginPage(title);
    document.SetFont(kTextSize, true);
    painter.setBrush(kCaptionGround);
    DrawRow(painter, sheet.captions, widths, top);
    document.SetFont(kTextSize);
    painter.setBrush(Qt::NoBrush);
    for (top += kLineHeight; next < sheet.rows.size() && top + kLineHeight <= document.Height();
         top += kLineHeight) {
      DrawRow(painter, sheet.rows[next++], widths, top);
    }
  } while (next < sheet.rows.size());
  return document.End();
}

bool WriteMapPdf(QIODevice& device, const QString& title, const rules::XmapGrid& grid) {
  Document document(device, title);
  if (!document.IsOpen()) return false;
  for (int output = 1; output <= grid.ChannelCount(); output += kChannelsPerPage) {
    for (int input = 1; input <= grid.ChannelCount(); input += kChannelsPerPage) {
      DrawMapPage(document, document.BeginPage(title), grid, output, input);
    }
  }
  return document.End();
}

bool WriteKeySheetsPdf(QIODevice& device, const std::vector<rules::KeySheet>& sheets) {
  Document document(device, QStringLiteral("Key Sheets"));
  if (!document.IsOpen()) return false;
  for (const rules::KeySheet& sheet : sheets) {
    const qreal top = document.BeginPage(Text(rules::TitleOf(sheet)));
    const qreal width = document.Width() / kKeysPerRow;
    for (std::size_t i = 0; i < sheet.keys.size(); ++i) {
      const auto column = static_cast<qreal>(i % kKeysPerRow);
      const auto row = static_cast<qreal>(i / kKeysPerRow);
      DrawKey(document, QRectF(column * width, top + row * kKeyHeight, width, kKeyHeight),
              static_cast<int>(i) + 1, sheet.keys[i]);
    }
  }
  return document.End();
}

}  // namespace views
