// SPDX-License-Identifier: MIT

#include "app/shell/link_aids.h"

#include <gtest/gtest.h>

#include <QLabel>

#include "app/shell/link_lamp.h"
#include "tests/support/fake_serial_port.h"
#include "tests/views/gui_support.h"

namespace app {
namespace {

class LinkAidsTest : public testing::Test {
 protected:
  LinkAidsTest() {
    model_.ComPort = 2;
    (void)port_.Open(2);
  }

  QString Hint() {
    return hints_.isHidden() ? QString() : test::Find<QLabel>(hints_, "aidHintText").text();
  }
  QString MapState() {
    const auto* const label = status_.findChild<QLabel*>(QStringLiteral("aidMapState"));
    return label->isHidden() ? QString() : label->text();
  }
  void Ticks(int count) {
    for (int i = 0; i < count; ++i) aids_.Tick();
  }

  model::SystemModel model_;
  test::FakeSerialPort port_;
  StatusBar status_;
  HintStrip hints_;
  QString warning_;
  switcher::KnownMap knownMap_{model_};
  LinkAids aids_{{.model = model_,
                  .port = port_,
                  .knownMap = knownMap_,
                  .device = [] { return QFileInfo(); },
                  .status = status_,
                  .hints = hints_,
                  .warnOnMap = [this](const QString& warning) { warning_ = warning; }}};
};

TEST_F(LinkAidsTest, SaysAfterFiveSecondsThatNoSwitcherAnswers) {
  Ticks(4);
  EXPECT_EQ(Hint(), QString());
  Ticks(1);
  EXPECT_EQ(Hint(), QStringLiteral("No switcher found on COM 2. Help ▸ Contents shows how to try "
                                   "the simulated one."));
  model_.LinkStatus[0] = 1;
  Ticks(1);
  EXPECT_EQ(Hint(), QString());
}

TEST_F(LinkAidsTest, SaysThatThePortIsClosedWhileItIs) {
  const auto* const panel = &test::Find<QLabel>(status_, "aidClosedPort");
  Ticks(1);
  EXPECT_TRUE(panel->isHidden());
  port_.Close();
  Ticks(1);
  EXPECT_FALSE(panel->isHidden());
  EXPECT_EQ(panel->text(), QStringLiteral("COM 2 is not open"));
  (void)port_.Open(2);
  Ticks(1);
  EXPECT_TRUE(panel->isHidden());
}

TEST_F(LinkAidsTest, TheLampAndTheGroundOfTheTextSayWhetherTheSwitcherAnswers) {
  const auto* const lamp = status_.findChild<LinkLamp*>(QStringLiteral("aidLinkLamp"));
  const auto* const text = status_.findChild<QLabel*>(QStringLiteral("sbStatusBar_1"));
  ASSERT_NE(lamp, nullptr);
  EXPECT_FALSE(lamp->IsConnected()) << "nothing has answered yet";
  EXPECT_EQ(lamp->accessibleName(), QStringLiteral("The switcher does not answer"));
  EXPECT_TRUE(text->autoFillBackground());
  EXPECT_EQ(text->palette().color(QPalette::Window), QColor(0xC0, 0x00, 0x00));
  EXPECT_EQ(text->palette().color(QPalette::WindowText), QColor(0xFF, 0xFF, 0xFF));
  model_.LinkStatus[0] = 1;
  aids_.LinkChanged();
  EXPECT_TRUE(lamp->IsConnected());
  EXPECT_EQ(lamp->accessibleName(), QStringLiteral("The switcher answers"));
  EXPECT_FALSE(text->autoFillBackground());
  EXPECT_EQ(text->palette().color(QPalette::WindowText),
            status_.palette().color(QPalette::WindowText));
  model_.LinkStatus[0] = 0;
  aids_.LinkChanged();
  EXPECT_FALSE(lamp->IsConnected());
  EXPECT_TRUE(text->autoFillBackground());
}

TEST_F(LinkAidsTest, IsQuietAboutASwitcherThatWasThere) {
  model_.LinkStatus[0] = 1;
  Ticks(1);
  model_.LinkStatus[0] = 0;
  Ticks(20);
  EXPECT_EQ(Hint(), QString());
}

TEST_F(LinkAidsTest, TellsTheAgeOfTheMap) {
  Ticks(1);
  EXPECT_EQ(MapState(), QString()) << "nothing was ever reported";
  model_.LinkStatus[0] = 1;
  Ticks(1);
  EXPECT_EQ(MapState(), QStringLiteral("Map requesting…"));
  aids_.MapReported(QTime(12, 3, 43));
  EXPECT_EQ(MapState(), QStringLiteral("Map requesting…")) << "more rows are to come";
  model_.XmapComplete = true;
  aids_.MapReported(QTime(12, 3, 44));
  EXPECT_EQ(MapState(), QStringLiteral("Map 12:03:44"));
  model_.LinkStatus[0] = 0;
  model_.XmapComplete = false;
  Ticks(1);
  EXPECT_EQ(MapState(), QStringLiteral("Map 12:03:44")) << "what is shown is that old";
}

TEST_F(LinkAidsTest, TheMapSaysWhatItIsWhileNothingAnswers) {
  Ticks(1);
  EXPECT_EQ(warning_, QStringLiteral("Not connected: no map yet"));
  model_.LinkStatus[0] = 1;
  aids_.LinkChanged();
  EXPECT_EQ(warning_, QString());
  aids_.MapReported(QTime(5, 55, 37));
  EXPECT_EQ(warning_, QString());
  model_.LinkStatus[0] = 0;
  aids_.LinkChanged();
  EXPECT_EQ(warning_, QStringLiteral("Not connected: map of 05:55:37"));
  model_.DemoMode = 1;
  Ticks(1);
  EXPECT_EQ(warning_, QString()) << "the map is the operator's own";
}

TEST_F(LinkAidsTest, AfterALossTheMapSaysSoUntilItWasReportedAnew) {
  model_.ChannelCount = 2;
  model_.LinkStatus[0] = 1;
  const auto report = [this](int output, QTime time) {
    knownMap_.CrosspointRowChanged(output, 0);
    aids_.MapReported(time);
  };
  report(1, QTime(5, 55, 36));
  EXPECT_EQ(warning_, QString()) << "the first map is on its way";
  report(2, QTime(5, 55, 37));
  const auto setLink = [this](std::uint8_t state) {
    model_.LinkStatus[0] = state;
    knownMap_.LinkChanged();
    aids_.LinkChanged();
  };
  setLink(0);
  setLink(1);
  const auto stale = QStringLiteral("Map of 05:55:37, from before the link was lost: Refresh Map");
  EXPECT_EQ(warning_, stale);
  report(1, QTime(6, 0, 0));
  EXPECT_EQ(warning_, stale) << "half of it";
  report(2, QTime(6, 0, 0));
  EXPECT_EQ(warning_, QString());
}

}  // namespace
}  // namespace app
