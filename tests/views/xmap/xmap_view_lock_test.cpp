// SPDX-License-Identifier: MIT
//
// Locked outputs in the crosspoint map.

#include "views/xmap/xmap_view.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <QAction>
#include <QHeaderView>
#include <QSignalSpy>
#include <QTableView>

#include "tests/views/xmap/xmap_console.h"

namespace views {
namespace {

using test::XmapConsole;
using testing::ElementsAre;
using testing::IsEmpty;

TEST(XmapView, ALockedOutputRefusesEveryToolThatTakes) {
  XmapConsole console(8);
  console.Open();
  console.SelectCell(7, 9);
  console.subWindow->findChild<QAction*>(QStringLiteral("aidLockOutput"))->trigger();
  ASSERT_TRUE(console.locks.IsLocked(6));
  console.model.DemoMode = 1;
  for (const char* const tool : {"ID_Take", "ID_Sum", "ID_Call", "ID_PriorityListen"}) {
    console.ClickTool(tool);
    EXPECT_THAT(console.reporter.reports,
                ElementsAre("exclamation|Control Error|Action Not Allowed On Locked Output"))
        << tool;
    console.reporter.reports.clear();
  }
  console.subWindow->findChild<QAction*>(QStringLiteral("ID_Listen"))->trigger();
  EXPECT_EQ(console.reporter.reports.size(), 1U);
  EXPECT_EQ(console.port.TakeWritten(), "");
  EXPECT_EQ(console.Mark(7, 9), 0) << "the demo mode draws nothing either";
  console.SelectCell(8, 9);
  console.ClickTool("ID_Sum");
  EXPECT_EQ(console.port.TakeWritten(), "FD 02 00 07 00 06 00 0F FF") << "another output";
}

TEST(XmapView, AnInhibitIsNoCrosspointOfTheLockedOutput) {
  XmapConsole console(8);
  console.Open();
  console.locks.LockOutput(6, model::Locks::Against::ConsoleAndPanels);
  console.SelectCell(7, 9);
  console.ClickTool("ID_ToggleInhibit");
  EXPECT_EQ(console.Mark(7, 9), 2);
  EXPECT_THAT(console.reporter.reports, IsEmpty());
}

TEST(XmapView, ALockIsSetAndTakenBackOnTheCurrentOutput) {
  XmapConsole console(8);
  XmapView& view = console.Open();
  QSignalSpy notes(&view, &XmapView::NoteRequested);
  auto& lock = *console.subWindow->findChild<QAction*>(QStringLiteral("aidLockOutput"));
  auto& forPanels = *console.subWindow->findChild<QAction*>(QStringLiteral("aidLockForPanels"));
  auto& grid = *view.findChild<QTableView*>(QStringLiteral("msfgXmap"));
  const auto spoken = [&](int output) {
    return grid.model()
        ->headerData(output - 1, Qt::Vertical, Qt::AccessibleTextRole)
        .toString()
        .toStdString();
  };
  console.SelectCell(3, 4);
  EXPECT_FALSE(forPanels.isEnabled());
  lock.trigger();
  EXPECT_EQ(spoken(2), "Out 02  Sta. 002: Output locked");
  EXPECT_EQ(spoken(3), "Out 03  Sta. 003");
  EXPECT_EQ(view.Readout(), QStringLiteral("Out 02  Sta. 002  <  In 03  Inpt 003: No crosspoint. "
                                           "Output locked"));
  EXPECT_FALSE(console.locks.IsLockedForPanels(2)) << "off unless chosen";
  ASSERT_TRUE(forPanels.isEnabled());
  forPanels.trigger();
  EXPECT_TRUE(console.locks.IsLockedForPanels(2));
  EXPECT_EQ(spoken(2), "Out 02  Sta. 002: Output locked, for panels too");
  console.SelectCell(4, 4);
  EXPECT_FALSE(lock.isChecked());
  EXPECT_FALSE(forPanels.isEnabled());
  console.SelectCell(3, 4);
  EXPECT_TRUE(lock.isChecked());
  EXPECT_TRUE(forPanels.isChecked());
  lock.trigger();
  EXPECT_FALSE(console.locks.IsLocked(2));
  ASSERT_EQ(notes.size(), 3);
  EXPECT_EQ(notes[0][0], QStringLiteral("Out 02  Sta. 002: Output locked"));
  EXPECT_EQ(notes[2][0], QStringLiteral("Out 02  Sta. 002: Output unlocked"));
  console.locks.LockConsole(true);
  lock.trigger();
  EXPECT_FALSE(console.locks.IsLocked(2)) << "nothing is stored while the console is locked";
  EXPECT_FALSE(lock.isChecked());
}

TEST(XmapView, TheHeaderOfALockedOutputHasAPadlock) {
  XmapConsole console(8);
  XmapView& view = console.Open();
  auto& header = *view.findChild<QTableView*>(QStringLiteral("msfgXmap"))->verticalHeader();
  const auto picture = [&] { return header.viewport()->grab().toImage(); };
  const QImage open = picture();
  console.locks.LockOutput(2, model::Locks::Against::Console);
  const QImage locked = picture();
  EXPECT_NE(open, locked);
  console.locks.LockOutput(2, model::Locks::Against::ConsoleAndPanels);
  EXPECT_NE(picture(), locked);
  console.locks.UnlockOutput(2);
  EXPECT_EQ(picture(), open);
}

}  // namespace
}  // namespace views
