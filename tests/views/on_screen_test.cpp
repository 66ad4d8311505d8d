// SPDX-License-Identifier: MIT

#include "views/window_place/on_screen.h"

#include <gtest/gtest.h>

namespace views {
namespace {

TEST(OnScreen, ASizeLeavesRoomForTheFrame) {
  EXPECT_EQ(SizeOnScreen(QSize(720, 640), QSize(1920, 1080)), QSize(720, 640));
  EXPECT_EQ(SizeOnScreen(QSize(720, 640), QSize(960, 540)), QSize(720, 500));
  EXPECT_EQ(SizeOnScreen(QSize(720, 640), QSize(640, 480)), QSize(624, 440));
}

TEST(OnScreen, AWindowMovesNoFurtherThanItHasTo) {
  const QRect room(0, 30, 960, 510);
  EXPECT_EQ(CornerOnScreen(QRect(100, 100, 400, 300), room), QPoint(100, 100));
  EXPECT_EQ(CornerOnScreen(QRect(700, 300, 400, 300), room), QPoint(560, 240));
  EXPECT_EQ(CornerOnScreen(QRect(-50, 10, 400, 300), room), QPoint(0, 30));
  EXPECT_EQ(CornerOnScreen(QRect(100, 100, 2000, 900), room), QPoint(0, 30));
}

}  // namespace
}  // namespace views
