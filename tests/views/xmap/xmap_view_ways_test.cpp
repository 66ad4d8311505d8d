// SPDX-License-Identifier: MIT
//
// Undo Last Take, what the headers say, and the ways from the map to other views.

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <QContextMenuEvent>
#include <QHeaderView>
#include <QMenu>
#include <QMessageBox>
#include <QPushButton>
#include <QScrollBar>
#include <QSignalSpy>
#include <QTableView>
#include <QTest>
#include <QToolTip>

#include "tests/views/gui_support.h"
#include "tests/views/xmap/xmap_console.h"
#include "views/xmap/xmap_view.h"

namespace views {
namespace {

using testing::IsEmpty;

class XmapTakeUndoTest : public testing::Test {
 protected:
  void SetUp() override {
    console_.Open();
    console_.model.LinkStatus = {1, 1, 0};
    ReportMap();
    QObject::connect(console_.view, &XmapView::NoteRequested, console_.view,
                     [this](const QString& note) { note_ = note; });
  }

  XmapView& View() { return *console_.view; }
  void Report(int output, std::initializer_list<int> inputs, int mode = 0) {
    for (int input = 1; input <= 8; ++input) console_.model.CrosspointMap.At(output, input) = 0;
    for (const int input : inputs) console_.model.CrosspointMap.At(output, input) = 1;
    console_.model.ChannelStatus[output] = static_cast<std::uint8_t>(mode);
    View().UpdateXmap(output, mode);
  }
  // Every row was reported since the link came up.
  void ReportMap() {
    for (int output = 1; output <= 8; ++output) console_.knownMap.CrosspointRowChanged(output, 0);
  }
  // The link is lost and comes back, and nobody has asked for the map yet.
  void LoseMap() {
    console_.model.LinkStatus = {};
    console_.knownMap.LinkChanged();
    console_.model.LinkStatus = {1, 1, 0};
    console_.knownMap.LinkChanged();
  }
  // Output 6 hears inputs 1 and 8, takes input 3 in their place, and that is undone.
  void BeginUndoOfSum() {
    Report(6, {1, 8});
    console_.SelectCell(7, 4);
    console_.ClickTool("ID_Take");
    (void)console_.port.TakeWritten();
    Report(6, {3});
    Choose();
    ASSERT_NE(Box(), nullptr);
    EXPECT_EQ(Box()->text(), QStringLiteral("Out 06: back to In 01, In 08?"));
    Answer();
    EXPECT_EQ(console_.port.TakeWritten(), "FD 02 00 00 00 05 00 07 FF");
  }
  // Output 6 hears input 8, and takes input 3 in its place.
  void Take() {
    Report(6, {8});
    console_.SelectCell(7, 4);
    console_.ClickTool("ID_Take");
    ASSERT_EQ(console_.port.TakeWritten(), "FD 03 00 02 00 05 00 0A FF");
  }
  void Choose() { test::Find<QAction>(View(), "aidUndoTake").trigger(); }
  QMessageBox* Box() {
    return console_.window->findChild<QMessageBox*>(QStringLiteral("aidUndoTakeQuestion"));
  }
  void Answer() {
    QTest::mouseClick(&test::Find<QPushButton>(*Box(), "aidTakeBack"), Qt::LeftButton);
    QCoreApplication::sendPostedEvents();
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
  }

  test::XmapConsole console_{8};
  QString note_;
};

TEST_F(XmapTakeUndoTest, AsksAndBringsBackWhatWasHeard) {
  Take();
  Report(6, {3});
  const QSignalSpy sent(&View(), &XmapView::TakeSent);
  console_.SelectCell(2, 2);
  console_.PressKey(Qt::Key_U, Qt::ControlModifier);
  ASSERT_NE(Box(), nullptr);
  EXPECT_EQ(Box()->text(), QStringLiteral("Out 06: back to In 08?"));
  EXPECT_EQ(console_.port.TakeWritten(), "") << "nothing before the answer";
  Answer();
  EXPECT_EQ(console_.port.TakeWritten(), "FD 03 00 07 00 05 00 0F FF");
  ASSERT_EQ(sent.size(), 1) << "for the log";
  EXPECT_EQ(sent[0], QVariantList({6, 8, 3}));
  Choose();
  EXPECT_EQ(note_, QStringLiteral("Take not undone: Out 06 was not reported since"));
  Report(6, {8});
  Choose();
  EXPECT_EQ(Box(), nullptr);
  EXPECT_EQ(note_, QStringLiteral("There is no take to undo"));
  EXPECT_EQ(console_.port.TakeWritten(), "");
}

TEST_F(XmapTakeUndoTest, SeveralSourcesComeBackOneByOneAndTheTakenOneGoes) {
  BeginUndoOfSum();
  Report(5, {3});
  Report(6, {3});
  EXPECT_EQ(console_.port.TakeWritten(), "") << "the first has not been carried out yet";
  Report(6, {1, 3});
  EXPECT_EQ(console_.port.TakeWritten(), "FD 02 00 07 00 05 00 0E FF");
  Report(6, {1, 3, 8});
  EXPECT_EQ(console_.port.TakeWritten(), "FD 00 00 02 00 05 00 07 FF");
  Report(6, {1, 8});
  EXPECT_EQ(console_.port.TakeWritten(), "");
  EXPECT_EQ(note_, QString());
  Choose();
  EXPECT_EQ(note_, QStringLiteral("There is no take to undo"));
}

TEST_F(XmapTakeUndoTest, ALinkThatIsLostBetweenTwoStepsIsToldAndTheTakeKept) {
  BeginUndoOfSum();
  console_.model.LinkStatus = {};
  Report(6, {1, 3});
  EXPECT_EQ(console_.port.TakeWritten(), "");
  EXPECT_EQ(note_, QStringLiteral("Take undone in part: Out 06 is to hear In 01, In 08"));
  console_.model.LinkStatus = {1, 1, 0};
  Report(6, {1, 3});
  EXPECT_EQ(console_.port.TakeWritten(), "") << "not by itself";
  Choose();
  Answer();
  EXPECT_EQ(console_.port.TakeWritten(), "FD 02 00 07 00 05 00 0E FF") << "what was open";
}

TEST_F(XmapTakeUndoTest, ALockBetweenTwoStepsEndsIt) {
  BeginUndoOfSum();
  console_.locks.LockOutput(6, model::Locks::Against::Console);
  Report(6, {1, 3});
  EXPECT_EQ(console_.port.TakeWritten(), "");
  EXPECT_EQ(console_.reporter.reports.size(), 1U);
  EXPECT_EQ(note_, QStringLiteral("Take undone in part: Out 06 is to hear In 01, In 08"));
}

TEST_F(XmapTakeUndoTest, ARowThatChangesBetweenTwoStepsIsLeftAlone) {
  BeginUndoOfSum();
  Report(6, {5});
  EXPECT_EQ(console_.port.TakeWritten(), "");
  EXPECT_EQ(note_, QStringLiteral("Take not undone: Out 06 has changed since"));
}

TEST_F(XmapTakeUndoTest, AStepThatCannotBeSentKeepsTheTake) {
  Take();
  Report(6, {3});
  Choose();
  console_.port.Close();
  Answer();
  (void)console_.port.TakeWritten();
  ASSERT_TRUE(console_.port.Open(1).ok());
  Choose();
  ASSERT_NE(Box(), nullptr) << "it can be asked again";
  Answer();
  EXPECT_EQ(console_.port.TakeWritten(), "FD 03 00 07 00 05 00 0F FF");
}

TEST_F(XmapTakeUndoTest, ALinkThatIsLostWhileTheQuestionStandsSendsNothing) {
  Take();
  Report(6, {3});
  Choose();
  console_.model.LinkStatus = {};
  Answer();
  EXPECT_EQ(console_.port.TakeWritten(), "");
  EXPECT_EQ(note_, QStringLiteral("Take not undone: not connected"));
}

TEST_F(XmapTakeUndoTest, ATakeOnAMapThatIsNotKnownIsNotUndone) {
  LoseMap();
  Take();
  ReportMap();
  Report(6, {3});
  Choose();
  EXPECT_EQ(Box(), nullptr);
  EXPECT_EQ(note_, QStringLiteral("Take not undone: what Out 06 heard before is not known"));
}

TEST_F(XmapTakeUndoTest, AMapFromBeforeTheLinkWasLostIsAskedForFirst) {
  Take();
  Report(6, {3});
  LoseMap();
  Choose();
  EXPECT_EQ(Box(), nullptr);
  EXPECT_EQ(note_, QStringLiteral("Take not undone: the map is from before the link was lost; "
                                  "Refresh Map"));
  ReportMap();
  Choose();
  EXPECT_NE(Box(), nullptr);
}

TEST_F(XmapTakeUndoTest, ATakeThatIsRefusedIsNotClaimedFromAnother) {
  Take();
  Report(6, {8});
  EXPECT_TRUE(QTest::qWaitFor(
      [this] {
        Choose();
        return note_ == QStringLiteral("There is no take to undo");
      },
      30000));
  Report(6, {3});
  Choose();
  EXPECT_EQ(Box(), nullptr) << "it was made by another";
}

TEST_F(XmapTakeUndoTest, OfAnOutputThatHeardNothing) {
  console_.SelectCell(7, 4);
  console_.ClickTool("ID_Take");
  (void)console_.port.TakeWritten();
  Report(6, {3});
  Choose();
  EXPECT_EQ(Box()->text(), QStringLiteral("Out 06: back to no input?"));
}

TEST_F(XmapTakeUndoTest, CancelSendsNothing) {
  Take();
  Report(6, {3});
  Choose();
  QTest::keyClick(Box(), Qt::Key_Return);
  QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
  EXPECT_EQ(Box(), nullptr);
  EXPECT_EQ(console_.port.TakeWritten(), "");
  Choose();
  EXPECT_NE(Box(), nullptr) << "it can be asked again";
}

TEST_F(XmapTakeUndoTest, SaysWhyItDoesNot) {
  const auto expect = [this](const QString& why) {
    note_.clear();
    Choose();
    EXPECT_EQ(Box(), nullptr);
    EXPECT_EQ(note_, why);
  };
  console_.model.DemoMode = 1;
  expect(QStringLiteral("Take not undone: this is the demo mode"));
  console_.model.DemoMode = 0;
  expect(QStringLiteral("There is no take to undo"));
  Take();
  expect(QStringLiteral("Take not undone: Out 06 was not reported since"));
  Report(6, {3});
  console_.model.LinkStatus = {};
  expect(QStringLiteral("Take not undone: not connected"));
  console_.model.LinkStatus = {1, 1, 0};
  console_.model.DemoMode = 1;
  expect(QStringLiteral("Take not undone: this is the demo mode"));
  console_.model.DemoMode = 0;
  console_.SetField(6, "Inhibits", "00000001");
  View().UpdateXmapInhibits();
  expect(QStringLiteral("Take not undone: what Out 06 heard is inhibited"));
  Report(6, {3}, 1);
  expect(QStringLiteral("Take not undone: Out 06 has or had a call or priority listen"));
  Report(6, {3, 4});
  expect(QStringLiteral("Take not undone: Out 06 has changed since"));
  EXPECT_EQ(console_.port.TakeWritten(), "");
  EXPECT_THAT(console_.reporter.reports, IsEmpty());
}

TEST_F(XmapTakeUndoTest, ARowThatChangesWhileTheQuestionStandsIsNotTouched) {
  Take();
  Report(6, {3});
  Choose();
  ASSERT_NE(Box(), nullptr);
  Report(6, {4});
  Answer();
  EXPECT_EQ(console_.port.TakeWritten(), "");
  EXPECT_EQ(note_, QStringLiteral("Take not undone: Out 06 has changed since"));
}

TEST_F(XmapTakeUndoTest, ALockedOutputStaysAsItIs) {
  Take();
  Report(6, {3});
  console_.locks.LockOutput(6, model::Locks::Against::Console);
  Choose();
  EXPECT_EQ(Box(), nullptr);
  EXPECT_EQ(console_.reporter.reports.size(), 1U);
  console_.locks.UnlockOutput(6);
  Choose();
  ASSERT_NE(Box(), nullptr);
  console_.locks.LockConsole(true);
  Answer();
  EXPECT_EQ(console_.port.TakeWritten(), "");
}

TEST_F(XmapTakeUndoTest, OtherToolsAreNoTakes) {
  console_.SelectCell(7, 4);
  console_.ClickTool("ID_Sum");
  Report(6, {3});
  Choose();
  EXPECT_EQ(note_, QStringLiteral("There is no take to undo"));
}

QString TipOf(QHeaderView& header, int channel) {
  const int at = header.sectionViewportPosition(channel - 1) + 5;
  const QPoint point = header.orientation() == Qt::Horizontal ? QPoint(at, 5) : QPoint(5, at);
  QHelpEvent help(QEvent::ToolTip, point, header.viewport()->mapToGlobal(point));
  QCoreApplication::sendEvent(header.viewport(), &help);
  const QString tip = QToolTip::text();
  QToolTip::hideText();
  return tip;
}

TEST(XmapHearing, TheHeadersSayWhatHearsWhat) {
  test::XmapConsole console(8);
  console.SetField(2, "Label", "SOUND 1");
  console.SetField(3, "InLabel", "DIRECTOR");
  console.SetField(4, "InLabel", "   ");
  XmapView& view = console.Open();
  console.model.CrosspointMap.At(2, 3) = 1;
  console.model.CrosspointMap.At(2, 4) = 1;
  view.UpdateXmap(2, 0);
  console.model.CrosspointMap.At(5, 3) = 1;
  view.UpdateXmap(5, 1);
  const auto& table = static_cast<QTableView&>(console.Grid());
  EXPECT_EQ(TipOf(*table.verticalHeader(), 2),
            QStringLiteral("Out 02  SOUND 1\nSOUND 1 hears DIRECTOR, In 04; by priority: none"));
  EXPECT_EQ(TipOf(*table.verticalHeader(), 5),
            QStringLiteral("Out 05  Sta. 005\nSta. 005 hears none; by priority: DIRECTOR"));
  EXPECT_EQ(TipOf(*table.horizontalHeader(), 3),
            QStringLiteral("In 03  DIRECTOR\nDIRECTOR is heard by SOUND 1; by priority: Sta. 005"));
  EXPECT_EQ(TipOf(*table.horizontalHeader(), 1),
            QStringLiteral("In 01  Inpt 001\nInpt 001 is heard by none; by priority: none"));
}

TEST(XmapHearing, TheReadoutSaysItOfTheCurrentRow) {
  test::XmapConsole console(8);
  XmapView& view = console.Open();
  console.SelectCell(3, 2);
  EXPECT_EQ(view.Detail(), QStringLiteral("Sta. 002 hears none; by priority: none"));
  console.model.CrosspointMap.At(2, 7) = 1;
  const QSignalSpy changed(&view, &XmapView::ReadoutChanged);
  view.UpdateXmap(2, 0);
  EXPECT_EQ(view.Detail(), QStringLiteral("Sta. 002 hears Inpt 007; by priority: none"));
  EXPECT_EQ(changed.size(), 1);
}

TEST(XmapHearing, OfManyTheFirstAreNamedAndTheOthersCounted) {
  test::XmapConsole console(256);
  console.SetField(1, "InLabel", "<b>A</b>");
  console.SetField(2, "Label", "<b>A</b>");
  XmapView& view = console.Open();
  for (int input = 1; input <= 256; ++input) console.model.CrosspointMap.At(1, input) = 1;
  view.UpdateXmap(1, 0);
  EXPECT_EQ(view.Detail(),
            QStringLiteral("Sta. 001 hears <b>A</b>, Inpt 002, Inpt 003, Inpt 004, Inpt 005, "
                           "Inpt 006, Inpt 007, Inpt 008, 248 more; by priority: none"));
  const auto& table = static_cast<QTableView&>(console.Grid());
  EXPECT_TRUE(TipOf(*table.verticalHeader(), 2).contains(QStringLiteral("&lt;b&gt;A")))
      << "a label is no markup";
}

class XmapWaysTest : public testing::Test {
 protected:
  void SetUp() override { console_.Open(); }

  XmapView& View() { return *console_.view; }
  // The menu of a channel's header.
  QMenu& HeaderMenu(Qt::Orientation side, int channel) {
    const auto& table = static_cast<QTableView&>(console_.Grid());
    QHeaderView& header =
        side == Qt::Vertical ? *table.verticalHeader() : *table.horizontalHeader();
    const int at = header.sectionViewportPosition(channel - 1) + 5;
    const QPoint point = side == Qt::Horizontal ? QPoint(at, 5) : QPoint(5, at);
    QTest::mouseClick(header.viewport(), Qt::RightButton, Qt::NoModifier, point);
    QContextMenuEvent event(QContextMenuEvent::Mouse, point, header.viewport()->mapToGlobal(point));
    QCoreApplication::sendEvent(header.viewport(), &event);
    return test::Find<QMenu>(View(), "aidHeaderMenu");
  }

  test::XmapConsole console_{8};
};

TEST_F(XmapWaysTest, AHeadersMenuLeadsToItsStation) {
  const QSignalSpy program(&View(), &XmapView::ProgramRequested);
  const QSignalSpy label(&View(), &XmapView::EditLabelRequested);
  console_.SelectCell(3, 3);
  console_.PressKey(Qt::Key_Right, Qt::ShiftModifier);
  QMenu& outputs = HeaderMenu(Qt::Vertical, 5);
  test::Find<QAction>(outputs, "aidProgramButtons").trigger();
  delete &outputs;
  ASSERT_EQ(program.size(), 1);
  EXPECT_EQ(program[0][0].toInt(), 5);
  QMenu& inputs = HeaderMenu(Qt::Horizontal, 7);
  test::Find<QAction>(inputs, "aidEditLabel").trigger();
  ASSERT_EQ(label.size(), 1);
  EXPECT_EQ(label[0], QVariantList({7, true}));
  EXPECT_EQ(console_.SelectedCell(), QPoint(3, 3)) << "what is chosen stays chosen";
  EXPECT_EQ(View().Detail(), QStringLiteral("2 crosspoints chosen"));
}

TEST_F(XmapWaysTest, AHeadersMenuHoldsNothingThatActsOnTheCurrentCell) {
  const auto names = [](const QMenu& menu) {
    QStringList found;
    for (const QAction* const action : menu.actions()) {
      if (!action->isSeparator()) found.append(action->objectName());
    }
    return found.join(u' ');
  };
  QMenu& outputs = HeaderMenu(Qt::Vertical, 5);
  EXPECT_EQ(names(outputs),
            QStringLiteral("aidProgramButtons aidEditLabel aidLockOutput aidLockForPanels"));
  delete &outputs;
  EXPECT_EQ(names(HeaderMenu(Qt::Horizontal, 7)), QStringLiteral("aidProgramButtons aidEditLabel"));
}

TEST_F(XmapWaysTest, AHeadersMenuLocksItsOwnRow) {
  console_.SelectCell(3, 3);
  QMenu& first = HeaderMenu(Qt::Vertical, 5);
  EXPECT_FALSE(test::Find<QAction>(first, "aidLockForPanels").isEnabled());
  test::Find<QAction>(first, "aidLockOutput").trigger();
  delete &first;
  EXPECT_TRUE(console_.locks.IsLocked(5));
  EXPECT_FALSE(console_.locks.IsLocked(2));
  QMenu& second = HeaderMenu(Qt::Vertical, 5);
  test::Find<QAction>(second, "aidLockForPanels").trigger();
  delete &second;
  EXPECT_TRUE(console_.locks.IsLockedForPanels(5));
  QMenu& third = HeaderMenu(Qt::Vertical, 5);
  EXPECT_TRUE(test::Find<QAction>(third, "aidLockForPanels").isChecked());
  test::Find<QAction>(third, "aidLockOutput").trigger();
  EXPECT_FALSE(console_.locks.IsLocked(5));
}

TEST_F(XmapWaysTest, TheKeysWithShiftLeadToTheStationOfTheCurrentColumn) {
  const QSignalSpy program(&View(), &XmapView::ProgramRequested);
  const QSignalSpy label(&View(), &XmapView::EditLabelRequested);
  console_.SelectCell(4, 6);
  console_.PressKey(Qt::Key_B, Qt::ControlModifier | Qt::ShiftModifier);
  ASSERT_EQ(program.size(), 1);
  EXPECT_EQ(program[0][0].toInt(), 5);
  console_.PressKey(Qt::Key_F2, Qt::ShiftModifier);
  ASSERT_EQ(label.size(), 1);
  EXPECT_EQ(label[0], QVariantList({5, true}));
}

TEST(XmapWays, TheCellThatIsCurrentAlreadyComesIntoSight) {
  test::XmapConsole console(256);
  XmapView& view = console.Open();
  view.GoTo(200, 200);
  auto& table = static_cast<QTableView&>(console.Grid());
  table.verticalScrollBar()->setValue(0);
  table.horizontalScrollBar()->setValue(0);
  view.GoToOutput(200);
  EXPECT_TRUE(test::Viewport(console).rect().contains(console.CellCentre(201, 201)));
}

TEST_F(XmapWaysTest, TheKeysLeadToTheStationOfTheCurrentRow) {
  const QSignalSpy program(&View(), &XmapView::ProgramRequested);
  const QSignalSpy label(&View(), &XmapView::EditLabelRequested);
  console_.SelectCell(4, 6);
  console_.PressKey(Qt::Key_B, Qt::ControlModifier);
  ASSERT_EQ(program.size(), 1);
  EXPECT_EQ(program[0][0].toInt(), 3);
  console_.PressKey(Qt::Key_F2);
  ASSERT_EQ(label.size(), 1);
  EXPECT_EQ(label[0], QVariantList({3, false}));
  EXPECT_EQ(console_.port.TakeWritten(), "");
}

TEST_F(XmapWaysTest, GoesToTheRowOfAnOutputAndTheColumnOfAnInput) {
  console_.SelectCell(4, 6);
  View().GoToOutput(8);
  EXPECT_EQ(console_.SelectedCell(), QPoint(6, 9));
  View().GoToInput(2);
  EXPECT_EQ(console_.SelectedCell(), QPoint(3, 9));
  View().GoToOutput(9);
  EXPECT_EQ(console_.SelectedCell(), QPoint(3, 9)) << "there is no such output";
}

}  // namespace
}  // namespace views
