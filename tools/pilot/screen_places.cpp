// SPDX-License-Identifier: MIT

#include "tools/pilot/screen_places.h"

#include <QAbstractButton>
#include <QAbstractItemView>
#include <QAction>
#include <QApplication>
#include <QDialogButtonBox>
#include <QMenu>
#include <QMenuBar>
#include <QStyle>
#include <QStyleOptionViewItem>
#include <QTabBar>
#include <QToolButton>
#include <QWidget>
#include <QWindow>

namespace pilot {
namespace {

// A part of a widget, in its own coordinates.
struct Part {
  QWidget* widget = nullptr;
  QRect rect = {};
};

std::optional<Part> PartOfAction(const QAction& action) {
  for (QObject* const object : action.associatedObjects()) {
    auto* const widget = qobject_cast<QWidget*>(object);
    if (widget == nullptr || !widget->isVisible()) continue;
    if (auto* const menu = qobject_cast<QMenu*>(widget)) {
      return Part{menu, menu->actionGeometry(const_cast<QAction*>(&action))};
    }
    if (auto* const bar = qobject_cast<QMenuBar*>(widget)) {
      return Part{bar, bar->actionGeometry(const_cast<QAction*>(&action))};
    }
    if (auto* const button = qobject_cast<QToolButton*>(widget))
      return Part{button, button->rect()};
  }
  return std::nullopt;
}

// The box of a cell that can be ticked stands at its left.
QRect CheckBoxIn(const QAbstractItemView& list, QRect cell) {
  const int margin = list.style()->pixelMetric(QStyle::PM_FocusFrameHMargin, nullptr, &list) + 1;
  const int side = list.style()->pixelMetric(QStyle::PM_IndicatorWidth, nullptr, &list);
  return {cell.left() + margin, cell.center().y() - side / 2, side, side};
}

std::optional<Part> PartOf(QObject& object, const QJsonObject& request) {
  if (auto* const menu = qobject_cast<QMenu*>(&object); menu != nullptr && !menu->isVisible()) {
    return PartOfAction(*menu->menuAction());
  }
  if (const auto* const action = qobject_cast<QAction*>(&object)) return PartOfAction(*action);
  auto* const widget = qobject_cast<QWidget*>(&object);
  if (widget == nullptr || !widget->isVisible()) return std::nullopt;
  if (auto* const list = qobject_cast<QAbstractItemView*>(widget);
      list != nullptr && request.contains(QLatin1String("row"))) {
    const QRect cell = list->visualRect(
        list->model()->index(request.value(QLatin1String("row")).toInt(),
                             request.value(QLatin1String("column")).toInt(), list->rootIndex()));
    if (cell.isEmpty()) return std::nullopt;
    const bool wantsBox = request.value(QLatin1String("check")).toBool();
    return Part{list->viewport(), wantsBox ? CheckBoxIn(*list, cell) : cell};
  }
  if (auto* const tabs = qobject_cast<QTabBar*>(widget);
      tabs != nullptr && request.contains(QLatin1String("tab"))) {
    return Part{tabs, tabs->tabRect(request.value(QLatin1String("tab")).toInt())};
  }
  if (auto* const box = qobject_cast<QDialogButtonBox*>(widget);
      box != nullptr && request.value(QLatin1String("accept")).toBool()) {
    for (QAbstractButton* const button : box->buttons()) {
      if (box->buttonRole(button) == QDialogButtonBox::AcceptRole) {
        return Part{button, button->rect()};
      }
    }
    return std::nullopt;
  }
  return Part{widget, widget->rect()};
}

QRect InPixels(const QRect& rect, qreal ratio) {
  return QRectF(rect.x() * ratio, rect.y() * ratio, rect.width() * ratio, rect.height() * ratio)
      .toRect();
}

}  // namespace

std::optional<QRect> PlaceOnScreen(QObject& object, const QJsonObject& request) {
  const std::optional<Part> part = PartOf(object, request);
  if (!part) return std::nullopt;
  // As much as its scroll areas show of it.
  const QRect shown = part->rect & part->widget->visibleRegion().boundingRect();
  if (!shown.contains(part->rect.center())) return std::nullopt;
  const QRect place(part->widget->mapToGlobal(shown.topLeft()), shown.size());
  const QWidget* const there = QApplication::widgetAt(place.center());
  if (there != part->widget && !part->widget->isAncestorOf(there)) return std::nullopt;
  return InPixels(place, part->widget->devicePixelRatio());
}

// A widget keeps the frame that it asked for when it was shown, and a window manager may not have
// made it by then: the window itself asks again.
QRect FrameOnScreen(const QWidget& window) {
  const QWindow* const handle = window.windowHandle();
  return handle == nullptr ? QRect() : InPixels(handle->frameGeometry(), window.devicePixelRatio());
}

QJsonObject KeyboardFocus() {
  const auto name = [](const QObject* object) {
    return object == nullptr ? QString() : object->objectName();
  };
  return {{QStringLiteral("widget"), name(QApplication::focusWidget())},
          {QStringLiteral("window"), name(QApplication::activeWindow())},
          {QStringLiteral("popup"), name(QApplication::activePopupWidget())}};
}

}  // namespace pilot
