// SPDX-License-Identifier: MIT
//
// The grid of station labels while the database changes behind it, and with databases that lack
// something.

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <QScrollBar>

#include "db/keep_position.h"
#include "tests/views/labels/labels_console.h"

namespace {

using test::LabelsConsole;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;
using namespace test;  // NOLINT(google-build-using-namespace): the columns

TEST(AlphasRefresh, ShowsWhatIsStoredInTheSamePlace) {
  LabelsConsole console;
  console.GoToStation(9);
  console.Open();
  console.Click(60, kInput);
  const int scrolled = console.Grid().verticalScrollBar()->value();
  ASSERT_GT(scrolled, 0);
  console.SetField(61, "InLabel", "NEW");
  console.view->UpdateLabels();
  EXPECT_EQ(console.Cell(60, kInput), QStringLiteral("NEW"));
  EXPECT_EQ(console.Current(), QStringLiteral("60,2"));
  EXPECT_EQ(console.Grid().verticalScrollBar()->value(), scrolled);
  EXPECT_EQ(console.CurrentStation(), 9);
  EXPECT_THAT(console.said, IsEmpty());
}

TEST(AlphasRefresh, KeepsTheOrder) {
  LabelsConsole console;
  console.Open();
  console.ClickHeader(kLabel);
  console.ClickHeader(kLabel);
  console.Click(0, kLabel);
  ASSERT_EQ(console.Cell(0, kStation), QStringLiteral("64"));
  console.SetField(9, "Label", "zebra");
  console.view->UpdateLabels();
  EXPECT_EQ(console.Column(kStation, 2), Texts({"9", "64"}));
  EXPECT_EQ(console.Current(), QStringLiteral("1,1")) << "station 64 still";
}

TEST(AlphasRefresh, KeepsAnEditThatIsNotStored) {
  LabelsConsole console;
  console.Open();
  console.Click(4, kLabel);
  console.Type("MIC");
  console.Press(Qt::Key_Tab);
  console.Type("CAM");
  console.SetField(5, "Label", "A");
  console.SetField(5, "InLabel", "B");
  console.SetField(5, "Notes", "C");
  console.view->UpdateLabels();
  EXPECT_EQ(console.Cell(4, kLabel), QStringLiteral("MIC"));
  EXPECT_EQ(console.Cell(4, kNotes), QStringLiteral("C"));
  ASSERT_NE(console.Editor(), nullptr);
  EXPECT_EQ(qobject_cast<QLineEdit*>(console.Editor())->text(), QStringLiteral("CAM"));
  console.Press(Qt::Key_Return);
  EXPECT_EQ(console.Text(5, "Label"), "MIC");
  EXPECT_EQ(console.Text(5, "InLabel"), "CAM");
  EXPECT_EQ(console.Text(5, "Notes"), "C") << "a field that was not edited is not written back";
}

TEST(AlphasRefresh, ARowBeingEditedDoesNotJump) {
  LabelsConsole console;
  console.Open();
  console.ClickHeader(kLabel);
  console.Click(0, kNotes);
  const QString station = console.Cell(0, kStation);
  console.Type("x");
  console.SetField(station.toInt(), "Label", "zzz");
  console.view->UpdateLabels();
  EXPECT_EQ(console.Cell(0, kStation), station);
  EXPECT_EQ(console.Cell(0, kLabel), QStringLiteral("zzz"));
  console.Press(Qt::Key_Return);
  EXPECT_EQ(console.Cell(0, kStation), station) << "nor when it is stored";
}

TEST(AlphasRefresh, RecordsMayComeAndGo) {
  LabelsConsole console(130);
  console.Open();
  ASSERT_EQ(console.Grid().model()->rowCount(), 130);
  console.Click(99, kNotes);
  console.Type("x");
  {
    const db::KeepPosition keep(*console.stations);
    ASSERT_TRUE(console.stations->Seek(7).ok());
    ASSERT_TRUE(console.stations->Delete().ok());
  }
  console.view->UpdateLabels();
  EXPECT_EQ(console.Grid().model()->rowCount(), 129);
  EXPECT_EQ(console.Current(), QStringLiteral("98,6")) << "station 100 still";
  EXPECT_TRUE(console.IsMarkedEdited(98));
  EXPECT_TRUE(console.view->StoreRow());
  EXPECT_EQ(console.Text(100, "Notes"), "x");
}

TEST(AlphasRefresh, WithoutADatabaseItSaysSoOnce) {
  LabelsConsole console;
  console.databaseIsOpen = false;
  console.Open();
  EXPECT_EQ(console.Grid().model()->rowCount(), 0);
  ASSERT_EQ(console.reporter.reports.size(), 1U);
  EXPECT_THAT(console.reporter.reports[0],
              HasSubstr("critical|Control Error|Error Reading Station Labels\r\rError # "));
  for (int i = 0; i < 12; ++i) console.view->UpdateLabels();
  EXPECT_EQ(console.reporter.reports.size(), 1U);
  console.Press(Qt::Key_Return);
  console.Press(Qt::Key_F2);
  console.Type("x");
  console.Press(Qt::Key_Down);
  console.Paste(QStringLiteral("A"));
  EXPECT_EQ(console.Copy(), "");
  console.ClickHeader(kLabel);
  console.Press(Qt::Key_F, Qt::ControlModifier);
  console.Type("1");
  console.Press(Qt::Key_Return);
  console.Press(Qt::Key_Escape);
  EXPECT_TRUE(console.view->StoreRow());
  EXPECT_EQ(console.reporter.reports.size(), 1U);

  console.databaseIsOpen = true;
  console.view->UpdateLabels();
  EXPECT_EQ(console.Grid().model()->rowCount(), 128);
  console.databaseIsOpen = false;
  console.view->UpdateLabels();
  EXPECT_EQ(console.reporter.reports.size(), 2U) << "it was there in between";
  EXPECT_EQ(console.Grid().model()->rowCount(), 128) << "what was read stays";
}

TEST(AlphasRefresh, WithoutRecordsTheGridIsEmpty) {
  LabelsConsole console;
  while (console.stations->HasRecord()) {
    ASSERT_TRUE(console.stations->Delete().ok());
    ASSERT_TRUE(console.stations->MoveNext().ok());
  }
  console.Open();
  EXPECT_EQ(console.Grid().model()->rowCount(), 0);
  EXPECT_EQ(console.Grid().model()->columnCount(), 7);
  EXPECT_THAT(console.reporter.reports, IsEmpty());
  console.ClickTool("ID_DownloadAlphas");
  EXPECT_THAT(console.said, ElementsAre("sent 1 9999", "sent 2 9999"));
}

TEST(AlphasRefresh, LongestSystem) {
  LabelsConsole console(256);
  console.Open();
  ASSERT_EQ(console.Grid().model()->rowCount(), 256);
  console.Click(255, kLabel);
  console.Type("LAST");
  console.Press(Qt::Key_Return);
  EXPECT_EQ(console.Text(256, "Label"), "LAST");
  QString block;
  for (int i = 1; i <= 256; ++i) block += QStringLiteral("L%1\tI%1\n").arg(i);
  console.Click(0, kLabel);
  console.Paste(block);
  EXPECT_THAT(console.reporter.reports, IsEmpty());
  EXPECT_EQ(console.Text(1, "Label"), "L1");
  EXPECT_EQ(console.Text(256, "InLabel"), "I256");
}

}  // namespace
