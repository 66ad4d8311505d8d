// SPDX-License-Identifier: MIT
//
// What the crosspoint map shows of what comes while it is open.

#include "views/xmap/xmap_view.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "tests/views/xmap/xmap_console.h"

namespace views {
namespace {

using test::kConflict;
using test::XmapConsole;
using testing::ElementsAre;

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

}  // namespace
}  // namespace views
