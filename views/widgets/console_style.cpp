// SPDX-License-Identifier: MIT

#include "views/widgets/console_style.h"

#include <QAbstractItemView>
#include <QCheckBox>
#include <QMainWindow>
#include <QPainter>
#include <QStyleOption>
#include <QTabBar>
#include <QToolBar>

#include <algorithm>

#include "views/widgets/contrast.h"

namespace views {
namespace {

constexpr int kFrameWidth = 2;
constexpr int kTitleHeight = 24;
constexpr int kToolNarrowing = 4;
constexpr int kCloseSpacing = 3;
constexpr char kCloseCaption[] = "closeCaption";

constexpr double kBoxLine = 0.55;          // of the ink
constexpr double kDisabledBoxLine = 0.25;  // of the ink
constexpr double kFocusRadius = 2;
constexpr double kDarkFrame = 0.4;  // of the ink
constexpr double kFrameRadius = 2;
constexpr int kSelectedTabLine = 2;
constexpr double kDarkGridLine = 0.25;  // of the ink

constexpr double kLeastPlaceholderContrast = 3;
constexpr double kLeastTitleContrast = 3;
constexpr int kDarkening = 115;                 // per cent
constexpr double kInactiveTitle = 0.45;         // of the ink
constexpr QColor kTipGround(0xFF, 0xFF, 0xDC);  // where the desktop's own is dark
constexpr QColor kTipInk(0x00, 0x00, 0x00);

constexpr double kPlaceholderShare = 0.6;  // of the ink, where the desktop's own cannot be read

// Whether the widget is or belongs to a tool bar of a child window, not of the main window.
bool InChildToolBar(const QWidget* widget) {
  const auto* const bar = qobject_cast<const QToolBar*>(widget);
  return bar != nullptr && qobject_cast<const QMainWindow*>(bar->parentWidget()) == nullptr;
}

// The line of the box or of the ring that Fusion draws into `rect`, on whole pixels.
QRectF LineOf(const QRect& rect) { return QRectF(rect).adjusted(0.5, 0.5, -0.5, -0.5); }

void DrawBoxLine(bool isRound, const QStyleOption& option, QPainter& painter) {
  QColor ink = option.palette.color(QPalette::WindowText);
  ink.setAlphaF(static_cast<float>(
      option.state.testFlag(QStyle::State_Enabled) ? kBoxLine : kDisabledBoxLine));
  painter.save();
  painter.setPen(QPen(ink, 1));
  painter.setBrush(Qt::NoBrush);
  if (isRound) {
    painter.setRenderHint(QPainter::Antialiasing);
    // Where Fusion has its ring.
    const int width = option.rect.width();
    const double radius = (width + (width + 1) % 2) / 2.0 - 1;
    painter.drawEllipse(QPointF(option.rect.center() + QPoint(1, 1)), radius, radius);
  } else {
    painter.drawRect(LineOf(option.rect));
  }
  painter.restore();
}

void DrawFocusLine(const QStyleOption& option, QPainter& painter) {
  painter.save();
  painter.setRenderHint(QPainter::Antialiasing);
  painter.setPen(QPen(option.palette.color(QPalette::Highlight), 1));
  painter.setBrush(Qt::NoBrush);
  painter.drawRoundedRect(LineOf(option.rect), kFocusRadius, kFocusRadius);
  painter.restore();
}

// The frame of a field, a list or a button.  Fusion makes it, as that of the handle of a scroll
// bar, darker than the window, which on a dark one cannot be seen.
bool IsFrameLost(QStyle::PrimitiveElement element, const QStyleOption& option) {
  if (!IsDark(option.palette.color(QPalette::Window))) return false;
  if (element == QStyle::PE_Frame) return true;
  // What can only be read looks like no field.
  if (element == QStyle::PE_FrameLineEdit) {
    return (option.state & (QStyle::State_HasFocus | QStyle::State_ReadOnly)) == 0;
  }
  if (element != QStyle::PE_PanelButtonCommand) return false;
  // Fusion frames the one that Enter presses by itself.
  const auto* const button = qstyleoption_cast<const QStyleOptionButton*>(&option);
  return button == nullptr || !button->features.testAnyFlags(
                                  {QStyleOptionButton::DefaultButton, QStyleOptionButton::Flat});
}

void DrawLostFrame(const QRect& rect, double radius, const QStyleOption& option,
                   QPainter& painter) {
  const double share = option.state.testFlag(QStyle::State_Enabled) ? kDarkFrame : kDarkFrame / 2;
  painter.save();
  painter.setRenderHint(QPainter::Antialiasing);
  painter.setPen(QPen(Blend(option.palette.color(QPalette::WindowText),
                            option.palette.color(QPalette::Window), share),
                      1));
  painter.setBrush(Qt::NoBrush);
  painter.drawRoundedRect(LineOf(rect), radius, radius);
  painter.restore();
}

// Fusion makes the selected tab lighter than the others; what is black stays black.
bool IsSelectedTabLost(const QStyleOption& option) {
  const auto* const tab = qstyleoption_cast<const QStyleOptionTab*>(&option);
  return tab != nullptr && tab->shape == QTabBar::RoundedNorth &&
         tab->state.testFlag(QStyle::State_Selected) &&
         IsDark(option.palette.color(QPalette::Window));
}

void DrawSelectedTab(const QStyleOption& option, QPainter& painter) {
  QRect line = option.rect.adjusted(1, 0, -1, 0);
  line.setHeight(kSelectedTabLine);
  painter.fillRect(line, option.palette.color(QPalette::Highlight));
}

void KeepPlaceholderReadable(QPalette::ColorGroup group, QPalette& palette) {
  const QColor ground = palette.color(group, QPalette::Base);
  const QColor placeholder = palette.color(group, QPalette::PlaceholderText);
  if (Contrast(Blend(placeholder, ground, placeholder.alphaF()), ground) >=
      kLeastPlaceholderContrast) {
    return;
  }
  QColor ink = palette.color(group, QPalette::Text);
  ink.setAlphaF(static_cast<float>(kPlaceholderShare));
  palette.setColor(group, QPalette::PlaceholderText, ink);
}

void KeepTipsLight(QPalette::ColorGroup group, QPalette& palette) {
  if (!IsDark(palette.color(group, QPalette::ToolTipBase))) return;
  palette.setColor(group, QPalette::ToolTipBase, kTipGround);
  palette.setColor(group, QPalette::ToolTipText, kTipInk);
}

// Fusion writes the title of the active child window in white on the highlight, and the others' in
// black on the colour of the window, whatever these are.
void KeepTitleReadable(bool isActive, QPalette& palette) {
  if (isActive) {
    QColor ground = palette.color(QPalette::Highlight);
    while (Contrast(Qt::white, ground) < kLeastTitleContrast) ground = ground.darker(kDarkening);
    palette.setColor(QPalette::Highlight, ground);
  } else if (const QColor ground = palette.color(QPalette::Window); IsDark(ground)) {
    palette.setColor(QPalette::Window,
                     Blend(palette.color(QPalette::WindowText), ground, kInactiveTitle));
  }
}

}  // namespace

void ConsoleStyle::SetCaptionClose(QCheckBox& box) { box.setProperty(kCloseCaption, true); }

bool ConsoleStyle::IsOverFusion() const {
  return baseStyle()->name().compare(QLatin1String("fusion"), Qt::CaseInsensitive) == 0;
}

void ConsoleStyle::polish(QPalette& palette) {
  QProxyStyle::polish(palette);
  for (const auto group : {QPalette::Active, QPalette::Inactive}) {
    KeepPlaceholderReadable(group, palette);
    KeepTipsLight(group, palette);
  }
}

void ConsoleStyle::drawPrimitive(PrimitiveElement element, const QStyleOption* option,
                                 QPainter* painter, const QWidget* widget) const {
  QProxyStyle::drawPrimitive(element, option, painter, widget);
  if (!IsOverFusion()) return;
  if (IsFrameLost(element, *option)) {
    DrawLostFrame(option->rect, element == PE_Frame ? 0 : kFrameRadius, *option, *painter);
  }
  const bool showsFocus = option->state.testFlag(State_KeyboardFocusChange);
  switch (element) {
    case PE_FrameFocusRect:
      // Cells show where they are by themselves.
      if (showsFocus && qobject_cast<const QAbstractItemView*>(widget) == nullptr) {
        DrawFocusLine(*option, *painter);
      }
      break;
    case PE_IndicatorCheckBox:
    case PE_IndicatorRadioButton:
      // With the focus, Fusion draws a line of its own.
      if (showsFocus && option->state.testFlag(State_HasFocus)) break;
      DrawBoxLine(element == PE_IndicatorRadioButton, *option, *painter);
      break;
    default:
      break;
  }
}

void ConsoleStyle::drawControl(ControlElement element, const QStyleOption* option,
                               QPainter* painter, const QWidget* widget) const {
  const auto* const item = qstyleoption_cast<const QStyleOptionMenuItem*>(option);
  if (element != CE_MenuItem || item == nullptr || item->icon.isNull() ||
      !item->state.testFlag(State_Selected) || !item->state.testFlag(State_Enabled)) {
    QProxyStyle::drawControl(element, option, painter, widget);
    if (element == CE_TabBarTabShape && IsOverFusion() && IsSelectedTabLost(*option)) {
      DrawSelectedTab(*option, *painter);
    }
    return;
  }
  const int size = proxy()->pixelMetric(PM_SmallIconSize, option, widget);
  QStyleOptionMenuItem lit = *item;
  lit.icon = QIcon(item->icon.pixmap(QSize(size, size), painter->device()->devicePixelRatioF(),
                                     QIcon::Selected));
  QProxyStyle::drawControl(element, &lit, painter, widget);
}

void ConsoleStyle::drawComplexControl(ComplexControl control, const QStyleOptionComplex* option,
                                      QPainter* painter, const QWidget* widget) const {
  const auto* const title = qstyleoption_cast<const QStyleOptionTitleBar*>(option);
  if (control != CC_TitleBar || title == nullptr || !IsOverFusion()) {
    QProxyStyle::drawComplexControl(control, option, painter, widget);
    const auto* const bar = qstyleoption_cast<const QStyleOptionSlider*>(option);
    if (control == CC_ScrollBar && bar != nullptr && bar->maximum > bar->minimum &&
        IsOverFusion() && IsDark(option->palette.color(QPalette::Window))) {
      const QRect handle = proxy()->subControlRect(control, option, SC_ScrollBarSlider, widget);
      DrawLostFrame(handle, 0, *option, *painter);
    }
    return;
  }
  QStyleOptionTitleBar readable = *title;
  KeepTitleReadable(title->titleBarState & State_Active, readable.palette);
  QProxyStyle::drawComplexControl(control, &readable, painter, widget);
}

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
      if (widget != nullptr && widget->property(kCloseCaption).toBool()) return kCloseSpacing;
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
  if (hint == SH_DialogButtonBox_ButtonsHaveIcons) return 0;
  if (hint == SH_Table_GridLineColor && option != nullptr && IsOverFusion() &&
      IsDark(option->palette.color(QPalette::Base))) {
    return static_cast<int>(Blend(option->palette.color(QPalette::Text),
                                  option->palette.color(QPalette::Base), kDarkGridLine)
                                .rgb());
  }
  return QProxyStyle::styleHint(hint, option, widget, returned);
}

}  // namespace views
