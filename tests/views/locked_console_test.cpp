// SPDX-License-Identifier: MIT
//
// A locked console: its views show everything, and nothing is sent or stored from them.

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <QCheckBox>
#include <QInputMethodEvent>
#include <QRadioButton>
#include <QTest>

#include "tests/support/recording_changes.h"
#include "tests/views/labels/labels_console.h"
#include "tests/views/levels/levels_console.h"
#include "tests/views/programming/buttons_console.h"
#include "tests/views/xmap/xmap_console.h"

namespace {

using testing::Each;
using testing::IsEmpty;
using testing::SizeIs;

constexpr char kRefused[] = "exclamation|Control Error|Action Not Allowed While Console Is Locked";

TEST(LockedConsole, TheToolsOfTheMapAreRefused) {
  test::XmapConsole console(8);
  console.Open();
  console.locks.LockConsole(true);
  test::RecordingChanges heard(console.changes);
  console.SelectCell(7, 9);
  for (const char* const tool : {"ID_Take", "ID_Sum", "ID_Call", "ID_PriorityListen",
                                 "ID_ToggleInhibit", "ID_RefreshMap", "ID_SendInhibits"}) {
    console.model.XmapComplete = true;
    console.ClickTool(tool);
    EXPECT_THAT(console.reporter.reports, SizeIs(1)) << tool;
    EXPECT_THAT(console.reporter.reports, Each(kRefused)) << tool;
    console.reporter.reports.clear();
    EXPECT_TRUE(console.model.XmapComplete);
  }
  EXPECT_EQ(console.port.TakeWritten(), "");
  EXPECT_THAT(console.tables.traffic, IsEmpty());
  EXPECT_THAT(heard.Take(), IsEmpty());
  console.locks.LockConsole(false);
  console.ClickTool("ID_Sum");
  EXPECT_EQ(console.port.TakeWritten(), "FD 02 00 07 00 05 00 0E FF");
}

TEST(LockedConsole, TheDemoModeDrawsNothing) {
  test::XmapConsole console(8);
  console.model.DemoMode = 1;
  console.Open();
  console.locks.LockConsole(true);
  console.SelectCell(7, 9);
  console.ClickTool("ID_Take");
  EXPECT_EQ(console.Mark(7, 9), 0);
}

TEST(LockedConsole, NavigationWritesNothing) {
  test::ButtonsConsole console;
  console.Open();
  console.GoToTab(5);
  console.ClickBox("ckStationSel", 0);
  console.ChooseOption(1);  // without a target: navigation would store it as inactive
  test::RecordingChanges heard(console.changes);
  console.locks.LockConsole(true);
  console.Press("cmdNext");
  console.Press("cmdPrev");
  console.GoToTab(1);
  console.GoToTab(5);
  EXPECT_THAT(heard.Take(), IsEmpty());
  EXPECT_THAT(console.reporter.reports, IsEmpty());
  console.locks.LockConsole(false);
  console.Press("cmdNext");
  EXPECT_THAT(heard.Take(), SizeIs(1)) << "there was something to write";
}

TEST(LockedConsole, EditsOfTheProgrammingAreRefusedAndTakenBack) {
  test::ButtonsConsole console;
  console.Open();
  test::RecordingChanges heard(console.changes);
  console.locks.LockConsole(true);
  console.GoToTab(5);
  auto& box = console.Find<QCheckBox>("ckStationSel", 4);
  console.ClickBox("ckStationSel", 4);
  EXPECT_FALSE(box.isChecked());
  console.ChooseOption(1);
  EXPECT_FALSE(console.Find<QRadioButton>("optButType", 1).isChecked());
  console.GoToTab(6);
  console.ClickBox("ckRelaySel", 63);
  console.GoToTab(7);
  console.ClickBox("ckOptoStationSel", 2);
  EXPECT_THAT(console.reporter.reports, Each(kRefused));
  EXPECT_THAT(console.reporter.reports, SizeIs(4));
  EXPECT_THAT(heard.Take(), IsEmpty());
  console.reporter.reports.clear();
  console.ClickTool("ID_SendSingleStation");
  console.ClickTool("ID_SendOptoData");
  EXPECT_THAT(console.reporter.reports, SizeIs(2));
  EXPECT_THAT(console.tables.traffic, IsEmpty());
}

TEST(LockedConsole, LabelsAreNotStored) {
  test::LabelsConsole console;
  console.Open();
  test::RecordingChanges heard(console.changes);
  console.locks.LockConsole(true);
  console.Click(4, test::kLabel);
  console.Press(Qt::Key_C);
  console.Press(Qt::Key_F2);
  console.Press(Qt::Key_Down);
  console.Press(Qt::Key_Escape);
  EXPECT_EQ(console.Editor(), nullptr);
  EXPECT_EQ(console.Current(), QStringLiteral("5,1"));
  EXPECT_THAT(console.reporter.reports, SizeIs(2));
  console.Paste(QStringLiteral("MIC 3\n"));
  console.ClickTool("ID_DownloadAlphas");
  EXPECT_THAT(console.reporter.reports, Each(kRefused));
  EXPECT_THAT(heard.Take(), IsEmpty());
  EXPECT_THAT(console.tables.traffic, IsEmpty());
  console.locks.LockConsole(false);
  console.Press(Qt::Key_F2);
  EXPECT_NE(console.Editor(), nullptr);
}

TEST(LockedConsole, WhatAnInputMethodComposesIsRefusedToo) {
  test::LabelsConsole console;
  console.Open();
  console.Click(4, test::kLabel);
  console.locks.LockConsole(true);
  QInputMethodEvent composed;
  composed.setCommitString(QStringLiteral("X"));
  QCoreApplication::sendEvent(&console.Grid(), &composed);
  EXPECT_EQ(console.Editor(), nullptr);
  EXPECT_THAT(console.reporter.reports, testing::ElementsAre(kRefused));
  console.locks.LockConsole(false);
  QCoreApplication::sendEvent(&console.Grid(), &composed);
  EXPECT_NE(console.Editor(), nullptr);
}

TEST(LockedConsole, LevelsCanBeReadAndNotMoved) {
  test::LevelsConsole console;
  console.locks.LockConsole(true);
  console.SetGain(3, 60);
  console.Open();
  EXPECT_FALSE(console.Slider(3).isEnabled());
  EXPECT_EQ(console.Find<QLabel>(QStringLiteral("aidLevelsLocked")).text(),
            QStringLiteral("Console locked"));
  console.SetGain(3, 50);
  console.dialog->Update_GainMap();
  EXPECT_EQ(console.Slider(3).value(), 77);
  EXPECT_EQ(console.port.TakeWritten(), "");
}

}  // namespace
