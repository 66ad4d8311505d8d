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

const QRect kPrimary(0, 0, 1920, 1080);
const QRect kRight(1920, 0, 1280, 1024);
const QRect kHome(0, 28, 1920, 1052);  // under a panel of the desktop

TEST(VisiblePlace, WhatTouchesAScreenStays) {
  for (const QRect& place :
       {QRect(67, 67, 433, 433), QRect(-300, 20, 433, 433), QRect(1880, 1060, 433, 433),
        QRect(67, -1, 433, 433), QRect(100, -432, 433, 433), QRect(-432, 100, 433, 433),
        QRect(3199, 1023, 433, 433), QRect(10, 1079, 433, 433), QRect(10, 0, 433, 20)}) {
    EXPECT_EQ(VisiblePlace(place, {kPrimary, kRight}, kHome), place)
        << place.x() << "," << place.y();
  }
}

TEST(VisiblePlace, WhatIsLargerThanTheScreensStays) {
  for (const QRect& place : {QRect(2000, 100, 5000, 5000), QRect(-100, -100, 8000, 8000)}) {
    EXPECT_EQ(VisiblePlace(place, {kPrimary, kRight}, kHome), place);
  }
}

TEST(VisiblePlace, WhatTouchesNoneIsShownOnThePrimaryScreen) {
  for (const QPoint& corner : {QPoint(4000, 100), QPoint(100, 1080), QPoint(-433, 100),
                               QPoint(100, -433), QPoint(3200, 0), QPoint(-32000, -32000)}) {
    EXPECT_EQ(VisiblePlace(QRect(corner, QSize(433, 433)), {kPrimary, kRight}, kHome),
              QRect(40, 68, 433, 433))
        << corner.x() << "," << corner.y();
  }
}

TEST(VisiblePlace, ShownElsewhereItIsNoLargerThanTheRoom) {
  EXPECT_EQ(VisiblePlace(QRect(5000, 0, 3000, 3000), {kPrimary}, kHome), QRect(40, 68, 1840, 972));
}

TEST(VisiblePlace, OfAScreenThatBeginsElsewhereIsOnThatScreen) {
  EXPECT_EQ(VisiblePlace(QRect(0, 0, 400, 300), {kRight}, kRight), QRect(1960, 40, 400, 300));
}

}  // namespace
}  // namespace views
