// SPDX-License-Identifier: MIT

#include "app/network/panel_reports.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "app/shell/main_window.h"
#include "stations/inhibits.h"
#include "tests/support/small_database.h"

namespace app {
namespace {

using testing::ElementsAre;

class PanelReportsTest : public testing::Test {
 protected:
  PanelReportsTest() {
    model_.ChannelCount = 8;
    window_.show();
    QObject::connect(&reports_, &PanelReports::Happened,
                     [this](const QString& text) { lines_.push_back(text.toStdString()); });
    QObject::connect(&reports_, &PanelReports::HappenedAgain,
                     [this](const QString& text, const QString& address) {
                       lines_.push_back(text.toStdString());
                       origins_.push_back(address.toStdString());
                     });
    QObject::connect(&reports_, &PanelReports::PanelsChanged, &window_.Status(),
                     &StatusBar::SetPanels);
    QObject::connect(&reports_, &PanelReports::NoteRequested, &window_.Status(),
                     &StatusBar::ShowNote);
  }

  QLabel* Aid() const { return window_.findChild<QLabel*>(QStringLiteral("aidPanels")); }
  std::string Tip() const { return Aid()->toolTip().toStdString(); }

  CommandTable commands_;
  MainWindow window_{commands_};
  model::SystemModel model_;
  test::SmallDatabase database_;
  stations::Changes changes_;
  ChannelLabels labels_{{.model = model_,
                         .database = [this] { return database_.Files().Database(); },
                         .changes = changes_}};
  InhibitedCells inhibits_{{.model = model_,
                            .database = [this] { return database_.Files().Database(); },
                            .changes = changes_}};
  PanelReports reports_{labels_, inhibits_};
  std::vector<std::string> lines_;
  std::vector<std::string> origins_;  // of those that may come many times
};

TEST_F(PanelReportsTest, ATakeThatIsIgnoredIsSaid) {
  reports_.PanelMayNotTake({2, "192.0.2.9"}, {.destination = 6, .source = 8, .action = 3});
  EXPECT_THAT(lines_,
              ElementsAre("Panel 2, 192.0.2.9: take Out 6 < In 8 (Take) ignored, it may not "
                          "take"));
  EXPECT_THAT(origins_, ElementsAre("192.0.2.9"));
}

TEST_F(PanelReportsTest, WhoActsOnAnInhibitIsToldWhenItIsNotKnown) {
  test::SmallDatabase damaged(test::StationsWithout("Inhibits"));
  damaged.AddStation(1, {{"Label", "CAM 4"}});
  database_.AddStation(1, {{"Inhibits", "01000000"}});
  test::SmallDatabase* database = &damaged;
  InhibitedCells inhibits({.model = model_,
                           .database = [&] { return database->Files().Database(); },
                           .changes = changes_});
  EXPECT_EQ(inhibits.IsInhibited(1, 2), std::nullopt);
  EXPECT_FALSE(inhibits.ShowsInhibit(1, 2)) << "for words";
  database = &database_;
  EXPECT_EQ(inhibits.IsInhibited(1, 2), true) << "it is read again";
  EXPECT_EQ(inhibits.IsInhibited(1, 1), false);
}

TEST_F(PanelReportsTest, WithoutAGatewayThereIsNoCount) {
  ASSERT_NE(Aid(), nullptr);
  EXPECT_FALSE(Aid()->isVisible());
}

TEST_F(PanelReportsTest, ThePanelsAreCountedAndListedBySlot) {
  reports_.Begin();
  EXPECT_TRUE(Aid()->isVisible());
  EXPECT_EQ(Aid()->text(), QStringLiteral("Panels 0"));
  EXPECT_EQ(Tip(), "No network panel is connected");
  reports_.PanelConnected({2, "10.0.0.8"});
  reports_.PanelConnected({1, "10.0.0.7"});
  reports_.PanelIdentified({1, "10.0.0.7"}, 10);
  EXPECT_EQ(Aid()->text(), QStringLiteral("Panels 2"));
  EXPECT_EQ(Tip(), "10.0.0.7  LRM Connection\n10.0.0.8");
  reports_.PanelIdentified({1, "10.0.0.7"}, 20);
  EXPECT_EQ(Tip(), "10.0.0.7\n10.0.0.8");
  reports_.PanelGone({1, "10.0.0.7"});
  EXPECT_EQ(Tip(), "10.0.0.8");
}

TEST_F(PanelReportsTest, ComingAndGoingIsToldOfEachPanel) {
  reports_.PanelConnected({1, "192.0.2.6"});
  reports_.PanelConnected({2, "192.0.2.7"});
  reports_.PanelIdentified({1, "192.0.2.6"}, 10);
  reports_.PanelIdentified({2, "192.0.2.7"}, 10);
  reports_.PanelGone({1, "192.0.2.6"});
  reports_.PanelIdentified({2, "192.0.2.7"}, 60);
  reports_.PanelIdentified({2, "192.0.2.7"}, 20);
  EXPECT_THAT(lines_, ElementsAre("Panel 1, 192.0.2.6: connected", "Panel 2, 192.0.2.7: connected",
                                  "Panel 1, 192.0.2.6: LRM Connection",
                                  "Panel 2, 192.0.2.7: LRM Connection", "Panel 1, 192.0.2.6: gone",
                                  "Panel 2, 192.0.2.7: Unknown Connection Request",
                                  "Panel 2, 192.0.2.7: type 20, which is not served"));
}

// Any stranger may come and go: a flood of them does not fill the log.
TEST_F(PanelReportsTest, ComingAndGoingIsOfNoOriginAndMayRepeat) {
  reports_.PanelConnected({1, "192.0.2.6"});
  reports_.PanelIdentified({1, "192.0.2.6"}, 10);
  reports_.PanelDropped({1, "192.0.2.6"}, gateway::DropReason::EndlessFrame);
  reports_.PanelGone({1, "192.0.2.6"});
  EXPECT_THAT(lines_,
              ElementsAre("Panel 1, 192.0.2.6: connected", "Panel 1, 192.0.2.6: LRM Connection",
                          "Panel 192.0.2.6 was dropped: it sent a frame that does not end",
                          "Panel 1, 192.0.2.6: gone"));
  EXPECT_THAT(origins_, ElementsAre("", "", "", ""));
}

TEST_F(PanelReportsTest, ATakeIsToldWithItsLabels) {
  database_.AddStation(1, {{"Label", "CAM 4"}, {"InLabel", ""}});
  database_.AddStation(2, {{"Label", " "}, {"InLabel", "MIC ANCH"}});
  reports_.PanelTook({2, "192.0.2.7"}, {.destination = 1, .source = 2, .action = 0x02});
  reports_.PanelTook({2, "192.0.2.7"}, {.destination = 2, .source = 1, .action = 0x00});
  reports_.PanelTook({2, "192.0.2.7"}, {.destination = 200, .source = 256, .action = 0x8E});
  EXPECT_THAT(lines_, ElementsAre("Panel 2, 192.0.2.7: take CAM 4 < MIC ANCH (Sum)",
                                  "Panel 2, 192.0.2.7: take Out 2 < In 1 (Sum off)",
                                  "Panel 2, 192.0.2.7: take Out 200 < In 256 (Action 0x8E)"));
}

TEST_F(PanelReportsTest, ATakeOnAnInhibitedCrosspointIsNamedAsSuch) {
  database_.AddStation(5, {{"Label", "CAM 5"}, {"InLabel", "in 5"}, {"Inhibits", "0"}});
  database_.AddStation(3, {{"Label", "CAM 4"}, {"InLabel", "in 3"}, {"Inhibits", "01000000"}});
  const auto take = [this](int output, int input) {
    lines_.clear();
    reports_.PanelTook({1, "192.0.2.7"}, {.destination = output, .source = input, .action = 0x8A});
    return lines_.front();
  };
  EXPECT_EQ(take(3, 2), "Panel 1, 192.0.2.7: take CAM 4 < In 2 (Priority listen), inhibited here");
  EXPECT_EQ(take(3, 3), "Panel 1, 192.0.2.7: take CAM 4 < in 3 (Priority listen)");
  EXPECT_EQ(take(5, 2), "Panel 1, 192.0.2.7: take CAM 5 < In 2 (Priority listen)");
  database_.GoTo(3);
  ASSERT_TRUE(stations::StoreInhibits(*database_.Files().Stations(), "00000000",
                                      {changes_, stations::Origin::Operator})
                  .ok());
  EXPECT_EQ(take(3, 2), "Panel 1, 192.0.2.7: take CAM 4 < In 2 (Priority listen)");
}

TEST_F(PanelReportsTest, WithoutADatabaseATakeHasItsNumbers) {
  ChannelLabels labels({.model = model_, .database = [] { return nullptr; }, .changes = changes_});
  InhibitedCells inhibits(
      {.model = model_, .database = [] { return nullptr; }, .changes = changes_});
  PanelReports reports(labels, inhibits);
  QString line;
  QObject::connect(&reports, &PanelReports::Happened, [&](const QString& text) { line = text; });
  reports.PanelTook({1, "192.0.2.7"}, {.destination = 3, .source = 4, .action = 0x84});
  EXPECT_EQ(line.toStdString(), "Panel 1, 192.0.2.7: take Out 3 < In 4 (Call off)");
}

TEST_F(PanelReportsTest, ANoteOfADroppedPanelNeverCoversTheLinkText) {
  window_.ShowLinkText("Not Connected - COM 1");
  reports_.PanelDropped({3, "10.0.0.7"}, gateway::DropReason::DoesNotRead);
  auto* const link = window_.findChild<QLabel*>(QStringLiteral("sbStatusBar_1"));
  auto* const note = window_.findChild<QLabel*>(QStringLiteral("aidNote"));
  EXPECT_TRUE(link->isVisible());
  EXPECT_EQ(link->text(), QStringLiteral("Not Connected - COM 1"));
  EXPECT_TRUE(note->isVisible());
  EXPECT_EQ(note->text(),
            QStringLiteral("Panel 10.0.0.7 was dropped: it does not read what it is sent"));
  EXPECT_THAT(lines_, ElementsAre("Panel 10.0.0.7 was dropped: it does not read what it is sent"));
}

TEST_F(PanelReportsTest, EachReasonToDropAPanelIsSaid) {
  for (const auto reason : {gateway::DropReason::Unidentified, gateway::DropReason::EndlessFrame,
                            gateway::DropReason::UnfinishedTake}) {
    reports_.PanelDropped({3, "10.0.0.7"}, reason);
  }
  EXPECT_THAT(lines_,
              ElementsAre("Panel 10.0.0.7 was dropped: it did not say what it is, and all "
                          "connections are taken",
                          "Panel 10.0.0.7 was dropped: it sent a frame that does not end",
                          "Panel 10.0.0.7 was dropped: it began a take and did not end it"));
}

TEST_F(PanelReportsTest, ATakeOnALockedOutputIsToldAsIgnored) {
  reports_.PanelTakeIgnored({2, "192.0.2.7"}, {.destination = 3, .source = 4, .action = 0});
  EXPECT_THAT(lines_, ElementsAre("Panel 2, 192.0.2.7: take Out 3 < In 4 (Sum off) ignored, "
                                  "the output is locked"));
  EXPECT_THAT(origins_, ElementsAre("192.0.2.7"));
}

}  // namespace
}  // namespace app
