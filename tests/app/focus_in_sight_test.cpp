// SPDX-License-Identifier: MIT

#include "app/shell/focus_in_sight.h"

#include <gtest/gtest.h>

#include <QDialog>
#include <QMdiSubWindow>
#include <QPushButton>
#include <QScrollBar>
#include <QTableWidget>
#include <QTest>

namespace app {
namespace {

// An area with a child window that is larger than it.
class FocusInSightTest : public testing::Test {
 protected:
  FocusInSightTest() {
    area_.resize(300, 200);
    area_.setHorizontalScrollBarPolicy(Qt::ScrollBarAsNeeded);
    area_.setVerticalScrollBarPolicy(Qt::ScrollBarAsNeeded);
    QMdiSubWindow* const child = area_.addSubWindow(form_);
    near_->setGeometry(5, 5, 60, 24);
    far_->setGeometry(500, 400, 60, 24);
    grid_->setGeometry(100, 40, 380, 340);
    grid_->setRowCount(40);
    grid_->setColumnCount(4);
    child->setGeometry(0, 0, 620, 500);
    area_.show();
    area_.activateWindow();
    near_->setFocus();
  }

  void SetUp() override {
    ASSERT_TRUE(QTest::qWaitFor([this] { return near_->hasFocus(); }));
  }

  // Whether all of that part of the widget is seen in the area.
  bool IsSeen(const QWidget& widget, const QRect& part) {
    const QRect there(widget.mapTo(area_.viewport(), part.topLeft()), part.size());
    return area_.viewport()->rect().contains(there);
  }
  bool IsSeen(const QWidget& widget) { return IsSeen(widget, widget.rect()); }
  bool CellIsSeen() { return IsSeen(*grid_->viewport(), grid_->visualRect(grid_->currentIndex())); }

  QMdiArea area_;
  QWidget* form_ = new QWidget;
  QPushButton* near_ = new QPushButton(form_);
  QPushButton* far_ = new QPushButton(form_);
  QTableWidget* grid_ = new QTableWidget(form_);
  FocusInSight focusInSight_{area_};
};

TEST_F(FocusInSightTest, AControlThatGetsTheFocusIsSeen) {
  ASSERT_FALSE(IsSeen(*far_));
  far_->setFocus(Qt::TabFocusReason);
  EXPECT_TRUE(IsSeen(*far_));
  near_->setFocus(Qt::BacktabFocusReason);
  EXPECT_TRUE(IsSeen(*near_));
}

TEST_F(FocusInSightTest, TheCellThatKeysLeadToIsSeen) {
  grid_->setCurrentCell(0, 0);
  grid_->setFocus(Qt::TabFocusReason);
  EXPECT_TRUE(CellIsSeen());
  for (int row = 1; row < 40; ++row) {
    QTest::keyClick(grid_, Qt::Key_Down);
    QCoreApplication::processEvents();
    ASSERT_EQ(grid_->currentRow(), row);
    ASSERT_TRUE(CellIsSeen()) << row;
  }
}

TEST_F(FocusInSightTest, AWindowThatComesUpShowsItsTitle) {
  auto* const form = new QWidget;
  auto* const field = new QPushButton(form);
  field->setGeometry(10, 60, 60, 24);
  QMdiSubWindow* const other = area_.addSubWindow(form);
  other->setGeometry(40, 30, 500, 400);
  other->show();
  field->setFocus();
  near_->setFocus();
  area_.setActiveSubWindow(area_.subWindowList().first());
  area_.verticalScrollBar()->setValue(80);
  ASSERT_FALSE(IsSeen(*other, QRect(0, 0, 20, 20)));
  area_.setActiveSubWindow(other);
  EXPECT_TRUE(IsSeen(*other, QRect(0, 0, 20, 20)));
  EXPECT_TRUE(IsSeen(*field));
}

TEST_F(FocusInSightTest, AWindowWhoseTitleIsSeenStaysWhereItIs) {
  auto* const form = new QWidget;
  auto* const field = new QPushButton(form);
  field->setGeometry(10, 10, 60, 24);
  QMdiSubWindow* const other = area_.addSubWindow(form);
  other->setGeometry(40, 30, 500, 400);
  other->show();
  field->setFocus();
  EXPECT_EQ(area_.horizontalScrollBar()->value(), 0);
  EXPECT_EQ(area_.verticalScrollBar()->value(), 0);
}

TEST_F(FocusInSightTest, TheMouseMovesNothing) {
  QTest::mousePress(near_, Qt::LeftButton);
  far_->setFocus(Qt::MouseFocusReason);
  EXPECT_FALSE(IsSeen(*far_));
  QTest::mouseRelease(near_, Qt::LeftButton);
}

// Whoever looked elsewhere with the scroll bars and answers a box looks there still.
TEST_F(FocusInSightTest, AFocusThatComesBackMovesNothing) {
  grid_->setCurrentCell(30, 3);
  for (QWidget* const focus : {static_cast<QWidget*>(far_), static_cast<QWidget*>(grid_)}) {
    focus->setFocus(Qt::TabFocusReason);
    area_.horizontalScrollBar()->setValue(0);
    area_.verticalScrollBar()->setValue(0);
    QDialog box(&area_);
    const QPushButton answer(&box);
    box.open();
    ASSERT_TRUE(QTest::qWaitFor([&answer] { return answer.hasFocus(); }));
    box.close();
    area_.activateWindow();
    ASSERT_TRUE(QTest::qWaitFor([focus] { return focus->hasFocus(); }));
    EXPECT_EQ(area_.horizontalScrollBar()->value(), 0);
    EXPECT_EQ(area_.verticalScrollBar()->value(), 0);
  }
  // What keys lead to then is seen.
  QTest::keyClick(grid_, Qt::Key_Down);
  QCoreApplication::processEvents();
  EXPECT_TRUE(CellIsSeen());
}

TEST_F(FocusInSightTest, WhatIsSeenStaysWhereItIs) {
  far_->setGeometry(120, 5, 60, 24);
  far_->raise();
  far_->setFocus(Qt::TabFocusReason);
  EXPECT_EQ(area_.horizontalScrollBar()->value(), 0);
  EXPECT_EQ(area_.verticalScrollBar()->value(), 0);
}

}  // namespace
}  // namespace app
