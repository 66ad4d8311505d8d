// SPDX-License-Identifier: MIT
//
// What the crosspoint map shows when it opens.

#include "views/xmap/xmap_view.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <QAction>
#include <QHeaderView>
#include <QTableView>

#include "tests/views/xmap/xmap_console.h"

namespace views {
namespace {

using test::BandActions;
using test::kConflict;
using test::Viewport;
using test::XmapConsole;
using testing::ElementsAre;
using testing::IsEmpty;

struct ToolText {
  const char* key;  // null for a separator
  const char* caption;
  const char* tip;
};

constexpr ToolText kBand[] = {
    {"ID_Take", "&Take Pgm", "Take Current Crosspoint Selection"},
    {"ID_Sum", "&Sum Pgm", "Sum On or Off Current Source Selection"},
    {nullptr, "", ""},
    {"ID_Call", "&Call", "Establish Or Break A Station Call"},
    {"ID_PriorityListen", "&Priority Listen",
     "Establish Or Break A Priority Listen (Not Interupted By A Call)"},
    {nullptr, "", ""},
    {"ID_ToggleInhibit", "Toggle &Inhibit", "Establish Or Remove A Crosspoint Inhibit"},
    {nullptr, "", ""},
    {"ID_RefreshMap", "&Refresh Map", "Request An Update Of The Crosspoint Map From The Switcher"},
    {"ID_SendInhibits", "Sen&d Inhibits", "Send Inhibit List To Switcher"},
    {"ID_QDVStatus", "QDV Status", "Click To Display Current QDV Output Module Status"},
};

TEST(XmapView, FormHasItsNameAndTitle) {
  XmapConsole console(8);
  XmapView& view = console.Open();
  EXPECT_EQ(view.objectName(), QStringLiteral("frmXmap"));
  EXPECT_EQ(view.windowTitle(), QStringLiteral("Crosspoint Map"));
  EXPECT_EQ(console.subWindow->windowTitle(), QStringLiteral("Crosspoint Map"));
}

TEST(XmapView, BandHasItsToolsInOrder) {
  XmapConsole console(8);
  const QList<QAction*> actions = BandActions(console.Open());
  ASSERT_EQ(actions.size(), static_cast<qsizetype>(std::size(kBand)));
  for (qsizetype i = 0; i < actions.size(); ++i) {
    const ToolText& expected = kBand[i];
    ASSERT_EQ(actions[i]->isSeparator(), expected.key == nullptr);
    if (expected.key == nullptr) continue;
    EXPECT_EQ(actions[i]->objectName().toStdString(), expected.key);
    EXPECT_EQ(actions[i]->text().toStdString(), expected.caption);
    EXPECT_EQ(actions[i]->iconText().toStdString(), expected.caption);
    EXPECT_EQ(actions[i]->toolTip().toStdString(), expected.tip);
    EXPECT_TRUE(actions[i]->isEnabled());
    EXPECT_FALSE(actions[i]->icon().pixmap(16).isNull());
  }
}

TEST(XmapView, ListenIsDefinedButNotOnTheBand) {
  XmapConsole console(8);
  XmapView& view = console.Open();
  auto* const listen =
      view.findChild<QAction*>(QStringLiteral("ID_Listen"), Qt::FindDirectChildrenOnly);
  ASSERT_NE(listen, nullptr);
  EXPECT_EQ(listen->text(), QStringLiteral("&Listen"));
  EXPECT_EQ(
      listen->toolTip(),
      QStringLiteral("Establish Or Break A Listen Crosspoint (Will Be Interupted By A Call)"));
  EXPECT_FALSE(BandActions(view).contains(listen));
  console.SelectCell(2, 3);
  listen->trigger();
  EXPECT_EQ(console.port.TakeWritten(), "FD 02 00 01 00 00 00 03 FF");
}

TEST(XmapView, EveryActionIsADirectChild) {
  XmapConsole console(8);
  XmapView& view = console.Open();
  for (const ToolText& tool : kBand) {
    if (tool.key == nullptr) continue;
    EXPECT_NE(view.findChild<QAction*>(QString::fromLatin1(tool.key), Qt::FindDirectChildrenOnly),
              nullptr)
        << tool.key;
  }
}

TEST(XmapView, OpeningWritesTheHeader) {
  XmapConsole console(8);
  console.SetField(7, "Label", jet::Value());
  console.SetField(7, "InLabel", jet::Value());
  console.SetField(2, "Label", "");
  console.Open();
  EXPECT_EQ(console.CellText(2, 0), QStringLiteral("Sta. 001"));
  EXPECT_EQ(console.CellText(2, 1), QStringLiteral("01"));
  EXPECT_EQ(console.CellText(3, 0), QString());
  EXPECT_EQ(console.CellText(8, 0), QStringLiteral("Sta. 07"));
  EXPECT_EQ(console.CellText(0, 2), QStringLiteral("I\rn\rp\rt\r \r0\r0\r1\r"));
  EXPECT_EQ(console.CellText(0, 8), QStringLiteral("S\rt\ra\r.\r \r0\r7\r"));
  EXPECT_EQ(console.CellText(1, 9), QStringLiteral("08"));
  EXPECT_EQ(console.CellText(5, 5), QString());
  EXPECT_THAT(console.reporter.reports, IsEmpty());
}

TEST(XmapView, LabelsStandInTheOrderOfTheStationNumbers) {
  XmapConsole console(8);
  // The record of station 3 moves to the end of the table's storage.
  ASSERT_TRUE(console.stations->Seek(3).ok());
  ASSERT_TRUE(console.stations->Delete().ok());
  ASSERT_TRUE(console.stations->AddNew().ok());
  ASSERT_TRUE(console.stations->Set("StationNum", 3).ok());
  ASSERT_TRUE(console.stations->Set("Label", "LATE").ok());
  ASSERT_TRUE(console.stations->Set("Inhibits", "01").ok());
  ASSERT_TRUE(console.stations->Update().ok());
  console.Open();
  EXPECT_EQ(console.CellText(4, 0), QStringLiteral("LATE"));
  EXPECT_EQ(console.CellText(5, 0), QStringLiteral("Sta. 004"));
  EXPECT_EQ(console.Row(4), ".2......");
}

TEST(XmapView, GapsInTheStationNumbersMoveTheRecordsUp) {
  XmapConsole console(8);
  console.SetField(4, "Inhibits", "10000000");
  ASSERT_TRUE(console.stations->Seek(3).ok());
  ASSERT_TRUE(console.stations->Delete().ok());
  ASSERT_TRUE(console.stations->MoveFirst().ok());
  console.Open();
  EXPECT_EQ(console.CellText(4, 0), QStringLiteral("Sta. 004")) << "the third record";
  EXPECT_EQ(console.Row(4), "2.......");
  // Toggling goes by the number, not by the place: output 3 has no record, so nothing happens.
  console.SelectCell(4, 3);
  console.ClickTool("ID_ToggleInhibit");
  EXPECT_EQ(console.Row(4), "2.......");
  EXPECT_THAT(console.reporter.reports, IsEmpty());
}

TEST(XmapView, HundredChannelsHaveWiderColumnsAndThreeDigits) {
  for (const int channels : {99, 100}) {
    SCOPED_TRACE(channels);
    XmapConsole console(channels);
    console.Open();
    const auto& table = static_cast<QTableView&>(console.Grid());
    const bool many = channels == 100;
    EXPECT_EQ(console.CellText(2, 1), many ? QStringLiteral("001") : QStringLiteral("01"));
    EXPECT_EQ(console.CellText(1, channels + 1),
              many ? QStringLiteral("100") : QStringLiteral("99"));
    EXPECT_EQ(console.CellText(0, 2), many ? QStringLiteral(" I\r n\r p\r t\r  \r 0\r 0\r 1")
                                           : QStringLiteral("I\rn\rp\rt\r \r0\r0\r1\r"));
    EXPECT_EQ(table.columnWidth(0), many ? 23 : 20);
    EXPECT_EQ(table.rowHeight(0), 20);
    EXPECT_EQ(table.horizontalHeader()->height(), 120 + 20);
    EXPECT_EQ(table.verticalHeader()->width(), 67 + (many ? 23 : 20));
  }
}

TEST(XmapView, OpeningDrawsInhibitsThenCrosspoints) {
  XmapConsole console(8);
  console.SetField(1, "Inhibits", "10000001");
  console.SetField(2, "Inhibits", jet::Value());
  console.model.CrosspointMap.At(1, 4) = 1;
  console.model.CrosspointMap.At(3, 2) = 1;
  console.model.ChannelStatus[3] = 1;
  console.model.CrosspointMap.At(4, 2) = 1;
  console.model.ChannelStatus[4] = 2;
  console.Open();
  EXPECT_EQ(console.Row(2), "2..1...2");
  EXPECT_EQ(console.Row(3), "........");
  EXPECT_EQ(console.Row(4), ".3......");
  EXPECT_EQ(console.Row(5), "........") << "a status other than 0 and 1 draws nothing";
  EXPECT_EQ(console.Mark(0, 0), 1);
  EXPECT_EQ(console.Mark(1, 1), 0);
  EXPECT_THAT(console.reporter.reports, IsEmpty());
}

TEST(XmapView, OpeningSelectsTheFirstCrosspoint) {
  XmapConsole console(8);
  console.Open();
  EXPECT_EQ(console.SelectedCell(), QPoint(2, 2));
}

TEST(XmapView, OpeningReportsAConflictForEachCell) {
  XmapConsole console(8);
  console.SetField(1, "Inhibits", "11000000");
  console.model.CrosspointMap.At(1, 1) = 1;
  console.model.CrosspointMap.At(1, 2) = 1;
  console.Open();
  EXPECT_THAT(console.reporter.reports, ElementsAre(kConflict, kConflict));
  EXPECT_EQ(console.Row(2), "11......");
}

TEST(XmapView, EveryWalkReturnsToItsRecord) {
  XmapConsole console(8);
  ASSERT_TRUE(console.stations->Seek(5).ok());
  const jet::Bookmark before = console.stations->Mark();
  XmapView& view = console.Open();
  EXPECT_TRUE(console.stations->Mark() == before);
  view.UpdateXmapAlphas();
  EXPECT_TRUE(console.stations->Mark() == before);
  view.UpdateXmapInhibits();
  EXPECT_TRUE(console.stations->Mark() == before);
  console.SelectCell(3, 3);
  console.ClickTool("ID_ToggleInhibit");
  EXPECT_TRUE(console.stations->Mark() == before);
  EXPECT_THAT(console.reporter.reports, IsEmpty());
}

TEST(XmapView, TooFewRecordsStopTheGeneration) {
  XmapConsole console(8);
  console.SetField(1, "Inhibits", "10000000");
  for (int station = 4; station <= 128; ++station) {
    ASSERT_TRUE(console.stations->Seek(station).ok());
    ASSERT_TRUE(console.stations->Delete().ok());
  }
  ASSERT_TRUE(console.stations->MoveFirst().ok());
  console.Open();
  ASSERT_EQ(console.reporter.reports.size(), 1U);
  EXPECT_THAT(console.reporter.reports[0],
              testing::StartsWith("critical|Control Error|Error Generating Crosspoint Grid\r\r"
                                  "Error # 3021 - "));
  EXPECT_EQ(console.CellText(4, 0), QStringLiteral("Sta. 003")) << "as far as it got";
  EXPECT_EQ(console.CellText(5, 0), QString());
  EXPECT_EQ(console.CellText(0, 2), QString());
  EXPECT_EQ(console.Row(2), "........");
  EXPECT_EQ(console.SelectedCell(), QPoint(-1, -1));
  console.ClickTool("ID_Take");
  EXPECT_EQ(console.port.TakeWritten(), "");
}

TEST(XmapView, ClosedDatabaseIsReported) {
  XmapConsole console(8);
  console.databaseIsOpen = false;
  XmapView& view = console.Open();
  ASSERT_EQ(console.reporter.reports.size(), 1U);
  EXPECT_THAT(
      console.reporter.reports[0],
      testing::StartsWith("critical|Control Error|Error Generating Crosspoint Grid\r\rError # "));
  view.UpdateXmapAlphas();
  view.UpdateXmapInhibits();
  console.SelectCell(2, 2);
  console.ClickTool("ID_ToggleInhibit");
  ASSERT_EQ(console.reporter.reports.size(), 4U);
  EXPECT_THAT(console.reporter.reports[1],
              testing::StartsWith("critical|Control Error|Error Reading Channel Labels\r\r"));
  EXPECT_THAT(console.reporter.reports[2],
              testing::StartsWith("critical|Control Error|Error Reading Crosspoint Inhibits\r\r"));
  EXPECT_THAT(console.reporter.reports[3],
              testing::StartsWith("critical|Control Error|Error Reading Crosspoint Inhibits\r\r"));
  EXPECT_EQ(console.Mark(2, 2), 0);
}

TEST(XmapView, DatabaseWithoutChannelsIsSaidToBeEmpty) {
  XmapConsole console(0);
  XmapView& view = console.Open();
  EXPECT_THAT(console.reporter.reports, IsEmpty());
  EXPECT_EQ(console.SelectedCell(), QPoint(-1, -1));
  EXPECT_EQ(console.Mark(0, 0), 1);
  for (const char* const tool : {"ID_Take", "ID_Sum", "ID_Call", "ID_PriorityListen",
                                 "ID_ToggleInhibit", "ID_RefreshMap", "ID_SendInhibits"}) {
    console.ClickTool(tool);
  }
  for (const Qt::Key key : {Qt::Key_Down, Qt::Key_End, Qt::Key_PageDown, Qt::Key_Return}) {
    console.PressKey(key);
  }
  view.UpdateXmap(model::kAll, 0);
  view.UpdateXmap(1, 0);
  view.UpdateXmapInhibits();
  view.UpdateXmapAlphas();
  EXPECT_EQ(console.port.TakeWritten(), "");
  EXPECT_THAT(console.reporter.reports, IsEmpty());
  const QImage image = Viewport(console).grab().toImage();
  int dark = 0;
  for (int x = 0; x < image.width(); ++x) {
    for (int y = image.height() / 2 - 20; y < image.height() / 2 + 20; ++y) {
      if (image.pixelColor(x, y).lightness() < 100) ++dark;
    }
  }
  EXPECT_GT(dark, 100) << "a text stands in the middle";
}

}  // namespace
}  // namespace views
