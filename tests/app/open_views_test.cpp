// SPDX-License-Identifier: MIT

#include "app/shell/open_views.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <QAction>
#include <QApplication>
#include <QLabel>
#include <QSignalSpy>
#include <QSlider>
#include <QTableView>
#include <QTest>
#include <string>
#include <vector>

#include "tests/app/views_fixture.h"
#include "tests/views/gui_support.h"

namespace app {
namespace {

class OpenViewsTest : public ViewsFixture {
 protected:
  OpenViewsTest() {
    area_.resize(900, 700);
    area_.show();
  }

  QMdiSubWindow* Frame(const char* name) { return test::SubWindow(area_, name); }

  // The dialogs of that name that show.
  QList<QDialog*> Dialogs(const char* name) { return test::ShownDialogs(*area_.window(), name); }

  static void Settle() {
    QCoreApplication::sendPostedEvents();
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
  }

  struct View {
    const char* name;
    void (OpenViews::*show)();
    QRect firstPlace;
  };
  const View list_[3] = {
      {"frmButtons", &OpenViews::ShowButtons, QRect(0, 0, 593, 407)},
      {"frmAlphas", &OpenViews::ShowAlphas, QRect(20, 20, 667, 600)},
      {"frmXmap", &OpenViews::ShowXmap, QRect(33, 33, 667, 600)},
  };

  QMdiArea area_;
  OpenViews views_{area_, Services()};
};

TEST_F(OpenViewsTest, EachOpensOnceInTheStoredPlace) {
  for (const View& view : list_) {
    EXPECT_EQ(Frame(view.name), nullptr);
    (views_.*view.show)();
    ASSERT_NE(Frame(view.name), nullptr) << view.name;
    EXPECT_EQ(Frame(view.name)->geometry(), view.firstPlace) << view.name;
    EXPECT_EQ(area_.activeSubWindow(), Frame(view.name));
    (views_.*view.show)();
  }
  EXPECT_EQ(area_.subWindowList().size(), 3);
}

TEST_F(OpenViewsTest, ANewViewHasTheFocusWhereNothingIsSent) {
  area_.activateWindow();
  ASSERT_TRUE(QTest::qWaitForWindowActive(&area_));
  for (const View& view : list_) {
    (views_.*view.show)();
    const QWidget* const focus = QApplication::focusWidget();
    ASSERT_NE(focus, nullptr) << view.name;
    EXPECT_TRUE(Frame(view.name)->isAncestorOf(focus)) << view.name;
    EXPECT_FALSE(focus->inherits("QAbstractButton"))
        << view.name << ": " << focus->objectName().toStdString();
  }
}

TEST_F(OpenViewsTest, NamesAreComparedWithoutRegardToCase) {
  EXPECT_FALSE(views_.IsOpen(QStringLiteral("frmAlphas")));
  views_.ShowAlphas();
  EXPECT_TRUE(views_.IsOpen(QStringLiteral("frmAlphas")));
  EXPECT_TRUE(views_.IsOpen(QStringLiteral("FRMALPHAS")));
  EXPECT_FALSE(views_.IsOpen(QStringLiteral("frmAlpha")));
  EXPECT_FALSE(views_.IsOpen(QStringLiteral("frmXmap")));
}

TEST_F(OpenViewsTest, AViewThatWasClosedIsNotOpenAndComesBackWhereItWas) {
  for (const View& view : list_) {
    (views_.*view.show)();
    Frame(view.name)->setGeometry(60, 75, 450, 300);
    Frame(view.name)->close();
    EXPECT_FALSE(views_.IsOpen(QLatin1String(view.name))) << view.name;
    (views_.*view.show)();  // also before the closed one has gone
    EXPECT_EQ(Frame(view.name)->geometry(), QRect(60, 75, 450, 300)) << view.name;
    Settle();
    EXPECT_TRUE(views_.IsOpen(QLatin1String(view.name))) << view.name;
  }
}

TEST_F(OpenViewsTest, AMinimisedViewIsOpenAndComesUpAsItWas) {
  for (const View& view : list_) {
    (views_.*view.show)();
    Frame(view.name)->setGeometry(60, 75, 450, 300);
    Frame(view.name)->showMinimized();
    EXPECT_TRUE(views_.IsOpen(QLatin1String(view.name))) << view.name;
    (views_.*view.show)();
    EXPECT_FALSE(Frame(view.name)->isMinimized()) << view.name;
    EXPECT_EQ(Frame(view.name)->geometry(), QRect(60, 75, 450, 300)) << view.name;
  }
}

TEST_F(OpenViewsTest, ClosingAllStoresEveryPlace) {
  for (const View& view : list_) {
    (views_.*view.show)();
    Frame(view.name)->setGeometry(60, 75, 450, 300);
  }
  views_.CloseAll();
  Settle();
  EXPECT_TRUE(area_.subWindowList().isEmpty());
  for (const char* const prefix : {"Butns", "Alphas", "Xmap"}) {
    const QString key = QLatin1String(prefix);
    EXPECT_EQ(settings_.Text(key + QStringLiteral("Left")), QStringLiteral("900")) << prefix;
    EXPECT_EQ(settings_.Text(key + QStringLiteral("Top")), QStringLiteral("1125")) << prefix;
    EXPECT_EQ(settings_.Text(key + QStringLiteral("Width")), QStringLiteral("6750")) << prefix;
    EXPECT_EQ(settings_.Text(key + QStringLiteral("Height")), QStringLiteral("4500")) << prefix;
  }
}

TEST_F(OpenViewsTest, ARowThatArrivesWithoutAMapIsNobodysBusiness) {
  views_.CrosspointRowChanged(1, 0);
  EXPECT_TRUE(reporter_.reports.empty());
}

TEST_F(OpenViewsTest, TheMapIsToldOfWhenItComesAndGoes) {
  QSignalSpy loaded(&views_, &OpenViews::XmapLoaded);
  views_.ShowXmap();
  ASSERT_EQ(loaded.count(), 1);
  EXPECT_TRUE(loaded[0][0].toBool());
  EXPECT_NE(views_.Xmap(), nullptr);
  Frame("frmXmap")->close();
  EXPECT_EQ(views_.Xmap(), nullptr);
  Settle();
  ASSERT_EQ(loaded.count(), 2);
  EXPECT_FALSE(loaded[1][0].toBool());
}

TEST_F(OpenViewsTest, AMapThatWasReopenedStaysLoadedWhenTheClosedOneGoes) {
  views_.ShowXmap();
  const QPointer<views::XmapView> closed = views_.Xmap();
  Frame("frmXmap")->close();
  QSignalSpy loaded(&views_, &OpenViews::XmapLoaded);
  views_.ShowXmap();
  ASSERT_NE(closed, nullptr);
  Settle();
  ASSERT_EQ(closed, nullptr);
  ASSERT_EQ(loaded.count(), 1);
  EXPECT_TRUE(loaded[0][0].toBool());
  EXPECT_NE(views_.Xmap(), nullptr);
}

TEST_F(OpenViewsTest, AMapThatIsLoadedLaterHasTheWarningToo) {
  const auto warning = [this] { return test::Find<QLabel>(*views_.Xmap(), "aidMapLink").text(); };
  views_.SetMapWarning(QStringLiteral("Not connected: no map yet"));
  views_.ShowXmap();
  EXPECT_EQ(warning(), QStringLiteral("Not connected: no map yet"));
  views_.SetMapWarning({});
  EXPECT_EQ(warning(), QString());
}

TEST_F(OpenViewsTest, KnowsWhetherTheMapIsTheViewThatIsWorkedIn) {
  const QSignalSpy changed(&views_, &OpenViews::ActiveViewChanged);
  EXPECT_FALSE(views_.IsMapCurrent());
  views_.ShowXmap();
  EXPECT_TRUE(views_.IsMapCurrent());
  views_.ShowAlphas();
  EXPECT_FALSE(views_.IsMapCurrent());
  area_.setActiveSubWindow(Frame("frmXmap"));
  EXPECT_TRUE(views_.IsMapCurrent());
  const auto before = changed.size();
  Frame("frmXmap")->close();
  Settle();
  EXPECT_FALSE(views_.IsMapCurrent());
  EXPECT_GT(changed.size(), before) << "whoever shows it is told";
}

TEST_F(OpenViewsTest, TheTallyNamesTheStationsOfItsLamps) {
  model_.ChannelCount = 8;
  model_.AllocateMap();
  for (int station = 1; station <= 8; ++station) {
    database_.AddStation(station, {{"Label", "OUT " + std::to_string(station)}});
  }
  views_.ShowTally();
  const auto tip = [this](int point) {
    return test::Find<QWidget>(*Dialogs("frmQdvTally").front(),
                               QStringLiteral("shpQdvResponding_%1").arg(point))
        .toolTip();
  };
  EXPECT_EQ(tip(8), QStringLiteral("QDV 8 not responding  OUT 8"));
  EXPECT_EQ(tip(9), QStringLiteral("QDV 9 not responding")) << "there is no such station";
}

TEST_F(OpenViewsTest, TheTallyIsMarkedOpenExactlyWhileItShows) {
  for (int times = 0; times < 2; ++times) {
    EXPECT_FALSE(model_.TallyViewOpen);
    views_.ShowTally();
    EXPECT_TRUE(model_.TallyViewOpen);
    views_.ShowTally();  // the one that is open stays
    ASSERT_EQ(Dialogs("frmQdvTally").size(), 1);
    if (times == 0) {
      Dialogs("frmQdvTally")[0]->close();
    } else {
      QTest::keyClick(Dialogs("frmQdvTally")[0], Qt::Key_Escape);
    }
    EXPECT_FALSE(model_.TallyViewOpen);
    EXPECT_TRUE(Dialogs("frmQdvTally").isEmpty());
  }
  // Opened again before the closed one has gone.
  views_.ShowTally();
  Settle();
  EXPECT_TRUE(model_.TallyViewOpen);
  views_.CloseAll();
  EXPECT_FALSE(model_.TallyViewOpen);
}

TEST_F(OpenViewsTest, TheTallySaysWhenItWasReportedAlsoWhenItWasClosedThen) {
  const auto reported = [this] {
    return test::Find<QLabel>(*Dialogs("frmQdvTally")[0], "aidLastReport").text().toStdString();
  };
  views_.ShowTally();
  EXPECT_EQ(reported(), "No report since start");
  views_.TallyChanged();
  EXPECT_THAT(reported(), testing::StartsWith("Last report "));
  const std::string first = reported();
  views_.CloseAll();
  Settle();
  views_.ShowTally();
  EXPECT_EQ(reported(), first);
}

TEST_F(OpenViewsTest, LevelsSayWhenTheGainsWereReported) {
  const auto reported = [this] {
    return test::Find<QLabel>(*Dialogs("frmInptLevel")[0], "aidLastReport").text().toStdString();
  };
  views_.ShowLevels();
  EXPECT_EQ(reported(), "No report since start");
  views_.CloseAll();
  Settle();
  views_.GainsChanged();
  views_.ShowLevels();
  EXPECT_THAT(reported(), testing::StartsWith("Last report "));
}

TEST_F(OpenViewsTest, AReportOfGainsReachesTheLevelsThatAreOpen) {
  model_.InputGains[3] = 100;
  views_.GainsChanged();  // nobody there
  views_.ShowLevels();
  views_.ShowLevels();
  ASSERT_EQ(Dialogs("frmInptLevel").size(), 1);
  auto* const slider = Dialogs("frmInptLevel")[0]->findChild<QSlider*>(QStringLiteral("Slider1_3"));
  EXPECT_EQ(slider->value(), 27);
  model_.InputGains[3] = 127;
  views_.GainsChanged();
  EXPECT_EQ(slider->value(), 0);
  EXPECT_EQ(port_.TakeWritten(), "");
  const auto* const reported =
      Dialogs("frmInptLevel")[0]->findChild<QLabel*>(QStringLiteral("aidLastReport"));
  EXPECT_THAT(reported->text().toStdString(), testing::StartsWith("Last report "));
  Dialogs("frmInptLevel")[0]->close();
  views_.GainsChanged();
  EXPECT_TRUE(Dialogs("frmInptLevel").isEmpty());
}

}  // namespace
}  // namespace app
