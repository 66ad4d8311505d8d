// SPDX-License-Identifier: MIT

#include "views/export/paged_document.h"

#include <QFont>
#include <QMarginsF>

#include <utility>

namespace views {
namespace {

constexpr qreal kPointsPerInch = 72;
constexpr qreal kMargin = 28;
constexpr qreal kTitleHeight = 24;
constexpr int kTitleSize = 13;

}  // namespace

QColor PaperLine() { return {0x80, 0x80, 0x80}; }

QPageLayout LandscapeOn(QPageSize::PageSizeId paper) {
  return {QPageSize(paper), QPageLayout::Landscape, QMarginsF(kMargin, kMargin, kMargin, kMargin),
          QPageLayout::Point};
}

std::unique_ptr<QPdfWriter> NewPdf(QIODevice& device, const QString& title,
                                   QPageSize::PageSizeId paper) {
  auto writer = std::make_unique<QPdfWriter>(&device);
  writer->setCreator(QStringLiteral("Orvo Intercom Control"));
  writer->setTitle(title);
  writer->setPageLayout(LandscapeOn(paper));
  writer->setResolution(kDotsPerInch);
  return writer;
}

PagedDocument::PagedDocument(QPagedPaintDevice& device)
    : device_(device), scale_(device.logicalDpiX() / kPointsPerInch) {
  isOpen_ = painter_.begin(&device_);
  if (isOpen_) painter_.scale(scale_, scale_);
}

qreal PagedDocument::BeginPage(const QString& head) {
  if (!std::exchange(isFirst_, false)) isOpen_ = isOpen_ && device_.newPage();
  SetFont(kTitleSize, true);
  painter_.setPen(Qt::black);
  painter_.drawText(QRectF(0, 0, Width(), kTitleHeight), Qt::AlignLeft | Qt::AlignTop, head);
  return kTitleHeight;
}

QFontMetricsF PagedDocument::SetFont(int size, bool bold) {
  QFont font(QStringLiteral("DejaVu Sans"));
  font.setStyleHint(QFont::SansSerif);
  font.setPixelSize(size);
  font.setBold(bold);
  font.setHintingPreference(QFont::PreferNoHinting);
  painter_.setFont(font);
  return QFontMetricsF(font, &device_);
}

void PagedDocument::DrawText(const QRectF& cell, int flags, const QString& text) {
  const QRectF room = cell.adjusted(kPaperCellMargin, 0, -kPaperCellMargin, 0);
  const QFontMetricsF metrics(painter_.font(), &device_);
  painter_.drawText(room, flags, metrics.elidedText(text, Qt::ElideRight, room.width()));
}

bool PagedDocument::End() { return painter_.isActive() && painter_.end() && isOpen_; }

}  // namespace views
