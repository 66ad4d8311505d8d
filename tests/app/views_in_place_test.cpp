// SPDX-License-Identifier: MIT
//
// The main views shown again in their stored places, as after a retrieval.

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <QCoreApplication>

#include "tests/app/views_fixture.h"
#include "tests/views/gui_support.h"

namespace app {
namespace {

class ViewsInPlaceTest : public ViewsFixture {
 protected:
  ViewsInPlaceTest() {
    model_.ChannelCount = 8;
    model_.AllocateMap();
    const auto place = [this](const char* prefix, int left, int top, int width, int height) {
      const QString name = QLatin1String(prefix);
      settings_.SetText(name + QStringLiteral("Left"), QString::number(left));
      settings_.SetText(name + QStringLiteral("Top"), QString::number(top));
      settings_.SetText(name + QStringLiteral("Width"), QString::number(width));
      settings_.SetText(name + QStringLiteral("Height"), QString::number(height));
    };
    place("Butns", 150, 300, 6000, 4500);
    place("Alphas", 450, 600, 7500, 6000);
    place("Xmap", 750, 900, 9000, 7500);
    area_.resize(1200, 900);
    area_.show();
  }

  QMdiSubWindow* Frame(const char* name) { return test::SubWindow(area_, name); }
  QRect Place(const char* name) { return Frame(name)->geometry(); }

  void ExpectEverythingInPlace() {
    ASSERT_NE(Frame("frmButtons"), nullptr);
    ASSERT_NE(Frame("frmAlphas"), nullptr);
    ASSERT_NE(Frame("frmXmap"), nullptr);
    EXPECT_EQ(Place("frmButtons"), QRect(10, 20, 400, 300));
    EXPECT_EQ(Place("frmAlphas"), QRect(30, 40, 500, 400));
    EXPECT_EQ(Place("frmXmap"), QRect(50, 60, 600, 500));
    EXPECT_EQ(area_.activeSubWindow(), Frame("frmXmap"));
  }

  QMdiArea area_;
  OpenViews views_{area_, Services()};
};

TEST_F(ViewsInPlaceTest, ViewsThatWereClosed) {
  views_.ShowAllInPlace();
  views_.CloseAll();
  EXPECT_FALSE(views_.IsOpen(QStringLiteral("frmXmap")));
  views_.ShowAllInPlace();
  ExpectEverythingInPlace();
}

TEST_F(ViewsInPlaceTest, ViewsThatWereMovedMinimisedOrMaximised) {
  views_.ShowAllInPlace();
  Frame("frmButtons")->showMinimized();
  Frame("frmAlphas")->setGeometry(300, 300, 350, 320);
  Frame("frmXmap")->showMaximized();
  views_.ShowAllInPlace();
  ExpectEverythingInPlace();
  EXPECT_FALSE(Frame("frmButtons")->isMinimized());
  EXPECT_FALSE(Frame("frmXmap")->isMaximized());
}

}  // namespace
}  // namespace app
