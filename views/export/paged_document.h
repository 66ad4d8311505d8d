// SPDX-License-Identifier: MIT

#ifndef VIEWS_EXPORT_PAGED_DOCUMENT_H_
#define VIEWS_EXPORT_PAGED_DOCUMENT_H_

#include <QFontMetricsF>
#include <QIODevice>
#include <QPageLayout>
#include <QPageSize>
#include <QPagedPaintDevice>
#include <QPainter>
#include <QPdfWriter>
#include <QRectF>
#include <QString>

#include <memory>

namespace views {

// How finely a document divides its pages.
inline constexpr int kDotsPerInch = 720;

// The heights of text on paper, in points.
inline constexpr int kPaperTextSize = 8;
inline constexpr qreal kPaperLineHeight = 12;
inline constexpr qreal kPaperCellMargin = 3;
inline constexpr qreal kHairline = 0.4;

// The lines of tables and of what is cut out.
QColor PaperLine();

// A page of that size in landscape, with the margins that all documents have.
QPageLayout LandscapeOn(QPageSize::PageSizeId paper);

// A PDF document that is written to an open device while it is drawn.
std::unique_ptr<QPdfWriter> NewPdf(QIODevice& device, const QString& title,
                                   QPageSize::PageSizeId paper);

// What is drawn on pages, of a PDF document or of a printer, in points from the upper left of the
// page's printable part.
class PagedDocument {
 public:
  // Begins on `device`, which has its page layout and must outlive the object.
  explicit PagedDocument(QPagedPaintDevice& device);

  // Whether what is drawn still arrives.
  bool IsOpen() const { return isOpen_; }

  QPainter& Painter() { return painter_; }
  qreal Width() const { return device_.width() / scale_; }
  qreal Height() const { return device_.height() / scale_; }

  // Begins a page, with this at its head; returns where its content begins.  The device may refuse
  // it: the document is not open then.
  qreal BeginPage(const QString& head);

  // Sets the font for what is drawn next, `size` points high.
  QFontMetricsF SetFont(int size, bool bold = false);

  // Draws a text in a cell, cut off with "…" where that is too narrow.
  void DrawText(const QRectF& cell, int flags, const QString& text);

  // Ends the document.  False when not all of it arrived.
  bool End();

 private:
  QPagedPaintDevice& device_;
  const qreal scale_;  // dots of the device to a point
  QPainter painter_;
  bool isOpen_ = false;
  bool isFirst_ = true;
};

}  // namespace views

#endif  // VIEWS_EXPORT_PAGED_DOCUMENT_H_
