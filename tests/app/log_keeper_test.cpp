// SPDX-License-Identifier: MIT
//
// What the event log tells of the work of the operator.

#include "app/log/log_keeper.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <QDialog>
#include <QPushButton>
#include <QSignalSpy>
#include <QTableView>
#include <QTest>
#include <map>

#include "stations/record.h"
#include "tests/app/views_fixture.h"
#include "tests/views/gui_support.h"

namespace app {
namespace {

using testing::Contains;
using testing::ElementsAre;
using testing::IsSupersetOf;
using testing::Not;

class LogKeeperTest : public TransfersFixture {
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
    QTest::mouseClick(&test::Find<QPushButton>(window, name), Qt::LeftButton);
  }

  // The lines of a kind, without their times.
  std::vector<std::string> Lines(EventLog::Kind kind) {
    std::vector<std::string> lines;
    for (int row = 0; row < log_.rowCount(); ++row) {
      if (log_.index(row, EventLog::kKind).data().toString() != EventLog::KindName(kind)) continue;
      lines.push_back(log_.index(row, EventLog::kText).data().toString().toStdString());
    }
    return lines;
  }
  std::vector<std::string> Tables() { return Lines(EventLog::Kind::Table); }

  MessageBoxes boxes_;
  LogKeeper keeper_{{.log = log_,
                     .labels = labels_,
                     .window = window_,
                     .views = views_,
                     .unsent = unsent_,
                     .transfers = transfers_,
                     .boxes = boxes_,
                     .commands = commands_}};
};

TEST_F(LogKeeperTest, ADownloadIsFollowedToItsEnd) {
  transfers_.SendData(-1);
  EXPECT_THAT(Tables(), ElementsAre()) << "nothing was confirmed";
  auto& window = Shown<views::DownloadWindow>();
  QSignalSpy finished(&window, &QDialog::finished);
  Click(window, "cmdDownGo");
  ASSERT_TRUE(finished.wait(60000));
  EXPECT_THAT(Tables(), ElementsAre("Download of the buttons begun", "Sent: buttons 1",
                                    "Download finished: 1 table sent"));
}

TEST_F(LogKeeperTest, ADownloadOnABrokenLineSaysWhatDidNotGetThrough) {
  port_.writesUntilFailure = 3;
  transfers_.SendData(-1);
  auto& window = Shown<views::DownloadWindow>();
  QSignalSpy finished(&window, &QDialog::finished);
  Click(window, "cmdDownGo");
  ASSERT_TRUE(finished.wait(60000));
  EXPECT_THAT(Tables(), ElementsAre("Download of the buttons begun", "Not sent: buttons 1",
                                    "Download finished: 0 tables sent, 1 not sent: buttons 1"));
}

TEST_F(LogKeeperTest, ACancelledDownloadSaysWhatWasNotSent) {
  transfers_.SendData(0);
  auto& window = Shown<views::DownloadWindow>();
  Click(window, "cmdDownGo");
  window.CancelNow();
  const auto lines = Tables();
  ASSERT_FALSE(lines.empty());
  EXPECT_EQ(lines.front(), "Download begun");
  EXPECT_THAT(lines.back(), testing::StartsWith("Download cancelled, stages not sent: Optos"));
}

TEST_F(LogKeeperTest, ADownloadThatWasNotConfirmedIsNone) {
  transfers_.SendData(0);
  Click(Shown<views::DownloadWindow>(), "cmdDownCancel");
  EXPECT_THAT(Tables(), ElementsAre());
}

TEST_F(LogKeeperTest, ARetrievalIsFollowedToItsEnd) {
  transfers_.RetrieveData();
  auto& window = Shown<views::RetrievalWindow>();
  Click(window, "cmdOkSysInf");
  Click(window, "cmdCancelSysInf");
  EXPECT_THAT(Tables(), ElementsAre("Retrieval begun", "Retrieval cancelled: No message came"));
  Click(window, "cmdOkSysInf");
  // The button data of the last station, which is too short.
  decoder_.Decode(switcher::Bytes{0xFB, 0x00, 0x00, 0x00, 0xFF});
  EXPECT_THAT(
      Tables(),
      ElementsAre("Retrieval begun", "Retrieval cancelled: No message came", "Retrieval begun",
                  "Retrieval finished: 1 message, refused: Station 1 Button Data. The last "
                  "came before the tables were asked for: retrieve again"));
}

TEST_F(LogKeeperTest, AComparisonIsFollowedToWhatIsStoredOfIt) {
  model_.ChannelCount = 8;
  transfers_.CompareWithSwitcher();
  auto& window = Shown<views::CompareWindow>();
  ASSERT_TRUE(QTest::qWaitFor([this] { return port_.TakeWritten() == "E7"; }, 20000));
  port_.Deliver("F5 00 00 01 00 01 FF");
  Click(window, "cmdCloseCmp");
  EXPECT_THAT(Tables(), ElementsAre("Comparison begun",
                                    "Comparison ended: Cancelled. 1 difference in 1 table, 19 "
                                    "not reported"));
  Click(window, "aidTickAll");
  Click(window, "cmdStoreCmp");
  EXPECT_EQ(Tables().back(), "From the switcher: Inhibits of output 1");
}

TEST_F(LogKeeperTest, TheLinkTheNetworkAndNotesHaveTheirLines) {
  window_.ShowLinkText("Not Connected - COM 1");
  window_.ShowLinkText("Connected - COM 1  (57600, 8, N, 1)");
  EXPECT_THAT(Lines(EventLog::Kind::Link),
              ElementsAre("Not Connected - COM 1", "Connected - COM 1  (57600, 8, N, 1)"));
  keeper_.NoteNetwork(QStringLiteral("Panel 2, 192.0.2.7: connected"));
  keeper_.NoteNetworkAgain(QStringLiteral("Panel 192.0.2.99 was not admitted"));
  EXPECT_THAT(Lines(EventLog::Kind::Panel),
              ElementsAre("Panel 2, 192.0.2.7: connected", "Panel 192.0.2.99 was not admitted"));
  using enum switcher::Table;
  Q_EMIT unsent_.Edited({Inhibits, 3});
  unsent_.NoteSent({Inhibits}, 64, views::UnsentTables::Sender::Tool);
  unsent_.NoteSent({Buttons, 12}, 1, views::UnsentTables::Sender::Download);
  unsent_.NoteFailed({Relays});
  Q_EMIT unsent_.NotConfirmed({{Inhibits, 3}, {Inhibits, 5}, {Buttons, 12}});
  EXPECT_THAT(Tables(), ElementsAre("Edited: inhibits 3", "Sent: inhibits, 64 outputs",
                                    "Sent: buttons 12", "Not sent: relays",
                                    "Not confirmed by the switcher: inhibits of outputs 3, 5, "
                                    "buttons of station 12"));
  keeper_.Note(QStringLiteral("Written: /tmp/labels.csv"));
  EXPECT_THAT(Lines(EventLog::Kind::Note), ElementsAre("Written: /tmp/labels.csv"));
}

// A stranger on the network can cause reports without end.
TEST_F(LogKeeperTest, EqualReportsDoNotPushEverythingElseOut) {
  keeper_.Note(QStringLiteral("Written: /tmp/labels.csv"));
  for (int i = 0; i < 10'000; ++i) {
    boxes_.Show(model::ErrorReporter::Icon::Critical, "Error Processing", "No end");
  }
  boxes_.Show(model::ErrorReporter::Icon::Critical, "Error Processing", "Gone");
  EXPECT_THAT(Lines(EventLog::Kind::Note), ElementsAre("Written: /tmp/labels.csv"));
  const std::vector<std::string> reports = Lines(EventLog::Kind::Report);
  ASSERT_FALSE(reports.empty());
  EXPECT_EQ(reports.front(), "Error Processing: No end");
  EXPECT_EQ(reports.back(), "Error Processing: Gone");
}

// Four channels with labels of their own, but for output 4 and input 3.
class LogWordsTest : public LogKeeperTest {
 protected:
  LogWordsTest() {
    model_.ChannelCount = 8;
    model_.AllocateMap();
    database_.Set(1, "Label", "CAM 1");
    database_.Set(1, "InLabel", "MIC ANCH");
    database_.AddStation(2, {{"Label", "CAM 2"}, {"InLabel", "VISION"}});
    database_.AddStation(3, {{"Label", "CAM 3"}, {"InLabel", ""}});
    database_.AddStation(4, {{"InLabel", "DIRECTOR"}});
    for (int station = 5; station <= 8; ++station) {
      database_.AddStation(station, {{"Label", "out"}, {"InLabel", "in"}});
    }
  }

  // The lines of a kind that came since the last call.
  std::vector<std::string> New(EventLog::Kind kind) {
    const std::vector<std::string> all = Lines(kind);
    std::size_t& seen = seen_[kind];
    std::vector<std::string> lines(all.begin() + static_cast<std::ptrdiff_t>(seen), all.end());
    seen = all.size();
    return lines;
  }

  std::map<EventLog::Kind, std::size_t> seen_;
};

TEST_F(LogWordsTest, CommandsAreNamedByTheirCaptionsAndTakesByTheirLabels) {
  commands_.Set(QStringLiteral("ID_RetreiveData"), [] {});
  commands_.Set(QStringLiteral("ID_ViewSourcelevelControl"), [] {});
  commands_.Run(QStringLiteral("ID_RetreiveData"));
  commands_.Run(QStringLiteral("ID_ViewSourcelevelControl"));
  EXPECT_THAT(New(EventLog::Kind::Command),
              ElementsAre("Retrieve Data From Switcher", "Input Levels"));

  views_.ShowXmap();
  const auto use = [this](int output, int input, const char* tool) {
    test::Find<QTableView>(*views_.Xmap(), "msfgXmap").setFocus();
    QMetaObject::invokeMethod(&test::Find<QWidget>(*views_.Xmap(), "msfgXmap"), "selectCell",
                              Q_ARG(int, output + 1), Q_ARG(int, input + 1));
    test::Find<QAction>(*views_.Xmap(), tool).trigger();
  };
  use(1, 2, "ID_Take");
  use(2, 1, "ID_Sum");
  use(4, 3, "ID_Call");
  use(3, 4, "ID_PriorityListen");
  use(1, 1, "ID_RefreshMap");
  model_.CrosspointMap.At(2, 1) = 1;
  use(2, 1, "ID_Sum");
  use(2, 1, "ID_Call");
  use(2, 1, "ID_PriorityListen");
  EXPECT_THAT(
      New(EventLog::Kind::Command),
      ElementsAre("Take: CAM 1 < VISION", "Sum: CAM 2 < MIC ANCH", "Call: Out 4 < In 3",
                  "Priority listen: CAM 3 < DIRECTOR", "Refresh Map", "Sum off: CAM 2 < MIC ANCH",
                  "Call off: CAM 2 < MIC ANCH", "Priority listen off: CAM 2 < MIC ANCH"));
}

TEST_F(LogWordsTest, ReportedRowsSayWhatChangedAlsoWhileTheMapIsLoading) {
  ASSERT_FALSE(model_.XmapComplete);
  port_.Deliver("F3 00 00 00 00 03 00 03 FF");  // output 1: inputs 1 and 2
  EXPECT_THAT(New(EventLog::Kind::Map), ElementsAre("CAM 1: + MIC ANCH, + VISION"));
  port_.Deliver("F3 00 00 00 00 09 00 09 FF");
  EXPECT_THAT(New(EventLog::Kind::Map), ElementsAre("CAM 1: + DIRECTOR, − VISION"));
  port_.Deliver("F3 00 00 00 00 09 00 09 FF");
  EXPECT_THAT(New(EventLog::Kind::Map), ElementsAre("CAM 1: no change"));
  port_.Deliver("F3 00 00 01 00 09 00 0A FF");
  EXPECT_THAT(New(EventLog::Kind::Map), ElementsAre("CAM 1: by priority"));
  port_.Deliver("F3 00 00 00 00 00 00 00 FF");
  EXPECT_THAT(New(EventLog::Kind::Map),
              ElementsAre("CAM 1: − MIC ANCH, − DIRECTOR, no longer by priority"));
  port_.Deliver("F3 03 00 01 00 04 00 08 FF");  // output 4: input 3
  EXPECT_THAT(New(EventLog::Kind::Map), ElementsAre("Out 4: + In 3, by priority"));
  port_.Deliver("F3 01 00 00 00 00 00 01 FF");
  port_.Deliver("F3 01 00 00 00 00 00 01 FF");
  EXPECT_THAT(New(EventLog::Kind::Map), ElementsAre("CAM 2: no crosspoint", "CAM 2: no change"));
}

// What is reported about a row stands behind it.
TEST_F(LogWordsTest, ARowStandsBeforeTheReportOfItsConflict) {
  database_.Set(1, "Inhibits", "10000000");
  OpenViews views(window_.Area(), Services(boxes_));
  switcher::Decoder decoder({.model = model_,
                             .database = [this] { return database_.Files().Database(); },
                             .reporter = boxes_,
                             .changes = changes_,
                             .observers = InOrder({.knownMap = knownMap_,
                                                   .unsent = unsentMessages_,
                                                   .log = reports_,
                                                   .aids = nobody_,
                                                   .views = views,
                                                   .presets = nobody_,
                                                   .panels = nobody_,
                                                   .openGateway = nobody_})});
  views.ShowXmap();
  const int before = log_.rowCount();
  decoder.Decode(switcher::Bytes{0xF3, 0x00, 0x00, 0x00, 0x00, 0x01, 0x00, 0x01, 0xFF});
  std::vector<std::string> lines;
  for (int row = before; row < log_.rowCount(); ++row) {
    lines.push_back(log_.index(row, EventLog::kKind).data().toString().toStdString() + ": " +
                    log_.index(row, EventLog::kText).data().toString().toStdString());
  }
  ASSERT_EQ(lines.size(), 2u);
  EXPECT_EQ(lines[0], "Map: CAM 1: + MIC ANCH");
  EXPECT_THAT(lines[1], testing::StartsWith("Report: Synchronization Warning: "));
}

TEST_F(LogWordsTest, ARowIsComparedWithTheOneAcceptedLast) {
  port_.Deliver("F3 00 00 00 00 01 00 01 FF");
  port_.Deliver("F3 00 00 00 00 02 00 7F FF");  // refused, and in the model all the same
  ASSERT_EQ(model_.CrosspointMap.At(1, 2), 1);
  port_.Deliver("F3 00 00 00 00 03 00 03 FF");
  EXPECT_THAT(New(EventLog::Kind::Map), ElementsAre("CAM 1: + MIC ANCH", "CAM 1: + VISION"));
}

TEST_F(LogWordsTest, LabelsThatChangeChangeTheWords) {
  port_.Deliver("F3 00 00 00 00 01 00 01 FF");
  database_.GoTo(1);
  stations::Record record(*database_.Files().Stations());
  record.Set("Label", "HOST");
  ASSERT_TRUE(record.Commit({changes_, stations::Origin::Operator}).ok());
  port_.Deliver("F3 00 00 00 00 00 00 00 FF");
  model_.LabelCount = 1;
  port_.Deliver("F9 0A 61 20 20 20 20 20 20 20 4B FF");  // the first input is "a"
  port_.Deliver("F3 00 00 00 00 01 00 01 FF");
  EXPECT_THAT(New(EventLog::Kind::Map),
              ElementsAre("CAM 1: + MIC ANCH", "HOST: − MIC ANCH", "HOST: + a"));
}

TEST_F(LogWordsTest, RefusedReportsAreNamedWithTheirReason) {
  New(EventLog::Kind::Link);
  port_.Deliver("F3 00 00 00 00 01 00 02 FF");
  port_.Deliver("F3 08 00 00 00 00 00 08 FF");
  port_.Deliver("F5 01 00 00 00 00 01 FF");
  port_.Deliver("E4 00 FF");
  EXPECT_THAT(New(EventLog::Kind::Link),
              IsSupersetOf({"Refused: Output 1 Crosspoint Map, Failed Csum",
                            "Refused: Output 9 Crosspoint Map, Channel Error",
                            "Refused: Output 2 Inhibit Map, Size Error",
                            "Refused: QDV Responding Tally Info, Size Error"}));
  // The same one again and again would push everything else out of the log.
  for (int i = 0; i < 100; ++i) port_.Deliver("F3 00 00 00 00 01 00 02 FF");
  EXPECT_THAT(New(EventLog::Kind::Link), ElementsAre());
}

TEST_F(LogWordsTest, ABlockedLineAndTheDiscardedByteHaveTheirLines) {
  New(EventLog::Kind::Link);
  window_.ShowBlockedCode(0xCD);
  window_.ShowBlockedCode(std::nullopt);
  keeper_.ByteDiscarded(0xCD);
  EXPECT_THAT(New(EventLog::Kind::Link),
              ElementsAre("Receiving blocked by unknown code 0xCD", "Discarded byte 0xCD"));
}

}  // namespace
}  // namespace app
