// SPDX-License-Identifier: MIT
//
// The key for the manual works wherever the operator is, also where a dialog or a message box
// keeps out the keys of the main window.

#include <gtest/gtest.h>

#include <QApplication>
#include <QDialog>
#include <QTest>

#include "app/shell/help_window.h"
#include "app/shell/message_boxes.h"
#include "tests/app/views_fixture.h"

namespace app {
namespace {

class ManualKeyTest : public ViewsFixture {
 protected:
  ManualKeyTest() {
    commands_.Set(QStringLiteral("ID_Contents"),
                  [this] { places_.append(ManualPlace(QApplication::activeModalWidget())); });
    window_.show();
    window_.activateWindow();
    boxes_.ShowOver(&window_);
  }

  // Presses it in what is in front, once that is a window of this title.
  void PressIn(const char* title) {
    const auto isInFront = [title] {
      const QWidget* const active = QApplication::activeWindow();
      return active != nullptr && active->windowTitle() == QLatin1String(title);
    };
    ASSERT_TRUE(QTest::qWaitFor(isInFront)) << title;
    QTest::keyClick(QApplication::activeWindow(), Qt::Key_F1);
  }

  CommandTable commands_;
  MessageBoxes boxes_;
  MainWindow window_{commands_};
  OpenViews views_{window_.Area(), Services()};
  QStringList places_;  // of the manual, in the order in which they were asked for
};

TEST_F(ManualKeyTest, WorksInTheMainWindowAndInABoxOverIt) {
  PressIn("Orvo Intercom Control");
  boxes_.Show(model::ErrorReporter::Icon::Critical, "Comm Error", "text");
  PressIn("Comm Error");
  EXPECT_EQ(places_, QStringList({QString(), QStringLiteral("messages.html#comm")}));
}

TEST_F(ManualKeyTest, WorksInADialogAndInTheBoxesOverIt) {
  views_.ShowLevels();
  PressIn("Input Level Controls");
  boxes_.Show(model::ErrorReporter::Icon::Critical, "Serial Communications Error", "first");
  boxes_.Show(model::ErrorReporter::Icon::Critical, "Control Error", "second");
  PressIn("Serial Communications Error");
  QApplication::activeWindow()->close();
  PressIn("Control Error");
  EXPECT_EQ(places_,
            QStringList({QStringLiteral("levels.html#set"), QStringLiteral("messages.html#serial"),
                         QStringLiteral("messages.html#control")}));
}

}  // namespace
}  // namespace app
