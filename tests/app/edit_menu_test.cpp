// SPDX-License-Identifier: MIT

#include "app/shell/edit_menu.h"

#include <gtest/gtest.h>

#include <QApplication>
#include <QClipboard>
#include <QLineEdit>
#include <QMenuBar>
#include <QMimeData>
#include <QSignalSpy>
#include <QTableView>
#include <QTest>

#include "app/shell/view_menu.h"
#include "tests/views/gui_support.h"
#include "tests/views/mnemonics.h"
#include "tests/views/view_console.h"

namespace app {
namespace {

class EditMenuTest : public testing::Test {
 protected:
  void SetUp() override {
    QGuiApplication::clipboard()->clear();
    console_.window->resize(1000, 800);
    console_.window->show();
    console_.window->activateWindow();
    ASSERT_TRUE(QTest::qWaitForWindowActive(console_.window.get()));
  }

  QAction& Command(const char* name) { return test::Find<QAction>(menu_, name); }
  // The commands that can be chosen in the menu as it opens.
  QString Enabled() {
    Q_EMIT menu_.aboutToShow();
    QStringList names;
    for (const QAction* const action : menu_.actions()) {
      if (!action->isSeparator() && action->isEnabled()) {
        names.append(action->text().remove(u'&'));
      }
    }
    return names.join(QStringLiteral(", "));
  }
  // The search of the labels, with the focus.
  QLineEdit& OpenField() {
    views_.ShowAlphas();
    views_.ShowFind();
    auto& field = test::Find<QLineEdit>(*views_.Alphas(), "aidFindText");
    EXPECT_EQ(QApplication::focusWidget(), &field);
    return field;
  }

  test::ViewConsole console_{8};
  OpenViews views_{*console_.area, console_.Services()};
  QMenu viewActions_;
  ViewMenu viewMenu_{{.menu = viewActions_, .views = views_, .window = *console_.window}};
  QMenu& menu_ = *console_.window->menuBar()->addMenu(QStringLiteral("&Edit"));
  EditMenu editMenu_{{.menu = menu_,
                      .views = views_,
                      .window = *console_.window,
                      .find = viewMenu_.FindCommand()}};
};

TEST_F(EditMenuTest, EveryItemHasAMnemonicOfItsOwn) {
  EXPECT_EQ(menu_.actions().size(), 6 + 2);  // and its separators
  test::ExpectMnemonics(menu_);
}

TEST_F(EditMenuTest, ShowsTheKeysOfAllAndTakesThoseOfUndoAndRedo) {
  const auto keys = [this](const char* name) {
    return Command(name).shortcut().toString(QKeySequence::PortableText);
  };
  EXPECT_EQ(keys("aidUndo"), QStringLiteral("Ctrl+Z"));
  EXPECT_EQ(keys("aidRedo"), QStringLiteral("Ctrl+Shift+Z"));
  EXPECT_EQ(keys("aidEditCut"), QStringLiteral("Ctrl+X"));
  EXPECT_EQ(keys("aidEditCopy"), QStringLiteral("Ctrl+C"));
  EXPECT_EQ(keys("aidEditPaste"), QStringLiteral("Ctrl+V"));
  for (const char* const name : {"aidEditCut", "aidEditCopy", "aidEditPaste"}) {
    EXPECT_EQ(Command(name).shortcutContext(), Qt::WidgetShortcut) << name;
  }
}

TEST_F(EditMenuTest, OffersWhatThereIsToDoWhereTheOperatorWorks) {
  EXPECT_EQ(Enabled(), QString());
  views_.ShowXmap();
  EXPECT_EQ(Enabled(), QStringLiteral("Find Channel…"));
  editMenu_.Offer(QStringLiteral("Label Of Station 17"), std::nullopt);
  EXPECT_EQ(Enabled(), QStringLiteral("Undo Label Of Station 17, Find Channel…"));
  editMenu_.Offer(std::nullopt, QStringLiteral("Inhibits Of Output 3"));
  EXPECT_EQ(Enabled(), QStringLiteral("Redo Inhibits Of Output 3, Find Channel…"));
  editMenu_.Offer(std::nullopt, std::nullopt);
  views_.ShowAlphas();
  EXPECT_EQ(Enabled(), QStringLiteral("Copy, Find Channel…"));
  QGuiApplication::clipboard()->setText(QStringLiteral("A"));
  EXPECT_EQ(Enabled(), QStringLiteral("Copy, Paste, Find Channel…"));
  views_.ShowButtons();
  EXPECT_EQ(Enabled(), QStringLiteral("Find Channel…"));
}

TEST_F(EditMenuTest, InAFieldItIsTheFields) {
  QSignalSpy undo(&editMenu_, &EditMenu::UndoRequested);
  editMenu_.Offer(QStringLiteral("Label Of Station 17"), std::nullopt);
  QLineEdit& field = OpenField();
  EXPECT_EQ(Enabled(), QStringLiteral("Find Channel…"));
  QTest::keyClicks(&field, QStringLiteral("mic"));
  EXPECT_EQ(Enabled(), QStringLiteral("Undo, Find Channel…"));
  field.selectAll();
  EXPECT_EQ(Enabled(), QStringLiteral("Undo, Cut, Copy, Find Channel…"));
  Command("aidEditCut").trigger();
  EXPECT_EQ(field.text(), QString());
  EXPECT_EQ(QGuiApplication::clipboard()->text(), QStringLiteral("mic"));
  EXPECT_EQ(Enabled(), QStringLiteral("Undo, Paste, Find Channel…"));
  Command("aidEditPaste").trigger();
  Command("aidEditPaste").trigger();
  EXPECT_EQ(field.text(), QStringLiteral("micmic"));
  EXPECT_EQ(Enabled(), QStringLiteral("Undo, Paste, Find Channel…"));
  Command("aidUndo").trigger();
  EXPECT_EQ(field.text(), QStringLiteral("mic"));
  EXPECT_EQ(Enabled(), QStringLiteral("Undo, Redo, Paste, Find Channel…"));
  Command("aidRedo").trigger();
  EXPECT_EQ(field.text(), QStringLiteral("micmic"));
  EXPECT_EQ(undo.count(), 0);
}

// What another program has on the clipboard, which may be long in coming.
class AskedForText : public QMimeData {
 public:
  explicit AskedForText(int* times) : times_(times) {}
  bool hasFormat(const QString& /*format*/) const override {
    ++*times_;
    return true;
  }

 private:
  int* const times_;
};

TEST_F(EditMenuTest, TheClipboardIsAskedForAnOpenMenuOnly) {
  int times = 0;
  QGuiApplication::clipboard()->setMimeData(new AskedForText(&times));
  QLineEdit& field = OpenField();
  QTest::keyClicks(&field, QStringLiteral("mic"));
  editMenu_.Offer(QStringLiteral("Label Of Station 17"), std::nullopt);
  views_.ShowAlphas();
  test::Find<QTableView>(*views_.Alphas(), "jgAlphas").setFocus();
  EXPECT_EQ(times, 0);
  EXPECT_TRUE(Command("aidEditPaste").isEnabled());
  EXPECT_EQ(Enabled(), QStringLiteral("Undo Label Of Station 17, Copy, Paste, Find Channel…"));
  EXPECT_GT(times, 0);
  QGuiApplication::clipboard()->clear();
}

// Opened by the keyboard a menu bar has the focus.
TEST_F(EditMenuTest, AnOpenMenuIsAboutWhereTheOperatorWorked) {
  views_.ShowAlphas();
  auto& grid = test::Find<QTableView>(*views_.Alphas(), "jgAlphas");
  ASSERT_EQ(QApplication::focusWidget(), &grid);
  console_.window->menuBar()->setFocus();
  EXPECT_EQ(Enabled(), QStringLiteral("Copy, Find Channel…"));
  grid.setCurrentIndex(grid.model()->index(2, 1));
  Command("aidEditCopy").trigger();
  EXPECT_EQ(QGuiApplication::clipboard()->text(), QStringLiteral("Sta. 003\n"));
}

}  // namespace
}  // namespace app
