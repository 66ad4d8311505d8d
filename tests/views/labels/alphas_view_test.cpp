// SPDX-License-Identifier: MIT
//
// The grid of station labels: what it shows, its order, its tools.

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <QAction>
#include <QApplication>
#include <QHeaderView>
#include <QMenu>
#include <QPainter>
#include <QScopeGuard>
#include <QScrollBar>
#include <QStyledItemDelegate>
#include <QTest>
#include <QToolBar>
#include <QToolButton>

#include "model/system_model.h"
#include "tests/views/labels/labels_console.h"
#include "views/labels/labels_model.h"

namespace {

using test::LabelsConsole;
using testing::ElementsAre;
using testing::IsEmpty;
using namespace test;  // NOLINT(google-build-using-namespace): the columns

TEST(AlphasView, HasTheFormsNames) {
  LabelsConsole console;
  EXPECT_EQ(console.Open().objectName(), QStringLiteral("frmAlphas"));
  EXPECT_EQ(console.view->windowTitle(), QStringLiteral("Station Labels"));
  EXPECT_EQ(console.subWindow->geometry(), QRect(20, 20, 667, 600));
  EXPECT_EQ(console.Grid().accessibleName(), QStringLiteral("Station Labels"));
}

TEST(AlphasView, HasTheSevenColumns) {
  LabelsConsole console;
  console.Open();
  const Texts captions = {"Station",      "Station Label", "Input Label",  "Hidden",
                          "System Input", "System Output", "Station Notes"};
  const int widths[] = {64, 93, 93, 67, 93, 100, 233};
  ASSERT_EQ(console.Grid().model()->columnCount(), 7);
  for (int column = 0; column < 7; ++column) {
    EXPECT_EQ(console.Grid().model()->headerData(column, Qt::Horizontal).toString().toStdString(),
              captions[static_cast<std::size_t>(column)]);
    EXPECT_EQ(console.Grid().columnWidth(column), widths[column]) << column;
  }
}

TEST(AlphasView, ALargeFontCutsNoLabelAndNoCaption) {
  const QFont usual = QApplication::font();
  const auto restore = qScopeGuard([usual] { QApplication::setFont(usual); });
  QFont large = usual;
  large.setPointSizeF(12);
  QApplication::setFont(large);
  LabelsConsole console;
  console.SetField(1, "Label", "MMMMMMMM");
  console.SetField(1, "SysInput", "HRJ(16) - Ch 8");
  console.SetField(1, "SysOutput", "QDV(32) - Ch B");
  console.Open();
  const QHeaderView& header = *console.Grid().horizontalHeader();
  for (int column = 0; column < 7; ++column) {
    const QString caption = console.Grid().model()->headerData(column, Qt::Horizontal).toString();
    EXPECT_LT(header.fontMetrics().horizontalAdvance(caption) + (column == kStation ? 16 : 6),
              console.Grid().columnWidth(column))
        << column;
  }
  for (const int column : {kStation, kLabel, kInput, kHidden, kSystemInput, kSystemOutput}) {
    const QFontMetrics metrics(console.CellData(0, column, Qt::FontRole).value<QFont>());
    EXPECT_LT(metrics.horizontalAdvance(console.Cell(0, column)) + 6,
              console.Grid().columnWidth(column))
        << column;
  }
}

// The lowest row with ink in a cell of the grid, from the cell's top.
int LowestInk(LabelsConsole& console, int column) {
  QTableView& grid = console.Grid();
  const QRect cell = grid.visualRect(grid.model()->index(0, column)).adjusted(1, 1, -1, -1);
  const QImage image = grid.viewport()->grab(cell).toImage();
  const QColor ground = image.pixelColor(image.width() - 2, 1);
  int lowest = -1;
  for (int y = 0; y < image.height(); ++y) {
    for (int x = 0; x < image.width(); ++x) {
      if (std::abs(image.pixelColor(x, y).lightness() - ground.lightness()) > 120) lowest = y;
    }
  }
  return lowest;
}

TEST(AlphasView, LabelsStandOnOneLineWithTheOtherColumns) {
  const QFont usual = QApplication::font();
  const auto restore = qScopeGuard([usual] { QApplication::setFont(usual); });
  for (const char* const family : {"DejaVu Sans", "Liberation Mono", "Nimbus Mono PS", "Z003"}) {
    for (const double points : {9.0, 12.0, 15.0}) {
      QFont font{QLatin1String(family)};
      font.setPointSizeF(points);
      QApplication::setFont(font);
      LabelsConsole console;
      console.SetField(1, "Label", "HHH");
      console.SetField(1, "SysInput", "HHH");
      console.Open();
      console.Click(3, kHidden);
      QCoreApplication::sendPostedEvents();
      // Less than a pixel of the layout, of which a screen of high resolution has several rows.
      EXPECT_LT(std::abs(LowestInk(console, kLabel) - LowestInk(console, kSystemInput)),
                console.Grid().devicePixelRatioF())
          << family << " " << points;
    }
  }
}

// A cell of the grid, with the focus or without.
QImage DrawnCell(LabelsConsole& console, int column, bool hasFocus) {
  QTableView& grid = console.Grid();
  const QModelIndex index = grid.model()->index(0, column);
  QStyleOptionViewItem option;
  option.initFrom(grid.viewport());
  option.font = grid.font();
  option.widget = &grid;
  option.showDecorationSelected = true;  // as a table does
  option.rect = QRect(QPoint(), grid.visualRect(index).size());
  option.state = QStyle::State_Enabled | QStyle::State_Active;
  option.state.setFlag(QStyle::State_HasFocus, hasFocus);
  QImage image(option.rect.size(), QImage::Format_ARGB32);
  image.fill(Qt::white);
  QPainter painter(&image);
  grid.itemDelegate()->paint(&painter, option, index);
  return image;
}

// How many points the focus changes of the line beside a side of a cell, which is `step` from it
// and from there to the middle.
int LineBeside(const QImage& with, const QImage& without, const QRect& side, QPoint step) {
  constexpr int kFarthest = 3;
  int most = 0;
  for (int away = 0; away < kFarthest; ++away) {
    const QRect line = side.translated(away * step);
    int changed = 0;
    for (int y = line.top(); y <= line.bottom(); ++y) {
      for (int x = line.left(); x <= line.right(); ++x) {
        if (with.pixel(x, y) != without.pixel(x, y)) ++changed;
      }
    }
    most = std::max(most, changed);
  }
  return most;
}

TEST(AlphasView, TheFocusIsALineAroundTheWholeCell) {
  const QFont usual = QApplication::font();
  const auto restore = qScopeGuard([usual] { QApplication::setFont(usual); });
  for (const char* const family : {"DejaVu Sans", "Z003"}) {
    QApplication::setFont(QFont(QLatin1String(family), 12));
    LabelsConsole console;
    console.Open();
    for (const int column : {kLabel, kSystemInput}) {
      const QImage with = DrawnCell(console, column, true);
      const QImage without = DrawnCell(console, column, false);
      const int width = with.width();
      const int height = with.height();
      const std::pair<QRect, QPoint> sides[] = {{QRect(0, 0, width, 1), {0, 1}},
                                                {QRect(0, height - 1, width, 1), {0, -1}},
                                                {QRect(0, 0, 1, height), {1, 0}},
                                                {QRect(width - 1, 0, 1, height), {-1, 0}}};
      for (const auto& [side, step] : sides) {
        const int length = std::max(side.width(), side.height());
        EXPECT_GE(LineBeside(with, without, side, step), length * 3 / 4)
            << family << " " << column << " " << side.x() << "," << side.y();
      }
    }
  }
}

TEST(AlphasView, TheNotesHaveTheRoomThatIsLeft) {
  LabelsConsole console;
  console.Open();
  console.subWindow->resize(1200, 600);
  const QTableView& grid = console.Grid();
  EXPECT_TRUE(QTest::qWaitFor(
      [&] { return grid.horizontalHeader()->length() == grid.viewport()->width(); }));
  EXPECT_EQ(grid.columnWidth(kLabel), 93);
  EXPECT_GT(grid.columnWidth(kNotes), 600);
  console.subWindow->resize(400, 600);
  EXPECT_TRUE(QTest::qWaitFor([&] { return grid.columnWidth(kNotes) == 233; }));
}

TEST(AlphasView, ShowsEveryRecordByItsNumber) {
  LabelsConsole console;
  console.SetField(3, "Notes", jet::Value());
  console.SetField(4, "Hidden", jet::Value());
  console.SetField(5, "Hidden", 7);
  console.Open();
  ASSERT_EQ(console.Grid().model()->rowCount(), 128);
  EXPECT_EQ(console.Column(kStation, 3), Texts({"1", "2", "3"}));
  EXPECT_EQ(console.Cell(0, kLabel), QStringLiteral("Sta. 001"));
  EXPECT_EQ(console.Cell(0, kInput), QStringLiteral("Inpt 001"));
  EXPECT_EQ(console.Cell(0, kHidden), QStringLiteral("No"));
  EXPECT_EQ(console.Cell(0, kSystemInput), QStringLiteral("HRJ(1) - Ch 1"));
  EXPECT_EQ(console.Cell(0, kSystemOutput), QStringLiteral("QDV(1) - Ch A"));
  EXPECT_EQ(console.Cell(0, kNotes), QStringLiteral("Notes for Station 001"));
  EXPECT_EQ(console.Cell(64, kLabel), QStringLiteral("Ext. 001"));
  EXPECT_EQ(console.Cell(64, kHidden), QStringLiteral("Yes"));
  EXPECT_EQ(console.Cell(2, kNotes), QString());
  EXPECT_EQ(console.Cell(3, kHidden), QString());
  EXPECT_EQ(console.Cell(4, kHidden), QStringLiteral("7"));
  EXPECT_THAT(console.reporter.reports, IsEmpty());
}

TEST(AlphasView, NumbersStandRightHiddenStationsAreItalicLabelsMonospaced) {
  LabelsConsole console;
  console.Open();
  EXPECT_EQ(console.CellData(0, kStation, Qt::TextAlignmentRole).toInt(),
            static_cast<int>(Qt::AlignRight | Qt::AlignVCenter));
  EXPECT_EQ(console.CellData(0, kLabel, Qt::TextAlignmentRole).toInt(),
            static_cast<int>(Qt::AlignLeft | Qt::AlignVCenter));
  const auto font = [&](int row, int column) {
    return console.CellData(row, column, Qt::FontRole).value<QFont>();
  };
  EXPECT_FALSE(font(0, kNotes).italic());
  EXPECT_TRUE(font(64, kNotes).italic());
  for (const int column : {kLabel, kInput}) {
    const QFontMetrics metrics(font(0, column));
    EXPECT_EQ(metrics.horizontalAdvance(QStringLiteral("iiii")),
              metrics.horizontalAdvance(QStringLiteral("WWWW")));
  }
}

TEST(AlphasView, ALabelNeededTwiceSaysWhere) {
  LabelsConsole console;
  console.SetField(2, "Label", "MIC");
  console.SetField(12, "Label", "MIC ");
  console.SetField(3, "InLabel", "MIC");
  console.Open();
  const auto tip = [&](int row, int column) {
    return console.CellData(row, column, Qt::ToolTipRole).toString().toStdString();
  };
  EXPECT_EQ(tip(1, kLabel), "Label also used by station 12");
  EXPECT_EQ(tip(11, kLabel), "Label also used by station 2");
  EXPECT_EQ(tip(2, kInput), "");
  EXPECT_EQ(tip(0, kInput), "") << "station 65 has the same input label, but is hidden";
  console.SetField(3, "Label", "MIC");
  console.view->UpdateLabels();
  EXPECT_EQ(tip(1, kLabel), "Label also used by stations 3, 12");
  EXPECT_TRUE(console.CellData(1, kLabel, views::LabelsModel::DuplicateRole).toBool());

  // The line is dotted, in the ink of the text, below it.
  const QRect cell = console.Grid().visualRect(console.Grid().model()->index(1, kLabel));
  const QImage image = console.Grid().viewport()->grab().toImage();
  const qreal ratio = image.devicePixelRatio();
  int longestRun = 0;  // in the row of pixels with the most dark ones
  int dots = 0;
  for (int y = static_cast<int>((cell.center().y() + 6) * ratio); y < cell.bottom() * ratio; ++y) {
    int run = 0;
    int longest = 0;
    int dark = 0;
    for (int x = static_cast<int>(cell.left() * ratio); x < (cell.left() + 40) * ratio; ++x) {
      const bool isDark = image.pixelColor(x, y).lightness() < 128;
      run = isDark ? run + 1 : 0;
      dark += isDark ? 1 : 0;
      longest = std::max(longest, run);
    }
    if (dark <= dots) continue;
    dots = dark;
    longestRun = longest;
  }
  EXPECT_GE(dots, 8);
  EXPECT_LE(longestRun, 2 * ratio) << "a solid line";
}

TEST(AlphasView, AHeaderClickSortsUpThenDownThenUp) {
  LabelsConsole console;
  console.SetField(2, "Label", "zebra");
  console.SetField(1, "Label", "Äpfel");
  console.SetField(5, "Label", "apple");
  console.SetField(4, "Label", "Apple");
  console.SetField(6, "Label", jet::Value());
  console.Open();
  QHeaderView& header = *console.Grid().horizontalHeader();
  EXPECT_EQ(header.sortIndicatorSection(), kStation);
  EXPECT_EQ(header.sortIndicatorOrder(), Qt::AscendingOrder);

  console.ClickHeader(kLabel);
  EXPECT_EQ(console.Column(kStation, 4), Texts({"6", "1", "4", "5"}))
      << "null first, an umlaut with its letter, letter case does not count";
  EXPECT_EQ(header.sortIndicatorSection(), kLabel);
  EXPECT_EQ(header.sortIndicatorOrder(), Qt::AscendingOrder);
  console.ClickHeader(kLabel);
  EXPECT_EQ(console.Cell(0, kStation), QStringLiteral("2"));
  EXPECT_EQ(console.Cell(127, kStation), QStringLiteral("6"));
  EXPECT_EQ(console.Cell(124, kStation), QStringLiteral("4")) << "equal ones by their number";
  EXPECT_EQ(console.Cell(125, kStation), QStringLiteral("5"));
  EXPECT_EQ(header.sortIndicatorOrder(), Qt::DescendingOrder);
  console.ClickHeader(kLabel);
  EXPECT_EQ(console.Column(kStation, 2), Texts({"6", "1"}));

  console.ClickHeader(kHidden);
  EXPECT_EQ(console.Column(kStation, 3), Texts({"1", "2", "3"})) << "ascending anew";
  console.ClickHeader(kHidden);
  EXPECT_EQ(console.Column(kStation, 2), Texts({"65", "66"}));
}

TEST(AlphasView, StationsSortByTheirNumber) {
  LabelsConsole console(256);
  console.Open();
  console.ClickHeader(kStation);
  EXPECT_EQ(console.Column(kStation, 3), Texts({"256", "255", "254"}))
      << "they stand in ascending order from the start";
  console.ClickHeader(kStation);
  EXPECT_EQ(console.Column(kStation, 10).back(), "10");
}

TEST(AlphasView, SortingKeepsTheCurrentRowAndThePlace) {
  LabelsConsole console;
  console.Open();
  console.Click(70, kNotes);
  const int scrolled = console.Grid().verticalScrollBar()->value();
  const int sideways = console.Grid().horizontalScrollBar()->value();
  ASSERT_GT(scrolled, 0);
  console.ClickHeader(kSystemOutput);
  console.ClickHeader(kSystemOutput);
  ASSERT_NE(console.RowOf(71), 70);
  EXPECT_EQ(console.Current(), QStringLiteral("%1,6").arg(console.RowOf(71)));
  EXPECT_EQ(console.Grid().verticalScrollBar()->value(), scrolled);
  EXPECT_EQ(console.Grid().horizontalScrollBar()->value(), sideways);
  EXPECT_EQ(console.CurrentStation(), 1) << "the shared record set stands where it stood";
}

TEST(AlphasView, SortingStoresTheRowFirst) {
  LabelsConsole console;
  console.Open();
  console.Click(3, kLabel);
  console.Type("AAA");
  console.ClickHeader(kLabel);
  EXPECT_EQ(console.Text(4, "Label"), "AAA");
  EXPECT_EQ(console.Cell(0, kStation), QStringLiteral("4"));
}

TEST(AlphasView, HasItsTwoTools) {
  LabelsConsole console;
  console.Open();
  const auto& bar = *console.view->findChild<QToolBar*>();
  Texts tools;
  for (const QAction* const action : bar.actions()) {
    if (action->isSeparator()) continue;
    tools.push_back((action->objectName() + u' ' + action->text()).toStdString());
    EXPECT_FALSE(action->icon().isNull());
    EXPECT_FALSE(action->toolTip().isEmpty());
  }
  EXPECT_EQ(tools, Texts({"ID_DownloadAlphas Download Labels", "ID_QDVStatus QDV Status"}));
  EXPECT_NE(console.view->findChild<QToolButton*>(QStringLiteral("btnDownloadAlphas")), nullptr);
  console.ClickTool("ID_QDVStatus");
  EXPECT_THAT(console.said, ElementsAre("tally"));
}

TEST(AlphasView, DownloadSendsTheStationsThenTheInputs) {
  LabelsConsole console;
  console.Open();
  console.ClickTool("ID_DownloadAlphas");
  EXPECT_THAT(console.tables.traffic, ElementsAre("poll off", "labels 20", "labels 10", "poll on"));
  EXPECT_THAT(console.said, ElementsAre("sent 1 9999", "sent 2 9999"));
}

// What fails has been reported before the log says what was sent.
TEST(AlphasView, WhatWasDownloadedIsNotedOnceThePollIsOnAgain) {
  LabelsConsole console;
  console.Open();
  QObject::connect(
      &console.unsent, &views::UnsentTables::Sent, &console.unsent,
      [&](const switcher::TablePart& part) {
        console.tables.traffic.push_back("noted " + std::to_string(static_cast<int>(part.table)));
      });
  console.ClickTool("ID_DownloadAlphas");
  EXPECT_THAT(console.tables.traffic,
              ElementsAre("poll off", "labels 20", "labels 10", "poll on", "noted 1", "noted 2"));
}

TEST(AlphasView, ADownloadThatFailsSaysNothingWasSent) {
  LabelsConsole console;
  console.Open();
  console.tables.goOut = false;
  console.ClickTool("ID_DownloadAlphas");
  EXPECT_THAT(console.tables.traffic, ElementsAre("poll off", "labels 20", "labels 10", "poll on"));
  EXPECT_THAT(console.said, IsEmpty());
}

TEST(AlphasView, DownloadStoresWhatIsTypedFirst) {
  LabelsConsole console;
  console.Open();
  console.Click(4, kLabel);
  console.Type("MIC");
  console.ClickTool("ID_DownloadAlphas");
  EXPECT_EQ(console.Text(5, "Label"), "MIC");
  EXPECT_THAT(console.said, ElementsAre("edited 1 5", "labels", "sent 1 9999", "sent 2 9999"));

  console.Click(5, kLabel);
  console.Type("M");
  console.databaseIsOpen = false;
  console.tables.traffic.clear();
  console.ClickTool("ID_DownloadAlphas");
  EXPECT_THAT(console.tables.traffic, IsEmpty());
  EXPECT_THAT(console.reporter.reports, testing::SizeIs(1));
}

TEST(AlphasView, TheMenuOffersWhatKeysDo) {
  LabelsConsole console;
  console.Open();
  console.Click(0, kSystemInput);
  QTest::keyClick(&console.Grid(), Qt::Key_F10, Qt::ShiftModifier);
  auto* const menu = console.view->findChild<QMenu*>(QStringLiteral("aidAlphasMenu"));
  ASSERT_NE(menu, nullptr);
  Texts names;
  for (const QAction* const action : menu->actions()) {
    if (!action->isSeparator()) names.push_back(action->objectName().toStdString());
  }
  EXPECT_EQ(names, Texts({"aidCopy", "aidPaste", "aidFind", "aidSort", "aidShowInMap",
                          "ID_DownloadAlphas", "ID_QDVStatus"}));
  menu->findChild<QAction*>(QStringLiteral("aidSort"))->trigger();
  menu->close();
  EXPECT_EQ(console.Grid().horizontalHeader()->sortIndicatorSection(), kSystemInput);
}

TEST(AlphasView, ItsPlaceIsKept) {
  LabelsConsole console;
  console.Open();
  console.subWindow->setGeometry(10, 20, 600, 500);
  console.Close();
  EXPECT_TRUE(console.subWindow.isNull() || console.subWindow->isHidden());
  EXPECT_EQ(console.settings->Twips(QStringLiteral("AlphasLeft")), 150);
  EXPECT_EQ(console.settings->Twips(QStringLiteral("AlphasTop")), 300);
  EXPECT_EQ(console.settings->Twips(QStringLiteral("AlphasWidth")), 9000);
  EXPECT_EQ(console.settings->Twips(QStringLiteral("AlphasHeight")), 7500);
}

}  // namespace
