// SPDX-License-Identifier: MIT
//
// What the event log tells of the work of the operator.

#include "app/log_keeper.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <QDialog>
#include <QPushButton>
#include <QSignalSpy>
#include <QTest>

#include "switcher/decoder.h"
#include "switcher/live_commands.h"
#include "switcher/table_senders.h"
#include "tests/support/fake_serial_port.h"
#include "tests/support/recording_reporter.h"
#include "tests/support/recording_tables.h"
#include "tests/support/small_database.h"

namespace app {
namespace {

using testing::Contains;
using testing::ElementsAre;
using testing::Not;

class LogKeeperTest : public testing::Test {
 protected:
  LogKeeperTest() {
    model_.ApplyFixedValues();
    model_.StationCount = 1;
    model_.DownloadInterval = 0;
    database_.AddStation(1, {{"Hidden", 0}, {"Label", "out"}, {"InLabel", "in"}});
    (void)port_.Open(1);
    window_.resize(900, 700);
    window_.show();
  }

  template <typename Dialog>
  Dialog& Shown() {
    Dialog* shown = nullptr;
    for (auto* const dialog : window_.findChildren<Dialog*>()) {
      if (dialog->isVisible()) shown = dialog;
    }
    EXPECT_NE(shown, nullptr);
    return *shown;
  }
  static void Click(QWidget& window, const char* name) {
    QTest::mouseClick(window.findChild<QPushButton*>(QLatin1String(name)), Qt::LeftButton);
  }

  // The lines of a kind, without their times.
  std::vector<std::string> Lines(EventLog::Kind kind) {
    std::vector<std::string> lines;
    const EventLog& log = keeper_.Log();
    for (int row = 0; row < log.rowCount(); ++row) {
      if (log.index(row, EventLog::kKind).data().toString() != EventLog::KindName(kind)) continue;
      lines.push_back(log.index(row, EventLog::kText).data().toString().toStdString());
    }
    return lines;
  }
  std::vector<std::string> Tables() { return Lines(EventLog::Kind::Table); }

  CommandTable commands_;
  model::SystemModel model_;
  test::SmallDatabase database_;
  test::FakeSerialPort port_;
  test::RecordingReporter reporter_;
  test::RecordingTables tables_;
  config::WindowSettings settings_{QString()};
  switcher::LiveCommands live_{model_, port_, reporter_};
  switcher::TableSenders senders_{model_, database_.Files(), port_, reporter_};
  MessageBoxes boxes_;
  MainWindow window_{commands_};
  OpenViews views_{window_.Area(),
                   {.model = model_,
                    .stations = [this] { return database_.Files().Stations(); },
                    .commands = live_,
                    .tables = tables_,
                    .poll = tables_,
                    .settings = settings_,
                    .reporter = reporter_}};
  switcher::Decoder decoder_{model_, database_.Files(), reporter_, views_};
  Transfers transfers_{window_,
                       views_,
                       {.model = model_, .tables = senders_, .poll = tables_},
                       {.model = model_,
                        .decoder = decoder_,
                        .port = port_,
                        .poll = tables_,
                        .reporter = reporter_,
                        .closeViews = {}}};
  LogKeeper keeper_{window_, views_, transfers_, boxes_, commands_};
};

TEST_F(LogKeeperTest, ADownloadIsFollowedToItsEnd) {
  model_.DownloadMode = -1;
  transfers_.SendData();
  EXPECT_THAT(Tables(), ElementsAre()) << "nothing was confirmed";
  auto& window = Shown<views::DownloadWindow>();
  QSignalSpy finished(&window, &QDialog::finished);
  Click(window, "cmdDownGo");
  ASSERT_TRUE(finished.wait(60000));
  EXPECT_THAT(Tables(),
              ElementsAre("Download of the buttons begun", "Sent: buttons 1", "Download finished"));
}

TEST_F(LogKeeperTest, ADownloadOnABrokenLineSaysWhatDidNotGetThrough) {
  model_.DownloadMode = -1;
  port_.writesUntilFailure = 3;
  transfers_.SendData();
  auto& window = Shown<views::DownloadWindow>();
  QSignalSpy finished(&window, &QDialog::finished);
  Click(window, "cmdDownGo");
  ASSERT_TRUE(finished.wait(60000));
  EXPECT_THAT(Tables(), ElementsAre("Download of the buttons begun", "Not sent: buttons 1",
                                    "Download finished, tables not sent: 1"));
}

TEST_F(LogKeeperTest, ACancelledDownloadSaysWhatWasNotSent) {
  model_.DownloadMode = 0;
  transfers_.SendData();
  auto& window = Shown<views::DownloadWindow>();
  Click(window, "cmdDownGo");
  window.CancelNow();
  const auto lines = Tables();
  ASSERT_FALSE(lines.empty());
  EXPECT_EQ(lines.front(), "Download begun");
  EXPECT_THAT(lines.back(), testing::StartsWith("Download cancelled, stages not sent: Optos"));
}

TEST_F(LogKeeperTest, ADownloadThatWasNotConfirmedIsNone) {
  transfers_.SendData();
  Click(Shown<views::DownloadWindow>(), "cmdDownCancel");
  EXPECT_THAT(Tables(), ElementsAre());
}

TEST_F(LogKeeperTest, ARetrievalIsFollowedToItsEnd) {
  transfers_.RetrieveData();
  auto& window = Shown<views::RetrievalWindow>();
  Click(window, "cmdOkSysInf");
  Click(window, "cmdCancelSysInf");
  EXPECT_THAT(Tables(), ElementsAre("Retrieval begun", "Retrieval cancelled"));
  Click(window, "cmdOkSysInf");
  // The button data of the last station, which is too short.
  decoder_.Decode(switcher::Bytes{0xFB, 0x00, 0x00, 0x00, 0xFF});
  EXPECT_THAT(Tables(), ElementsAre("Retrieval begun", "Retrieval cancelled", "Retrieval begun",
                                    "Retrieval finished, some tables were refused"));
}

TEST_F(LogKeeperTest, TheLinkThePanelsAndNotesHaveTheirLines) {
  window_.ShowLinkText("Not Connected - COM 1");
  window_.ShowLinkText("Connected - COM 1  (57600, 8, N, 1)");
  EXPECT_THAT(Lines(EventLog::Kind::Link),
              ElementsAre("Not Connected - COM 1", "Connected - COM 1  (57600, 8, N, 1)"));
  window_.ShowPanelDropped("10.0.0.7", gateway::DropReason::EndlessFrame);
  window_.ShowPanelDropped("10.0.0.8", gateway::DropReason::Unidentified);
  EXPECT_THAT(Lines(EventLog::Kind::Panel),
              ElementsAre("Panel 10.0.0.7 was dropped: it sent a frame that does not end",
                          "Panel 10.0.0.8 was dropped: it did not say what it is, and all "
                          "connections are taken"));
  views_.TableEdited(switcher::Table::Inhibits, 3);
  views_.TableSent(switcher::Table::Inhibits, model::kAll);
  EXPECT_THAT(Tables(), ElementsAre("Edited: inhibits 3", "Sent: inhibits"));
  keeper_.Note(QStringLiteral("Written: /tmp/labels.csv"));
  EXPECT_THAT(Lines(EventLog::Kind::Note), ElementsAre("Written: /tmp/labels.csv"));
}

}  // namespace
}  // namespace app
