// SPDX-License-Identifier: MIT

#include "app/open_views.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <QApplication>
#include <QLabel>
#include <QSettings>
#include <QSignalSpy>
#include <QSlider>
#include <QTest>
#include <string>
#include <vector>

#include "tests/support/fake_serial_port.h"
#include "tests/support/recording_reporter.h"
#include "tests/support/recording_tables.h"

namespace app {
namespace {

class OpenViewsTest : public testing::Test {
 protected:
  OpenViewsTest() {
    QSettings(QSettings::NativeFormat, QSettings::UserScope, QStringLiteral("Orvo"),
              QStringLiteral("Orvo Intercom Control"))
        .clear();
    area_.resize(900, 700);
    area_.show();
  }

  // The sub-window that holds the form of that name.
  QMdiSubWindow* Frame(const char* name) {
    for (QMdiSubWindow* const window : area_.subWindowList()) {
      if (!window->isHidden() && window->widget()->objectName() == QLatin1String(name)) {
        return window;
      }
    }
    return nullptr;
  }

  // The dialogs of that name that show.
  QList<QDialog*> Dialogs(const char* name) {
    QList<QDialog*> shown;
    for (auto* const dialog : area_.window()->findChildren<QDialog*>(QLatin1String(name))) {
      if (dialog->isVisible()) shown.append(dialog);
    }
    return shown;
  }

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

  model::SystemModel model_;  // without channels no station is asked for
  test::FakeSerialPort port_;
  test::RecordingReporter reporter_;
  switcher::LiveCommands commands_{{.model = model_, .port = port_, .reporter = reporter_}};
  test::RecordingTables tables_;
  config::WindowSettings settings_{QString()};
  QMdiArea area_;
  stations::Changes changes_;
  OpenViews views_{area_,
                   {.model = model_,
                    .stations = [] { return nullptr; },
                    .changes = changes_,
                    .commands = commands_,
                    .tables = tables_,
                    .poll = tables_,
                    .settings = settings_,
                    .reporter = reporter_}};
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
    return Dialogs("frmQdvTally")[0]
        ->findChild<QLabel*>(QStringLiteral("aidLastReport"))
        ->text()
        .toStdString();
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
    return Dialogs("frmInptLevel")[0]
        ->findChild<QLabel*>(QStringLiteral("aidLastReport"))
        ->text()
        .toStdString();
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

TEST_F(OpenViewsTest, WhatAToolSendsIsAnnouncedWithItsCount) {
  views_.ShowXmap();
  std::vector<std::string> seen;
  QObject::connect(&views_, &OpenViews::SentByTool,
                   [&](const switcher::TablePart& table, int messages) {
                     EXPECT_EQ(table, switcher::TablePart{switcher::Table::Inhibits});
                     seen.push_back("tool " + std::to_string(messages));
                   });
  QObject::connect(&views_, &OpenViews::Sent, [&](const switcher::TablePart& table, int messages) {
    EXPECT_EQ(table, switcher::TablePart{switcher::Table::Inhibits});
    seen.push_back("sent " + std::to_string(messages));
  });
  tables_.messages = 64;
  views_.Xmap()->findChild<QAction*>(QStringLiteral("ID_SendInhibits"))->trigger();
  EXPECT_THAT(seen, testing::UnorderedElementsAre("tool 64", "sent 64"));
  // A download tells of itself.
  seen.clear();
  views_.TableSent(switcher::Table::Inhibits, model::kAll, 64);
  EXPECT_THAT(seen, testing::ElementsAre("sent 64"));
  seen.clear();
  tables_.goOut = false;
  views_.Xmap()->findChild<QAction*>(QStringLiteral("ID_SendInhibits"))->trigger();
  EXPECT_TRUE(seen.empty());
}

}  // namespace
}  // namespace app
