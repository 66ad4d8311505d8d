// SPDX-License-Identifier: MIT

#include "views/xmap_view.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <QAbstractItemModelTester>
#include <QAccessible>
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
#include <QSettings>
#include <QSignalSpy>
#include <QTableView>
#include <QTest>
#include <QToolBar>
#include <QToolButton>
#include <QToolTip>
#include <QWheelEvent>

#include "db/schema.h"
#include "tests/support/temporary_folder.h"
#include "tests/views/xmap_console.h"
#include "views/xmap_legend.h"

namespace views {
namespace {

using test::XmapConsole;
using testing::ElementsAre;
using testing::IsEmpty;

constexpr char kNotAllowed[] =
    "exclamation|Control Error|Action Not Allowed On Inhibited Crosspoint";
constexpr char kNotPossible[] =
    "exclamation|Control Error|Inhibit Not Possible With Existing Crosspoint";
constexpr char kConflict[] =
    "exclamation|Synchronization Warning|Crosspoint selection received for Inhibited "
    "Crosspoint.\n";

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

QList<QAction*> BandActions(const XmapView& view) {
  return view.findChild<QToolBar*>(QStringLiteral("XptmapButtons"))->actions();
}

// The colour of a widget at a logical point.
QColor PixelOf(QWidget& widget, const QPoint& point) {
  const QImage image = widget.grab().toImage();
  return image.pixelColor((QPointF(point) * image.devicePixelRatio()).toPoint());
}

QWidget& Viewport(XmapConsole& console) {
  return *static_cast<QTableView&>(console.Grid()).viewport();
}

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

TEST(XmapView, RowReportIsDrawn) {
  XmapConsole console(8);
  XmapView& view = console.Open();
  console.model.CrosspointMap.At(2, 5) = 1;
  view.UpdateXmap(2, 0);
  EXPECT_EQ(console.Row(3), "....1...");
  view.UpdateXmap(2, 1);
  EXPECT_EQ(console.Row(3), "....3...");
  console.model.CrosspointMap.At(2, 5) = 0;
  view.UpdateXmap(2, 0);
  EXPECT_EQ(console.Row(3), "........");
}

TEST(XmapView, ConflictShowsTheCrosspointAndKeepsTheInhibitInTheDatabase) {
  XmapConsole console(8);
  console.SetField(3, "Inhibits", "00010000");
  XmapView& view = console.Open();
  console.model.CrosspointMap.At(3, 4) = 1;
  view.UpdateXmap(3, 1);
  EXPECT_EQ(console.Row(4), "...1....");
  EXPECT_EQ(console.Text(3, "Inhibits"), "00010000");
  EXPECT_THAT(console.reporter.reports, ElementsAre(kConflict));
}

TEST(XmapView, InhibitsAreDrawnAgain) {
  XmapConsole console(8);
  XmapView& view = console.Open();
  console.model.CrosspointMap.At(1, 1) = 1;
  console.model.CrosspointMap.At(1, 2) = 1;
  view.UpdateXmap(1, 1);
  console.model.CrosspointMap.At(2, 1) = 1;
  view.UpdateXmap(2, 0);
  console.SetField(1, "Inhibits", "10000000");
  view.UpdateXmapInhibits();
  EXPECT_EQ(console.Row(2), "2.......") << "the priority mark without inhibit goes, too";
  EXPECT_EQ(console.Row(3), "1.......") << "the ordinary one stays";
}

TEST(XmapView, LabelsAreWrittenAgain) {
  XmapConsole console(8);
  XmapView& view = console.Open();
  console.SetField(1, "Label", "PROD");
  console.SetField(2, "InLabel", "CAM");
  view.UpdateXmapAlphas();
  EXPECT_EQ(console.CellText(2, 0), QStringLiteral("PROD"));
  EXPECT_EQ(console.CellText(0, 3), QStringLiteral("C\rA\rM\r"));
}

TEST(XmapView, UpdatesKeepTheSelection) {
  XmapConsole console(8);
  XmapView& view = console.Open();
  console.SelectCell(5, 6);
  view.UpdateXmap(4, 0);
  view.UpdateXmap(model::kAll, 0);
  view.UpdateXmapInhibits();
  view.UpdateXmapAlphas();
  EXPECT_EQ(console.SelectedCell(), QPoint(6, 5));
}

struct ToolBytes {
  const char* key;
  const char* make;  // output 3, input 6
  const char* undo;
  char mark;
};

constexpr ToolBytes kToolBytes[] = {
    {"ID_Take", "FD 03 00 05 00 02 00 0A FF", "", '1'},
    {"ID_Sum", "FD 02 00 05 00 02 00 09 FF", "FD 00 00 05 00 02 00 07 FF", '1'},
    {"ID_Call", "FD 06 01 05 00 02 00 0D FF", "FD 04 01 05 00 02 00 0B FF", '3'},
    {"ID_PriorityListen", "FD 0A 01 05 00 02 00 11 FF", "FD 08 01 05 00 02 00 0F FF", '3'},
};

TEST(XmapView, ToolsSendAndWaitForTheSwitcher) {
  for (const ToolBytes& tool : kToolBytes) {
    SCOPED_TRACE(tool.key);
    XmapConsole console(8);
    console.Open();
    console.SelectCell(4, 7);
    console.ClickTool(tool.key);
    EXPECT_EQ(console.port.TakeWritten(), tool.make);
    EXPECT_EQ(console.Row(4), "........");
    EXPECT_EQ(console.model.CrosspointMap.At(3, 6), 0);
    console.model.CrosspointMap.At(3, 6) = 1;
    console.ClickTool(tool.key);
    EXPECT_EQ(console.port.TakeWritten(), tool.undo);
    EXPECT_EQ(console.model.CrosspointMap.At(3, 6), 1);
    EXPECT_THAT(console.reporter.reports, IsEmpty());
  }
}

TEST(XmapView, DemoModeDrawsWhatItSends) {
  for (const ToolBytes& tool : kToolBytes) {
    SCOPED_TRACE(tool.key);
    XmapConsole console(8);
    console.model.DemoMode = 1;
    console.Open();
    console.SelectCell(4, 7);
    console.ClickTool(tool.key);
    EXPECT_EQ(console.port.TakeWritten(), tool.make);
    EXPECT_EQ(console.Row(4), std::string(".....") + tool.mark + "..");
    EXPECT_EQ(console.model.CrosspointMap.At(3, 6), 1);
    console.ClickTool(tool.key);
    EXPECT_EQ(console.port.TakeWritten(), tool.undo);
    const bool undone = *tool.undo != '\0';
    EXPECT_EQ(console.Mark(4, 7), undone ? 0 : 1);
    EXPECT_EQ(console.model.CrosspointMap.At(3, 6), undone ? 0 : 1);
  }
}

TEST(XmapView, OnlyDemoModeOneDraws) {
  XmapConsole console(8);
  console.model.DemoMode = 2;
  console.Open();
  console.ClickTool("ID_Call");
  EXPECT_EQ(console.port.TakeWritten(), "FD 06 01 00 00 00 00 06 FF");
  EXPECT_EQ(console.Mark(2, 2), 0);
}

TEST(XmapView, FarCornerIsSentWithItsHighBits) {
  XmapConsole console(256);
  console.Open();
  console.SelectCell(257, 257);
  console.ClickTool("ID_Take");
  EXPECT_EQ(console.port.TakeWritten(), "FD 03 00 7F 01 7F 01 01 FF");
}

TEST(XmapView, InhibitedCrosspointIsRefused) {
  for (const ToolBytes& tool : kToolBytes) {
    SCOPED_TRACE(tool.key);
    XmapConsole console(8);
    console.SetField(3, "Inhibits", "00000100");
    console.Open();
    console.SelectCell(4, 7);
    console.ClickTool(tool.key);
    EXPECT_EQ(console.port.TakeWritten(), "");
    EXPECT_THAT(console.reporter.reports, ElementsAre(kNotAllowed));
  }
}

TEST(XmapView, HeaderCellsAreNeverCurrentAndSendNothing) {
  XmapConsole console(8);
  XmapView& view = console.Open();
  constexpr int kHeaderCells[][2] = {{0, 0}, {1, 1}, {0, 5},  {5, 0},
                                     {1, 5}, {5, 1}, {-1, 2}, {10, 2}};
  for (const auto& [row, column] : kHeaderCells) {
    SCOPED_TRACE(std::to_string(row) + ", " + std::to_string(column));
    console.SelectCell(3, 3);
    console.SelectCell(row, column);
    EXPECT_EQ(console.SelectedCell(), QPoint(-1, -1));
    for (const ToolBytes& tool : kToolBytes) console.ClickTool(tool.key);
    console.ClickTool("ID_ToggleInhibit");
    EXPECT_EQ(view.Readout(), QStringLiteral("No crosspoint selected"));
  }
  EXPECT_EQ(console.port.TakeWritten(), "");
  EXPECT_EQ(console.Text(1, "Inhibits"), "00000000");
  EXPECT_THAT(console.reporter.reports, IsEmpty());
}

TEST(XmapView, FailedLineIsReportedByTheCommand) {
  XmapConsole console(8);
  console.Open();
  console.port.Close();
  const QImage before = Viewport(console).grab().toImage();
  console.ClickTool("ID_Take");
  EXPECT_EQ(Viewport(console).grab().toImage(), before) << "no outline: no answer will come";
  EXPECT_THAT(console.reporter.reports,
              ElementsAre("critical|Serial Communications Error|Error Sending Take Command\r\r"
                          "Error # 8018 - The port is not open"));
}

TEST(XmapView, InhibitIsToggledInDatabaseAndGrid) {
  XmapConsole console(8);
  XmapView& view = console.Open();
  QSignalSpy edited(&view, &XmapView::InhibitsEdited);
  console.SelectCell(4, 7);
  console.ClickTool("ID_ToggleInhibit");
  EXPECT_EQ(console.Text(3, "Inhibits"), "00000100");
  EXPECT_EQ(console.Row(4), ".....2..");
  console.ClickTool("ID_ToggleInhibit");
  EXPECT_EQ(console.Text(3, "Inhibits"), "00000000");
  EXPECT_EQ(console.Row(4), "........");
  EXPECT_EQ(edited.count(), 2);
  EXPECT_EQ(console.port.TakeWritten(), "") << "inhibits reach the switcher by their own command";
  EXPECT_THAT(console.traffic, IsEmpty());
}

TEST(XmapView, InhibitOnACrosspointIsRefused) {
  XmapConsole console(8);
  XmapView& view = console.Open();
  QSignalSpy edited(&view, &XmapView::InhibitsEdited);
  console.model.CrosspointMap.At(3, 6) = 1;
  for (const int mode : {0, 1}) {
    console.reporter.reports.clear();
    view.UpdateXmap(3, mode);
    console.SelectCell(4, 7);
    console.ClickTool("ID_ToggleInhibit");
    EXPECT_THAT(console.reporter.reports, ElementsAre(kNotPossible));
    EXPECT_EQ(console.Text(3, "Inhibits"), "00000000");
    EXPECT_EQ(console.Mark(4, 7), mode == 0 ? 1 : 3);
  }
  EXPECT_EQ(edited.count(), 0);
}

TEST(XmapView, HiddenInhibitUnderACrosspointIsCleared) {
  XmapConsole console(8);
  console.SetField(3, "Inhibits", "00000100");
  XmapView& view = console.Open();
  console.model.CrosspointMap.At(3, 6) = 1;
  view.UpdateXmap(3, 0);
  console.reporter.reports.clear();
  console.SelectCell(4, 7);
  console.ClickTool("ID_ToggleInhibit");
  EXPECT_EQ(console.Text(3, "Inhibits"), "00000000");
  EXPECT_EQ(console.Mark(4, 7), 1);
  EXPECT_THAT(console.reporter.reports, IsEmpty());
}

TEST(XmapView, NullInhibitsGrowWhenOneIsSet) {
  XmapConsole console(8);
  console.SetField(3, "Inhibits", jet::Value());
  console.Open();
  console.SelectCell(4, 4);
  console.ClickTool("ID_ToggleInhibit");
  EXPECT_EQ(console.Text(3, "Inhibits"), "001");
  EXPECT_EQ(console.Mark(4, 4), 2);
}

TEST(XmapView, InhibitThatCannotBeStoredIsReportedAndNotDrawn) {
  const test::TemporaryFolder folder;
  ASSERT_TRUE(db::CreateDatabase(folder / "Tesk.mdb").ok());
  std::unique_ptr<jet::Database> database;
  ASSERT_TRUE(jet::Database::Open(folder / "Tesk.mdb", jet::Access::ReadOnly, &database).ok());
  XmapConsole console(64);
  ASSERT_TRUE(database->OpenTable(db::kStationsTable, &console.stations).ok());
  ASSERT_TRUE(console.stations->SetIndex(db::kStationNumIndex).ok());
  XmapView& view = console.Open();
  QSignalSpy edited(&view, &XmapView::InhibitsEdited);
  EXPECT_EQ(console.Mark(3, 3), 2) << "a new database inhibits each station from itself";
  for (const QPoint& cell : {QPoint(3, 3), QPoint(4, 3)}) {
    console.reporter.reports.clear();
    const int before = console.Mark(cell.y(), cell.x());
    console.SelectCell(cell.y(), cell.x());
    console.ClickTool("ID_ToggleInhibit");
    ASSERT_EQ(console.reporter.reports.size(), 1U);
    EXPECT_THAT(console.reporter.reports[0],
                testing::StartsWith(
                    "critical|Control Error|Error Storing Crosspoint Inhibit\r\rError # 3027 - "));
    EXPECT_EQ(console.Mark(cell.y(), cell.x()), before);
  }
  EXPECT_EQ(edited.count(), 0);
  EXPECT_EQ(console.Text(2, "Inhibits"), "01" + std::string(62, '0'));
}

TEST(XmapView, SendInhibitsPausesThePoll) {
  XmapConsole console(8);
  XmapView& view = console.Open();
  QSignalSpy sent(&view, &XmapView::InhibitsSent);
  console.ClickTool("ID_SendInhibits");
  EXPECT_THAT(console.traffic, ElementsAre("poll off", "inhibits 9999", "poll on"));
  EXPECT_EQ(sent.count(), 1);
}

TEST(XmapView, InhibitsThatCouldNotBeSentStayUnsent) {
  XmapConsole console(8);
  console.inhibitsGoOut = false;
  XmapView& view = console.Open();
  QSignalSpy sent(&view, &XmapView::InhibitsSent);
  console.ClickTool("ID_SendInhibits");
  EXPECT_THAT(console.traffic, ElementsAre("poll off", "inhibits 9999", "poll on"));
  EXPECT_EQ(sent.count(), 0);
}

TEST(XmapView, RefreshAsksForTheMap) {
  XmapConsole console(8);
  console.Open();
  console.model.XmapComplete = true;
  console.ClickTool("ID_RefreshMap");
  EXPECT_FALSE(console.model.XmapComplete);
  EXPECT_EQ(console.port.TakeWritten(), "") << "the next poll asks";
}

TEST(XmapView, QdvStatusIsLeftToTheProgram) {
  XmapConsole console(8);
  XmapView& view = console.Open();
  QSignalSpy asked(&view, &XmapView::QdvStatusRequested);
  console.ClickTool("ID_QDVStatus");
  EXPECT_EQ(asked.count(), 1);
}

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
  EXPECT_THAT(console.traffic, IsEmpty());
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
  EXPECT_THAT(console.traffic, ElementsAre("poll off", "inhibits 9999", "poll on"));
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
  EXPECT_EQ(menu->actions(), BandActions(view));
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

TEST(XmapView, ReadoutFollowsThePointer) {
  XmapConsole console(8);
  XmapView& view = console.Open();
  QTest::mouseMove(&Viewport(console), console.CellCentre(7, 9));
  EXPECT_EQ(view.Readout(), QStringLiteral("Out 06  Sta. 006  <  In 08  Inpt 008: No crosspoint"));
  EXPECT_EQ(console.SelectedCell(), QPoint(2, 2));
  console.PressKey(Qt::Key_Down);
  EXPECT_EQ(view.Readout(), QStringLiteral("Out 02  Sta. 002  <  In 01  Inpt 001: No crosspoint"));
  QEvent leave(QEvent::Leave);
  QTest::mouseMove(&Viewport(console), console.CellCentre(7, 8));
  QCoreApplication::sendEvent(&Viewport(console), &leave);
  EXPECT_EQ(view.Readout(), QStringLiteral("Out 02  Sta. 002  <  In 01  Inpt 001: No crosspoint"));
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

TEST(XmapView, ZoomGoesInSteps) {
  XmapConsole console(8);
  XmapView& view = console.Open();
  const auto& table = static_cast<QTableView&>(console.Grid());
  QSignalSpy changed(&view, &XmapView::ZoomChanged);
  EXPECT_EQ(view.Zoom(), 100);
  for (int i = 0; i < 9; ++i) console.PressKey(Qt::Key_Plus, Qt::ControlModifier);
  EXPECT_EQ(view.Zoom(), 200);
  EXPECT_EQ(changed.count(), 4);
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

TEST(XmapView, CellsAreBandedAndMarked) {
  XmapConsole console(8);
  console.SetField(1, "Inhibits", "00100000");
  console.model.CrosspointMap.At(3, 3) = 1;
  console.model.CrosspointMap.At(4, 3) = 1;
  console.model.ChannelStatus[4] = 1;
  console.Open();
  const QColor tip = QApplication::palette().color(QPalette::ToolTipBase);
  const QColor plain(0xFE, 0xFF, 0xF4);
  for (const int row : {2, 3, 6, 7}) EXPECT_EQ(console.Colour(row, 5), tip) << row;
  for (const int row : {4, 5, 8, 9}) EXPECT_EQ(console.Colour(row, 5), plain) << row;
  EXPECT_FALSE(console.Colour(10, 2).isValid());
  EXPECT_TRUE(console.Colour(0, 0).isValid());

  QWidget& viewport = Viewport(console);
  EXPECT_EQ(PixelOf(viewport, console.CellCentre(3, 6)), tip);
  EXPECT_EQ(PixelOf(viewport, console.CellCentre(5, 6)), plain);
  EXPECT_EQ(PixelOf(viewport, console.CellCentre(2, 4)), QColor(0xB0, 0x00, 0x20));
  EXPECT_EQ(PixelOf(viewport, console.CellCentre(4, 4)), QColor(0x00, 0x60, 0xA0));
  EXPECT_EQ(PixelOf(viewport, console.CellCentre(5, 4)), QColor(0xA8, 0x43, 0x00));
  EXPECT_EQ(PixelOf(viewport, QPoint(20 * 5 - 1, 20 * 6 + 8)), QColor(0xC8, 0xC8, 0xC8));
  EXPECT_EQ(PixelOf(viewport, QPoint(20 * 5 + 8, 20 * 6 - 1)), QColor(0xC8, 0xC8, 0xC8));
  EXPECT_EQ(PixelOf(viewport, QPoint(20 * 8 + 5, 5)), QColor(Qt::white)) << "beside the matrix";
}

TEST(XmapView, DarkBandsGetTheirOwnInks) {
  XmapConsole console(8);
  console.SetField(1, "Inhibits", "00100000");
  XmapView& view = console.Open();
  QPalette dark = view.palette();
  dark.setColor(QPalette::ToolTipBase, QColor(0x20, 0x20, 0x20));
  view.setPalette(dark);
  EXPECT_EQ(console.Colour(2, 4), QColor(0x20, 0x20, 0x20));
  EXPECT_EQ(PixelOf(Viewport(console), console.CellCentre(2, 4)), QColor(0xFF, 0x8A, 0x80));
  EXPECT_EQ(console.Colour(4, 4), QColor(0xFE, 0xFF, 0xF4));
}

TEST(XmapView, CrosshairLightsRowAndColumn) {
  XmapConsole console(8);
  XmapView& view = console.Open();
  const auto& table = static_cast<QTableView&>(console.Grid());
  QWidget& rows = *table.verticalHeader()->viewport();
  QWidget& columns = *table.horizontalHeader()->viewport();
  const QColor highlight = view.palette().color(QPalette::Active, QPalette::Highlight);
  console.SelectCell(4, 6);
  EXPECT_EQ(PixelOf(rows, QPoint(2, 20 * 2 + 2)), highlight);
  EXPECT_EQ(PixelOf(columns, QPoint(20 * 4 + 2, 110)), highlight);
  EXPECT_EQ(PixelOf(Viewport(console), QPoint(5, 20 * 3 - 1)), highlight);
  EXPECT_EQ(PixelOf(Viewport(console), QPoint(20 * 5 - 1, 5)), highlight);
  view.SetCrosshair(false);
  EXPECT_NE(PixelOf(rows, QPoint(2, 20 * 2 + 2)), highlight);
  EXPECT_NE(PixelOf(columns, QPoint(20 * 4 + 2, 110)), highlight);
  EXPECT_EQ(PixelOf(Viewport(console), QPoint(5, 20 * 3 - 1)), QColor(0xC8, 0xC8, 0xC8));
  EXPECT_FALSE(view.HasCrosshair());
}

TEST(XmapView, SentCrosspointIsOutlinedUntilItsRowIsReported) {
  XmapConsole console(8);
  XmapView& view = console.Open();
  console.SelectCell(4, 6);
  console.ClickCell(8, 8);
  console.SelectCell(4, 6);
  QWidget& viewport = Viewport(console);
  const QImage before = viewport.grab().toImage();
  console.ClickTool("ID_Take");
  EXPECT_NE(viewport.grab().toImage(), before);
  view.UpdateXmap(5, 0);
  EXPECT_NE(viewport.grab().toImage(), before) << "another row";
  view.UpdateXmap(3, 0);
  EXPECT_EQ(viewport.grab().toImage(), before);
}

TEST(XmapView, OutlineGoesAfterThreeSeconds) {
  XmapConsole console(8);
  console.Open();
  QWidget& viewport = Viewport(console);
  const QImage before = viewport.grab().toImage();
  console.ClickTool("ID_Take");
  console.SelectCell(6, 6);
  QTest::qWait(1500);
  console.SelectCell(2, 2);
  EXPECT_NE(viewport.grab().toImage(), before);
  QTest::qWait(1600);
  EXPECT_EQ(viewport.grab().toImage(), before);
}

TEST(XmapView, BurstOfRowReportsIsOnePaint) {
  XmapConsole console(64);
  XmapView& view = console.Open();
  QTest::qWait(50);

  class PaintCounter : public QObject {
   public:
    bool eventFilter(QObject*, QEvent* event) override {
      if (event->type() == QEvent::Paint) ++paints;
      return false;
    }
    int paints = 0;
  } counter;
  Viewport(console).installEventFilter(&counter);
  for (int output = 1; output <= 64; ++output) {
    console.model.CrosspointMap.At(output, output) = 1;
    view.UpdateXmap(output, 0);
  }
  EXPECT_EQ(counter.paints, 0);
  QTest::qWait(50);
  EXPECT_EQ(counter.paints, 1);
}

TEST(XmapView, ModelKeepsTheRulesOfItemModels) {
  XmapConsole console(16);
  XmapView& view = console.Open();
  auto& table = static_cast<QTableView&>(console.Grid());
  const QAbstractItemModelTester tester(table.model(),
                                        QAbstractItemModelTester::FailureReportingMode::Warning);
  console.model.CrosspointMap.At(3, 3) = 1;
  view.UpdateXmap(model::kAll, 0);
  view.UpdateXmapAlphas();
  console.ClickTool("ID_ToggleInhibit");
}

TEST(XmapView, AssistiveSoftwareReadsTheCells) {
  XmapConsole console(8);
  console.model.CrosspointMap.At(3, 6) = 1;
  XmapView& view = console.Open();
  QAccessibleInterface* const grid = QAccessible::queryAccessibleInterface(&console.Grid());
  ASSERT_NE(grid, nullptr);
  EXPECT_EQ(grid->text(QAccessible::Name), QStringLiteral("Crosspoint Map"));
  QAccessibleTableInterface* const cells = grid->tableInterface();
  ASSERT_NE(cells, nullptr);
  EXPECT_EQ(cells->rowCount(), 8);
  EXPECT_EQ(cells->columnCount(), 8);
  EXPECT_EQ(cells->cellAt(2, 5)->text(QAccessible::Name),
            QStringLiteral("Out 03  Sta. 003  <  In 06  Inpt 006: Crosspoint"));
  EXPECT_EQ(cells->rowDescription(2), QStringLiteral("Sta. 003"));
  for (QAction* const action : BandActions(view)) {
    if (action->isSeparator()) continue;
    const auto* const button =
        view.findChild<QToolBar*>(QStringLiteral("XptmapButtons"))->widgetForAction(action);
    EXPECT_EQ(button->accessibleName(), QString(action->text()).remove(u'&'));
    EXPECT_EQ(button->accessibleDescription(), action->toolTip());
  }
}

TEST(XmapView, UnsentInhibitsAreABadgeNotACaption) {
  XmapConsole console(8);
  XmapView& view = console.Open();
  auto* const send = view.findChild<QAction*>(QStringLiteral("ID_SendInhibits"));
  const QImage before = send->icon().pixmap(32).toImage();
  view.SetInhibitsUnsent(true);
  EXPECT_NE(send->icon().pixmap(32).toImage(), before);
  EXPECT_EQ(send->text(), QStringLiteral("Sen&d Inhibits"));
  view.SetInhibitsUnsent(false);
  EXPECT_EQ(send->icon().pixmap(32).toImage(), before);
}

TEST(XmapView, AidsSendAndStoreNothing) {
  XmapConsole console(8);
  XmapView& view = console.Open();
  view.SetZoom(150);
  view.SetCrosshair(false);
  view.ShowFind(QStringLiteral("sta"));
  view.SetInhibitsUnsent(true);
  console.Close();
  EXPECT_EQ(console.port.TakeWritten(), "");
  EXPECT_THAT(console.traffic, IsEmpty());
  EXPECT_EQ(console.Text(1, "Inhibits"), "00000000");
  QSettings store(QSettings::NativeFormat, QSettings::UserScope, QStringLiteral("Orvo"),
                  QStringLiteral("Orvo Intercom Control"));
  EXPECT_THAT(store.allKeys(),
              testing::UnorderedElementsAre(
                  QStringLiteral("Settings/XmapLeft"), QStringLiteral("Settings/XmapTop"),
                  QStringLiteral("Settings/XmapWidth"), QStringLiteral("Settings/XmapHeight")));
}

TEST(XmapLegend, SaysWhatTheMarksMean) {
  const XmapLegend legend;
  EXPECT_EQ(legend.accessibleName(),
            QStringLiteral("Marks of the crosspoint map: Crosspoint, Inhibited, Priority "
                           "crosspoint, Reserved mark"));
  EXPECT_GT(legend.sizeHint().width(), 200);
  EXPECT_TRUE(XmapLegend::Tip(QPalette()).contains(QStringLiteral("Priority crosspoint")));
}

}  // namespace
}  // namespace views
