// SPDX-License-Identifier: MIT

#include "app/shell/view_menu.h"

#include <gtest/gtest.h>

#include <QAction>
#include <QApplication>
#include <QSignalSpy>
#include <QTest>

#include "tests/views/gui_support.h"
#include "tests/views/mnemonics.h"
#include "tests/views/view_console.h"

namespace app {
namespace {

class ViewMenuTest : public testing::Test {
 protected:
  QAction& Item(const char* name) { return test::Find<QAction>(menu_, name); }

  test::ViewConsole console_{8};
  OpenViews views_{*console_.area, console_.Services()};
  QMenu menu_;
  ViewMenu viewMenu_{{.menu = menu_, .views = views_, .window = *console_.window}};
};

TEST_F(ViewMenuTest, EveryItemHasAMnemonicOfItsOwn) {
  EXPECT_EQ(menu_.actions().size(), 9 + 2);  // and its separators
  test::ExpectMnemonics(menu_);
}

TEST_F(ViewMenuTest, WhatIsOfTheMapNeedsTheMap) {
  constexpr const char* kOfTheMap[] = {"aidCrosshair", "aidZoomIn", "aidZoomOut",
                                       "aidZoomReset", "aidFind",   "aidGoTo"};
  for (const char* const name : kOfTheMap) EXPECT_FALSE(Item(name).isEnabled()) << name;
  views_.ShowXmap();
  QCoreApplication::sendPostedEvents();
  for (const char* const name : kOfTheMap) EXPECT_TRUE(Item(name).isEnabled()) << name;
}

TEST_F(ViewMenuTest, FindIsThatOfTheViewInWhichTheOperatorWorks) {
  const auto isOpen = [this](const char* view) {
    const auto* const form = console_.window->findChild<QWidget*>(QLatin1String(view));
    const auto* const field = form->findChild<QWidget*>(QStringLiteral("aidFindText"));
    return field != nullptr && field->isVisible();
  };
  console_.window->addAction(&Item("aidFind"));
  views_.ShowXmap();
  views_.ShowAlphas();
  views_.ShowButtons();
  EXPECT_TRUE(Item("aidFind").isEnabled());
  QTest::keyClick(QApplication::focusWidget(), Qt::Key_F, Qt::ControlModifier);
  EXPECT_EQ(QApplication::focusWidget()->objectName(), QStringLiteral("aidStation"));
  EXPECT_FALSE(isOpen("frmXmap"));
  EXPECT_FALSE(isOpen("frmAlphas"));
  EXPECT_EQ(console_.area->activeSubWindow()->widget()->objectName(), QStringLiteral("frmButtons"));

  views_.ShowAlphas();
  EXPECT_TRUE(Item("aidFind").isEnabled());
  Item("aidFind").trigger();
  EXPECT_TRUE(isOpen("frmAlphas"));
  EXPECT_FALSE(isOpen("frmXmap"));

  views_.ShowXmap();
  EXPECT_TRUE(Item("aidFind").isEnabled());
  Item("aidFind").trigger();
  EXPECT_TRUE(isOpen("frmXmap"));
  views_.CloseAll();
  EXPECT_FALSE(Item("aidFind").isEnabled());
}

TEST_F(ViewMenuTest, TheLogAndTheFullScreenAreThereAlways) {
  const QSignalSpy logRequested(&viewMenu_, &ViewMenu::EventLogRequested);
  Item("aidEventLog").trigger();
  EXPECT_EQ(logRequested.size(), 1);
  Item("aidFullScreen").trigger();
  EXPECT_TRUE(console_.window->isFullScreen());
  Item("aidFullScreen").trigger();
  EXPECT_FALSE(console_.window->isFullScreen());
}

}  // namespace
}  // namespace app
