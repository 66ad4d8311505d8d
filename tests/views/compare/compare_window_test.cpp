// SPDX-License-Identifier: MIT

#include "views/compare/compare_window.h"

#include <gmock/gmock.h>

#include <QApplication>
#include <QLineEdit>
#include <QSignalSpy>
#include <QTest>
#include <QTreeView>
#include <functional>
#include <memory>
#include <set>

#include "tests/support/comparison_system.h"
#include "tests/views/gui_support.h"
#include "views/widgets/icon.h"

namespace views {
namespace {

using switcher::Table;
using switcher::TablePart;
using test::Answer;
using testing::ElementsAre;
using testing::IsEmpty;
using testing::SizeIs;
using testing::StartsWith;

class CompareWindowTest : public test::ComparisonSystem {
 protected:
  void SetUp() override {
    ComparisonSystem::SetUp();
    window_ = std::make_unique<CompareWindow>(Services());
    QObject::connect(
        window_.get(), &CompareWindow::Ended,
        [this](const switcher::ComparisonResult& result) { ended_.push_back(result); });
    QObject::connect(window_.get(), &CompareWindow::SendRequested,
                     [this](const std::vector<TablePart>& parts) { sent_.push_back(parts); });
    QObject::connect(window_.get(), &CompareWindow::Stored,
                     [this](const std::vector<stations::Change>& changes) {
                       storedStations_.push_back(static_cast<int>(changes.size()));
                     });
  }

  CompareWindow::Services Services() {
    return {.comparison = ComparisonServices(), .changes = stream_, .storeEdits = [this] {
              return storeEdits_();
            }};
  }

  template <typename Part = QWidget>
  Part& Child(const char* name) {
    return test::Find<Part>(*window_, name);
  }
  QPushButton& Button(const char* name) { return Child<QPushButton>(name); }
  QString Said(const char* name) { return Child<QLabel>(name).text(); }

  void BeginAndAsk() {
    window_->Begin();
    ASSERT_TRUE(QTest::qWaitFor([this] { return port_.TakeWritten() == "E7"; }, 20000));
  }

  void Compare() {
    BeginAndAsk();
    DeliverAll();
  }

  std::vector<std::string> Rows() {
    std::vector<std::string> rows;
    const QAbstractItemModel& model = *Child<QTreeView>("lstDifferences").model();
    for (int row = 0; row < model.rowCount(); ++row) {
      QStringList cells;
      for (int column = 1; column < model.columnCount(); ++column) {
        cells.append(model.index(row, column).data().toString());
      }
      rows.push_back(cells.join(u'|').toStdString());
    }
    return rows;
  }

  void TickRow(int row) {
    QAbstractItemModel& model = *Child<QTreeView>("lstDifferences").model();
    ASSERT_TRUE(model.setData(model.index(row, 0), Qt::Checked, Qt::CheckStateRole));
  }

  std::function<bool()> storeEdits_ = [] { return true; };
  std::unique_ptr<CompareWindow> window_;
  std::vector<switcher::ComparisonResult> ended_;
  std::vector<std::vector<TablePart>> sent_;
  std::vector<int> storedStations_;
};

TEST_F(CompareWindowTest, AsksAtOnceAndCountsWhatComes) {
  window_->Begin();
  EXPECT_EQ(window_->objectName(), QStringLiteral("frmCompare"));
  EXPECT_EQ(window_->windowTitle(), QStringLiteral("Compare With Switcher"));
  EXPECT_FALSE(window_->isModal()) << "takes go on meanwhile";
  EXPECT_TRUE(window_->IsWaiting());
  EXPECT_EQ(Said("aidCompareSummary"), QStringLiteral("Comparing: 0 tables, 0 bytes"));
  EXPECT_EQ(Button("cmdCloseCmp").text(), QStringLiteral("Cancel"));
  EXPECT_FALSE(Button("cmdStoreCmp").isEnabled());
  EXPECT_FALSE(Button("cmdSendCmp").isEnabled());
  EXPECT_FALSE(Button("aidCompareAgain").isEnabled());
  ASSERT_TRUE(QTest::qWaitFor([this] { return port_.TakeWritten() == "E7"; }, 20000));
  Deliver(0, 2);
  EXPECT_EQ(Said("aidCompareSummary"), QStringLiteral("Comparing: 2 tables, 24 bytes"));
}

TEST_F(CompareWindowTest, SaysThatTheLinkIsDown) {
  model_.LinkStatus = {};
  window_->Begin();
  const auto& link = Child<QLabel>("aidCompareLink");
  window_->LinkChanged();
  EXPECT_TRUE(link.isVisible());
  EXPECT_EQ(link.text(), QStringLiteral("Not connected: no switcher would answer."));
  model_.LinkStatus = {1, 1, 0};
  window_->LinkChanged();
  EXPECT_FALSE(link.isVisible());
}

TEST_F(CompareWindowTest, ListsWhatDiffersInWords) {
  Compare();
  EXPECT_FALSE(window_->IsWaiting());
  EXPECT_THAT(Rows(), ElementsAre("Station 1|Label|Sta. 001|CAM 1",
                                  "Station 1|Button 1|GROUP without a target|TALK 1",
                                  "Output 2|Inhibits|none|1"));
  EXPECT_EQ(Said("aidCompareSummary"), QStringLiteral("3 differences in 27 tables"));
  EXPECT_EQ(Button("cmdCloseCmp").text(), QStringLiteral("Close"));
  EXPECT_EQ(Said("aidDifferenceCount"), QStringLiteral("0 of 3 ticked"));
  EXPECT_FALSE(Button("cmdStoreCmp").isEnabled()) << "nothing is ticked";
  EXPECT_THAT(ended_, SizeIs(1));
  ExpectUntouched();
}

TEST_F(CompareWindowTest, StoresNothingWhileTheConsoleIsLocked) {
  Compare();
  TickRow(0);
  locks_.LockConsole(true);
  Button("cmdStoreCmp").click();
  EXPECT_THAT(reporter_.reports,
              ElementsAre("exclamation|Control Error|Action Not Allowed While Console Is Locked"));
  EXPECT_EQ(database_.Field(1, "Label"), "Sta. 001");
  EXPECT_THAT(Rows(), SizeIs(3));
}

QImage SignOf(const char* icon, const QLabel& label) {
  const QSize size = label.pixmap(Qt::ReturnByValue).size();
  return Icon(QLatin1String(icon)).pixmap(size, 1.0).toImage();
}

TEST_F(CompareWindowTest, OnlyAWholeComparisonWithoutADifferenceHasATick) {
  const auto sign = [this] { return Child<QLabel>("aidCompareSign").pixmap(Qt::ReturnByValue); };
  const auto is = [&](const char* icon) {
    return sign().toImage() == SignOf(icon, Child<QLabel>("aidCompareSign"));
  };
  Compare();
  EXPECT_TRUE(is("compare")) << "3 differences are no tick";
  EXPECT_FALSE(is("msg-ok"));
  for (const int row : {0, 1, 2}) TickRow(row);
  Button("cmdStoreCmp").click();
  window_->close();
  Compare();
  EXPECT_EQ(Said("aidCompareSummary"), QStringLiteral("No difference in 27 tables"));
  EXPECT_TRUE(is("msg-ok"));
  window_->close();
  BeginAndAsk();
  Deliver(0, 5);
  window_->reject();
  EXPECT_TRUE(is("msg-fail")) << "tables are lacking";
}

TEST_F(CompareWindowTest, TheListHasTheFocusWhenTheResultComes) {
  Compare();
  EXPECT_EQ(window_->focusWidget(), &Child<QTreeView>("lstDifferences"));
  QTest::keyClick(window_->focusWidget(), Qt::Key_Space);
  EXPECT_EQ(Said("aidDifferenceCount"), QStringLiteral("1 of 3 ticked"));
}

TEST_F(CompareWindowTest, ItsButtonsHaveMnemonicsOfTheirOwn) {
  std::set<QString> keys;
  for (const char* const name :
       {"aidCompareAgain", "cmdStoreCmp", "cmdSendCmp", "aidTickAll", "aidTickNone"}) {
    const QString key = QKeySequence::mnemonic(Button(name).text()).toString();
    EXPECT_FALSE(key.isEmpty()) << name;
    EXPECT_TRUE(keys.insert(key).second) << name;
  }
}

TEST_F(CompareWindowTest, ALargerFontMakesALargerWindow) {
  const QSize before = window_->size();
  QFont font = QApplication::font();
  const QFont usual = font;
  font.setPointSizeF(font.pointSizeF() * 1.25);
  QApplication::setFont(font);
  const CompareWindow larger(Services());
  QApplication::setFont(usual);
  EXPECT_GT(larger.width(), before.width());
}

// Of a button of which one field differs the row says all of it.
TEST_F(CompareWindowTest, SaysTheWholeProgrammingOfAButton) {
  database_.Set(1, "Label", "CAM 1");
  database_.Set(1, "B1 First", 1);
  database_.Set(1, "B1 Prog", "1");
  Compare();
  EXPECT_THAT(Rows(), ElementsAre("Station 1|Button 1|GROUP 1|TALK 1", "Output 2|Inhibits|none|1"));
}

TEST_F(CompareWindowTest, StoresWhatIsTickedAsOneAct) {
  Compare();
  TickRow(1);
  TickRow(2);
  Button("cmdStoreCmp").click();
  EXPECT_THAT(changes_.seen, SizeIs(2));
  EXPECT_THAT(changes_.seen[0], StartsWith("comparison 1: B1 Type 255 > 0, B1 First 0 > 1, "));
  EXPECT_THAT(changes_.seen[1], StartsWith("comparison 2: Inhibits "));
  EXPECT_EQ(changes_.times, 1);
  EXPECT_EQ(database_.Field(1, "B1 Type"), "0");
  EXPECT_EQ(database_.Field(2, "Inhibits"), "1" + std::string(63, '0'));
  EXPECT_EQ(database_.Field(1, "Label"), "Sta. 001") << "not ticked";
  EXPECT_THAT(Rows(), ElementsAre("Station 1|Label|Sta. 001|CAM 1"));
  EXPECT_EQ(Said("aidCompareSummary"), QStringLiteral("2 rows stored"));
  EXPECT_THAT(storedStations_, ElementsAre(2));
  EXPECT_EQ(port_.TakeWritten(), "");
}

// Half of a button would be none.
TEST_F(CompareWindowTest, ARowThatWasEditedMeanwhileIsLeftOutWholeAndNamed) {
  Compare();
  database_.Set(1, "B1 First", 7);
  TickRow(0);
  TickRow(1);
  Button("cmdStoreCmp").click();
  EXPECT_THAT(changes_.seen, ElementsAre("comparison 1: Label Sta. 001 > CAM 1"));
  EXPECT_EQ(database_.Field(1, "B1 Type"), "255");
  EXPECT_EQ(database_.Field(1, "B1 First"), "7");
  EXPECT_EQ(Said("aidCompareSummary"),
            QStringLiteral("1 row stored. Left out, because they were edited here since: "
                           "Station 1 Button 1"));
  EXPECT_THAT(Rows(), ElementsAre("Station 1|Button 1|GROUP without a target|TALK 1",
                                  "Output 2|Inhibits|none|1"));
  const QAbstractItemModel& model = *Child<QTreeView>("lstDifferences").model();
  EXPECT_FALSE(model.index(0, 0).data(Qt::CheckStateRole).isValid());
  EXPECT_EQ(model.index(0, 0).data(Qt::ToolTipRole).toString(),
            QStringLiteral("Edited here since. Compare again."));
}

// What is typed into a row of the labels and not stored yet would overwrite it later.
TEST_F(CompareWindowTest, WhatIsTypedMeanwhileIsStoredFirst) {
  Compare();
  storeEdits_ = [this] {
    database_.Set(1, "Label", "TYPED");
    return true;
  };
  TickRow(0);
  TickRow(2);
  Button("cmdStoreCmp").click();
  EXPECT_EQ(database_.Field(1, "Label"), "TYPED");
  EXPECT_EQ(Said("aidCompareSummary"),
            QStringLiteral("1 row stored. Left out, because they were edited here since: "
                           "Station 1 Label"));
}

TEST_F(CompareWindowTest, StoresNothingWhileWhatIsTypedCannotBeStored) {
  Compare();
  storeEdits_ = [] { return false; };
  TickRow(0);
  Button("cmdStoreCmp").click();
  EXPECT_EQ(database_.Field(1, "Label"), "Sta. 001");
  EXPECT_THAT(Rows(), SizeIs(3));
  EXPECT_EQ(Said("aidCompareSummary"), QStringLiteral("3 differences in 27 tables"));
}

TEST_F(CompareWindowTest, SaysWhichTablesGoAndAsksForThem) {
  Compare();
  EXPECT_EQ(Said("aidCompareChoice"), QString());
  TickRow(0);
  TickRow(2);
  EXPECT_EQ(Said("aidCompareChoice"),
            QStringLiteral("Whole tables are sent: station labels, inhibits of output 2"));
  Button("cmdSendCmp").click();
  EXPECT_THAT(sent_, ElementsAre(ElementsAre(TablePart{Table::OutputLabels},
                                             TablePart{Table::Inhibits, 2})));
  ExpectUntouched();
}

TEST_F(CompareWindowTest, WhatWasSentCannotBeChosenAnyMore) {
  Compare();
  const QAbstractItemModel& model = *Child<QTreeView>("lstDifferences").model();
  window_->NoteSent({TablePart{Table::OutputLabels}, TablePart{Table::Inhibits, 2}});
  EXPECT_THAT(Rows(), SizeIs(3));
  for (const int row : {0, 2}) {
    EXPECT_FALSE(model.index(row, 0).data(Qt::CheckStateRole).isValid());
    EXPECT_EQ(model.index(row, 0).data(Qt::ToolTipRole).toString(),
              QStringLiteral("Sent since. Compare again."));
  }
  EXPECT_TRUE(model.index(1, 0).data(Qt::CheckStateRole).isValid()) << "the button was not sent";
}

TEST_F(CompareWindowTest, CancelEndsTheWaitAndShowsWhatHasCome) {
  BeginAndAsk();
  Deliver(0, 5);
  Button("cmdCloseCmp").click();
  EXPECT_TRUE(window_->isVisible());
  EXPECT_FALSE(window_->IsWaiting());
  EXPECT_EQ(Said("aidCompareSummary"),
            QStringLiteral("Cancelled. 2 differences in 5 tables, 22 not reported"));
  EXPECT_THAT(
      Rows(),
      ElementsAre("Station 1|Label|Sta. 001|CAM 1", "Output 2|Inhibits|none|1",
                  "All stations|Optos||not reported", "Outputs 3 to 8|Inhibits||not reported",
                  "Outputs 2 to 8|Relays||not reported", "Stations 1 to 8|Buttons||not reported"));
  Button("cmdCloseCmp").click();
  EXPECT_FALSE(window_->isVisible());
  Deliver(5, 27);
  ExpectUntouched();
  EXPECT_FALSE(window_->IsListening());
  EXPECT_THAT(ended_, SizeIs(1));
}

TEST_F(CompareWindowTest, EscapeCancelsAndThenCloses) {
  BeginAndAsk();
  QTest::keyClick(window_.get(), Qt::Key_Escape);
  EXPECT_TRUE(window_->isVisible());
  EXPECT_FALSE(window_->IsWaiting());
  QTest::keyClick(window_.get(), Qt::Key_Escape);
  EXPECT_FALSE(window_->isVisible());
}

TEST_F(CompareWindowTest, ClosedAndOpenedItComparesAnewButNotWhileItIsShown) {
  Compare();
  window_->Begin();
  EXPECT_FALSE(window_->IsWaiting()) << "it came up, as it was";
  EXPECT_THAT(Rows(), SizeIs(3));
  window_->close();
  Compare();
  EXPECT_THAT(Rows(), SizeIs(3));
  EXPECT_THAT(ended_, SizeIs(2));
}

TEST_F(CompareWindowTest, CompareAgainBeginsAnew) {
  Compare();
  Button("aidCompareAgain").click();
  EXPECT_TRUE(window_->IsWaiting());
  EXPECT_THAT(Rows(), IsEmpty());
}

TEST_F(CompareWindowTest, WhileLateAnswersComeItSaysThatItWaitsForTheirEnd) {
  BeginAndAsk();
  Deliver(0, 5);
  Button("cmdCloseCmp").click();
  Button("aidCompareAgain").click();
  EXPECT_EQ(Said("aidCompareSummary"),
            QStringLiteral("The switcher is still sending what it was asked for before. It is "
                           "asked again when it has ended."));
  EXPECT_TRUE(window_->IsWaiting());
  Deliver(5, 27);
  ASSERT_TRUE(QTest::qWaitFor([this] { return port_.TakeWritten() == "E7"; }, 20000));
  DeliverAll();
  EXPECT_EQ(Said("aidCompareSummary"), QStringLiteral("3 differences in 27 tables"));
}

TEST_F(CompareWindowTest, SilenceAndALostLineAreSpokenOf) {
  BeginAndAsk();
  auto& second = Child<QTimer>("aidCompareSecondTimer");
  EXPECT_EQ(second.interval(), 1000);
  second.setInterval(1);
  ASSERT_TRUE(QTest::qWaitFor(
      [this] { return Said("aidCompareSilence") == QStringLiteral("No data for 12 s"); }, 20000));
  port_.unavailable = true;
  port_.Vanish();
  ASSERT_TRUE(
      QTest::qWaitFor([this] { return Child<QLabel>("aidCompareLine").isVisible(); }, 20000));
  EXPECT_EQ(Said("aidCompareLine"),
            QStringLiteral("COM 1 is not open. It is tried again every second."));
  port_.unavailable = false;
  ASSERT_TRUE(QTest::qWaitFor(
      [this] {
        return Said("aidCompareLine") ==
               QStringLiteral(
                   "COM 1 was lost and is open again. Tables may be missing: cancel, "
                   "and compare again.");
      },
      20000));
}

TEST_F(CompareWindowTest, EnterInTheFilterPressesNothing) {
  Compare();
  TickRow(0);
  QTest::keyClick(&Child<QLineEdit>("txtFilterCmp"), Qt::Key_Return);
  EXPECT_TRUE(window_->isVisible());
  ExpectUntouched();
  EXPECT_THAT(sent_, IsEmpty());
}

TEST_F(CompareWindowTest, AProgramThatEndsCancelsAndCloses) {
  BeginAndAsk();
  window_->CancelNow();
  EXPECT_FALSE(window_->isVisible());
  EXPECT_FALSE(window_->IsWaiting());
}

TEST_F(CompareWindowTest, AStationThatIsGoneIsLeftOut) {
  Compare();
  TickRow(0);
  database_.Delete(1);
  Button("cmdStoreCmp").click();
  EXPECT_THAT(changes_.seen, IsEmpty());
  EXPECT_EQ(Said("aidCompareSummary"),
            QStringLiteral("0 rows stored. Left out, because they were edited here since: Station "
                           "1 Label"));
}

}  // namespace
}  // namespace views
