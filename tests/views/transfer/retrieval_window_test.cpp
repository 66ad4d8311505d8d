// SPDX-License-Identifier: MIT

#include "views/transfer/retrieval_window.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <QAbstractItemModelTester>
#include <QKeyEvent>
#include <QPointer>
#include <QPushButton>
#include <QScreen>
#include <QScrollBar>
#include <QSignalSpy>
#include <QTest>

#include "db/database_files.h"
#include "tests/support/fake_serial_port.h"
#include "tests/support/hex.h"
#include "tests/support/recording_reporter.h"
#include "tests/support/recording_switcher_events.h"
#include "tests/support/silent_link_display.h"
#include "tests/support/temporary_folder.h"
#include "tests/views/gui_support.h"

namespace views {
namespace {

using switcher::DecodeStatus;
using testing::ElementsAre;
using testing::IsEmpty;

class RetrievalWindowTest : public testing::Test, public switcher::PollSwitch {
 protected:
  RetrievalWindowTest() {
    model_.ChannelCount = 16;
    model_.StationCount = 3;
    model_.ButtonCount = 32;
    model_.AllocateMap();
    EXPECT_TRUE(port_.Open(1).ok());
    EXPECT_TRUE(files_.Open().ok());
  }

  void SetUp() override {
    window_ = new RetrievalWindow({.model = model_,
                                   .decoder = decoder_,
                                   .port = port_,
                                   .link = link_,
                                   .poll = *this,
                                   .reporter = reporter_});
    QObject::connect(window_, &RetrievalWindow::ViewsOutdated, window_, [this] { ++viewsClosed_; });
    connection_ = QObject::connect(
        window_, &RetrievalWindow::Ended,
        [this](const switcher::RetrievalResult& result) { results_.push_back(result); });
    window_->setAttribute(Qt::WA_DeleteOnClose);
    window_->open();
    QCoreApplication::processEvents();
  }

  ~RetrievalWindowTest() override {
    QObject::disconnect(connection_);
    delete window_;
  }

  void SetPolling(bool on) override { polling_.push_back(on); }

  template <typename Type>
  Type* Child(const char* name) {
    return &test::Find<Type>(*window_, name);
  }

  void Click(const char* name) { QTest::mouseClick(Child<QPushButton>(name), Qt::LeftButton); }

  MessageList& List() { return *Child<MessageList>("lstMsgHistory"); }

  QVariant Cell(int row, int column, int role = Qt::DisplayRole) {
    return List().model()->index(row, column).data(role);
  }

  // Row `row` as "description|size|word".
  std::string Row(int row) {
    return (Cell(row, 0).toString() + QLatin1Char('|') + Cell(row, 1).toString() +
            QLatin1Char('|') + Cell(row, 2).toString())
        .toStdString();
  }

  // The row of the crosspoint map of an output, which every system knows.
  void DeliverRow(bool sound = true) {
    decoder_.Decode(test::FromHex(sound ? "F3 01 00 00 00 00 00 00 00 01 FF"
                                        : "F3 01 00 00 00 00 00 00 00 02 FF"));
  }

  // The button data of station 3, the last one: 32 buttons, and no group of eight stations.
  void DeliverLastButtonData(const std::string& checksumAndEnd) {
    std::string hex = "FB 02 00";
    for (int value = 0; value < 64; ++value) hex += " 00 00";
    decoder_.Decode(test::FromHex(hex + " " + checksumAndEnd));
  }

  bool Closed() {
    return QTest::qWaitFor([this] { return window_ == nullptr; }, 5000);
  }

  model::SystemModel model_;
  test::RecordingSwitcherEvents events_;
  test::FakeSerialPort port_;
  test::RecordingReporter reporter_;
  test::TemporaryFolder folder_;
  db::DatabaseFiles files_{folder_ / "Tesk.mdb", folder_ / "WorkingDb.md$"};
  stations::Changes changes_;
  switcher::Decoder decoder_{{.model = model_,
                              .database = [this] { return files_.Database(); },
                              .reporter = reporter_,
                              .changes = changes_,
                              .observers = {events_}}};
  test::SilentLinkDisplay linkDisplay_;
  switcher::Link link_{
      {.model = model_, .port = port_, .decoder = decoder_, .display = linkDisplay_}};
  std::vector<bool> polling_;
  int viewsClosed_ = 0;
  std::vector<switcher::RetrievalResult> results_;
  QMetaObject::Connection connection_;
  QPointer<RetrievalWindow> window_;
};

TEST_F(RetrievalWindowTest, SaysThatTheLinkIsDownBeforeItBegins) {
  const auto* const link = Child<QLabel>("aidRetrievalLink");
  EXPECT_TRUE(link->isVisible());
  EXPECT_EQ(link->text(), QStringLiteral("Not connected: no switcher would answer."));
  EXPECT_TRUE(Child<QPushButton>("cmdOkSysInf")->isEnabled());
  model_.LinkStatus = {1, 1, 0};
  window_->LinkChanged();
  EXPECT_FALSE(link->isVisible());
  model_.LinkStatus = {};
  window_->LinkChanged();
  EXPECT_TRUE(link->isVisible());
  Click("cmdOkSysInf");
  EXPECT_FALSE(link->isVisible());
}

TEST_F(RetrievalWindowTest, AsksFirst) {
  EXPECT_EQ(window_->objectName(), QStringLiteral("frmSysInfo"));
  EXPECT_EQ(window_->windowTitle(), QStringLiteral("Retrieve System Data"));
  EXPECT_TRUE(window_->isModal());
  EXPECT_EQ(Child<QLabel>("lblSysInfText")->text(),
            QStringLiteral("Preparing to Request System Information from the Switcher. This "
                           "information Includes\n Alpha Labels, Button and Relay Programming and "
                           "Crosspoint Inhibits. Click 'Ok' to \ncontinue and reprogram the "
                           "existing Computer Information, or select 'Cancel' to abort."));
  EXPECT_TRUE(Child<QLabel>("lblSysInfText")->isVisible());
  EXPECT_FALSE(List().isVisible());
  EXPECT_TRUE(Child<QPushButton>("cmdCancelSysInf")->isDefault());
  EXPECT_FALSE(Child<QPushButton>("cmdOkSysInf")->isDefault());
  EXPECT_EQ(QApplication::focusWidget(), Child<QPushButton>("cmdCancelSysInf"));
  EXPECT_EQ(Child<QTimer>("tmrDelayStart")->interval(), 500);
  EXPECT_FALSE(Child<QTimer>("tmrDelayStart")->isActive());
}

TEST_F(RetrievalWindowTest, NoLineOfTheQuestionIsCut) {
  const auto* const text = Child<QLabel>("lblSysInfText");
  EXPECT_GE(text->width(), text->sizeHint().width());
}

TEST_F(RetrievalWindowTest, EnterAndEscapeAndCancelCloseIt) {
  QTest::keyClick(QApplication::focusWidget(), Qt::Key_Return);
  ASSERT_TRUE(Closed());
  SetUp();
  QTest::keyClick(QApplication::focusWidget(), Qt::Key_Escape);
  ASSERT_TRUE(Closed());
  SetUp();
  Click("cmdCancelSysInf");
  ASSERT_TRUE(Closed());
  EXPECT_EQ(viewsClosed_, 0);
  EXPECT_THAT(polling_, IsEmpty());
  EXPECT_EQ(port_.TakeWritten(), "");
}

TEST_F(RetrievalWindowTest, EnterIsForTheButtonThatHasTheFocus) {
  QTest::keyClick(QApplication::focusWidget(), Qt::Key_Backtab);
  ASSERT_EQ(QApplication::focusWidget(), Child<QPushButton>("cmdOkSysInf"));
  QTest::keyClick(QApplication::focusWidget(), Qt::Key_Return);
  EXPECT_EQ(viewsClosed_, 1);
  EXPECT_TRUE(Child<QTimer>("tmrDelayStart")->isActive());
}

TEST_F(RetrievalWindowTest, AnEnterThatIsHeldDoesNotCancel) {
  Child<QPushButton>("cmdOkSysInf")->setFocus();
  QTest::keyPress(QApplication::focusWidget(), Qt::Key_Return);
  ASSERT_FALSE(Child<QPushButton>("cmdOkSysInf")->isEnabled());
  // The key goes to whatever has the focus, pressed again and again.
  for (int times = 0; times < 3; ++times) {
    QKeyEvent held(QEvent::KeyPress, Qt::Key_Return, Qt::NoModifier, QStringLiteral("\r"), true);
    ASSERT_NE(QApplication::focusWidget(), nullptr);
    QApplication::sendEvent(QApplication::focusWidget(), &held);
  }
  EXPECT_TRUE(Child<QTimer>("tmrDelayStart")->isActive());
  EXPECT_TRUE(window_->isVisible());
  // Pressed anew it cancels.
  Child<QPushButton>("cmdCancelSysInf")->setFocus();
  QTest::keyClick(QApplication::focusWidget(), Qt::Key_Return);
  EXPECT_FALSE(Child<QTimer>("tmrDelayStart")->isActive());
}

TEST_F(RetrievalWindowTest, ItsButtonsStayOnTheScreenWhenTheListComes) {
  const QRect room = window_->screen()->availableGeometry();
  window_->move(window_->x(), room.bottom() - window_->height());
  Click("cmdOkSysInf");
  EXPECT_GE(window_->frameGeometry().top(), room.top());
  EXPECT_LE(window_->frameGeometry().bottom(), room.bottom());
}

TEST_F(RetrievalWindowTest, OkAsksTheSwitcherAfterHalfASecond) {
  Click("cmdOkSysInf");
  EXPECT_EQ(viewsClosed_, 1);
  EXPECT_THAT(polling_, ElementsAre(false));
  EXPECT_FALSE(Child<QLabel>("lblSysInfText")->isVisible());
  EXPECT_TRUE(List().isVisible());
  EXPECT_FALSE(Child<QPushButton>("cmdOkSysInf")->isEnabled());
  EXPECT_TRUE(Child<QPushButton>("cmdCancelSysInf")->isEnabled());
  EXPECT_TRUE(Child<QTimer>("tmrDelayStart")->isActive());
  EXPECT_EQ(port_.TakeWritten(), "");
  std::string written;
  EXPECT_TRUE(QTest::qWaitFor([&] { return !(written = port_.TakeWritten()).empty(); }, 5000));
  EXPECT_EQ(written, "E7");
  EXPECT_FALSE(Child<QTimer>("tmrDelayStart")->isActive());
}

TEST_F(RetrievalWindowTest, ListsEveryMessageWithItsSizeItsWordAndASign) {
  Click("cmdOkSysInf");
  const QAbstractItemModelTester tester(List().model(),
                                        QAbstractItemModelTester::FailureReportingMode::Fatal);
  DeliverRow();
  DeliverRow(false);
  EXPECT_EQ(List().model()->columnCount(), 3);
  ASSERT_EQ(List().model()->rowCount(), 2);
  EXPECT_EQ(Row(0), "Output 2 Crosspoint Map|11 Bytes|OK");
  EXPECT_EQ(Row(1), "Output 2 Crosspoint Map|11 Bytes|Failed Csum");
  EXPECT_EQ(window_->windowTitle(), QStringLiteral("Retrieving System Data ( 22 Bytes)"));

  List().AddMessage(QStringLiteral("Alpha Labels"), 5, DecodeStatus::WrongSize);
  List().AddMessage(QStringLiteral("Alpha Labels"), 6, DecodeStatus::WrongChannel);
  List().AddMessage(QStringLiteral("Alpha Labels"), 7, DecodeStatus::MissingEnd);
  List().AddMessage(QStringLiteral("Alpha Labels"), 8, static_cast<DecodeStatus>(5));
  EXPECT_EQ(Row(2), "Alpha Labels|5 Bytes|Size Error");
  EXPECT_EQ(Row(3), "Alpha Labels|6 Bytes|Channel Error");
  EXPECT_EQ(Row(4), "Alpha Labels|7 Bytes|Missing EOM");
  EXPECT_EQ(Row(5), "Alpha Labels|8 Bytes|");
  const auto sign = [this](int row) {
    return Cell(row, 2, Qt::DecorationRole).value<QIcon>().pixmap(16, 16).toImage();
  };
  EXPECT_FALSE(sign(0).isNull());
  EXPECT_FALSE(sign(1).isNull());
  EXPECT_NE(sign(0), sign(1));
  EXPECT_EQ(sign(1), sign(4));
  EXPECT_EQ(sign(5), sign(1)) << "it is not in the database";
  EXPECT_EQ(Cell(0, 1, Qt::TextAlignmentRole).toInt() & Qt::AlignRight, Qt::AlignRight);
}

TEST_F(RetrievalWindowTest, TheListFollowsTheNewestRowUnlessScrolledUp) {
  Click("cmdOkSysInf");
  QCoreApplication::processEvents();
  const QScrollBar& bar = *List().verticalScrollBar();
  for (int i = 0; i < 100; ++i) DeliverRow();
  EXPECT_GT(bar.maximum(), 50);
  EXPECT_EQ(bar.value(), bar.maximum());
  List().verticalScrollBar()->setValue(10);
  DeliverRow();
  EXPECT_EQ(bar.value(), 10);
  List().verticalScrollBar()->setValue(bar.maximum());
  DeliverRow();
  EXPECT_EQ(bar.value(), bar.maximum());
}

TEST_F(RetrievalWindowTest, TheLastStationsButtonDataCompletesIt) {
  Click("cmdOkSysInf");
  EXPECT_TRUE(QTest::qWaitFor([this] { return port_.TakeWritten() == "E7"; }, 60000));
  DeliverRow();
  DeliverLastButtonData("02 FF");
  EXPECT_EQ(Row(1), "Station 3 Button Data|133 Bytes|OK");
  EXPECT_EQ(window_->windowTitle(), QStringLiteral("Retrieval Completed (144 Bytes)"));
  EXPECT_TRUE(Child<QPushButton>("cmdOkSysInf")->isEnabled());
  EXPECT_FALSE(model_.RetrieveActive);
  EXPECT_THAT(polling_, ElementsAre(false, true));
  ASSERT_EQ(results_.size(), 1U);
  EXPECT_TRUE(results_[0].IsWhole());
  // What comes afterwards is not part of it.
  DeliverRow();
  EXPECT_EQ(List().model()->rowCount(), 2);
  EXPECT_EQ(window_->windowTitle(), QStringLiteral("Retrieval Completed (144 Bytes)"));
  Click("cmdCancelSysInf");
  EXPECT_TRUE(Closed());
}

TEST_F(RetrievalWindowTest, ARefusedMessageIsNoWholeRetrieval) {
  Click("cmdOkSysInf");
  DeliverLastButtonData("03 FF");
  EXPECT_EQ(Row(0), "Station 3 Button Data|133 Bytes|Failed Csum");
  EXPECT_EQ(window_->windowTitle(), QStringLiteral("Retrieval Completed (133 Bytes)"));
  EXPECT_FALSE(model_.RetrieveActive);
  ASSERT_EQ(results_.size(), 1U);
  EXPECT_FALSE(results_[0].IsWhole());
}

// The line under the list that says what came of it; empty while there is none.
class RetrievalSummaryTest : public RetrievalWindowTest {
 protected:
  std::string Summary() {
    const auto* const summary = Child<QLabel>("aidSummary");
    return summary->isVisible() ? summary->text().toStdString() : std::string();
  }

  // The rows that can be seen, as far as they are whole.
  bool InSight(int row) {
    const QRect place = List().visualItemRect(List().topLevelItem(row));
    return List().viewport()->rect().contains(place.center());
  }

  void BeginAndAsk() {
    Click("cmdOkSysInf");
    ASSERT_TRUE(QTest::qWaitFor([this] { return port_.TakeWritten() == "E7"; }, 60000));
  }

  std::string Caption(const char* button) {
    return Child<QPushButton>(button)->text().toStdString();
  }
};

TEST_F(RetrievalSummaryTest, ARefusedMessageIsNamedAndInSight) {
  EXPECT_EQ(Summary(), "");
  BeginAndAsk();
  for (int i = 0; i < 60; ++i) DeliverRow();
  decoder_.Decode(test::FromHex("F4 0B 00 00 00 FF"));  // far too short
  for (int i = 0; i < 60; ++i) DeliverRow();
  EXPECT_EQ(Summary(), "");
  DeliverLastButtonData("02 FF");
  EXPECT_EQ(Summary(), "122 messages, 1 refused: Output 12 Relay Assignments");
  EXPECT_TRUE(InSight(60));
  EXPECT_TRUE(List().topLevelItem(60)->isSelected());
  EXPECT_FALSE(InSight(121));
}

TEST_F(RetrievalSummaryTest, OfSeveralRefusedMessagesTheFirstIsNamed) {
  BeginAndAsk();
  DeliverRow();
  DeliverRow(false);
  DeliverLastButtonData("03 FF");
  EXPECT_EQ(Summary(), "3 messages, 2 refused, the first: Output 2 Crosspoint Map");
  EXPECT_TRUE(List().topLevelItem(1)->isSelected());
}

TEST_F(RetrievalSummaryTest, WithoutRefusalsTheListStaysAtItsEnd) {
  BeginAndAsk();
  for (int i = 0; i < 60; ++i) DeliverRow();
  DeliverLastButtonData("02 FF");
  EXPECT_EQ(Summary(), "61 messages, none refused");
  EXPECT_TRUE(InSight(60));
  EXPECT_TRUE(List().selectedItems().isEmpty());
}

TEST_F(RetrievalSummaryTest, ACancelledRetrievalSaysSo) {
  BeginAndAsk();
  Click("cmdCancelSysInf");
  EXPECT_EQ(Summary(), "Cancelled. No message came");
  BeginAndAsk();
  EXPECT_EQ(Summary(), "");
  DeliverRow();
  Click("cmdCancelSysInf");
  EXPECT_EQ(Summary(), "Cancelled. 1 message, none refused");
  BeginAndAsk();
  DeliverRow(false);
  Click("cmdCancelSysInf");
  EXPECT_EQ(Summary(), "Cancelled. 1 message, refused: Output 2 Crosspoint Map");
}

TEST_F(RetrievalSummaryTest, AtTheEndEnterClosesAndAnotherRetrievalMustBeAskedFor) {
  EXPECT_EQ(Caption("cmdOkSysInf"), "OK");
  EXPECT_EQ(Caption("cmdCancelSysInf"), "Cancel");
  BeginAndAsk();
  EXPECT_EQ(Caption("cmdCancelSysInf"), "Cancel");
  List().setFocus();
  DeliverLastButtonData("02 FF");
  EXPECT_EQ(Caption("cmdOkSysInf"), "Retrieve Again");
  EXPECT_TRUE(Child<QLabel>("aidRetrievalLink")->isVisible()) << "before it begins again, too";
  EXPECT_EQ(Caption("cmdCancelSysInf"), "Close");
  EXPECT_EQ(QApplication::focusWidget(), Child<QPushButton>("cmdCancelSysInf"));

  Click("cmdOkSysInf");
  EXPECT_TRUE(model_.RetrieveActive);
  EXPECT_FALSE(Child<QLabel>("aidRetrievalLink")->isVisible());
  EXPECT_EQ(Caption("cmdOkSysInf"), "OK");
  EXPECT_EQ(Caption("cmdCancelSysInf"), "Cancel");
  DeliverLastButtonData("02 FF");
  QTest::keyClick(QApplication::focusWidget(), Qt::Key_Return);
  EXPECT_TRUE(Closed());
}

TEST_F(RetrievalSummaryTest, ALastMessageFromBeforeTheRequestIsNoRetrieval) {
  Click("cmdOkSysInf");
  DeliverLastButtonData("02 FF");
  EXPECT_EQ(Summary(),
            "1 message, none refused. The last came before the tables were asked for: retrieve "
            "again");
  std::string written;
  EXPECT_TRUE(QTest::qWaitFor([&] { return !(written = port_.TakeWritten()).empty(); }, 60000));
  EXPECT_EQ(written, "E7");
}

TEST_F(RetrievalSummaryTest, ALostLineIsSpokenOfUntilTheEndAndInTheSummary) {
  const auto line = [this] {
    const auto* const label = Child<QLabel>("aidRetrievalLine");
    return label->isVisible() ? label->text().toStdString() : std::string();
  };
  model_.ComPort = 2;
  BeginAndAsk();
  Child<QTimer>("aidSecondTimer")->setInterval(1);
  EXPECT_EQ(line(), "");
  port_.unavailable = true;
  port_.Vanish();
  EXPECT_TRUE(QTest::qWaitFor(
      [&] { return line() == "COM 2 is not open. It is tried again every second."; }, 60000));
  port_.unavailable = false;
  EXPECT_TRUE(QTest::qWaitFor(
      [&] {
        return line() ==
               "COM 2 was lost and is open again. Tables may be missing: cancel, and retrieve "
               "again.";
      },
      60000));
  DeliverRow();
  DeliverLastButtonData("02 FF");
  EXPECT_EQ(line(), "");
  EXPECT_EQ(Summary(),
            "2 messages, none refused. The line was lost meanwhile: tables may be missing");
  EXPECT_FALSE(results_.back().IsWhole());
}

TEST_F(RetrievalWindowTest, ASecondRetrievalBeginsWithAnEmptyList) {
  Click("cmdOkSysInf");
  DeliverLastButtonData("02 FF");
  Click("cmdOkSysInf");
  EXPECT_EQ(List().model()->rowCount(), 0);
  EXPECT_EQ(window_->windowTitle(), QStringLiteral("Retrieve System Data"));
  EXPECT_TRUE(model_.RetrieveActive);
  DeliverRow();
  EXPECT_EQ(window_->windowTitle(), QStringLiteral("Retrieving System Data ( 11 Bytes)"));
}

TEST_F(RetrievalWindowTest, CancelEndsTheWaitAndKeepsTheList) {
  Click("cmdOkSysInf");
  DeliverRow();
  Click("cmdCancelSysInf");
  EXPECT_TRUE(window_->isVisible());
  EXPECT_FALSE(model_.RetrieveActive);
  EXPECT_FALSE(Child<QTimer>("tmrDelayStart")->isActive());
  EXPECT_EQ(List().model()->rowCount(), 1);
  EXPECT_TRUE(List().isVisible());
  EXPECT_TRUE(Child<QPushButton>("cmdOkSysInf")->isEnabled());
  EXPECT_EQ(window_->windowTitle(), QStringLiteral("Retrieve System Data"));
  EXPECT_THAT(polling_, ElementsAre(false, true));
  QTest::qWait(600);
  EXPECT_EQ(port_.TakeWritten(), "");
  Click("cmdCancelSysInf");
  EXPECT_TRUE(Closed());
}

TEST_F(RetrievalWindowTest, TheWindowsOwnCloseButtonIsCancel) {
  Click("cmdOkSysInf");
  window_->close();
  EXPECT_TRUE(window_->isVisible());
  EXPECT_FALSE(model_.RetrieveActive);
  window_->close();
  EXPECT_TRUE(Closed());
}

TEST_F(RetrievalWindowTest, SilenceIsSpokenOfUntilDataComes) {
  auto* const silence = Child<QLabel>("aidSilence");
  auto* const second = Child<QTimer>("aidSecondTimer");
  EXPECT_FALSE(second->isActive());
  Click("cmdOkSysInf");
  EXPECT_TRUE(second->isActive());
  EXPECT_EQ(second->interval(), 1000);
  second->setInterval(1);
  EXPECT_TRUE(
      QTest::qWaitFor([&] { return silence->text() == QStringLiteral("No data for 12 s"); }, 5000));
  second->stop();
  DeliverRow();
  EXPECT_EQ(silence->text(), QString());
  Click("cmdCancelSysInf");
  EXPECT_FALSE(second->isActive());
}

TEST_F(RetrievalWindowTest, AProgramThatEndsClosesItFromAnyState) {
  window_->CancelNow();
  EXPECT_TRUE(Closed());
  EXPECT_THAT(polling_, IsEmpty());
  SetUp();
  Click("cmdOkSysInf");
  window_->CancelNow();
  EXPECT_FALSE(window_->isVisible());
  EXPECT_FALSE(model_.RetrieveActive);
  EXPECT_FALSE(Child<QTimer>("tmrDelayStart")->isActive());
  EXPECT_THAT(polling_, ElementsAre(false, true));
}

}  // namespace
}  // namespace views
