// SPDX-License-Identifier: MIT

#include "app/shell/view_place.h"

#include <gtest/gtest.h>

#include <QAction>
#include <QComboBox>
#include <QSignalSpy>
#include <QTabWidget>
#include <QTableView>

#include "tests/app/views_fixture.h"
#include "tests/views/gui_support.h"

namespace app {
namespace {

using Place = ViewPlace::Kind;

class ViewPlaceTest : public TransfersFixture {
 protected:
  ViewPlaceTest() {
    model_.ApplyFixedValues();
    model_.ChannelCount = 8;
    model_.StationCount = 8;
    for (int station = 1; station <= 10; ++station) {
      database_.AddStation(station, {{"Label", "out"}, {"InLabel", "in"}, {"Hidden", 0}});
    }
    window_.show();
  }

  QTabWidget& Tabs() { return *views_.Buttons()->findChild<QTabWidget*>(); }
};

TEST_F(ViewPlaceTest, OpensTheRowOfALabel) {
  views_.GoTo({Place::Label, 9, 2});
  const QModelIndex current = test::Find<QTableView>(*views_.Alphas(), "jgAlphas").currentIndex();
  EXPECT_EQ(current.row(), 8);
  EXPECT_EQ(current.column(), 2);
  views_.GoTo({Place::Label, 99, 2});
  EXPECT_EQ(test::Find<QTableView>(*views_.Alphas(), "jgAlphas").currentIndex(), current);
}

TEST_F(ViewPlaceTest, OpensTheCellOfAnInhibit) {
  views_.GoTo({Place::Crosspoint, 6, 3});
  EXPECT_TRUE(views_.Xmap()->Readout().startsWith(QStringLiteral("Out 06  out  <  In 03")))
      << views_.Xmap()->Readout().toStdString();
  views_.GoTo({Place::Crosspoint, 9, 3});
  EXPECT_TRUE(views_.Xmap()->Readout().startsWith(QStringLiteral("Out 06"))) << "there is no other";
}

TEST_F(ViewPlaceTest, OpensTheStationAndItsButton) {
  views_.GoTo({Place::Button, 5, 12});
  EXPECT_EQ(views_.Buttons()->CurrentStation(), 5);
  EXPECT_EQ(Tabs().currentIndex(), 4);
  EXPECT_EQ(test::Find<QComboBox>(*views_.Buttons(), "cmbButton").currentIndex(), 11);
}

TEST_F(ViewPlaceTest, OpensTheRelaysAndTheOpto) {
  views_.GoTo({Place::Relays, 3, 0});
  EXPECT_EQ(views_.Buttons()->CurrentStation(), 3);
  EXPECT_EQ(Tabs().currentIndex(), 5);
  views_.GoTo({Place::Opto, 4, 0});
  EXPECT_EQ(views_.Buttons()->CurrentStation(), 4);
  EXPECT_EQ(Tabs().currentIndex(), 6);
}

TEST_F(ViewPlaceTest, DoesNotGoToAStationWithoutAPanel) {
  views_.GoTo({Place::Button, 5, 12});
  views_.GoTo({Place::Button, 9, 1});
  EXPECT_EQ(views_.Buttons()->CurrentStation(), 5);
  EXPECT_EQ(test::Find<QComboBox>(*views_.Buttons(), "cmbButton").currentIndex(), 11);
}

// The programming may lie behind another view when one of its uses is gone to.
TEST_F(ViewPlaceTest, BringsTheViewOfAUseUp) {
  using Use = stations::Use;
  const auto current = [this] { return window_.Area().activeSubWindow()->widget(); };
  views_.GoTo(PlaceOf(Use{Use::Kind::Button, 5, 12}));
  views_.ShowAlphas();
  ASSERT_EQ(current(), views_.Alphas());
  views_.GoTo(PlaceOf(Use{Use::Kind::Button, 6, 7}));
  EXPECT_EQ(current(), views_.Buttons());
  EXPECT_EQ(views_.Buttons()->CurrentStation(), 6);
  EXPECT_EQ(test::Find<QComboBox>(*views_.Buttons(), "cmbButton").currentIndex(), 6);
  views_.ShowAlphas();
  views_.GoTo(PlaceOf(Use{Use::Kind::OptoChannel, 0, 4}));
  EXPECT_EQ(current(), views_.Buttons());
  EXPECT_EQ(views_.Buttons()->CurrentStation(), 4);
  EXPECT_EQ(Tabs().currentIndex(), 6);
  views_.GoTo(PlaceOf(Use{Use::Kind::Inhibit, 6, 3}));
  EXPECT_EQ(current(), views_.Xmap());
}

TEST_F(ViewPlaceTest, LeadsFromTheMapToAStationAndBack) {
  const auto current = [this] { return window_.Area().activeSubWindow()->widget(); };
  views_.GoTo({Place::Station, 5});
  EXPECT_EQ(views_.Buttons()->CurrentStation(), 5);
  views_.GoTo(PlaceOfLabel(3, /*ofInput=*/true));
  EXPECT_EQ(current(), views_.Alphas());
  const auto& grid = test::Find<QTableView>(*views_.Alphas(), "jgAlphas");
  EXPECT_EQ(grid.currentIndex().row(), 2);
  EXPECT_EQ(grid.currentIndex().column(), 2) << "Input Label";
  const QSignalSpy toMap(views_.Alphas(), &views::AlphasView::ShowInMapRequested);
  test::Find<QAction>(*views_.Alphas(), "aidShowInMap").trigger();
  ASSERT_EQ(toMap.size(), 1);
  EXPECT_EQ(toMap[0][0].toInt(), 3);
  EXPECT_TRUE(toMap[0][1].toBool());
  views_.GoTo(PlaceOfLabel(4, /*ofInput=*/false));
  EXPECT_EQ(grid.currentIndex().row(), 3);
  EXPECT_EQ(grid.currentIndex().column(), 1) << "Station Label";
  views_.GoTo({Place::Input, 3});
  views_.GoTo({Place::Output, 6});
  EXPECT_EQ(current(), views_.Xmap());
  EXPECT_TRUE(views_.Xmap()->Readout().startsWith(QStringLiteral("Out 06")));
  EXPECT_TRUE(views_.Xmap()->Readout().contains(QStringLiteral("In 03")));
}

}  // namespace
}  // namespace app
