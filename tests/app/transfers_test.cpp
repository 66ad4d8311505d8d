// SPDX-License-Identifier: MIT
//
// What is typed into the label grid when a download or a retrieval is asked for.

#include "app/transfer/transfers.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <QAbstractItemModel>
#include <QDialog>
#include <QLabel>
#include <QTableView>
#include <QTest>
#include <QTimer>

#include "tests/app/views_fixture.h"
#include "tests/views/gui_support.h"

namespace app {
namespace {

using testing::HasSubstr;
using testing::IsEmpty;
using testing::SizeIs;

class TransfersTest : public TransfersFixture {
 protected:
  TransfersTest() {
    model_.ApplyFixedValues();
    for (int station = 1; station <= 3; ++station) {
      database_.AddStation(station, {{"Hidden", 0}, {"Label", "out"}, {"InLabel", "in"}});
    }
    window_.resize(900, 700);
    window_.show();
    views_.ShowAlphas();
  }

  // Types a station label without leaving its row.
  void TypeLabel(int station, const char* label) {
    auto& labels = *test::Find<QTableView>(*views_.Alphas(), "jgAlphas").model();
    ASSERT_TRUE(labels.setData(labels.index(station - 1, 1), QLatin1String(label)));
  }

  bool IsOpen(const char* name) { return !test::ShownDialogs(window_, name).isEmpty(); }
};

TEST_F(TransfersTest, ADownloadSendsWhatIsTyped) {
  TypeLabel(2, "Studio");
  ASSERT_EQ(database_.Field(2, "Label"), "out");
  transfers_.SendData(0);
  EXPECT_EQ(database_.Field(2, "Label"), "Studio");
  EXPECT_TRUE(IsOpen("frmDownProg"));
  EXPECT_THAT(reporter_.reports, IsEmpty());
}

TEST_F(TransfersTest, NoneBeginsWhileTheConsoleIsLocked) {
  locks_.LockConsole(true);
  transfers_.SendData(0);
  transfers_.SendChanges();
  transfers_.RetrieveData();
  transfers_.CompareWithSwitcher();
  for (const char* const name : {"frmDownProg", "frmSendChanges", "frmSysInfo", "frmCompare"}) {
    EXPECT_FALSE(IsOpen(name)) << name;
  }
  EXPECT_THAT(
      reporter_.reports,
      testing::Each("exclamation|Control Error|Action Not Allowed While Console Is Locked"));
  EXPECT_THAT(reporter_.reports, SizeIs(4));
}

TEST_F(TransfersTest, WhatIsOpenSaysThatTheLinkIsDown) {
  const auto says = [this](const char* window, const char* line) {
    auto& link = test::Find<QLabel>(*test::ShownDialogs(window_, window).front(), line);
    model_.LinkStatus = {1, 1, 0};
    transfers_.LinkChanged();
    const bool isQuiet = !link.isVisible();
    model_.LinkStatus = {};
    transfers_.LinkChanged();
    return isQuiet && link.isVisible();
  };
  transfers_.SendData(0);
  EXPECT_TRUE(says("frmDownProg", "aidDownloadLink"));
  transfers_.CancelNow();
  transfers_.RetrieveData();
  EXPECT_TRUE(says("frmSysInfo", "aidRetrievalLink"));
  transfers_.CancelNow();
  transfers_.CompareWithSwitcher();
  EXPECT_TRUE(says("frmCompare", "aidCompareLink"));
}

TEST_F(TransfersTest, ARetrievalComesAfterWhatIsTyped) {
  TypeLabel(2, "Studio");
  transfers_.RetrieveData();
  EXPECT_EQ(database_.Field(2, "Label"), "Studio");
  EXPECT_TRUE(IsOpen("frmSysInfo"));
  EXPECT_THAT(reporter_.reports, IsEmpty());
}

TEST_F(TransfersTest, ARetrievalWarnsOfADatabaseThatTheSwitcherNeverSaw) {
  unsentMessages_.Begin({});
  transfers_.RetrieveData();
  auto& window = *test::ShownDialogs(window_, "frmSysInfo").front();
  auto& warning = test::Find<QLabel>(window, "aidUnsentWarning");
  EXPECT_TRUE(warning.isVisible());
  EXPECT_EQ(warning.text(),
            QStringLiteral("What is here was never seen in the switcher and will be lost"));
  EXPECT_FALSE(
      test::Find<QLabel>(window, "aidUnsentWarningSign").pixmap(Qt::ReturnByValue).isNull());
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
  const auto& labels = *test::Find<QTableView>(*views_.Alphas(), "jgAlphas").model();
  EXPECT_EQ(labels.index(1, 1).data().toString(), QStringLiteral("Studio"));
}

TEST_F(TransfersTest, AComparisonComesAfterWhatIsTypedAndLeavesTheViewsOpen) {
  TypeLabel(2, "Studio");
  transfers_.CompareWithSwitcher();
  EXPECT_EQ(database_.Field(2, "Label"), "Studio");
  EXPECT_TRUE(IsOpen("frmCompare"));
  EXPECT_NE(views_.Alphas(), nullptr);
}

TEST_F(TransfersTest, WhileAComparisonWaitsNothingElseBegins) {
  std::vector<QString> notes;
  QObject::connect(&transfers_, &Transfers::NoteRequested,
                   [&](const QString& note) { notes.push_back(note); });
  transfers_.CompareWithSwitcher();
  transfers_.SendData(0);
  transfers_.RetrieveData();
  EXPECT_FALSE(IsOpen("frmDownProg"));
  EXPECT_FALSE(IsOpen("frmSysInfo"));
  EXPECT_THAT(notes, SizeIs(2));
  EXPECT_EQ(notes.back(),
            QStringLiteral("Not while the switcher sends what a comparison asked for"));

  // Cancelled before anything was asked for.
  auto& compare = *test::ShownDialogs(window_, "frmCompare").front();
  compare.reject();
  EXPECT_TRUE(compare.isVisible());
  transfers_.SendData(0);
  EXPECT_TRUE(IsOpen("frmDownProg"));
  EXPECT_FALSE(IsOpen("frmCompare")) << "it will not hold any more";
  transfers_.CompareWithSwitcher();
  EXPECT_FALSE(IsOpen("frmCompare"));
  EXPECT_THAT(notes, SizeIs(3));
  EXPECT_EQ(notes.back(), QStringLiteral("Not while another transfer is open"));
  transfers_.SendChanges();
  EXPECT_FALSE(IsOpen("frmSendChanges"));
  EXPECT_THAT(notes, SizeIs(4));
}

TEST_F(TransfersTest, ARetrievalWaitsForTheEndOfLateAnswers) {
  ASSERT_TRUE(port_.Open(1).ok());
  transfers_.CompareWithSwitcher();
  ASSERT_TRUE(QTest::qWaitFor([this] { return port_.TakeWritten() == "E7"; }, 20000));
  auto& compare = *test::ShownDialogs(window_, "frmCompare").front();
  compare.reject();
  compare.reject();
  EXPECT_FALSE(IsOpen("frmCompare"));
  transfers_.RetrieveData();
  EXPECT_FALSE(IsOpen("frmSysInfo")) << "it would take them for its own";
  test::Find<QTimer>(compare, "aidCompareSecondTimer").setInterval(1);
  ASSERT_TRUE(QTest::qWaitFor(
      [this] {
        transfers_.RetrieveData();
        return IsOpen("frmSysInfo");
      },
      20000));
}

TEST_F(TransfersTest, TheEndOfTheProgramEndsAComparison) {
  transfers_.CompareWithSwitcher();
  transfers_.CancelNow();
  EXPECT_FALSE(IsOpen("frmCompare"));
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
