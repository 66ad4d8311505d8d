// SPDX-License-Identifier: MIT

#include "views/where_used/where_used_window.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <QAction>
#include <QApplication>
#include <QLabel>
#include <QTest>
#include <QTreeWidget>
#include <string>
#include <vector>

#include "stations/record.h"
#include "tests/views/programming/buttons_console.h"

namespace views {
namespace {

using test::Flags;
using testing::Contains;
using testing::ElementsAre;
using testing::IsEmpty;
using testing::SizeIs;

// The window as it is asked for in the programming view, at station 3.
class WhereUsedWindowTest : public testing::Test {
 protected:
  WhereUsedWindowTest() {
    // A new database has button n of every station call station n.
    for (int station = 1; station <= 64; ++station) {
      console_.SetField(station, "B3 Prog", Flags({}));
      console_.SetField(station, "OptoType", 254);
    }
    console_.SetField(3, "Label", "CAM 3");
    console_.SetField(3, "InLabel", "MIC 3");
    console_.SetField(12, "Label", "SOUND");
    console_.SetField(12, "B9 Type", 1);
    console_.SetField(12, "B9 Prog", Flags({3}));
    console_.SetField(20, "OptoType", 0);
    console_.SetField(20, "OptoStations", Flags({3}));
    console_.SetField(40, "Inhibits", "001");
    console_.SetField(40, "Label", "");
    console_.GoToStation(3);
    console_.Open();
    console_.Find<QAction>(QStringLiteral("aidWhereUsed")).trigger();
    window_ = console_.window->findChild<WhereUsedWindow*>();
  }

  std::vector<std::string> Rows() const {
    const auto& list = test::Find<QTreeWidget>(*window_, "lstWhereUsed");
    std::vector<std::string> rows;
    for (int row = 0; row < list.topLevelItemCount(); ++row) {
      const QTreeWidgetItem& item = *list.topLevelItem(row);
      rows.push_back((item.text(0) + u'|' + item.text(1) + u'|' + item.text(2)).toStdString());
    }
    return rows;
  }

  test::ButtonsConsole console_;
  WhereUsedWindow* window_ = nullptr;
};

TEST_F(WhereUsedWindowTest, ListsButtonsOptosAndInhibits) {
  EXPECT_TRUE(window_->isVisible());
  EXPECT_EQ(window_->windowTitle(), QStringLiteral("Where Used: Station 3 CAM 3"));
  EXPECT_THAT(Rows(), ElementsAre("Station 12 SOUND|Button 9|LISTEN", "Opto 20|Opto target|TALK",
                                  "Output 40|Inhibit|must not hear input 3 MIC 3"));
  EXPECT_EQ(test::Find<QLabel>(*window_, "aidUseSummary").text(),
            QStringLiteral("Buttons and optos that point at it: 2. Inhibits of its output and "
                           "input: 1."));
}

// Whoever has the views shows the place: the programming may be behind another.
TEST_F(WhereUsedWindowTest, EachPlaceIsAskedForAndTheWindowStays) {
  std::vector<stations::Use> asked;
  QObject::connect(console_.view, &ButtonsView::UseRequested, console_.view,
                   [&](const stations::Use& use) { asked.push_back(use); });
  window_->activateWindow();
  auto& list = test::Find<QTreeWidget>(*window_, "lstWhereUsed");
  QTest::keyClick(&list, Qt::Key_Return);
  QTest::keyClick(&list, Qt::Key_Down);
  QTest::mouseClick(&test::Find(*window_, "aidGoToUse"), Qt::LeftButton);
  const QRect row = list.visualItemRect(list.topLevelItem(2));
  QTest::mouseClick(list.viewport(), Qt::LeftButton, Qt::NoModifier, row.center());
  QTest::mouseDClick(list.viewport(), Qt::LeftButton, Qt::NoModifier, row.center());
  using Kind = stations::Use::Kind;
  EXPECT_THAT(asked, ElementsAre(stations::Use{Kind::Button, 12, 9, 1},
                                 testing::AllOf(testing::Field(&stations::Use::kind, Kind::Opto),
                                                testing::Field(&stations::Use::part, 20)),
                                 testing::AllOf(testing::Field(&stations::Use::station, 40),
                                                testing::Field(&stations::Use::part, 3))));
  EXPECT_EQ(console_.CurrentStation(), 3);
  EXPECT_TRUE(window_->isVisible());
  EXPECT_EQ(window_->windowTitle(), QStringLiteral("Where Used: Station 3 CAM 3"));
}

TEST_F(WhereUsedWindowTest, FollowsWhatIsEditedMeanwhile) {
  stations::Record record(*console_.Stations());  // station 3
  record.Set("B1 Prog", Flags({3}));
  record.Set("B1 Type", 255);
  ASSERT_TRUE(record.Commit({console_.changes, stations::Origin::Operator}).ok());
  EXPECT_TRUE(QTest::qWaitFor([this] { return Rows().size() == 4; }, 60'000));
  EXPECT_EQ(Rows().front(), "Station 3 CAM 3|Button 1|GROUP");
}

TEST_F(WhereUsedWindowTest, AskedForAgainItShowsTheStationThatIsShownThen) {
  console_.Press("cmdNext");
  console_.Find<QAction>(QStringLiteral("aidWhereUsed")).trigger();
  EXPECT_EQ(window_->windowTitle(), QStringLiteral("Where Used: Station 4 Sta. 004"));
  EXPECT_THAT(console_.window->findChildren<WhereUsedWindow*>(), SizeIs(1));
}

TEST_F(WhereUsedWindowTest, GoesWithItsView) {
  console_.Close();
  QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
  EXPECT_THAT(console_.window->findChildren<WhereUsedWindow*>(), IsEmpty());
}

}  // namespace
}  // namespace views
