// SPDX-License-Identifier: MIT

#include "views/window_place/area_place.h"

#include <QMdiArea>
#include <QMdiSubWindow>
#include <QScrollBar>

namespace views {
namespace {

QPoint ScrolledBy(const QWidget& window) {
  const auto* const child = qobject_cast<const QMdiSubWindow*>(&window);
  const QMdiArea* const area = child == nullptr ? nullptr : child->mdiArea();
  if (area == nullptr) return {};
  return {area->horizontalScrollBar()->value(), area->verticalScrollBar()->value()};
}

}  // namespace

QRect PlaceInArea(const QWidget& window) {
  return window.geometry().translated(ScrolledBy(window));
}

void PutInArea(QWidget& window, const QRect& place) {
  window.setGeometry(place.translated(-ScrolledBy(window)));
}

}  // namespace views
