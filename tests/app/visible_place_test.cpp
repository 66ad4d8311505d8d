// SPDX-License-Identifier: MIT

#include "app/visible_place.h"

#include <gtest/gtest.h>

namespace app {
namespace {

const QRect kPrimary(0, 0, 1920, 1080);
const QRect kRight(1920, 0, 1280, 1024);

TEST(VisiblePlace, OnAScreenStays) {
  for (const QRect& place : {QRect(67, 67, 433, 433), QRect(-300, 20, 433, 433),
                             QRect(1880, 1060, 433, 433), QRect(2000, 100, 5000, 5000)}) {
    EXPECT_EQ(VisiblePlace(place, {kPrimary, kRight}), place) << place.x() << "," << place.y();
  }
}

TEST(VisiblePlace, OnNoScreenIsThePrimaryOne) {
  const QRect rescued(40, 40, 433, 433);
  for (const QPoint& corner : {QPoint(4000, 100), QPoint(100, 2000), QPoint(-433, 100),
                               QPoint(100, -400), QPoint(-32000, -32000)}) {
    EXPECT_EQ(VisiblePlace(QRect(corner, QSize(433, 433)), {kPrimary, kRight}), rescued)
        << corner.x() << "," << corner.y();
  }
}

TEST(VisiblePlace, NeedsAPieceOfTheUpperEdge) {
  EXPECT_EQ(VisiblePlace(QRect(100, -10, 433, 433), {kPrimary}), QRect(40, 40, 433, 433))
      << "the title bar is above the screen, and cannot be dragged down";
  EXPECT_EQ(VisiblePlace(QRect(1900, 100, 433, 433), {kPrimary}), QRect(40, 40, 433, 433))
      << "20 pixels are too few to grab";
}

TEST(VisiblePlace, RescuedIsNoLargerThanTheScreen) {
  EXPECT_EQ(VisiblePlace(QRect(5000, 0, 3000, 3000), {kPrimary}), QRect(40, 40, 1840, 1000));
}

TEST(VisiblePlace, OfAScreenThatBeginsElsewhereIsOnThatScreen) {
  EXPECT_EQ(VisiblePlace(QRect(0, 0, 400, 300), {kRight}), QRect(1960, 40, 400, 300));
}

}  // namespace
}  // namespace app
