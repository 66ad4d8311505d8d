// SPDX-License-Identifier: MIT
//
// Finding in the grid of station labels, and a run by keys alone.

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <QApplication>
#include <QLabel>
#include <QTest>

#include "tests/views/labels/labels_console.h"
#include "views/labels/labels_model.h"
#include "views/widgets/find_field.h"

namespace {

using test::LabelsConsole;
using testing::ElementsAre;
using namespace test;  // NOLINT(google-build-using-namespace): the columns

QWidget& Field(LabelsConsole& console) {
  return *console.view->findChild<QWidget*>(QStringLiteral("aidFind"));
}

std::string Count(LabelsConsole& console) {
  return Field(console).findChild<QLabel*>(QStringLiteral("aidFindCount"))->text().toStdString();
}

int Lit(LabelsConsole& console) {
  int lit = 0;
  for (int row = 0; row < console.Grid().model()->rowCount(); ++row) {
    for (int column = 0; column < 7; ++column) {
      lit += console.CellData(row, column, views::LabelsModel::MatchRole).toBool() ? 1 : 0;
    }
  }
  return lit;
}

TEST(AlphasFind, LightsWhatMatchesAndGoesFromOneToTheNext) {
  LabelsConsole console;
  console.SetField(7, "Label", "Studio");
  console.SetField(90, "InLabel", "studio B");
  console.SetField(100, "Notes", "in the studio");
  console.Open();
  EXPECT_TRUE(Field(console).isHidden());
  console.Press(Qt::Key_F, Qt::ControlModifier);
  ASSERT_TRUE(Field(console).isVisible());
  console.Type("studio");
  EXPECT_EQ(Count(console), "3 found");
  EXPECT_EQ(Lit(console), 3);
  EXPECT_EQ(console.Current(), QStringLiteral("0,1")) << "typing does not move";
  console.Press(Qt::Key_Return);
  EXPECT_EQ(console.Current(), QStringLiteral("6,1"));
  EXPECT_EQ(Count(console), "1 of 3");
  const QImage picture = console.Grid().viewport()->grab().toImage();
  const QRect cell = console.Grid().visualRect(console.Grid().currentIndex());
  EXPECT_EQ(
      picture.pixelColor(
          (QPointF(cell.right() - 6, cell.center().y()) * picture.devicePixelRatio()).toPoint()),
      views::kMatchGround);
  console.Press(Qt::Key_Return);
  EXPECT_EQ(console.Current(), QStringLiteral("89,2"));
  EXPECT_TRUE(console.Grid().viewport()->rect().intersects(
      console.Grid().visualRect(console.Grid().currentIndex())));
  console.Press(Qt::Key_Return);
  console.Press(Qt::Key_Return);
  EXPECT_EQ(console.Current(), QStringLiteral("6,1")) << "round the end";
  console.Press(Qt::Key_Return, Qt::ShiftModifier);
  EXPECT_EQ(console.Current(), QStringLiteral("99,6"));
  console.Press(Qt::Key_Escape);
  EXPECT_TRUE(Field(console).isHidden());
  EXPECT_EQ(Lit(console), 0);
  EXPECT_EQ(QApplication::focusWidget(), &console.Grid());
}

TEST(AlphasFind, AStationIsFoundByItsNumber) {
  LabelsConsole console;
  console.Open();
  console.Press(Qt::Key_F, Qt::ControlModifier);
  console.Type("77");
  console.Press(Qt::Key_Return);
  EXPECT_EQ(console.Current(), QStringLiteral("76,0"));
}

TEST(AlphasFind, NothingFound) {
  LabelsConsole console;
  console.Open();
  console.Press(Qt::Key_F, Qt::ControlModifier);
  console.Type("zzz");
  EXPECT_EQ(Count(console), "No match");
  console.Press(Qt::Key_Return);
  EXPECT_EQ(console.Current(), QStringLiteral("0,1"));
}

TEST(AlphasFind, LightsFollowSortingAndRefreshing) {
  LabelsConsole console;
  console.SetField(2, "Label", "Studio");
  console.Open();
  console.Press(Qt::Key_F, Qt::ControlModifier);
  console.Type("studio");
  console.ClickHeader(kStation);
  EXPECT_EQ(Lit(console), 1);
  EXPECT_TRUE(console.CellData(126, kLabel, views::LabelsModel::MatchRole).toBool());
  console.SetField(3, "Label", "studio 2");
  console.view->UpdateLabels();
  EXPECT_EQ(Lit(console), 2);
  EXPECT_EQ(Count(console), "2 found");
}

TEST(AlphasFind, GoingToAMatchLeavesTheRow) {
  LabelsConsole console;
  console.Open();
  console.Click(0, kLabel);
  console.Type("A");
  console.Press(Qt::Key_F, Qt::ControlModifier);
  console.Type("Sta. 009");
  EXPECT_EQ(console.Text(1, "Label"), "Sta. 001") << "searching does not";
  console.Press(Qt::Key_Return);
  EXPECT_EQ(console.Text(1, "Label"), "A");
  EXPECT_EQ(console.Current(), QStringLiteral("8,1"));
}

TEST(AlphasKeys, EverythingByKeysAlone) {
  LabelsConsole console;
  console.Open();
  EXPECT_EQ(QApplication::focusWidget(), &console.Grid());
  EXPECT_EQ(console.Current(), QStringLiteral("0,1"));
  console.Press(Qt::Key_Down);
  console.Press(Qt::Key_Right);
  EXPECT_EQ(console.Current(), QStringLiteral("1,2"));
  console.Type("CAM 2");
  console.Press(Qt::Key_Tab);
  console.Press(Qt::Key_Escape);
  console.Press(Qt::Key_End, Qt::ControlModifier);
  EXPECT_EQ(console.Current(), QStringLiteral("127,6"));
  EXPECT_EQ(console.Text(2, "InLabel"), "CAM 2");
  console.Press(Qt::Key_Home, Qt::ControlModifier);
  console.Press(Qt::Key_Tab);
  console.Press(Qt::Key_Tab);
  EXPECT_EQ(console.Current(), QStringLiteral("0,2"));
  console.Press(Qt::Key_Down, Qt::ShiftModifier);
  EXPECT_EQ(console.Copy(), "Inpt 001\nCAM 2\n");
  console.Press(Qt::Key_Left);
  console.Paste(QStringLiteral("X"));
  EXPECT_EQ(console.Text(2, "Label"), "X");
  EXPECT_THAT(console.said, ElementsAre("edited 2 2", "labels", "edited 1 2", "labels"));
}

}  // namespace
