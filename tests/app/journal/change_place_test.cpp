// SPDX-License-Identifier: MIT

#include "app/journal/change_place.h"

#include <gtest/gtest.h>

#include <QComboBox>
#include <QTabWidget>
#include <QTableView>

#include "tests/app/views_fixture.h"
#include "tests/views/gui_support.h"

namespace app {
namespace {

using View = ChangePlace::View;

stations::Change ChangeOf(int station, const char* field, const jet::Value& before = {},
                          const jet::Value& after = {}) {
  return {stations::Origin::Operator, station, {{field, before, after}}};
}

TEST(ChangePlace, IsWhereAFieldIsShown) {
  const auto place = [](const char* field) { return PlaceOf(ChangeOf(17, field), field); };
  EXPECT_EQ(place("Label"), (ChangePlace{View::Labels, 17, 1}));
  EXPECT_EQ(place("InLabel"), (ChangePlace{View::Labels, 17, 2}));
  EXPECT_EQ(place("Notes"), (ChangePlace{View::Labels, 17, 6}));
  EXPECT_EQ(place("Relays"), (ChangePlace{View::Relays, 17, 0}));
  EXPECT_EQ(place("OptoStations"), (ChangePlace{View::Opto, 17, 0}));
  EXPECT_EQ(place("B3 Prog"), (ChangePlace{View::Button, 17, 3}));
  EXPECT_EQ(place("Of Another Program"), (ChangePlace{View::Labels, 17, 1}));
}

TEST(ChangePlace, OfInhibitsIsTheFirstInputThatIsOtherNow) {
  const auto input = [](const char* before, const char* after) {
    return PlaceOf(ChangeOf(6, "Inhibits", before, after), "Inhibits").number;
  };
  EXPECT_EQ(input("0000", "0010"), 3);
  EXPECT_EQ(input("1000", "0010"), 1);
  EXPECT_EQ(input("0", "0001"), 4);
  EXPECT_EQ(input("0000", "0000"), 1);
}

class GoToTest : public TransfersFixture {
 protected:
  GoToTest() {
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

TEST_F(GoToTest, OpensTheRowOfALabel) {
  GoTo(views_, {View::Labels, 9, 2});
  const QModelIndex current = test::Find<QTableView>(*views_.Alphas(), "jgAlphas").currentIndex();
  EXPECT_EQ(current.row(), 8);
  EXPECT_EQ(current.column(), 2);
  GoTo(views_, {View::Labels, 99, 2});
  EXPECT_EQ(test::Find<QTableView>(*views_.Alphas(), "jgAlphas").currentIndex(), current);
}

TEST_F(GoToTest, OpensTheCellOfAnInhibit) {
  GoTo(views_, {View::Map, 6, 3});
  EXPECT_TRUE(views_.Xmap()->Readout().startsWith(QStringLiteral("Out 06  out  <  In 03")))
      << views_.Xmap()->Readout().toStdString();
  GoTo(views_, {View::Map, 9, 3});
  EXPECT_TRUE(views_.Xmap()->Readout().startsWith(QStringLiteral("Out 06"))) << "there is no other";
}

TEST_F(GoToTest, OpensTheStationAndItsButton) {
  GoTo(views_, {View::Button, 5, 12});
  EXPECT_EQ(views_.Buttons()->CurrentStation(), 5);
  EXPECT_EQ(Tabs().currentIndex(), 4);
  EXPECT_EQ(test::Find<QComboBox>(*views_.Buttons(), "cmbButton").currentIndex(), 11);
}

TEST_F(GoToTest, OpensTheRelaysAndTheOpto) {
  GoTo(views_, {View::Relays, 3, 0});
  EXPECT_EQ(views_.Buttons()->CurrentStation(), 3);
  EXPECT_EQ(Tabs().currentIndex(), 5);
  GoTo(views_, {View::Opto, 4, 0});
  EXPECT_EQ(views_.Buttons()->CurrentStation(), 4);
  EXPECT_EQ(Tabs().currentIndex(), 6);
}

TEST_F(GoToTest, DoesNotGoToAStationWithoutAPanel) {
  GoTo(views_, {View::Button, 5, 12});
  GoTo(views_, {View::Button, 9, 1});
  EXPECT_EQ(views_.Buttons()->CurrentStation(), 5);
  EXPECT_EQ(test::Find<QComboBox>(*views_.Buttons(), "cmbButton").currentIndex(), 11);
}

// The programming may lie behind another view when one of its uses is gone to.
TEST_F(GoToTest, BringsTheViewOfAUseUp) {
  using Kind = stations::Use::Kind;
  const auto current = [this] { return window_.Area().activeSubWindow()->widget(); };
  GoTo(views_, PlaceOf(stations::Use{Kind::Button, 5, 12}));
  views_.ShowAlphas();
  ASSERT_EQ(current(), views_.Alphas());
  GoTo(views_, PlaceOf(stations::Use{Kind::Button, 6, 7}));
  EXPECT_EQ(current(), views_.Buttons());
  EXPECT_EQ(views_.Buttons()->CurrentStation(), 6);
  EXPECT_EQ(test::Find<QComboBox>(*views_.Buttons(), "cmbButton").currentIndex(), 6);
  views_.ShowAlphas();
  GoTo(views_, PlaceOf(stations::Use{Kind::OptoChannel, 0, 4}));
  EXPECT_EQ(current(), views_.Buttons());
  EXPECT_EQ(views_.Buttons()->CurrentStation(), 4);
  EXPECT_EQ(Tabs().currentIndex(), 6);
  GoTo(views_, PlaceOf(stations::Use{Kind::Inhibit, 6, 3}));
  EXPECT_EQ(current(), views_.Xmap());
}

}  // namespace
}  // namespace app
