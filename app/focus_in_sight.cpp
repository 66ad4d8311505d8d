// SPDX-License-Identifier: MIT

#include "app/focus_in_sight.h"

#include <QAbstractItemView>
#include <QApplication>
#include <QItemSelectionModel>
#include <QMdiSubWindow>
#include <QScrollBar>
#include <QStyle>
#include <algorithm>

namespace app {
namespace {

// How far to move so that `low` to `high` lies within 0 to `room`; its beginning comes first.
int Way(int low, int high, int room) {
  if (low < 0) return low;
  return high > room ? std::min(low, high - room) : 0;
}

// The child window that the widget stands in.
QMdiSubWindow* WindowOf(QWidget* widget) {
  while (widget != nullptr && qobject_cast<QMdiSubWindow*>(widget) == nullptr) {
    widget = widget->parentWidget();
  }
  return static_cast<QMdiSubWindow*>(widget);
}

}  // namespace

FocusInSight::FocusInSight(QMdiArea& area, QObject* parent) : QObject(parent), area_(area) {
  connect(qApp, &QApplication::focusChanged, this,
          [this](QWidget* /*from*/, QWidget* to) { Follow(to); });
}

void FocusInSight::Follow(QWidget* focus) {
  disconnect(cells_);
  if (focus == nullptr || !area_.isAncestorOf(focus)) return;
  // Once the grid has scrolled for itself.
  if (const auto* const grid = qobject_cast<QAbstractItemView*>(focus); grid != nullptr) {
    cells_ = connect(grid->selectionModel(), &QItemSelectionModel::currentChanged, this,
                     &FocusInSight::ShowFocus, Qt::QueuedConnection);
  }
  // It merely comes back, from another program or a box: what the user looked at stays.
  if (focus == focus_) return;
  focus_ = focus;
  // The window that comes up shows where its title begins.
  QMdiSubWindow* const window = WindowOf(focus);
  if (window != window_ && window != nullptr) {
    const int height = window->style()->pixelMetric(QStyle::PM_TitleBarHeight, nullptr, window);
    Show(*window, QRect(0, 0, height, height));
  }
  window_ = window;
  ShowFocus();
}

void FocusInSight::ShowFocus() {
  if (focus_ == nullptr) return;
  const auto* const grid = qobject_cast<QAbstractItemView*>(focus_.data());
  if (grid == nullptr) {
    Show(*focus_, focus_->rect());
  } else if (grid->currentIndex().isValid()) {
    Show(*grid->viewport(), grid->visualRect(grid->currentIndex()));
  }
}

void FocusInSight::Show(const QWidget& widget, const QRect& part) {
  if (QApplication::mouseButtons() != Qt::NoButton) return;
  const QRect there(widget.mapTo(area_.viewport(), part.topLeft()), part.size());
  const QSize room = area_.viewport()->size();
  QScrollBar& across = *area_.horizontalScrollBar();
  QScrollBar& down = *area_.verticalScrollBar();
  across.setValue(across.value() + Way(there.left(), there.right() + 1, room.width()));
  down.setValue(down.value() + Way(there.top(), there.bottom() + 1, room.height()));
}

}  // namespace app
