// SPDX-License-Identifier: MIT
//
// What the crosspoint map's tools send, store, say and report.

#include "views/xmap/xmap_view.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <QSignalSpy>
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
using test::Viewport;
using test::XmapConsole;
using testing::ElementsAre;
using testing::IsEmpty;

constexpr char kNotAllowed[] =
    "exclamation|Control Error|Action Not Allowed On Inhibited Crosspoint";
constexpr char kNotPossible[] =
    "exclamation|Control Error|Inhibit Not Possible With Existing Crosspoint";

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

}  // namespace
}  // namespace views
