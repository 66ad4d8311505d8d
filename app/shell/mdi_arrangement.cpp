// SPDX-License-Identifier: MIT

#include "app/shell/mdi_arrangement.h"

#include <QList>
#include <QMdiSubWindow>
#include <QScrollBar>
#include <QStyle>
#include <QStyleOptionTitleBar>
#include <algorithm>

namespace app {

namespace {

QList<QMdiSubWindow*> Windows(const QMdiArea& area, QMdiArea::WindowOrder order, bool minimized) {
  QList<QMdiSubWindow*> windows;
  for (QMdiSubWindow* const window : area.subWindowList(order)) {
    if (window->isVisible() && window->isMinimized() == minimized) windows.append(window);
  }
  return windows;
}

// Moves a window, taking it out of its maximised state first.
void Place(QMdiSubWindow& window, const QRect& geometry) {
  if (window.isMaximized()) window.showNormal();
  window.setGeometry(geometry);
}

// The room that arranged windows share: scroll bars that show now will be gone then.
QSize Room(const QMdiArea& area) { return area.contentsRect().size(); }

// Windows are arranged from the corner of the area, not of what is seen of it.
void ScrollToCorner(const QMdiArea& area) {
  area.horizontalScrollBar()->setValue(0);
  area.verticalScrollBar()->setValue(0);
}

// How long a window may be that begins at `start`: within the room if it is no longer than that.
int Fitting(int length, int start, int room) {
  return length > room ? length : std::min(length, room - start);
}

// Divides `length` into `count` parts that differ by one pixel at most.
int PartStart(int length, int count, int part) { return length * part / count; }

}  // namespace

void Cascade(QMdiArea& area) {
  ScrollToCorner(area);
  const QSize room = Room(area);
  QPoint corner(0, 0);
  for (QMdiSubWindow* const window : Windows(area, QMdiArea::StackingOrder, false)) {
    if (window->isMaximized()) window->showNormal();
    const QSize size(Fitting(window->width(), corner.x(), room.width()),
                     Fitting(window->height(), corner.y(), room.height()));
    window->setGeometry(QRect(corner, size.expandedTo(window->minimumSizeHint())));
    window->raise();
    const int step = window->style()->pixelMetric(QStyle::PM_TitleBarHeight, nullptr, window);
    corner += QPoint(step, step);
  }
}

void TileHorizontal(QMdiArea& area) {
  ScrollToCorner(area);
  const auto windows = Windows(area, QMdiArea::CreationOrder, false);
  const QSize size = Room(area);
  const int count = static_cast<int>(windows.size());
  for (int i = 0; i < count; ++i) {
    const int top = PartStart(size.height(), count, i);
    Place(*windows[i], QRect(0, top, size.width(), PartStart(size.height(), count, i + 1) - top));
  }
}

void TileVertical(QMdiArea& area) {
  ScrollToCorner(area);
  const auto windows = Windows(area, QMdiArea::CreationOrder, false);
  const QSize size = Room(area);
  const int count = static_cast<int>(windows.size());
  for (int i = 0; i < count; ++i) {
    const int left = PartStart(size.width(), count, i);
    Place(*windows[i], QRect(left, 0, PartStart(size.width(), count, i + 1) - left, size.height()));
  }
}

void ArrangeIcons(QMdiArea& area) {
  int left = 0;
  int bottom = area.viewport()->height();
  for (QMdiSubWindow* const window : Windows(area, QMdiArea::CreationOrder, true)) {
    if (left > 0 && left + window->width() > area.viewport()->width()) {
      left = 0;
      bottom -= window->height();
    }
    window->move(left, bottom - window->height());
    left += window->width();
  }
}

}  // namespace app
