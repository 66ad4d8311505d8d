// SPDX-License-Identifier: MIT

#include "app/shell/mdi_arrangement.h"

#include <gtest/gtest.h>

#include <QMdiSubWindow>
#include <QScrollBar>
#include <QStyle>

namespace app {
namespace {

class MdiArrangementTest : public testing::Test {
 protected:
  MdiArrangementTest() {
    area_.resize(900, 600);
    area_.show();
    for (QMdiSubWindow*& window : windows_) {
      window = area_.addSubWindow(new QWidget);
      window->setGeometry(50, 60, 300, 200);
      window->show();
    }
  }

  QMdiArea area_;
  QMdiSubWindow* windows_[3] = {};
};

TEST_F(MdiArrangementTest, CascadeKeepsSizesAndStepsByTheTitle) {
  windows_[1]->resize(400, 250);
  Cascade(area_);
  const int step =
      windows_[0]->style()->pixelMetric(QStyle::PM_TitleBarHeight, nullptr, windows_[0]);
  EXPECT_EQ(windows_[0]->geometry(), QRect(0, 0, 300, 200));
  EXPECT_EQ(windows_[1]->geometry(), QRect(step, step, 400, 250));
  EXPECT_EQ(windows_[2]->geometry(), QRect(2 * step, 2 * step, 300, 200));
}

TEST_F(MdiArrangementTest, CascadeAfterTilesKeepsEveryWindowWithinTheArea) {
  for (void (*const tile)(QMdiArea&) : {TileHorizontal, TileVertical}) {
    tile(area_);
    Cascade(area_);
    for (const QMdiSubWindow* const window : windows_) {
      EXPECT_TRUE(area_.viewport()->rect().contains(window->geometry())) << window->x();
    }
    EXPECT_EQ(windows_[0]->size(), tile == TileHorizontal ? QSize(900, 200) : QSize(300, 600));
  }
}

TEST_F(MdiArrangementTest, CascadeLeavesAWindowAloneThatIsLargerThanTheArea) {
  windows_[2]->resize(1000, 250);
  Cascade(area_);
  EXPECT_EQ(windows_[2]->size(), QSize(1000, 250));
}

TEST_F(MdiArrangementTest, WindowsAreArrangedFromTheCornerOfAnAreaThatIsScrolled) {
  area_.setHorizontalScrollBarPolicy(Qt::ScrollBarAsNeeded);
  area_.setVerticalScrollBarPolicy(Qt::ScrollBarAsNeeded);
  for (void (*const arrange)(QMdiArea&) : {Cascade, TileHorizontal, TileVertical}) {
    windows_[2]->setGeometry(1500, 1500, 300, 200);
    area_.horizontalScrollBar()->setValue(700);
    area_.verticalScrollBar()->setValue(500);
    arrange(area_);
    EXPECT_EQ(area_.horizontalScrollBar()->value(), 0);
    EXPECT_EQ(area_.verticalScrollBar()->value(), 0);
    EXPECT_EQ(windows_[0]->pos(), QPoint(0, 0));
  }
}

TEST_F(MdiArrangementTest, HorizontalTilesAreFullWidthRows) {
  TileHorizontal(area_);
  const QSize size = area_.viewport()->size();
  int top = 0;
  for (const QMdiSubWindow* const window : windows_) {
    EXPECT_EQ(window->x(), 0);
    EXPECT_EQ(window->y(), top);
    EXPECT_EQ(window->width(), size.width());
    top += window->height();
  }
  EXPECT_EQ(top, size.height());
}

TEST_F(MdiArrangementTest, VerticalTilesAreFullHeightColumns) {
  windows_[2]->showMaximized();
  TileVertical(area_);
  const QSize size = area_.viewport()->size();
  int left = 0;
  for (const QMdiSubWindow* const window : windows_) {
    EXPECT_FALSE(window->isMaximized());
    EXPECT_EQ(window->y(), 0);
    EXPECT_EQ(window->x(), left);
    EXPECT_EQ(window->height(), size.height());
    left += window->width();
  }
  EXPECT_EQ(left, size.width());
}

TEST_F(MdiArrangementTest, MinimisedWindowsAreNotTiled) {
  windows_[0]->showMinimized();
  TileHorizontal(area_);
  EXPECT_TRUE(windows_[0]->isMinimized());
  EXPECT_EQ(windows_[1]->height() + windows_[2]->height(), area_.viewport()->height());
}

TEST_F(MdiArrangementTest, IconsStandAlongTheBottom) {
  windows_[0]->showMinimized();
  windows_[2]->showMinimized();
  windows_[0]->move(100, 100);
  windows_[2]->move(200, 50);
  ArrangeIcons(area_);
  const int bottom = area_.viewport()->height();
  EXPECT_EQ(windows_[0]->geometry().bottomLeft(), QPoint(0, bottom - 1));
  EXPECT_EQ(windows_[2]->geometry().bottomLeft(), QPoint(windows_[0]->width(), bottom - 1));
  EXPECT_EQ(windows_[1]->geometry(), QRect(50, 60, 300, 200));
}

TEST_F(MdiArrangementTest, ManyIconsTakeASecondRow) {
  area_.resize(300, 600);
  for (QMdiSubWindow* const window : windows_) window->showMinimized();
  ArrangeIcons(area_);
  for (const QMdiSubWindow* const window : windows_) {
    EXPECT_LE(window->geometry().right(), area_.viewport()->width());
  }
  EXPECT_LT(windows_[2]->y(), windows_[0]->y());
}

}  // namespace
}  // namespace app
