// SPDX-License-Identifier: MIT

#include "app/shell/focus_in_sight.h"

#include <QAbstractItemView>
#include <QApplication>
#include <QItemSelectionModel>
#include <QMdiSubWindow>
#include <QStyle>

#include "app/shell/in_sight.h"

namespace app {
namespace {

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
  if (QApplication::mouseButtons() == Qt::NoButton) BringInSight(area_, widget, part);
}

}  // namespace app
