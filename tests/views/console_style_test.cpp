// SPDX-License-Identifier: MIT

#include "views/console_style.h"

#include <gtest/gtest.h>

#include <QAction>
#include <QApplication>
#include <QMainWindow>
#include <QMdiArea>
#include <QMdiSubWindow>
#include <QToolBar>

namespace views {
namespace {

// What a child window's title bar, tool bar and frame take of its height.
TEST(ConsoleStyle, ChildWindowKeepsItsFurnitureWithin52Pixels) {
  QMainWindow window;
  auto* const area = new QMdiArea;
  window.setCentralWidget(area);
  auto* const form = new QWidget;
  auto* const bar = new QToolBar(form);
  bar->setToolButtonStyle(Qt::ToolButtonTextBesideIcon);
  bar->setIconSize(QSize(16, 16));
  QPixmap pixmap(16, 16);
  pixmap.fill(Qt::red);
  bar->addAction(QIcon(pixmap), QStringLiteral("&Take Pgm"));
  QMdiSubWindow* const child = area->addSubWindow(form);
  window.show();
  child->show();
  child->resize(400, 300);
  EXPECT_LE(300 - form->height() + bar->sizeHint().height(), 52);
  EXPECT_LE(400 - form->width(), 5);
}

TEST(ConsoleStyle, MainWindowKeepsItsToolBarMargins) {
  QMainWindow window;
  QToolBar* const bar = window.addToolBar(QStringLiteral("Main"));
  const QStyle* const style = QApplication::style();
  const auto* const base = qobject_cast<const QProxyStyle*>(style)->baseStyle();
  for (const auto metric : {QStyle::PM_ToolBarFrameWidth, QStyle::PM_ToolBarItemMargin,
                            QStyle::PM_ToolBarItemSpacing}) {
    EXPECT_EQ(style->pixelMetric(metric, nullptr, bar), base->pixelMetric(metric, nullptr, bar));
  }
}

TEST(ConsoleStyle, AClickBesideTheHandleOfASliderIsAPage) {
  const QStyle* const style = QApplication::style();
  EXPECT_EQ(style->styleHint(QStyle::SH_Slider_PageSetButtons), Qt::LeftButton);
  EXPECT_EQ(style->styleHint(QStyle::SH_Slider_AbsoluteSetButtons), Qt::NoButton);
}

}  // namespace
}  // namespace views
