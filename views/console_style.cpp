// SPDX-License-Identifier: MIT

#include "views/console_style.h"

#include <QMainWindow>
#include <QToolBar>

#include <algorithm>

#include "views/programming/target_boxes.h"

namespace views {
namespace {

constexpr int kFrameWidth = 2;
constexpr int kTitleHeight = 24;
constexpr int kToolNarrowing = 4;
constexpr int kBoxSpacing = 3;

// Whether the widget is or belongs to a tool bar of a child window, not of the main window.
bool InChildToolBar(const QWidget* widget) {
  const auto* const bar = qobject_cast<const QToolBar*>(widget);
  return bar != nullptr && qobject_cast<const QMainWindow*>(bar->parentWidget()) == nullptr;
}

}  // namespace

int ConsoleStyle::pixelMetric(PixelMetric metric, const QStyleOption* option,
                              const QWidget* widget) const {
  switch (metric) {
    case PM_MdiSubWindowFrameWidth:
      return kFrameWidth;
    case PM_TitleBarHeight:
      return std::min(kTitleHeight, QProxyStyle::pixelMetric(metric, option, widget));
    case PM_ToolBarFrameWidth:
    case PM_ToolBarItemMargin:
    case PM_ToolBarItemSpacing:
      if (InChildToolBar(widget)) return 0;
      break;
    case PM_CheckBoxLabelSpacing:
      if (widget != nullptr &&
          qobject_cast<const TargetBoxes*>(widget->parentWidget()) != nullptr) {
        return kBoxSpacing;
      }
      break;
    default:
      break;
  }
  return QProxyStyle::pixelMetric(metric, option, widget);
}

QSize ConsoleStyle::sizeFromContents(ContentsType type, const QStyleOption* option,
                                     const QSize& contents, const QWidget* widget) const {
  QSize size = QProxyStyle::sizeFromContents(type, option, contents, widget);
  if (type == CT_ToolButton && widget != nullptr && InChildToolBar(widget->parentWidget())) {
    size.rwidth() -= kToolNarrowing;
  }
  return size;
}

int ConsoleStyle::styleHint(StyleHint hint, const QStyleOption* option, const QWidget* widget,
                            QStyleHintReturn* returned) const {
  if (hint == SH_Slider_AbsoluteSetButtons) return Qt::NoButton;
  if (hint == SH_Slider_PageSetButtons) return Qt::LeftButton;
  return QProxyStyle::styleHint(hint, option, widget, returned);
}

}  // namespace views
