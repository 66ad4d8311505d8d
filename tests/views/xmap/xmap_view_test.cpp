// SPDX-License-Identifier: MIT
//
// What the crosspoint map shows, and what its tools send, store and report.

#include "views/xmap/xmap_view.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <QAction>
#include <QContextMenuEvent>
#include <QHeaderView>
#include <QMenu>
#include <QSignalSpy>
#include <QTableView>
#include <QTest>
#include <functional>
#include <string>
#include <vector>

#include "db/schema.h"
#include "tests/support/temporary_folder.h"
#include "tests/views/xmap/xmap_console.h"

namespace views {
namespace {

using switcher::Table;
using switcher::TablePart;
using test::BandActions;
using test::Viewport;
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

TEST(XmapView, InhibitsBesideALongCharacterOfAForeignDatabase) {
  XmapConsole console(8);
  console.SetField(2, "Inhibits", "10é10001");
  console.Open();
  EXPECT_EQ(console.Row(3), "2..2...2");
  console.SelectCell(3, 4);
  console.ClickTool("ID_ToggleInhibit");
  EXPECT_EQ(console.Row(3), "2.22...2");
  EXPECT_EQ(console.Text(2, "Inhibits"), "10110001");
  EXPECT_TRUE(console.reporter.reports.empty());
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

// What the view says in passing.
std::vector<std::string> NotesOf(XmapView& view, const std::function<void()>& work) {
  std::vector<std::string> notes;
  const auto connection =
      QObject::connect(&view, &XmapView::NoteRequested,
                       [&](const QString& note) { notes.push_back(note.toStdString()); });
  work();
  QObject::disconnect(connection);
  return notes;
}

TEST(XmapView, ATakeOfWhatIsMadeSaysWhatBreaksIt) {
  XmapConsole console(8);
  XmapView& view = console.Open();
  console.model.CrosspointMap.At(3, 6) = 1;
  view.UpdateXmap(3, 0);
  console.SelectCell(4, 7);
  const auto take = [&] { console.ClickTool("ID_Take"); };
  EXPECT_THAT(NotesOf(view, take), ElementsAre("Already made; Sum breaks it"));
  view.UpdateXmap(3, 1);
  EXPECT_THAT(NotesOf(view, take),
              ElementsAre("Already made by priority; Call or Priority Listen breaks it"));
  EXPECT_EQ(console.port.TakeWritten(), "");
  EXPECT_THAT(console.reporter.reports, IsEmpty());
  EXPECT_THAT(NotesOf(view, [&] { console.ClickTool("ID_Call"); }), IsEmpty());
}

TEST(XmapView, ATakeThatIsNotReportedIsSpokenOf) {
  XmapConsole console(16);
  XmapView& view = console.Open();
  EXPECT_THAT(NotesOf(view,
                      [&] {
                        console.SelectCell(12, 2);
                        console.ClickTool("ID_Take");
                        console.SelectCell(5, 2);
                        console.ClickTool("ID_Take");
                        view.UpdateXmap(4, 0);
                        QSignalSpy notes(&view, &XmapView::NoteRequested);
                        EXPECT_TRUE(notes.wait(60000));
                      }),
              ElementsAre("No report for Out 11"));
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
  console.Open();
  const QSignalSpy edited(&console.unsent, &UnsentTables::Edited);
  console.SelectCell(4, 7);
  console.ClickTool("ID_ToggleInhibit");
  EXPECT_EQ(console.Text(3, "Inhibits"), "00000100");
  EXPECT_EQ(console.Row(4), ".....2..");
  console.ClickTool("ID_ToggleInhibit");
  EXPECT_EQ(console.Text(3, "Inhibits"), "00000000");
  EXPECT_EQ(console.Row(4), "........");
  ASSERT_EQ(edited.count(), 2);
  EXPECT_EQ(edited[0][0].value<TablePart>(), (TablePart{Table::Inhibits, 3}));
  EXPECT_EQ(console.port.TakeWritten(), "") << "inhibits reach the switcher by their own command";
  EXPECT_THAT(console.tables.traffic, IsEmpty());
}

TEST(XmapView, InhibitOnACrosspointIsRefused) {
  XmapConsole console(8);
  XmapView& view = console.Open();
  const QSignalSpy edited(&console.unsent, &UnsentTables::Edited);
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
  console.Open();
  const QSignalSpy edited(&console.unsent, &UnsentTables::Edited);
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

TEST(XmapView, SentInhibitsAreNotedOnceThePollIsOnAgain) {
  XmapConsole console(8);
  console.Open();
  QObject::connect(&console.unsent, &UnsentTables::Sent, &console.unsent,
                   [&] { console.tables.traffic.emplace_back("noted"); });
  console.ClickTool("ID_SendInhibits");
  EXPECT_THAT(console.tables.traffic, ElementsAre("poll off", "inhibits 9999", "poll on", "noted"));
}

TEST(XmapView, SendInhibitsPausesThePoll) {
  XmapConsole console(8);
  console.tables.messages = 64;
  console.Open();
  const QSignalSpy sent(&console.unsent, &UnsentTables::Sent);
  console.ClickTool("ID_SendInhibits");
  EXPECT_THAT(console.tables.traffic, ElementsAre("poll off", "inhibits 9999", "poll on"));
  ASSERT_EQ(sent.count(), 1);
  EXPECT_EQ(sent[0][0].value<TablePart>(), (TablePart{Table::Inhibits, 9999}));
  EXPECT_EQ(sent[0][1].toInt(), 64);
  EXPECT_EQ(sent[0][2].value<UnsentTables::Sender>(), UnsentTables::Sender::Tool);
}

TEST(XmapView, InhibitsThatCouldNotBeSentStayUnsent) {
  XmapConsole console(8);
  console.tables.goOut = false;
  console.Open();
  const QSignalSpy sent(&console.unsent, &UnsentTables::Sent);
  console.ClickTool("ID_SendInhibits");
  EXPECT_THAT(console.tables.traffic, ElementsAre("poll off", "inhibits 9999", "poll on"));
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
