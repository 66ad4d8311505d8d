// SPDX-License-Identifier: MIT
//
// How the crosspoint map looks, and what it tells assistive software.

#include "views/xmap/xmap_view.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <QAbstractItemModelTester>
#include <QAccessible>
#include <QAction>
#include <QApplication>
#include <QHeaderView>
#include <QSettings>
#include <QTableView>
#include <QTest>
#include <QToolBar>

#include "tests/views/xmap/xmap_console.h"
#include "views/xmap/xmap_legend.h"

namespace views {
namespace {

using test::BandActions;
using test::PixelOf;
using test::Viewport;
using test::XmapConsole;
using testing::IsEmpty;

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
  EXPECT_TRUE(QTest::qWaitFor([&] { return viewport.grab().toImage() == before; }, 60000));
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
  EXPECT_TRUE(QTest::qWaitFor([&] { return counter.paints > 0; }, 60000));
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
  console.unsentMessages.Begin({});
  const QImage before = send->icon().pixmap(32).toImage();
  console.SelectCell(2, 3);
  console.ClickTool("ID_ToggleInhibit");
  EXPECT_NE(send->icon().pixmap(32).toImage(), before);
  EXPECT_EQ(send->text(), QStringLiteral("Sen&d Inhibits"));
  console.ClickTool("ID_ToggleInhibit");
  EXPECT_EQ(send->icon().pixmap(32).toImage(), before);
}

TEST(XmapView, AidsSendAndStoreNothing) {
  XmapConsole console(8);
  XmapView& view = console.Open();
  view.SetZoom(150);
  view.SetCrosshair(false);
  view.ShowFind(QStringLiteral("sta"));
  console.unsentMessages.Begin({{{switcher::Table::Inhibits, 1}, {}}});
  console.Close();
  EXPECT_EQ(console.port.TakeWritten(), "");
  EXPECT_THAT(console.tables.traffic, IsEmpty());
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
  EXPECT_EQ(legend.objectName(), QStringLiteral("aidLegend"));
  EXPECT_EQ(legend.accessibleName(),
            QStringLiteral("Marks of the crosspoint map: Crosspoint, Inhibited, Priority "
                           "crosspoint, Reserved mark"));
  EXPECT_GT(legend.sizeHint().width(), 200);
  EXPECT_TRUE(XmapLegend::Tip(QPalette()).contains(QStringLiteral("Priority crosspoint")));
}

}  // namespace
}  // namespace views
