// SPDX-License-Identifier: MIT

#include "views/xmap/xmap_header.h"

#include <QContextMenuEvent>
#include <QHelpEvent>
#include <QMouseEvent>
#include <QPainter>
#include <QToolTip>

#include <algorithm>

#include "views/widgets/contrast.h"
#include "views/widgets/find_field.h"
#include "views/widgets/plain_tip.h"
#include "views/xmap/xmap_model.h"

namespace views {
namespace {

constexpr double kHoverShare = 0.35;
constexpr int kBarWidth = 3;
constexpr int kLabelMargin = 4;

// Of the height of a row: what a padlock is wide and high.
constexpr double kLockWidth = 0.35;
constexpr double kLockHeight = 0.5;

// A padlock that fills the box: its body is full where panels are locked out, too.
void DrawLock(QPainter& painter, const QRectF& box, const QColor& ink, bool isFull) {
  const double pen = box.width() / 6;
  const QRectF body(box.left() + pen / 2, box.top() + box.height() * 0.45, box.width() - pen,
                    box.height() * 0.55 - pen / 2);
  const double inset = box.width() * 0.2;
  const QRectF bow(body.left() + inset, box.top() + pen / 2, body.width() - 2 * inset,
                   2 * (body.top() - box.top()) - pen);
  painter.save();
  painter.setRenderHint(QPainter::Antialiasing);
  painter.setPen(QPen(ink, pen));
  painter.setBrush(Qt::NoBrush);
  painter.drawArc(bow, 0, 180 * 16);
  if (isFull) painter.setBrush(ink);
  painter.drawRect(body);
  painter.restore();
}

}  // namespace

XmapHeader::XmapHeader(Qt::Orientation orientation, const rules::XmapGrid& grid, QWidget* parent)
    : QHeaderView(orientation, parent), grid_(grid) {
  setSectionResizeMode(QHeaderView::Fixed);
  setSectionsClickable(false);
  setHighlightSections(false);
  viewport()->setMouseTracking(true);
  viewport()->setAttribute(Qt::WA_OpaquePaintEvent);
}

void XmapHeader::SetMetrics(const XmapMetrics& metrics) {
  metrics_ = metrics;
  const int size = orientation() == Qt::Horizontal ? metrics.cellWidth : metrics.cellHeight;
  setMinimumSectionSize(size);
  setDefaultSectionSize(size);
  setFont(metrics.font);
  LabelsChanged();
  updateGeometry();
}

void XmapHeader::SetCurrent(int channel) {
  if (channel == current_) return;
  UpdateChannel(current_);
  current_ = channel;
  UpdateChannel(current_);
}

void XmapHeader::SetHovered(int channel) {
  if (channel == hovered_) return;
  UpdateChannel(hovered_);
  hovered_ = channel;
  UpdateChannel(hovered_);
}

void XmapHeader::SetMatches(const rules::ChannelSet& matches) {
  if (matches == matches_) return;
  matches_ = matches;
  viewport()->update();
}

void XmapHeader::LabelsChanged() {
  plain_.clear();
  viewport()->update();
}

QSize XmapHeader::sizeHint() const {
  return orientation() == Qt::Horizontal
             ? QSize(metrics_.cellWidth, metrics_.labelHeight + metrics_.cellHeight)
             : QSize(metrics_.labelWidth + metrics_.cellWidth, metrics_.cellHeight);
}

int XmapHeader::ChannelAt(const QPoint& point) const { return logicalIndexAt(point) + 1; }

QRect XmapHeader::SectionRect(int channel) const {
  const int size = defaultSectionSize();
  const int start = (channel - 1) * size - offset();
  return orientation() == Qt::Horizontal ? QRect(start, 0, size, viewport()->height())
                                         : QRect(0, start, viewport()->width(), size);
}

void XmapHeader::UpdateChannel(int channel) {
  if (channel >= 1) viewport()->update(SectionRect(channel));
}

bool XmapHeader::IsPlain(int channel) const {
  return channel != current_ && channel != hovered_ &&
         !matches_.test(static_cast<std::size_t>(channel));
}

XmapHeader::Colours XmapHeader::ColoursOf(int channel) const {
  const QColor ground = palette().color(QPalette::Active, QPalette::Button);
  const QColor highlight = palette().color(QPalette::Active, QPalette::Highlight);
  if (channel == current_) {
    return {highlight, palette().color(QPalette::Active, QPalette::HighlightedText)};
  }
  if (matches_.test(static_cast<std::size_t>(channel))) return {kMatchGround, kMatchInk};
  const QColor ink = palette().color(QPalette::Active, QPalette::ButtonText);
  if (channel == hovered_) return {Blend(highlight, ground, kHoverShare), ink};
  return {ground, ink};
}

// Highlighted channels are drawn by way of a pixmap, too: else, at a fractional device pixel ratio,
// their letters would jump when the highlight comes.
QPixmap XmapHeader::Render(int channel, qreal ratio) const {
  const QRect section(QPoint(0, 0), SectionRect(channel).size());
  QPixmap pixmap((QSizeF(section.size()) * ratio).toSize());
  pixmap.setDevicePixelRatio(ratio);
  QPainter painter(&pixmap);
  painter.setFont(metrics_.font);
  DrawChannel(painter, section, channel, ColoursOf(channel));
  if (matches_.test(static_cast<std::size_t>(channel))) {
    painter.fillRect(MatchBar(section), kMatchInk);
  }
  return pixmap;
}

const QPixmap& XmapHeader::PlainPixmap(int channel, qreal ratio) {
  if (ratio != plainRatio_) plain_.clear();
  plainRatio_ = ratio;
  plain_.resize(static_cast<std::size_t>(grid_.ChannelCount()));
  QPixmap& pixmap = plain_[static_cast<std::size_t>(channel - 1)];
  if (pixmap.isNull()) pixmap = Render(channel, ratio);
  return pixmap;
}

void XmapHeader::DrawCell(QPainter& painter, const QRect& cell, const QColor& ground) const {
  painter.fillRect(cell, ground);
  const QColor line = HeaderLine(ground);
  const DeviceLines lines(painter.deviceTransform());
  const double right = cell.x() + cell.width();
  const double bottom = cell.y() + cell.height();
  painter.fillRect(lines.RightEdge(right, cell.y(), bottom), line);
  painter.fillRect(lines.BottomEdge(bottom, cell.x(), right), line);
}

void XmapHeader::paintEvent(QPaintEvent* event) {
  QPainter painter(viewport());
  const qreal ratio = viewport()->devicePixelRatioF();
  const QRect dirty = event->rect();
  const int size = defaultSectionSize();
  const bool columns = orientation() == Qt::Horizontal;
  const int from = columns ? dirty.left() : dirty.top();
  const int to = columns ? dirty.right() : dirty.bottom();
  const int first = std::max(1, (from + offset()) / size + 1);
  const int last = std::min(grid_.ChannelCount(), (to + offset()) / size + 1);
  for (int channel = first; channel <= last; ++channel) {
    painter.drawPixmap(SectionRect(channel).topLeft(),
                       IsPlain(channel) ? PlainPixmap(channel, ratio) : Render(channel, ratio));
  }
  const int end = grid_.ChannelCount() * size - offset();
  const QRect rest = columns ? QRect(end, 0, viewport()->width() - end, viewport()->height())
                             : QRect(0, end, viewport()->width(), viewport()->height() - end);
  if (rest.isValid()) painter.fillRect(rest & dirty, palette().color(QPalette::Button));
}

void XmapHeader::changeEvent(QEvent* event) {
  if (event->type() == QEvent::PaletteChange || event->type() == QEvent::FontChange) {
    LabelsChanged();
  }
  QHeaderView::changeEvent(event);
}

void XmapHeader::mousePressEvent(QMouseEvent* event) {
  const int channel = ChannelAt(event->position().toPoint());
  if (channel >= 1 && event->button() == Qt::LeftButton) Q_EMIT ChannelPressed(channel);
}

void XmapHeader::contextMenuEvent(QContextMenuEvent* event) {
  event->accept();
  const int channel = ChannelAt(event->pos());
  if (channel >= 1) Q_EMIT MenuRequested(channel, event->globalPos());
}

void XmapHeader::mouseMoveEvent(QMouseEvent* event) {
  Q_EMIT ChannelHovered(ChannelAt(event->position().toPoint()));
}

void XmapHeader::mouseReleaseEvent(QMouseEvent* event) { event->accept(); }

void XmapHeader::mouseDoubleClickEvent(QMouseEvent* event) { mousePressEvent(event); }

bool XmapHeader::viewportEvent(QEvent* event) {
  if (event->type() == QEvent::Leave) Q_EMIT ChannelHovered(0);
  if (event->type() == QEvent::ToolTip) {
    const auto* const help = static_cast<QHelpEvent*>(event);
    const int channel = ChannelAt(help->pos());
    const QString tip = model()->headerData(channel - 1, orientation(), Qt::ToolTipRole).toString();
    QToolTip::showText(help->globalPos(), PlainTip(tip), viewport(), SectionRect(channel));
    return true;
  }
  return QHeaderView::viewportEvent(event);
}

void XmapRowHeader::DrawChannel(QPainter& painter, const QRect& section, int channel,
                                const Colours& colours) const {
  const QRect label(section.left(), section.top(), Metrics().labelWidth, section.height());
  const QRect number(label.right() + 1, section.top(), Metrics().cellWidth, section.height());
  DrawCell(painter, label, colours.ground);
  DrawCell(painter, number, colours.ground);
  painter.setPen(colours.ink);
  const QString text = QString::fromStdString(Grid().CellText(channel + 1, 0));
  QRect inner = label.adjusted(kLabelMargin, 0, -2, -1);
  if (const QVariant lock = model()->headerData(channel - 1, Qt::Vertical, XmapModel::LockRole);
      lock.isValid()) {
    const double width = label.height() * kLockWidth;
    const double height = label.height() * kLockHeight;
    const QRectF box(label.right() - 1 - width, label.center().y() - height / 2, width, height);
    DrawLock(painter, box, colours.ink,
             lock.toInt() == static_cast<int>(model::Locks::Against::ConsoleAndPanels));
    inner.setRight(static_cast<int>(box.left()) - 1);
  }
  painter.drawText(inner, Qt::AlignLeft | Qt::AlignVCenter | Qt::TextSingleLine,
                   painter.fontMetrics().elidedText(text, Qt::ElideRight, inner.width()));
  painter.drawText(number.adjusted(0, 0, -1, -1), Qt::AlignCenter | Qt::TextSingleLine,
                   QString::fromStdString(Grid().CellText(channel + 1, 1)));
}

QRect XmapRowHeader::MatchBar(const QRect& section) const {
  return QRect(section.right() - kBarWidth + 1, section.top(), kBarWidth, section.height() - 1);
}

void XmapColumnHeader::DrawChannel(QPainter& painter, const QRect& section, int channel,
                                   const Colours& colours) const {
  const QRect label(section.left(), section.top(), section.width(), Metrics().labelHeight);
  const QRect number(section.left(), label.bottom() + 1, section.width(), Metrics().cellHeight);
  DrawCell(painter, label, colours.ground);
  DrawCell(painter, number, colours.ground);
  painter.setPen(colours.ink);
  // The spaces of wide columns are dropped: every letter is centred here.
  const QStringList letters = QString::fromStdString(Grid().CellText(0, channel + 1))
                                  .split(QChar::CarriageReturn, Qt::SkipEmptyParts);
  if (!letters.isEmpty()) {
    const double pitch = LetterPitch(painter.fontMetrics().lineSpacing(), label.height() - 2,
                                     static_cast<int>(letters.size()));
    double top = label.top() + 1;
    for (const QString& letter : letters) {
      painter.drawText(QRectF(label.left(), top, label.width() - 1, pitch),
                       Qt::AlignCenter | Qt::TextDontClip | Qt::TextSingleLine, letter.trimmed());
      top += pitch;
    }
  }
  painter.drawText(number.adjusted(0, 0, -1, -1), Qt::AlignCenter | Qt::TextSingleLine,
                   QString::fromStdString(Grid().CellText(1, channel + 1)));
}

QRect XmapColumnHeader::MatchBar(const QRect& section) const {
  return QRect(section.left(), section.bottom() - kBarWidth + 1, section.width() - 1, kBarWidth);
}

}  // namespace views
