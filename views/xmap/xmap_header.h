// SPDX-License-Identifier: MIT

#ifndef VIEWS_XMAP_XMAP_HEADER_H_
#define VIEWS_XMAP_XMAP_HEADER_H_

#include <QHeaderView>
#include <QPixmap>

#include <vector>

#include "views/rules/xmap_grid.h"
#include "views/xmap/xmap_look.h"

namespace views {

// One header of the crosspoint map: for each channel its label and its number.  It stays in sight
// while the map scrolls, and highlights the channels of the current cell, of the cell under the
// pointer, and those whose labels match a search.
class XmapHeader : public QHeaderView {
  Q_OBJECT

 public:
  // `grid` must outlive the header.
  XmapHeader(Qt::Orientation orientation, const rules::XmapGrid& grid, QWidget* parent = nullptr);

  void SetMetrics(const XmapMetrics& metrics);

  // The channel of the current cell and the one under the pointer, from 1; 0 for none.
  void SetCurrent(int channel);
  void SetHovered(int channel);

  // The channels whose labels match a search.
  void SetMatches(const rules::ChannelSet& matches);

  // Call after the labels have changed.
  void LabelsChanged();

  QSize sizeHint() const override;

 Q_SIGNALS:
  // A channel's label or number was clicked.
  void ChannelPressed(int channel);

  // The context menu of a channel was asked for.
  void MenuRequested(int channel, const QPoint& globalPosition);

  // The pointer moved onto a channel, or away (0).
  void ChannelHovered(int channel);

 protected:
  struct Colours {
    QColor ground;
    QColor ink;
  };

  // Draws the label and the number of a channel, lines and ground included.
  virtual void DrawChannel(QPainter& painter, const QRect& section, int channel,
                           const Colours& colours) const = 0;
  // The bar, at the side of the map, that marks a match.
  virtual QRect MatchBar(const QRect& section) const = 0;

  const rules::XmapGrid& Grid() const { return grid_; }
  const XmapMetrics& Metrics() const { return metrics_; }
  // Fills a header cell and draws its lines.
  void DrawCell(QPainter& painter, const QRect& cell, const QColor& ground) const;

  void paintEvent(QPaintEvent* event) override;
  void changeEvent(QEvent* event) override;
  void mousePressEvent(QMouseEvent* event) override;
  void mouseMoveEvent(QMouseEvent* event) override;
  void mouseReleaseEvent(QMouseEvent* event) override;
  void mouseDoubleClickEvent(QMouseEvent* event) override;
  void contextMenuEvent(QContextMenuEvent* event) override;
  bool viewportEvent(QEvent* event) override;

 private:
  // The channel at a point of the viewport, or 0.
  int ChannelAt(const QPoint& point) const;
  QRect SectionRect(int channel) const;
  void UpdateChannel(int channel);
  Colours ColoursOf(int channel) const;
  bool IsPlain(int channel) const;
  QPixmap Render(int channel, qreal ratio) const;
  const QPixmap& PlainPixmap(int channel, qreal ratio);

  const rules::XmapGrid& grid_;
  XmapMetrics metrics_;
  int current_ = 0;
  int hovered_ = 0;
  rules::ChannelSet matches_;
  std::vector<QPixmap> plain_;  // by channel - 1; null until it is drawn for the first time
  qreal plainRatio_ = 0;
};

// The outputs, left of the map: label, then number.
class XmapRowHeader : public XmapHeader {
  Q_OBJECT

 public:
  explicit XmapRowHeader(const rules::XmapGrid& grid, QWidget* parent = nullptr)
      : XmapHeader(Qt::Vertical, grid, parent) {}

 protected:
  void DrawChannel(QPainter& painter, const QRect& section, int channel,
                   const Colours& colours) const override;
  QRect MatchBar(const QRect& section) const override;
};

// The inputs, above the map: label with a letter a line, below it the number.
class XmapColumnHeader : public XmapHeader {
  Q_OBJECT

 public:
  explicit XmapColumnHeader(const rules::XmapGrid& grid, QWidget* parent = nullptr)
      : XmapHeader(Qt::Horizontal, grid, parent) {}

 protected:
  void DrawChannel(QPainter& painter, const QRect& section, int channel,
                   const Colours& colours) const override;
  QRect MatchBar(const QRect& section) const override;
};

}  // namespace views

#endif  // VIEWS_XMAP_XMAP_HEADER_H_
