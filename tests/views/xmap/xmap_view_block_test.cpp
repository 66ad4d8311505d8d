// SPDX-License-Identifier: MIT
//
// Several cells of the crosspoint map at once: chosen by keys and pointer, inhibited together.

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <QLabel>
#include <QMessageBox>
#include <QPushButton>
#include <QSignalSpy>
#include <QTableView>
#include <QTest>

#include "tests/views/gui_support.h"
#include "tests/views/xmap/xmap_console.h"
#include "views/xmap/xmap_view.h"

namespace views {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;
using testing::SizeIs;

// What is stored, act by act.
class ActCounter : public stations::ChangeObserver {
 public:
  using ChangeObserver::ChangeObserver;
  void Changed(std::span<const stations::Change> changes) override {
    acts.push_back(static_cast<int>(changes.size()));
  }
  std::vector<int> acts;
};

class XmapBlockTest : public testing::Test {
 protected:
  void SetUp() override { console_.Open(); }

  XmapView& View() { return *console_.view; }
  QMessageBox* Box() {
    return console_.window->findChild<QMessageBox*>(QStringLiteral("aidInhibitQuestion"));
  }
  QString Question() { return Box() == nullptr ? QString() : Box()->text(); }
  void Answer(const char* button) {
    QTest::mouseClick(&test::Find<QPushButton>(*Box(), button), Qt::LeftButton);
    QCoreApplication::sendPostedEvents();
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
  }
  void Extend(Qt::Key key, int times, Qt::KeyboardModifiers more = Qt::NoModifier) {
    for (int i = 0; i < times; ++i) console_.PressKey(key, Qt::ShiftModifier | more);
  }
  // The number of chosen cells, as the view says it; 1 for one.
  QString Chosen() { return View().Detail(); }

  test::XmapConsole console_{8};
};

TEST_F(XmapBlockTest, ShiftAndArrowsChooseCellsAndLeaveTheCurrentOne) {
  console_.SelectCell(3, 3);
  Extend(Qt::Key_Right, 2);
  Extend(Qt::Key_Down, 1);
  EXPECT_EQ(console_.SelectedCell(), QPoint(3, 3));
  EXPECT_EQ(Chosen(), QStringLiteral("6 crosspoints chosen"));
  EXPECT_EQ(View().Readout(),
            QStringLiteral("Out 02  Sta. 002  <  In 02  Inpt 002: No crosspoint"));
  Extend(Qt::Key_Left, 4);
  EXPECT_EQ(Chosen(), QStringLiteral("4 crosspoints chosen")) << "the other way, to the edge";
  Extend(Qt::Key_End, 1, Qt::ControlModifier);
  EXPECT_EQ(Chosen(), QStringLiteral("49 crosspoints chosen"));
  console_.PressKey(Qt::Key_Right);
  EXPECT_EQ(console_.SelectedCell(), QPoint(4, 3));
  EXPECT_EQ(Chosen(), QStringLiteral("Sta. 002 hears none; by priority: none"));
}

TEST_F(XmapBlockTest, ShiftAndAClickOrDraggingChooseCells) {
  QWidget& viewport = test::Viewport(console_);
  console_.ClickCell(3, 3);
  QTest::mouseClick(&viewport, Qt::LeftButton, Qt::ShiftModifier, console_.CellCentre(8, 8));
  EXPECT_EQ(Chosen(), QStringLiteral("36 crosspoints chosen"));
  EXPECT_EQ(console_.SelectedCell(), QPoint(3, 3));
  console_.ClickCell(5, 5);
  EXPECT_EQ(Chosen(), QStringLiteral("Sta. 004 hears none; by priority: none"));
  QTest::mousePress(&viewport, Qt::LeftButton, Qt::NoModifier, console_.CellCentre(3, 3));
  QMouseEvent drag(QEvent::MouseMove, console_.CellCentre(4, 6),
                   viewport.mapToGlobal(console_.CellCentre(4, 6)), Qt::NoButton, Qt::LeftButton,
                   Qt::NoModifier);
  QCoreApplication::sendEvent(&viewport, &drag);
  QTest::mouseRelease(&viewport, Qt::LeftButton, Qt::NoModifier, console_.CellCentre(4, 6));
  EXPECT_EQ(Chosen(), QStringLiteral("8 crosspoints chosen"));
  EXPECT_EQ(console_.SelectedCell(), QPoint(3, 3));
  console_.PressKey(Qt::Key_Escape);
  EXPECT_EQ(Chosen(), QStringLiteral("Sta. 002 hears none; by priority: none"));
}

// A click of an unsteady hand at the edge of a cell.
TEST_F(XmapBlockTest, ATremorIsNoDrag) {
  QWidget& viewport = test::Viewport(console_);
  const QRect cell =
      static_cast<QTableView&>(console_.Grid())
          .visualRect(static_cast<QTableView&>(console_.Grid()).model()->index(1, 1));
  const QPoint there = cell.bottomRight() + QPoint(2, 0);
  QTest::mousePress(&viewport, Qt::LeftButton, Qt::NoModifier, cell.bottomRight());
  QMouseEvent move(QEvent::MouseMove, there, viewport.mapToGlobal(there), Qt::NoButton,
                   Qt::LeftButton, Qt::NoModifier);
  QCoreApplication::sendEvent(&viewport, &move);
  QTest::mouseRelease(&viewport, Qt::LeftButton, Qt::NoModifier, there);
  EXPECT_EQ(Chosen(), QStringLiteral("Sta. 002 hears none; by priority: none"));
}

TEST_F(XmapBlockTest, AClickOnTheCurrentCellChoosesItAlone) {
  console_.SelectCell(3, 3);
  Extend(Qt::Key_Right, 2);
  console_.ClickCell(3, 3);
  EXPECT_EQ(Chosen(), QStringLiteral("Sta. 002 hears none; by priority: none"));
}

TEST_F(XmapBlockTest, AMenuForWhatIsChosenLeavesItChosen) {
  console_.SelectCell(3, 3);
  Extend(Qt::Key_Right, 2);
  console_.ClickCell(3, 4, Qt::RightButton);
  EXPECT_EQ(Chosen(), QStringLiteral("3 crosspoints chosen"));
  console_.ClickCell(6, 6, Qt::RightButton);
  EXPECT_EQ(console_.SelectedCell(), QPoint(6, 6));
  EXPECT_EQ(Chosen(), QStringLiteral("Sta. 005 hears none; by priority: none"));
}

TEST_F(XmapBlockTest, TheInhibitsOfAllAreOneActAfterAQuestion) {
  console_.model.CrosspointMap.At(2, 3) = 1;
  View().UpdateXmap(2, 0);
  console_.model.CrosspointMap.At(4, 7) = 1;
  View().UpdateXmap(4, 1);
  console_.SetField(3, "Inhibits", "00010000");
  View().UpdateXmapInhibits();
  View().UpdateXmap(model::kAll, 0);
  ActCounter acts(console_.changes);
  const QSignalSpy notes(&View(), &XmapView::NoteRequested);
  console_.SelectCell(3, 3);
  Extend(Qt::Key_Right, 5);
  Extend(Qt::Key_Down, 5);
  console_.ClickTool("ID_ToggleInhibit");
  EXPECT_EQ(Question(),
            QStringLiteral("Inhibit 33 crosspoints? 2 hold a crosspoint and are left out."))
      << "one of the 36 is inhibited already";
  EXPECT_EQ(console_.Text(2, "Inhibits"), "00000000") << "nothing before the answer";
  Answer("aidInhibitAll");
  EXPECT_THAT(acts.acts, ElementsAre(6)) << "six stations, stored as one";
  EXPECT_EQ(console_.Text(1, "Inhibits"), "00000000");
  EXPECT_EQ(console_.Text(2, "Inhibits"), "01011110");
  EXPECT_EQ(console_.Text(3, "Inhibits"), "01111110");
  EXPECT_EQ(console_.Text(4, "Inhibits"), "01111100");
  EXPECT_EQ(console_.Text(7, "Inhibits"), "01111110");
  EXPECT_EQ(console_.Row(3), ".212222.");
  EXPECT_EQ(console_.Row(5), ".222221.");
  EXPECT_EQ(console_.Row(8), ".222222.");
  ASSERT_EQ(notes.size(), 1);
  EXPECT_EQ(notes[0][0].toString(), QStringLiteral("Inhibited crosspoints: 33; left out: 2"));
  EXPECT_EQ(console_.port.TakeWritten(), "");
  EXPECT_THAT(console_.reporter.reports, IsEmpty());
}

TEST_F(XmapBlockTest, TheyAreSetToTheOppositeOfTheCurrentCell) {
  console_.SetField(2, "Inhibits", "01100000");
  View().UpdateXmapInhibits();
  console_.SelectCell(3, 3);
  Extend(Qt::Key_Right, 3);
  console_.ClickTool("ID_ToggleInhibit");
  EXPECT_EQ(Question(), QStringLiteral("Remove 2 inhibits?"));
  Answer("aidRemoveAll");
  EXPECT_EQ(console_.Text(2, "Inhibits"), "00000000");
  EXPECT_EQ(console_.Row(3), "........");
}

TEST_F(XmapBlockTest, WithoutTheAnswerNothingIsStored) {
  ActCounter acts(console_.changes);
  console_.SelectCell(3, 3);
  Extend(Qt::Key_Right, 3);
  console_.ClickTool("ID_ToggleInhibit");
  ASSERT_NE(Box(), nullptr);
  QTest::keyClick(Box(), Qt::Key_Return);
  QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
  EXPECT_EQ(Box(), nullptr);
  EXPECT_THAT(acts.acts, IsEmpty());
  EXPECT_EQ(console_.Row(3), "........");
}

// Between the question and the answer the switcher may make a crosspoint.
TEST_F(XmapBlockTest, WhatIsMadeMeanwhileIsLeftOut) {
  console_.SelectCell(3, 3);
  Extend(Qt::Key_Right, 1);
  console_.ClickTool("ID_ToggleInhibit");
  EXPECT_EQ(Question(), QStringLiteral("Inhibit 2 crosspoints?"));
  console_.model.CrosspointMap.At(2, 3) = 1;
  View().UpdateXmap(2, 0);
  Answer("aidInhibitAll");
  EXPECT_EQ(console_.Text(2, "Inhibits"), "01000000");
  EXPECT_EQ(console_.Row(3), ".21.....");
}

TEST_F(XmapBlockTest, WhereAllHoldACrosspointItIsRefusedAsOfOneCell) {
  console_.model.CrosspointMap.At(2, 2) = 1;
  console_.model.CrosspointMap.At(2, 3) = 1;
  View().UpdateXmap(2, 0);
  console_.SelectCell(3, 3);
  Extend(Qt::Key_Right, 1);
  console_.ClickTool("ID_ToggleInhibit");
  EXPECT_EQ(Box(), nullptr);
  EXPECT_THAT(console_.reporter.reports,
              ElementsAre("exclamation|Control Error|Inhibit Not Possible With Existing "
                          "Crosspoint"));
}

TEST_F(XmapBlockTest, NothingIsStoredWhileTheConsoleIsLocked) {
  ActCounter acts(console_.changes);
  console_.SelectCell(3, 3);
  Extend(Qt::Key_Right, 3);
  console_.ClickTool("ID_ToggleInhibit");
  ASSERT_NE(Box(), nullptr);
  console_.locks.LockConsole(true);
  Answer("aidInhibitAll");
  EXPECT_EQ(console_.reporter.reports.size(), 1U);
  console_.ClickTool("ID_ToggleInhibit");
  EXPECT_EQ(Box(), nullptr) << "nothing is asked that would be refused";
  EXPECT_EQ(console_.Row(3), "........");
  EXPECT_THAT(acts.acts, IsEmpty());
}

TEST_F(XmapBlockTest, TakesActOnTheCurrentCellAlone) {
  console_.SelectCell(3, 3);
  Extend(Qt::Key_Right, 3);
  console_.ClickTool("ID_Take");
  EXPECT_EQ(console_.port.TakeWritten(), "FD 03 00 01 00 01 00 05 FF");
  console_.ClickTool("ID_Call");
  EXPECT_EQ(console_.port.TakeWritten(), "FD 06 01 01 00 01 00 08 FF");
}

TEST_F(XmapBlockTest, ChosenCellsAreSeen) {
  console_.SelectCell(3, 3);
  const QPoint cell = console_.CellCentre(4, 5);
  const QColor before = test::PixelOf(test::Viewport(console_), cell);
  Extend(Qt::Key_Right, 3);
  Extend(Qt::Key_Down, 2);
  EXPECT_NE(test::PixelOf(test::Viewport(console_), cell), before);
  console_.PressKey(Qt::Key_Escape);
  EXPECT_EQ(test::PixelOf(test::Viewport(console_), cell), before);
}

TEST(XmapBlock, AWholeMapOf256IsOneAct) {
  test::XmapConsole console(256);
  console.Open();
  ActCounter acts(console.changes);
  console.PressKey(Qt::Key_End, Qt::ControlModifier | Qt::ShiftModifier);
  console.ClickTool("ID_ToggleInhibit");
  auto& box = test::Find<QMessageBox>(*console.window, "aidInhibitQuestion");
  EXPECT_EQ(box.text(), QStringLiteral("Inhibit 65536 crosspoints?"));
  QTest::mouseClick(&test::Find<QPushButton>(box, "aidInhibitAll"), Qt::LeftButton);
  QCoreApplication::sendPostedEvents();
  EXPECT_THAT(acts.acts, ElementsAre(256));
  EXPECT_EQ(console.Text(256, "Inhibits"), std::string(256, '1'));
  EXPECT_EQ(console.Row(257), std::string(256, '2'));
  EXPECT_THAT(console.reporter.reports, IsEmpty());
}

}  // namespace
}  // namespace views
