// SPDX-License-Identifier: MIT
//
// What is typed into the label grid when a download or a retrieval is asked for.

#include "app/transfers.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <QAbstractItemModel>
#include <QDialog>
#include <QMainWindow>
#include <QTableView>

#include "switcher/decoder.h"
#include "switcher/live_commands.h"
#include "switcher/table_senders.h"
#include "tests/support/fake_serial_port.h"
#include "tests/support/recording_reporter.h"
#include "tests/support/recording_tables.h"
#include "tests/support/silent_link_display.h"
#include "tests/support/small_database.h"

namespace app {
namespace {

using testing::HasSubstr;
using testing::IsEmpty;
using testing::SizeIs;

class TransfersTest : public testing::Test {
 protected:
  TransfersTest() {
    model_.ApplyFixedValues();
    for (int station = 1; station <= 3; ++station) {
      database_.AddStation(station, {{"Hidden", 0}, {"Label", "out"}, {"InLabel", "in"}});
    }
    window_.setCentralWidget(area_);
    window_.resize(900, 700);
    window_.show();
    views_.ShowAlphas();
  }

  // Types a station label without leaving its row.
  void TypeLabel(int station, const char* label) {
    auto& labels = *views_.Alphas()->findChild<QTableView*>(QStringLiteral("jgAlphas"))->model();
    ASSERT_TRUE(labels.setData(labels.index(station - 1, 1), QLatin1String(label)));
  }

  bool IsOpen(const char* name) {
    for (const auto* const dialog : window_.findChildren<QDialog*>(QLatin1String(name))) {
      if (dialog->isVisible()) return true;
    }
    return false;
  }

  model::SystemModel model_;
  test::SmallDatabase database_;
  test::FakeSerialPort port_;
  test::RecordingReporter reporter_;
  test::RecordingTables tables_;
  config::WindowSettings settings_{QString()};
  switcher::LiveCommands commands_{{.model = model_, .port = port_, .reporter = reporter_}};
  switcher::TableSenders senders_{
      {.model = model_, .files = database_.Files(), .port = port_, .reporter = reporter_}};
  QMainWindow window_;
  QMdiArea* area_ = new QMdiArea;
  stations::Changes changes_;
  OpenViews views_{*area_,
                   {.model = model_,
                    .stations = [this] { return database_.Files().Stations(); },
                    .changes = changes_,
                    .commands = commands_,
                    .tables = tables_,
                    .poll = tables_,
                    .settings = settings_,
                    .reporter = reporter_}};
  switcher::Decoder decoder_{{.model = model_,
                              .database = [this] { return database_.Files().Database(); },
                              .reporter = reporter_,
                              .changes = changes_,
                              .observers = {views_}}};
  test::SilentLinkDisplay linkDisplay_;
  switcher::Link link_{model_, port_, decoder_, linkDisplay_};
  Transfers transfers_{window_,
                       views_,
                       {.model = model_, .tables = senders_, .poll = tables_},
                       {.parts = {.model = model_,
                                  .decoder = decoder_,
                                  .port = port_,
                                  .link = link_,
                                  .poll = tables_,
                                  .reporter = reporter_},
                        .closeViews = {}}};
};

TEST_F(TransfersTest, ADownloadSendsWhatIsTyped) {
  TypeLabel(2, "Studio");
  ASSERT_EQ(database_.Field(2, "Label"), "out");
  transfers_.SendData(0);
  EXPECT_EQ(database_.Field(2, "Label"), "Studio");
  EXPECT_TRUE(IsOpen("frmDownProg"));
  EXPECT_THAT(reporter_.reports, IsEmpty());
}

TEST_F(TransfersTest, ARetrievalComesAfterWhatIsTyped) {
  TypeLabel(2, "Studio");
  transfers_.RetrieveData();
  EXPECT_EQ(database_.Field(2, "Label"), "Studio");
  EXPECT_TRUE(IsOpen("frmSysInfo"));
  EXPECT_THAT(reporter_.reports, IsEmpty());
}

TEST_F(TransfersTest, WhatCannotBeStoredIsReportedAndNeitherSentNorLost) {
  TypeLabel(2, "Studio");
  database_.Delete(2);
  transfers_.SendData(0);
  EXPECT_THAT(reporter_.reports, SizeIs(1));
  EXPECT_THAT(reporter_.reports.back(), HasSubstr("Error Storing Station Labels"));
  EXPECT_FALSE(IsOpen("frmDownProg"));
  transfers_.RetrieveData();
  EXPECT_THAT(reporter_.reports, SizeIs(2));
  EXPECT_FALSE(IsOpen("frmSysInfo"));
  ASSERT_NE(views_.Alphas(), nullptr);
  const auto& labels =
      *views_.Alphas()->findChild<QTableView*>(QStringLiteral("jgAlphas"))->model();
  EXPECT_EQ(labels.index(1, 1).data().toString(), QStringLiteral("Studio"));
}

TEST_F(TransfersTest, TheModeIsSetWhenTheWindowOpensAndOnlyThen) {
  transfers_.SendData(-1);
  EXPECT_EQ(model_.DownloadMode, -1);
  // The command that comes while a window is open opens none, and leaves that one's mode alone.
  transfers_.SendData(0);
  EXPECT_EQ(model_.DownloadMode, -1);
  transfers_.CancelNow();
  transfers_.RetrieveData();
  transfers_.SendData(0);
  EXPECT_EQ(model_.DownloadMode, -1);
  transfers_.CancelNow();

  // Nor does one that cannot store what is typed.
  views_.ShowAlphas();
  TypeLabel(2, "Studio");
  database_.Delete(2);
  transfers_.SendData(0);
  EXPECT_EQ(model_.DownloadMode, -1);
  EXPECT_FALSE(IsOpen("frmDownProg"));
}

}  // namespace
}  // namespace app
