// SPDX-License-Identifier: MIT
//
// How the crosspoint map is used: pointer, keys, place and size, readout, search, zoom.

#include "views/xmap/xmap_view.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <QAction>
#include <QApplication>
#include <QClipboard>
#include <QContextMenuEvent>
#include <QHeaderView>
#include <QHelpEvent>
#include <QLabel>
#include <QLineEdit>
#include <QMenu>
#include <QScrollBar>
#include <QSignalSpy>
#include <QTableView>
#include <QTest>
#include <QToolBar>
#include <QToolTip>
#include <QWheelEvent>

#include "tests/views/xmap/xmap_console.h"
#include "views/xmap/xmap_grid_view.h"

namespace views {
namespace {

using test::BandActions;
using test::PixelOf;
using test::Viewport;
using test::XmapConsole;
using testing::ElementsAre;
using testing::IsEmpty;

TEST(XmapView, NothingIsSentByAccident) {
  XmapConsole console(8);
  XmapView& view = console.Open();
  QWidget& viewport = Viewport(console);
  for (const int row : {2, 3, 9}) {
    console.ClickCell(row, row);
    console.ClickCell(row, row, Qt::MiddleButton);
    QTest::mouseDClick(&viewport, Qt::LeftButton, Qt::NoModifier, console.CellCentre(row, row));
  }
  for (const Qt::Key key : {Qt::Key_Return, Qt::Key_Enter, Qt::Key_Space, Qt::Key_Select,
                            Qt::Key_Delete, Qt::Key_Backspace, Qt::Key_Down, Qt::Key_Right,
                            Qt::Key_PageDown, Qt::Key_End, Qt::Key_F2, Qt::Key_A}) {
    for (const Qt::KeyboardModifier modifier :
         {Qt::NoModifier, Qt::ShiftModifier, Qt::ControlModifier}) {
      console.PressKey(key, modifier);
    }
  }
  QTest::keyClick(view.focusWidget(), Qt::Key_Return);  // in the search field by now
  QTest::keyClick(view.focusWidget(), Qt::Key_Escape);
  QWheelEvent wheel(QPointF(5, 5), viewport.mapToGlobal(QPointF(5, 5)), QPoint(), QPoint(0, -120),
                    Qt::NoButton, Qt::NoModifier, Qt::NoScrollPhase, false);
  QCoreApplication::sendEvent(&viewport, &wheel);
  EXPECT_EQ(console.port.TakeWritten(), "");
  EXPECT_THAT(console.tables.traffic, IsEmpty());
  EXPECT_THAT(console.reporter.reports, IsEmpty());
  EXPECT_TRUE(console.model.CrosspointMap.At(1, 1) == 0);
}

TEST(XmapView, ClickSelectsTheCell) {
  XmapConsole console(8);
  console.Open();
  console.ClickCell(5, 7);
  EXPECT_EQ(console.SelectedCell(), QPoint(7, 5));
  console.ClickCell(6, 8, Qt::RightButton);
  EXPECT_EQ(console.SelectedCell(), QPoint(8, 6));
}

TEST(XmapView, DraggingDoesNotMoveTheSelection) {
  XmapConsole console(8);
  console.Open();
  QWidget& viewport = Viewport(console);
  QTest::mousePress(&viewport, Qt::LeftButton, Qt::NoModifier, console.CellCentre(3, 3));
  QTest::mouseMove(&viewport, console.CellCentre(6, 6));
  QTest::mouseRelease(&viewport, Qt::LeftButton, Qt::NoModifier, console.CellCentre(6, 6));
  EXPECT_EQ(console.SelectedCell(), QPoint(3, 3));
}

TEST(XmapView, ClickOnAHeaderMovesRowOrColumn) {
  XmapConsole console(8);
  console.Open();
  const auto& table = static_cast<QTableView&>(console.Grid());
  console.SelectCell(4, 6);
  QTest::mouseClick(table.verticalHeader()->viewport(), Qt::LeftButton, Qt::NoModifier,
                    QPoint(10, 20 * 6 + 5));
  EXPECT_EQ(console.SelectedCell(), QPoint(6, 8));
  for (const Qt::MouseButton other : {Qt::MiddleButton, Qt::BackButton}) {
    QTest::mouseClick(table.verticalHeader()->viewport(), other, Qt::NoModifier,
                      QPoint(10, 20 * 2 + 5));
    EXPECT_EQ(console.SelectedCell(), QPoint(6, 8));
  }
  QTest::mouseClick(table.horizontalHeader()->viewport(), Qt::LeftButton, Qt::NoModifier,
                    QPoint(20 * 1 + 5, 60));
  EXPECT_EQ(console.SelectedCell(), QPoint(3, 8));
  QTest::mouseClick(table.horizontalHeader()->viewport(), Qt::LeftButton, Qt::NoModifier,
                    QPoint(20 * 8 + 5, 60));
  EXPECT_EQ(console.SelectedCell(), QPoint(3, 8)) << "behind the last column";
}

TEST(XmapView, KeysMoveTheSelection) {
  XmapConsole console(64);
  console.Open();
  struct Step {
    Qt::Key key;
    Qt::KeyboardModifiers modifiers;
    QPoint cell;
  };
  const Step steps[] = {
      {Qt::Key_Right, Qt::NoModifier, {3, 2}},      {Qt::Key_Down, Qt::NoModifier, {3, 3}},
      {Qt::Key_Left, Qt::NoModifier, {2, 3}},       {Qt::Key_Left, Qt::NoModifier, {2, 3}},
      {Qt::Key_Up, Qt::NoModifier, {2, 2}},         {Qt::Key_Up, Qt::NoModifier, {2, 2}},
      {Qt::Key_End, Qt::NoModifier, {65, 2}},       {Qt::Key_Home, Qt::NoModifier, {2, 2}},
      {Qt::Key_End, Qt::ControlModifier, {65, 65}}, {Qt::Key_Home, Qt::ControlModifier, {2, 2}},
  };
  for (const Step& step : steps) {
    console.PressKey(step.key, step.modifiers);
    EXPECT_EQ(console.SelectedCell(), step.cell) << step.key;
  }
  console.PressKey(Qt::Key_PageDown);
  EXPECT_GT(console.SelectedCell().y(), 10);
  EXPECT_EQ(console.SelectedCell().x(), 2);
  console.PressKey(Qt::Key_PageUp);
  EXPECT_EQ(console.SelectedCell(), QPoint(2, 2));
}

TEST(XmapView, CtrlArrowGoesToTheNextMark) {
  XmapConsole console(8);
  console.model.CrosspointMap.At(3, 6) = 1;
  console.SetField(3, "Inhibits", "01000000");
  console.SetField(7, "Inhibits", "00000100");
  console.Open();
  console.SelectCell(4, 2);
  console.PressKey(Qt::Key_Right, Qt::ControlModifier);
  EXPECT_EQ(console.SelectedCell(), QPoint(3, 4));
  console.PressKey(Qt::Key_Right, Qt::ControlModifier);
  EXPECT_EQ(console.SelectedCell(), QPoint(7, 4));
  console.PressKey(Qt::Key_Right, Qt::ControlModifier);
  EXPECT_EQ(console.SelectedCell(), QPoint(7, 4)) << "no more marks";
  console.PressKey(Qt::Key_Down, Qt::ControlModifier);
  EXPECT_EQ(console.SelectedCell(), QPoint(7, 8));
  console.PressKey(Qt::Key_Up, Qt::ControlModifier);
  EXPECT_EQ(console.SelectedCell(), QPoint(7, 4));
  console.PressKey(Qt::Key_Left, Qt::ControlModifier);
  EXPECT_EQ(console.SelectedCell(), QPoint(3, 4));
}

TEST(XmapView, MnemonicsRunTheTools) {
  struct Shortcut {
    Qt::Key key;
    const char* bytes;
  };
  constexpr Shortcut kShortcuts[] = {{Qt::Key_T, "FD 03 00 00 00 00 00 03 FF"},
                                     {Qt::Key_S, "FD 02 00 00 00 00 00 02 FF"},
                                     {Qt::Key_C, "FD 06 01 00 00 00 00 06 FF"},
                                     {Qt::Key_P, "FD 0A 01 00 00 00 00 0A FF"}};
  XmapConsole console(8);
  console.Open();
  for (const Shortcut& shortcut : kShortcuts) {
    console.PressKey(shortcut.key, Qt::AltModifier);
    EXPECT_EQ(console.port.TakeWritten(), shortcut.bytes) << shortcut.key;
  }
  console.PressKey(Qt::Key_L, Qt::AltModifier);
  EXPECT_EQ(console.port.TakeWritten(), "") << "Listen has no tool on the band";
  console.PressKey(Qt::Key_I, Qt::AltModifier);
  EXPECT_EQ(console.Mark(2, 2), 2);
  console.PressKey(Qt::Key_D, Qt::AltModifier);
  EXPECT_THAT(console.tables.traffic, ElementsAre("poll off", "inhibits 9999", "poll on"));
  for (const auto& [key, modifier] :
       {std::pair(Qt::Key_R, Qt::AltModifier), std::pair(Qt::Key_F5, Qt::NoModifier)}) {
    console.model.XmapComplete = true;
    console.PressKey(key, modifier);
    EXPECT_FALSE(console.model.XmapComplete) << key;
  }
}

TEST(XmapView, MnemonicsWorkWhereTheToolsDoNotFit) {
  XmapConsole console(8);
  console.Open();
  console.subWindow->resize(200, 300);
  auto* const bar = console.view->findChild<QToolBar*>(QStringLiteral("XptmapButtons"));
  QCoreApplication::sendPostedEvents();
  auto* const action = console.view->findChild<QAction*>(QStringLiteral("ID_PriorityListen"));
  ASSERT_FALSE(bar->widgetForAction(action)->isVisible());
  console.PressKey(Qt::Key_P, Qt::AltModifier);
  EXPECT_EQ(console.port.TakeWritten(), "FD 0A 01 00 00 00 00 0A FF");
}

TEST(XmapView, ToolsTakeTheFocusByTabOnly) {
  XmapConsole console(8);
  console.Open();
  EXPECT_TRUE(console.Grid().hasFocus());
  console.ClickTool("ID_Take");
  EXPECT_TRUE(console.Grid().hasFocus());
  QSet<QString> reached;
  for (int i = 0; i < 12; ++i) {
    QTest::keyClick(QApplication::focusWidget(), Qt::Key_Tab);
    reached.insert(QApplication::focusWidget()->objectName());
  }
  for (const char* const button :
       {"btnTake", "btnSum", "btnCall", "btnPriorityListen", "btnToggleInhibit", "btnRefreshMap",
        "btnSendInhibits", "btnQDVStatus", "msfgXmap"}) {
    EXPECT_TRUE(reached.contains(QString::fromLatin1(button))) << button;
  }
}

TEST(XmapView, ContextMenuHoldsTheBand) {
  XmapConsole console(8);
  XmapView& view = console.Open();
  console.PressKey(Qt::Key_F10, Qt::ShiftModifier);
  auto* menu = view.findChild<QMenu*>(QStringLiteral("aidXmapMenu"));
  ASSERT_NE(menu, nullptr);
  // The aids stand behind the tools.
  EXPECT_EQ(menu->actions().mid(0, BandActions(view).size()), BandActions(view));
  QStringList aids;
  for (const QAction* const action : menu->actions().mid(BandActions(view).size())) {
    if (!action->isSeparator()) aids.append(action->objectName());
  }
  EXPECT_EQ(aids, QStringList({QStringLiteral("aidUndoTake"), QStringLiteral("aidProgramButtons"),
                               QStringLiteral("aidEditLabel"), QStringLiteral("aidProgramInput"),
                               QStringLiteral("aidEditInputLabel"), QStringLiteral("aidLockOutput"),
                               QStringLiteral("aidLockForPanels")}));
  EXPECT_EQ(console.port.TakeWritten(), "");
  menu->close();
  QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);

  // By the pointer it acts on the cell under it.
  QWidget& viewport = Viewport(console);
  const QPoint at = console.CellCentre(4, 7);
  QTest::mousePress(&viewport, Qt::RightButton, Qt::NoModifier, at);
  QContextMenuEvent event(QContextMenuEvent::Mouse, at, viewport.mapToGlobal(at));
  QCoreApplication::sendEvent(&viewport, &event);
  menu = view.findChild<QMenu*>(QStringLiteral("aidXmapMenu"));
  ASSERT_NE(menu, nullptr);
  QTest::keyClick(menu, Qt::Key_T);
  EXPECT_EQ(console.port.TakeWritten(), "FD 03 00 05 00 02 00 0A FF");
}

TEST(XmapView, AMaximisedMapHasToolsAsHighAsOthers) {
  XmapConsole console(8);
  XmapView& view = console.Open();
  const auto& tools = *view.findChild<QToolBar*>(QStringLiteral("XptmapButtons"));
  const int usual = tools.height();
  console.subWindow->showMaximized();
  EXPECT_LE(tools.height(), std::max(usual, tools.sizeHint().height()));
  EXPECT_LT(tools.height(), 52);
  EXPECT_EQ(console.Grid().y(), tools.height()) << "the grid follows at once";
  EXPECT_EQ(console.Grid().height(), console.subWindow->height() - 52);
}

TEST(XmapView, GridFollowsTheForm) {
  XmapConsole console(8);
  XmapView& view = console.Open();
  const QWidget& grid = console.Grid();
  EXPECT_EQ(console.subWindow->size(), QSize(667, 600));
  EXPECT_EQ(grid.size(), QSize(667 - 5, 600 - 52));
  console.subWindow->resize(900, 480);
  EXPECT_EQ(grid.size(), QSize(895, 428));
  EXPECT_LE(grid.geometry().bottom(), view.rect().bottom()) << "nothing is cut off";
  EXPECT_LE(grid.geometry().right(), view.rect().right());
  const auto* const bar = view.findChild<QToolBar*>(QStringLiteral("XptmapButtons"));
  EXPECT_EQ(bar->geometry().bottom() + 1, grid.y());
  EXPECT_GE(bar->height(), 23);
}

TEST(XmapView, GridStaysWhenTheFormIsTooSmall) {
  XmapConsole console(8);
  console.Open();
  console.subWindow->setMinimumSize(10, 10);
  console.subWindow->resize(400, 300);
  const QWidget& grid = console.Grid();
  for (const QSize& size : {QSize(93, 300), QSize(400, 39), QSize(50, 30)}) {
    console.subWindow->resize(size);
    ASSERT_EQ(console.subWindow->size(), size);
    EXPECT_EQ(grid.size(), QSize(395, 248)) << size.width() << " x " << size.height();
  }
  console.subWindow->resize(94, 40);
  EXPECT_EQ(grid.width(), 89);
}

TEST(XmapView, MinimisedFormKeepsItsGrid) {
  XmapConsole console(8);
  console.Open();
  const QSize size = console.Grid().size();
  console.subWindow->showMinimized();
  EXPECT_EQ(console.Grid().size(), size);
  console.subWindow->showNormal();
  EXPECT_EQ(console.Grid().size(), size);
}

TEST(XmapView, AllToolsFitIntoTheFirstWidth) {
  XmapConsole console(8);
  XmapView& view = console.Open();
  QCoreApplication::sendPostedEvents();
  const auto* const bar = view.findChild<QToolBar*>(QStringLiteral("XptmapButtons"));
  EXPECT_EQ(bar->toolButtonStyle(), Qt::ToolButtonTextOnly);
  for (QAction* const action : bar->actions()) {
    EXPECT_TRUE(bar->widgetForAction(action)->isVisible()) << action->text().toStdString();
  }
  console.subWindow->resize(900, 600);
  EXPECT_EQ(bar->toolButtonStyle(), Qt::ToolButtonTextBesideIcon);
}

TEST(XmapView, PlaceComesFromTheSettingsAndGoesBackUnchanged) {
  XmapConsole console(8);
  console.settings->SetText(QStringLiteral("XmapLeft"), QStringLiteral("307"));
  console.settings->SetText(QStringLiteral("XmapWidth"), QStringLiteral("6500"));
  console.Open();
  EXPECT_EQ(console.subWindow->geometry(), QRect(20, 33, 433, 600));
  console.Close();
  EXPECT_EQ(console.settings->Text(QStringLiteral("XmapLeft")), QStringLiteral("307"));
  EXPECT_EQ(console.settings->Text(QStringLiteral("XmapTop")), QStringLiteral("500"));
  EXPECT_EQ(console.settings->Text(QStringLiteral("XmapWidth")), QStringLiteral("6500"));
  EXPECT_EQ(console.settings->Text(QStringLiteral("XmapHeight")), QStringLiteral("9000"));
}

TEST(XmapView, NewPlaceIsStoredInTwips) {
  XmapConsole console(8);
  console.Open();
  console.subWindow->setGeometry(33, 12, 700, 600);
  console.Close();
  EXPECT_EQ(console.settings->Text(QStringLiteral("XmapLeft")), QStringLiteral("500"));
  EXPECT_EQ(console.settings->Text(QStringLiteral("XmapTop")), QStringLiteral("180"));
  EXPECT_EQ(console.settings->Text(QStringLiteral("XmapWidth")), QStringLiteral("10500"));
  EXPECT_EQ(console.settings->Text(QStringLiteral("XmapHeight")), QStringLiteral("9000"));
}

TEST(XmapView, MinimisedFormStoresNothing) {
  XmapConsole console(8);
  console.settings->SetText(QStringLiteral("XmapTop"), QStringLiteral("1234"));
  console.Open();
  console.subWindow->move(5, 5);
  console.subWindow->showMinimized();
  console.Close();
  EXPECT_EQ(console.settings->Text(QStringLiteral("XmapLeft")), QStringLiteral("500"));
  EXPECT_EQ(console.settings->Text(QStringLiteral("XmapTop")), QStringLiteral("1234"));
}

TEST(XmapView, ReadoutNamesBothSidesOfTheCell) {
  XmapConsole console(8);
  console.SetField(2, "Label", "PROD %1");
  XmapView& view = console.Open();
  EXPECT_EQ(view.Readout(), QStringLiteral("Out 01  Sta. 001  <  In 01  Inpt 001: No crosspoint"));
  QSignalSpy changed(&view, &XmapView::ReadoutChanged);
  console.SelectCell(3, 5);
  EXPECT_EQ(view.Readout(), QStringLiteral("Out 02  PROD %1  <  In 04  Inpt 004: No crosspoint"));
  console.model.CrosspointMap.At(2, 4) = 1;
  view.UpdateXmap(2, 0);
  EXPECT_EQ(view.Readout(), QStringLiteral("Out 02  PROD %1  <  In 04  Inpt 004: Crosspoint"));
  view.UpdateXmap(2, 1);
  EXPECT_EQ(view.Readout(),
            QStringLiteral("Out 02  PROD %1  <  In 04  Inpt 004: Priority crosspoint"));
  console.SetField(2, "Inhibits", "00010000");
  view.UpdateXmapInhibits();
  EXPECT_EQ(view.Readout(), QStringLiteral("Out 02  PROD %1  <  In 04  Inpt 004: Inhibited"));
  EXPECT_EQ(changed.count(), 4);
}

TEST(XmapView, ReadoutNamesTheSelectedCellWhereverThePointerIs) {
  XmapConsole console(8);
  XmapView& view = console.Open();
  QTest::mouseMove(&Viewport(console), console.CellCentre(7, 9));
  EXPECT_EQ(console.SelectedCell(), QPoint(2, 2));
  EXPECT_EQ(view.Readout(), QStringLiteral("Out 01  Sta. 001  <  In 01  Inpt 001: No crosspoint"));
  console.model.CrosspointMap.At(6, 8) = 1;
  view.UpdateXmap(6, 0);
  EXPECT_EQ(view.Readout(), QStringLiteral("Out 01  Sta. 001  <  In 01  Inpt 001: No crosspoint"));
  console.PressKey(Qt::Key_Down);
  EXPECT_EQ(view.Readout(), QStringLiteral("Out 02  Sta. 002  <  In 01  Inpt 001: No crosspoint"));
  // The tip is about the cell under the pointer.
  const QPoint pointer = console.CellCentre(7, 9);
  QHelpEvent help(QEvent::ToolTip, pointer, Viewport(console).mapToGlobal(pointer));
  QCoreApplication::sendEvent(&Viewport(console), &help);
  EXPECT_TRUE(QToolTip::text().contains(QStringLiteral("Out 06")))
      << QToolTip::text().toStdString();
  QToolTip::hideText();
}

TEST(XmapView, TipNamesTheCell) {
  XmapConsole console(8);
  console.SetField(2, "Label", "<b>A</b>");
  console.Open();
  QWidget& viewport = Viewport(console);
  const auto tipAt = [&](int row, int column) {
    const QPoint at = console.CellCentre(row, column);
    QHelpEvent event(QEvent::ToolTip, at, viewport.mapToGlobal(at));
    QCoreApplication::sendEvent(&viewport, &event);
    return QToolTip::text();
  };
  EXPECT_EQ(tipAt(2, 5), QStringLiteral("Out 01  Sta. 001  <  In 04  Inpt 004\nNo crosspoint"));
  EXPECT_TRUE(tipAt(3, 5).contains(QStringLiteral("&lt;b&gt;A&lt;/b&gt;")))
      << "a label is no markup";
  QToolTip::hideText();
}

TEST(XmapView, AWarningStandsOverTheHatchedMap) {
  XmapConsole console(8);
  XmapView& view = console.Open();
  auto* const line = view.findChild<QLabel*>(QStringLiteral("aidMapLink"));
  ASSERT_NE(line, nullptr);
  EXPECT_FALSE(line->isVisible());
  const QImage before = Viewport(console).grab().toImage();
  view.SetWarning(QStringLiteral("Not connected: map of 05:55:37"));
  EXPECT_TRUE(line->isVisible());
  EXPECT_EQ(line->text(), QStringLiteral("Not connected: map of 05:55:37"));
  EXPECT_NE(Viewport(console).grab().toImage(), before);
  // What is hatched has the same size and can be used as before.
  console.ClickCell(3, 5);
  EXPECT_EQ(console.SelectedCell(), QPoint(5, 3));
  console.SelectCell(2, 2);
  view.SetWarning({});
  EXPECT_FALSE(line->isVisible());
  EXPECT_EQ(Viewport(console).grab().toImage(), before);
}

TEST(XmapView, TheWarningGivesWayToTheCurrentCellAndToThePointer) {
  XmapConsole console(64);
  XmapView& view = console.Open();
  view.SetWarning(QStringLiteral("Not connected: no map yet"));
  const auto* const line = view.findChild<QLabel*>(QStringLiteral("aidMapLink"));
  const auto covers = [&](const QPoint& inViewport) {
    return line->geometry().contains(inViewport + Viewport(console).pos());
  };
  const QPoint top(30, 5);
  const QPoint bottom(30, Viewport(console).height() - 5);
  EXPECT_TRUE(covers(bottom));
  console.SelectCell(65, 2);
  EXPECT_TRUE(covers(top)) << "the current cell is at the bottom";
  QTest::mouseMove(&Viewport(console), top);
  EXPECT_TRUE(covers(bottom)) << "the pointer is at the top";
  QTest::mouseMove(&Viewport(console), bottom);
  EXPECT_TRUE(covers(top));
}

TEST(XmapView, TheWarningGivesWayToTheFarCornerOfWhatIsChosen) {
  XmapConsole console(64);
  XmapView& view = console.Open();
  console.SelectCell(12, 2);
  view.SetWarning(QStringLiteral("Not connected: no map yet"));
  const auto* const line = view.findChild<QLabel*>(QStringLiteral("aidMapLink"));
  const auto covers = [&](const QPoint& inViewport) {
    return line->geometry().contains(inViewport + Viewport(console).pos());
  };
  EXPECT_TRUE(covers(QPoint(30, Viewport(console).height() - 5)));
  console.PressKey(Qt::Key_End, Qt::ControlModifier | Qt::ShiftModifier);
  EXPECT_FALSE(covers(console.CellCentre(65, 65)));
}

TEST(XmapView, CornerExplainsTheMarks) {
  XmapConsole console(8);
  console.Open();
  QWidget* const corner = console.Grid().childAt(10, 10);
  QHelpEvent event(QEvent::ToolTip, QPoint(5, 5), corner->mapToGlobal(QPoint(5, 5)));
  QCoreApplication::sendEvent(corner, &event);
  for (const char* const word :
       {"Crosspoint", "Inhibited", "Priority crosspoint", "Reserved mark"}) {
    EXPECT_TRUE(QToolTip::text().contains(QLatin1String(word))) << word;
  }
  EXPECT_EQ(PixelOf(*corner, QPoint(33, 60)), QColor(0x00, 0x60, 0xA0)) << "mark 1";
  QToolTip::hideText();
}

TEST(XmapView, CopyPutsTheReadoutOnTheClipboard) {
  XmapConsole console(8);
  console.Open();
  console.PressKey(Qt::Key_C, Qt::ControlModifier);
  EXPECT_EQ(QApplication::clipboard()->text(),
            QStringLiteral("Out 01  Sta. 001  <  In 01  Inpt 001: No crosspoint"));
}

TEST(XmapView, TypingFindsChannelsWithoutMovingTheSelection) {
  XmapConsole console(64);
  console.SetField(40, "Label", "STUDIO A");
  console.SetField(50, "InLabel", "Studio b");
  XmapView& view = console.Open();
  console.SelectCell(5, 6);
  auto* const find = view.findChild<QWidget*>(QStringLiteral("aidFind"));
  auto* const text = view.findChild<QLineEdit*>(QStringLiteral("aidFindText"));
  auto* const count = view.findChild<QLabel*>(QStringLiteral("aidFindCount"));
  EXPECT_FALSE(find->isVisible());
  QTest::keyClicks(&console.Grid(), QStringLiteral("s"));
  ASSERT_TRUE(find->isVisible());
  ASSERT_TRUE(text->hasFocus());
  QTest::keyClicks(text, QStringLiteral("tud"));
  EXPECT_EQ(text->text(), QStringLiteral("stud"));
  EXPECT_EQ(count->text(), QStringLiteral("2 found"));
  EXPECT_EQ(console.SelectedCell(), QPoint(6, 5));
  const auto& table = static_cast<QTableView&>(console.Grid());
  EXPECT_GT(table.verticalScrollBar()->value(), 0) << "the first match is in sight";

  QTest::keyClick(text, Qt::Key_Return);
  EXPECT_EQ(console.SelectedCell(), QPoint(6, 41));
  EXPECT_EQ(count->text(), QStringLiteral("1 of 2"));
  QTest::keyClick(text, Qt::Key_Return);
  EXPECT_EQ(console.SelectedCell(), QPoint(51, 41));
  QTest::keyClick(text, Qt::Key_Return);
  EXPECT_EQ(count->text(), QStringLiteral("1 of 2"));
  QTest::keyClick(text, Qt::Key_Return, Qt::ShiftModifier);
  EXPECT_EQ(count->text(), QStringLiteral("2 of 2"));
  QTest::keyClick(text, Qt::Key_Escape);
  EXPECT_FALSE(find->isVisible());
  EXPECT_TRUE(console.Grid().hasFocus());
  EXPECT_EQ(console.SelectedCell(), QPoint(51, 41));
  EXPECT_EQ(console.port.TakeWritten(), "");
}

TEST(XmapView, FindLightsMatchingHeaders) {
  XmapConsole console(8);
  XmapView& view = console.Open();
  const auto& table = static_cast<QTableView&>(console.Grid());
  QWidget& rows = *table.verticalHeader()->viewport();
  const QPoint third(3, 20 * 2 + 3);
  const QColor before = PixelOf(rows, third);
  console.PressKey(Qt::Key_F, Qt::ControlModifier);
  auto* const text = view.findChild<QLineEdit*>(QStringLiteral("aidFindText"));
  ASSERT_TRUE(text->hasFocus());
  QTest::keyClicks(text, QStringLiteral("03"));
  EXPECT_NE(PixelOf(rows, third), before);
  EXPECT_EQ(PixelOf(rows, QPoint(3, 20 * 4 + 3)), before);
  QTest::keyClicks(text, QStringLiteral("x"));
  EXPECT_EQ(PixelOf(rows, third), before);
  EXPECT_EQ(view.findChild<QLabel*>(QStringLiteral("aidFindCount"))->text(),
            QStringLiteral("No match"));
  QTest::keyClick(text, Qt::Key_Return);
  EXPECT_EQ(console.SelectedCell(), QPoint(2, 2));
  text->setText(QStringLiteral("03"));
  EXPECT_NE(PixelOf(rows, third), before);
  console.Grid().setFocus();
  console.PressKey(Qt::Key_Escape);
  EXPECT_EQ(PixelOf(rows, third), before) << "Escape in the grid closes the search as well";
}

TEST(XmapView, FindFollowsNewLabels) {
  XmapConsole console(8);
  XmapView& view = console.Open();
  view.ShowFind(QStringLiteral("prod"));
  auto* const count = view.findChild<QLabel*>(QStringLiteral("aidFindCount"));
  EXPECT_EQ(count->text(), QStringLiteral("No match"));
  console.SetField(4, "Label", "PROD 1");
  view.UpdateXmapAlphas();
  EXPECT_EQ(count->text(), QStringLiteral("1 found"));
}

TEST(XmapView, NewLabelsDoNotScrollTheMapAway) {
  XmapConsole console(64);
  XmapView& view = console.Open();
  view.ShowFind(QStringLiteral("sta. 001"));
  QScrollBar& scrollBar = *static_cast<QTableView&>(console.Grid()).verticalScrollBar();
  scrollBar.setValue(400);
  view.UpdateXmapAlphas();
  EXPECT_EQ(scrollBar.value(), 400);
}

TEST(XmapView, GoToTakesTwoNumbers) {
  XmapConsole console(64);
  XmapView& view = console.Open();
  console.PressKey(Qt::Key_G, Qt::ControlModifier);
  auto* const text = view.findChild<QLineEdit*>(QStringLiteral("aidFindText"));
  auto* const count = view.findChild<QLabel*>(QStringLiteral("aidFindCount"));
  for (const QString& wrong : {QStringLiteral("5"), QStringLiteral("0 1"), QStringLiteral("5 65"),
                               QStringLiteral("65 5"), QStringLiteral("a b")}) {
    text->setText(wrong);
    QTest::keyClick(text, Qt::Key_Return);
    EXPECT_EQ(count->text(), QStringLiteral("No crosspoint")) << wrong.toStdString();
    EXPECT_EQ(console.SelectedCell(), QPoint(2, 2));
  }
  text->setText(QStringLiteral("5, 64"));
  QTest::keyClick(text, Qt::Key_Return);
  EXPECT_EQ(console.SelectedCell(), QPoint(65, 6));
  EXPECT_FALSE(text->isVisible());
  EXPECT_TRUE(console.Grid().hasFocus());
}

TEST(XmapView, GoToTakesTheNumbersOfABlock) {
  XmapConsole console(64);
  XmapView& view = console.Open();
  auto* const text = view.findChild<QLineEdit*>(QStringLiteral("aidFindText"));
  const auto* const count = view.findChild<QLabel*>(QStringLiteral("aidFindCount"));
  auto& grid = static_cast<XmapGridView&>(console.Grid());
  const auto go = [&](const char* numbers) {
    console.PressKey(Qt::Key_G, Qt::ControlModifier);
    text->setText(QLatin1String(numbers));
    QTest::keyClick(text, Qt::Key_Return);
  };
  using Block = rules::CellBlock;
  for (const auto& [numbers, block] :
       std::vector<std::pair<const char*, Block>>{{"1-6 9-14", Block{1, 6, 9, 14}},
                                                  {"3 9 - 12", Block{3, 3, 9, 12}},
                                                  {"60-64, 5", Block{60, 64, 5, 5}},
                                                  {"5-12", Block{5, 5, 12, 12}}}) {
    go(numbers);
    EXPECT_EQ(grid.Block(), block) << numbers;
    EXPECT_FALSE(text->isVisible()) << numbers;
  }
  for (const char* const wrong : {"6-1 9-14", "1-65 9", "1-6 14-9", "0-2 1"}) {
    go(wrong);
    EXPECT_EQ(count->text(), QStringLiteral("No crosspoint")) << wrong;
    EXPECT_EQ(grid.Block(), (Block{5, 5, 12, 12})) << wrong;
  }
}

TEST(XmapView, ZoomGoesInSteps) {
  XmapConsole console(8);
  XmapView& view = console.Open();
  const auto& table = static_cast<QTableView&>(console.Grid());
  EXPECT_EQ(view.Zoom(), 100);
  for (const int zoom : {125, 150, 175, 200, 200}) {
    console.PressKey(Qt::Key_Plus, Qt::ControlModifier);
    EXPECT_EQ(view.Zoom(), zoom);
  }
  EXPECT_EQ(table.columnWidth(7), 40);
  EXPECT_EQ(table.horizontalHeader()->height(), 280);
  console.PressKey(Qt::Key_0, Qt::ControlModifier);
  EXPECT_EQ(view.Zoom(), 100);
  for (int i = 0; i < 9; ++i) console.PressKey(Qt::Key_Minus, Qt::ControlModifier);
  EXPECT_EQ(view.Zoom(), 75);
  EXPECT_EQ(table.rowHeight(7), 15);
  QWheelEvent wheel(QPointF(5, 5), QPointF(5, 5), QPoint(), QPoint(0, 120), Qt::NoButton,
                    Qt::ControlModifier, Qt::NoScrollPhase, false);
  QCoreApplication::sendEvent(&Viewport(console), &wheel);
  EXPECT_EQ(view.Zoom(), 100);
  EXPECT_EQ(console.Grid().size(), QSize(662, 548)) << "the grid itself keeps its size";
}

}  // namespace
}  // namespace views
