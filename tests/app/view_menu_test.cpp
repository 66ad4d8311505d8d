// SPDX-License-Identifier: MIT

#include "app/view_menu.h"

#include <gtest/gtest.h>

#include <QAction>

#include "tests/views/mnemonics.h"
#include "tests/views/view_console.h"

namespace app {
namespace {

class ViewMenuTest : public testing::Test {
 protected:
  QAction& Item(const char* name) {
    auto* const item = menu_.findChild<QAction*>(QLatin1String(name));
    if (item == nullptr) throw std::runtime_error(name);
    return *item;
  }

  test::ViewConsole console_{8};
  OpenViews views_{*console_.area, console_.Services()};
  QMenu menu_;
  int logsShown_ = 0;
  ViewMenu viewMenu_{menu_, views_, *console_.window, [this] { ++logsShown_; }};
};

TEST_F(ViewMenuTest, EveryItemHasAMnemonicOfItsOwn) {
  EXPECT_EQ(menu_.actions().size(), 8 + 2);  // and its separators
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

TEST_F(ViewMenuTest, TheLogAndTheFullScreenAreThereAlways) {
  Item("aidEventLog").trigger();
  EXPECT_EQ(logsShown_, 1);
  Item("aidFullScreen").trigger();
  EXPECT_TRUE(console_.window->isFullScreen());
  Item("aidFullScreen").trigger();
  EXPECT_FALSE(console_.window->isFullScreen());
}

}  // namespace
}  // namespace app
