// SPDX-License-Identifier: MIT

#include "tests/views/view_console.h"

#include <gtest/gtest.h>

#include <QAction>
#include <QTest>
#include <QToolBar>

namespace test {

ViewConsole::ViewConsole(int channels) : Stage(channels) {
  if (!port.Open(1).ok()) throw std::runtime_error("the fake port does not open");
}

views::Services ViewConsole::Services() {
  return {.model = model,
          .stations = [this] { return Stations(); },
          .changes = changes,
          .locks = locks,
          .knownMap = knownMap,
          .commands = commands,
          .tables = tables,
          .unsent = unsent,
          .poll = tables,
          .settings = *settings,
          .reporter = reporter};
}

void ViewConsole::ClickTool(const char* id) {
  auto* const bar = subWindow->findChild<QToolBar*>();
  auto* const action = subWindow->findChild<QAction*>(QString::fromLatin1(id));
  ASSERT_NE(action, nullptr) << id;
  QWidget* const button = bar->widgetForAction(action);
  ASSERT_NE(button, nullptr) << id;
  ASSERT_TRUE(button->isVisible()) << id << " is behind the overflow button";
  QTest::mouseClick(button, Qt::LeftButton);
}

}  // namespace test
