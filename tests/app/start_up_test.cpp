// SPDX-License-Identifier: MIT

#include "app/run/start_up.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <QTcpServer>

#include "switcher/decoder.h"
#include "tests/support/fake_serial_port.h"
#include "tests/support/recording_reporter.h"
#include "tests/support/recording_switcher_events.h"
#include "tests/support/silent_link_display.h"
#include "tests/support/temporary_folder.h"

namespace app {
namespace {

using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::StartsWith;

class Display : public test::SilentLinkDisplay {
 public:
  void ShowLinkText(std::string_view text) override { linkText = text; }

  std::string linkText = "(not set)";
};

constexpr char kIpPortText[] =
    "critical|Comm Error|The IP Port: 1250 is either in use by another program or unavailable.\r"
    "Please select another IP port and restart Orvo Intercom Control.\r"
    "Soft Panel support is not available.";

class StartUpTest : public testing::Test {
 protected:
  void Run(std::string_view settings = "") {
    StartUp({.model = model_,
             .files = files_,
             .listener = listener_,
             .link = link_,
             .reporter = reporter_})
        .Run(folder_.Path().string(), config::IniFile(settings));
  }

  void SetCount(std::string_view field, const jet::Value& value) {
    db::DatabaseFiles files(folder_ / "Tesk.mdb", folder_ / "WorkingDb.md$");
    ASSERT_TRUE(files.Open().ok());
    ASSERT_TRUE(files.DbInfo()->Edit().ok());
    ASSERT_TRUE(files.DbInfo()->Set(field, value).ok());
    ASSERT_TRUE(files.DbInfo()->Update().ok());
    ASSERT_TRUE(files.SaveAndClose().ok());
  }

  test::TemporaryFolder folder_;
  model::SystemModel model_;
  test::RecordingReporter reporter_;
  test::RecordingSwitcherEvents events_;
  Display display_;
  test::FakeSerialPort port_;
  db::DatabaseFiles files_{folder_ / "Tesk.mdb", folder_ / "WorkingDb.md$"};
  stations::Changes changes_;
  switcher::Decoder decoder_{{.model = model_,
                              .database = [this] { return files_.Database(); },
                              .reporter = reporter_,
                              .changes = changes_,
                              .observers = {events_}}};
  switcher::Link link_{{.model = model_, .port = port_, .decoder = decoder_, .display = display_}};
  gateway::Listener listener_;
};

TEST_F(StartUpTest, FirstStartOnAnEmptyFolder) {
  Run();
  EXPECT_THAT(reporter_.reports, IsEmpty());
  EXPECT_EQ(model_.AppPath, folder_.Path().string() + "\\");
  EXPECT_EQ(model_.StationCount, 64);
  EXPECT_EQ(model_.ChannelCount, 64);
  EXPECT_EQ(model_.LabelCount, 128);
  EXPECT_EQ(model_.InCount, 64);
  EXPECT_EQ(model_.OutCount, 64);
  EXPECT_EQ(model_.ButtonCount, 32);
  EXPECT_EQ(model_.CrosspointMap.Size(), 64);
  EXPECT_EQ(model_.ChannelStatus.Size(), 64);
  EXPECT_EQ(model_.InputGains[0], 64);
  EXPECT_EQ(model_.DownloadInterval, 50);
  EXPECT_FALSE(listener_.IsListening());
  EXPECT_TRUE(files_.IsOpen());
  EXPECT_TRUE(port_.IsOpen());
  EXPECT_EQ(display_.linkText, "Not Connected - COM 1");
}

TEST_F(StartUpTest, TheConfiguredIntervalNeverTakesEffect) {
  Run("[CONFIGURATION]\nDownload Interval=500\nCOM Port=3\nDemo Mode=1\n");
  EXPECT_EQ(model_.DownloadInterval, 50);
  EXPECT_EQ(model_.DemoMode, 1);
  EXPECT_EQ(port_.Number(), 3);
  EXPECT_EQ(display_.linkText, "Not Connected - COM 3");
}

TEST_F(StartUpTest, PanelsAreListenedForOnlyWhenAsked) {
  QTcpServer free;
  ASSERT_TRUE(free.listen(QHostAddress::Any, 0));
  const int port = free.serverPort();
  free.close();
  Run("[CONFIGURATION]\nSoftpanel Support=Yes\nIP Port=" + std::to_string(port) + "\n");
  EXPECT_TRUE(listener_.IsListening());
  EXPECT_THAT(reporter_.reports, IsEmpty());
}

TEST_F(StartUpTest, ATakenIpPortIsReportedAndStartingGoesOn) {
  QTcpServer other;
  ASSERT_TRUE(other.listen(QHostAddress::Any, 0));
  const std::string port = std::to_string(other.serverPort());
  Run("[CONFIGURATION]\nSoftpanel Support=Yes\nIP Port=" + port + "\n");
  EXPECT_THAT(reporter_.reports,
              ElementsAre("critical|Comm Error|The IP Port: " + port +
                          " is either in use by another program or unavailable.\r"
                          "Please select another IP port and restart Orvo Intercom Control.\r"
                          "Soft Panel support is not available."));
  EXPECT_EQ(model_.ChannelCount, 64);
  EXPECT_EQ(display_.linkText, "Not Connected - COM 1");
}

TEST_F(StartUpTest, ADatabaseThatCannotBeOpenedFailsEveryCountToo) {
  test::WriteFile(folder_ / "Tesk.mdb", "junk");
  Run();
  ASSERT_EQ(reporter_.reports.size(), 8U);
  EXPECT_THAT(
      reporter_.reports[0],
      StartsWith("critical|Database Error|Error Opening Database File\r\rError #  3343 - "));
  for (std::size_t i = 1; i < 8; ++i) EXPECT_EQ(reporter_.reports[i], kIpPortText);
  EXPECT_EQ(model_.ChannelCount, 0);
  EXPECT_EQ(model_.CrosspointMap.Size(), 0);
  EXPECT_EQ(model_.ButtonCount, 32);
  EXPECT_EQ(display_.linkText, "Not Connected - COM 1");
}

TEST_F(StartUpTest, AnUnavailableSerialPortIsReportedAndTheTextNotSet) {
  port_.unavailable = true;
  Run("[CONFIGURATION]\nCOM Port=2\n");
  EXPECT_THAT(reporter_.reports,
              ElementsAre("critical|Comm Error|Comm: 2 is either in use by another program or "
                          "unavailable.\rPlease select another comm port and restart Orvo "
                          "Intercom Control"));
  EXPECT_EQ(display_.linkText, "(not set)");
}

TEST_F(StartUpTest, CountsOfButtonsAndBoxesAreFixedWhateverTheDatabaseSays) {
  SetCount("ButtonCount", 16);
  SetCount("ChkBoxCount", 8);
  SetCount("OptoCount", 8);
  SetCount("RelayCount", 8);
  Run();
  EXPECT_EQ(model_.ButtonCount, 32);
  EXPECT_EQ(model_.ChkBoxCount, 64);
  EXPECT_EQ(model_.OptoCount, 64);
  EXPECT_EQ(model_.RelayCount, 64);
  EXPECT_THAT(reporter_.reports, IsEmpty());
}

TEST_F(StartUpTest, EveryCountIsReadFromItsOwnField) {
  SetCount("StationCount", 10);
  SetCount("ChannelCount", 16);
  SetCount("LabelCount", 30);
  SetCount("InCount", -4);
  SetCount("OutCount", 32767);
  Run();
  EXPECT_THAT(reporter_.reports, IsEmpty());
  EXPECT_EQ(model_.StationCount, 10);
  EXPECT_EQ(model_.ChannelCount, 16);
  EXPECT_EQ(model_.LabelCount, 30);
  EXPECT_EQ(model_.InCount, -4);
  EXPECT_EQ(model_.OutCount, 32767);
  EXPECT_EQ(model_.CrosspointMap.Size(), 16);
  EXPECT_EQ(model_.ChannelStatus.Size(), 16);
}

TEST_F(StartUpTest, ACountThatIsNullIsReportedAndLeftAsItWas) {
  SetCount("LabelCount", jet::Value());
  SetCount("InCount", 20);
  model_.LabelCount = 7;
  Run();
  EXPECT_THAT(reporter_.reports, ElementsAre(kIpPortText));
  EXPECT_EQ(model_.LabelCount, 7);
  EXPECT_EQ(model_.InCount, 20);
}

TEST_F(StartUpTest, WithoutARecordOfCountsEachOfThemIsReported) {
  {
    db::DatabaseFiles files(folder_ / "Tesk.mdb", folder_ / "WorkingDb.md$");
    ASSERT_TRUE(files.Open().ok());
    ASSERT_TRUE(files.DbInfo()->Delete().ok());
    ASSERT_TRUE(files.SaveAndClose().ok());
  }
  Run();
  std::vector<std::string> expected(8, kIpPortText);
  expected[0] =
      "critical|Database Error|Error Opening Database File\r\r"
      "Error #  3021 - There is no current record";
  EXPECT_EQ(reporter_.reports, expected);
  EXPECT_FALSE(files_.IsOpen());
}

// The gateway comes before the database, the database before the serial port.
TEST_F(StartUpTest, FailuresAreReportedInTheOrderOfTheSteps) {
  test::WriteFile(folder_ / "Tesk.mdb", "junk");
  port_.unavailable = true;
  Run("[CONFIGURATION]\nSoftpanel Support=Yes\nIP Port=70000\n");
  ASSERT_EQ(reporter_.reports.size(), 10U);
  EXPECT_THAT(reporter_.reports[0], StartsWith("critical|Comm Error|The IP Port: 70000 is"));
  EXPECT_THAT(reporter_.reports[1], StartsWith("critical|Database Error|"));
  for (std::size_t i = 2; i < 9; ++i) {
    EXPECT_EQ(reporter_.reports[i], reporter_.reports[0]) << i;
  }
  EXPECT_THAT(reporter_.reports[9], StartsWith("critical|Comm Error|Comm: 1 is"));
}

TEST_F(StartUpTest, WithoutPanelSupportThePortIsGivenBack) {
  QTcpServer free;
  ASSERT_TRUE(free.listen(QHostAddress::Any, 0));
  const int port = free.serverPort();
  free.close();
  ASSERT_TRUE(listener_.Start(port).ok());
  Run("[CONFIGURATION]\nSoftpanel Support=No\n");
  EXPECT_FALSE(listener_.IsListening());
}

TEST_F(StartUpTest, NoChannelsAreNoFailure) {
  SetCount("ChannelCount", 0);
  Run();
  EXPECT_THAT(reporter_.reports, IsEmpty());
  EXPECT_EQ(model_.ChannelCount, 0);
  EXPECT_EQ(model_.CrosspointMap.Size(), 0);
}

TEST_F(StartUpTest, AChannelCountOutsideTheMatrixIsAFailedRead) {
  for (const int count : {-8, 257, 32767}) {
    SetCount("ChannelCount", count);
    reporter_.reports.clear();
    Run();
    EXPECT_THAT(reporter_.reports, ElementsAre(kIpPortText)) << count;
    EXPECT_EQ(model_.CrosspointMap.Size(), model_.ChannelCount);
    ASSERT_TRUE(files_.SaveAndClose().ok());
    model_.ChannelCount = 0;
  }
}

TEST_F(StartUpTest, RunningAgainDiscardsTheMap) {
  Run();
  model_.CrosspointMap.At(1, 2) = 1;
  model_.XmapComplete = model_.TallySeen = true;
  model_.RetrieveActive = model_.SendBusy = model_.TallyViewOpen = true;
  model_.LinkStatus = {1, 1, 2};
  model_.ChannelStatus[1] = 1;
  model_.InputGains[63] = 1;
  model_.QdvTally[63] = 1;
  Run();
  EXPECT_EQ(model_.CrosspointMap.At(1, 2), 0);
  EXPECT_EQ(model_.ChannelStatus[1], 0);
  EXPECT_EQ(model_.InputGains[63], 64);
  EXPECT_EQ(model_.QdvTally[63], 0);
  EXPECT_FALSE(model_.XmapComplete || model_.TallySeen || model_.RetrieveActive);
  EXPECT_FALSE(model_.SendBusy || model_.TallyViewOpen);
  EXPECT_EQ(model_.LinkStatus[0] + model_.LinkStatus[1] + model_.LinkStatus[2], 0);
}

}  // namespace
}  // namespace app
