// SPDX-License-Identifier: MIT

#include "views/transfer/download_window.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <QKeyEvent>
#include <QPointer>
#include <QProgressBar>
#include <QPushButton>
#include <QSignalSpy>
#include <QTest>

#include "tests/support/download_system.h"
#include "tests/support/one_day.h"
#include "tests/views/gui_support.h"

namespace views {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

// The window on a system of 16 channels and two stations.
class DownloadWindowTest : public test::DownloadSystem, public switcher::PollSwitch {
 protected:
  DownloadWindowTest() { model_.DownloadInterval = 1; }

  void SetPolling(bool on) override { polling_.push_back(on); }

  void Open() {
    window_ =
        new DownloadWindow({.model = model_, .tables = senders_, .poll = *this, .unsent = unsent_});
    window_->setAttribute(Qt::WA_DeleteOnClose);
    connection_ = QObject::connect(window_, &DownloadWindow::Ended,
                                   [this](const switcher::DownloadResult& result) {
                                     if (!result.notSent.empty())
                                       notSent_.append(QString::fromStdString(result.notSent));
                                   });
    window_->open();
    QCoreApplication::processEvents();
  }

  template <typename Type>
  Type* Child(const char* name) {
    return &test::Find<Type>(*window_, name);
  }

  void Click(const char* name) { QTest::mouseClick(Child<QPushButton>(name), Qt::LeftButton); }

  // Until the window is gone.
  bool WaitForTheEnd() {
    return QTest::qWaitFor([this] { return window_ == nullptr; }, 10000);
  }

  // The codes of the messages written since the last call.
  std::vector<std::string> Codes() {
    std::vector<std::string> codes;
    bool begins = true;
    const std::string written = port_.TakeWritten();
    for (std::size_t i = 0; i + 1 < written.size(); i += 3) {
      const std::string byte = written.substr(i, 2);
      if (begins) codes.push_back(byte);
      begins = byte == "FF";
    }
    return codes;
  }

  ~DownloadWindowTest() override { delete window_; }

  stations::Changes changes_;
  switcher::UnsentMessages messages_{{.model = model_,
                                      .database = [this] { return files_.Database(); },
                                      .changes = changes_,
                                      .today = [] { return test::kToday; }}};
  UnsentTables unsent_{messages_};
  std::vector<bool> polling_;
  QStringList notSent_;
  QMetaObject::Connection connection_;
  QPointer<DownloadWindow> window_;
};

TEST_F(DownloadWindowTest, AsksFirst) {
  Open();
  EXPECT_EQ(window_->objectName(), QStringLiteral("frmDownProg"));
  EXPECT_TRUE(window_->isModal());
  EXPECT_EQ(Child<QLabel>("lblDownloadText")->text(),
            QStringLiteral("Preparing to Transmit System Information to the Switcher. This "
                           "information Includes Alpha Labels, Button and Relay Programming and "
                           "Crosspoint Inhibits. Click 'Ok' to continue and reprogram the existing "
                           "System Information, or select 'Cancel' to abort."));
  EXPECT_TRUE(Child<QLabel>("lblDownloadText")->isVisible());
  EXPECT_FALSE(Child<QProgressBar>("pbDownloadProg")->isVisible());
  EXPECT_FALSE(Child<QLabel>("lblDownloadStatus")->isVisible());
  EXPECT_TRUE(Child<QPushButton>("cmdDownCancel")->isDefault());
  EXPECT_FALSE(Child<QPushButton>("cmdDownGo")->isDefault());
  EXPECT_EQ(QApplication::focusWidget(), Child<QPushButton>("cmdDownCancel"));
  EXPECT_EQ(Child<QTimer>("tmrSpacing")->interval(), 1);
  EXPECT_EQ(Child<QTimer>("tmrDelayStart")->interval(), 10);
  EXPECT_TRUE(Child<QTimer>("tmrDelayStart")->isSingleShot());
}

TEST_F(DownloadWindowTest, SaysThatTheLinkIsDownBeforeItBegins) {
  model_.LinkStatus = {1, 1, 0};
  Open();
  const auto* const link = Child<QLabel>("aidDownloadLink");
  EXPECT_FALSE(link->isVisible());
  const QSize asked = window_->size();
  model_.LinkStatus = {};
  window_->LinkChanged();
  ASSERT_TRUE(link->isVisible());
  EXPECT_EQ(link->text(), QStringLiteral("Not connected: nothing would arrive."));
  EXPECT_EQ(window_->size(), asked) << "nothing moves for it";
  EXPECT_TRUE(Child<QPushButton>("cmdDownGo")->isEnabled());
  EXPECT_TRUE(Child<QLabel>("lblDownloadText")->isVisible());
  Click("cmdDownGo");
  window_->LinkChanged();
  EXPECT_FALSE(link->isVisible()) << "there is nothing to confirm any more";
  ASSERT_TRUE(WaitForTheEnd());
}

TEST_F(DownloadWindowTest, TheButtonModeAsksForButtons) {
  model_.DownloadMode = -1;
  Open();
  EXPECT_TRUE(Child<QLabel>("lblDownloadText")
                  ->text()
                  .startsWith(QStringLiteral("Preparing to Transmit Button Programming ")));
  Click("cmdDownGo");
  ASSERT_TRUE(WaitForTheEnd());
  EXPECT_THAT(Codes(), ElementsAre("FB", "FB"));
}

TEST_F(DownloadWindowTest, EveryTableIsNotedAsSentByADownload) {
  Open();
  const QSignalSpy sent(&unsent_, &UnsentTables::Sent);
  Click("cmdDownGo");
  ASSERT_TRUE(WaitForTheEnd());
  ASSERT_FALSE(sent.empty());
  EXPECT_EQ(sent[0][0].value<switcher::TablePart>(),
            (switcher::TablePart{switcher::Table::Optos, 9999}));
  EXPECT_EQ(sent[0][1].toInt(), 1);
  for (const auto& signal : sent) {
    EXPECT_EQ(signal[2].value<UnsentTables::Sender>(), UnsentTables::Sender::Download);
  }
}

TEST_F(DownloadWindowTest, EnterAndEscapeCancel) {
  for (const Qt::Key key : {Qt::Key_Return, Qt::Key_Escape}) {
    Open();
    QTest::keyClick(QApplication::focusWidget(), key);
    ASSERT_TRUE(WaitForTheEnd());
    EXPECT_EQ(port_.TakeWritten(), "");
  }
  EXPECT_THAT(polling_, IsEmpty());
  EXPECT_TRUE(notSent_.isEmpty());
}

TEST_F(DownloadWindowTest, EnterIsForTheButtonThatHasTheFocus) {
  Open();
  QTest::keyClick(QApplication::focusWidget(), Qt::Key_Backtab);
  ASSERT_EQ(QApplication::focusWidget(), Child<QPushButton>("cmdDownGo"));
  QTest::keyClick(QApplication::focusWidget(), Qt::Key_Return);
  ASSERT_TRUE(WaitForTheEnd());
  EXPECT_THAT(polling_, ElementsAre(false, true));
}

TEST_F(DownloadWindowTest, AnEnterThatIsHeldDoesNotCancel) {
  Open();
  Child<QPushButton>("cmdDownGo")->setFocus();
  QTest::keyPress(QApplication::focusWidget(), Qt::Key_Return);
  ASSERT_FALSE(Child<QPushButton>("cmdDownGo")->isVisible());
  // The key goes to whatever has the focus, pressed again and again.
  for (int times = 0; times < 3; ++times) {
    QKeyEvent held(QEvent::KeyPress, Qt::Key_Return, Qt::NoModifier, QStringLiteral("\r"), true);
    ASSERT_NE(QApplication::focusWidget(), nullptr);
    QApplication::sendEvent(QApplication::focusWidget(), &held);
  }
  EXPECT_TRUE(Child<QPushButton>("cmdDownCancel")->isEnabled());
  ASSERT_TRUE(WaitForTheEnd());
  EXPECT_TRUE(notSent_.isEmpty());
}

TEST_F(DownloadWindowTest, AnEnterThatOpenedItAndIsHeldDoesNotCloseIt) {
  Open();
  // The key goes to whatever has the focus, pressed again and again.
  for (int times = 0; times < 3; ++times) {
    QKeyEvent held(QEvent::KeyPress, Qt::Key_Return, Qt::NoModifier, QStringLiteral("\r"), true);
    ASSERT_NE(QApplication::focusWidget(), nullptr);
    QApplication::sendEvent(QApplication::focusWidget(), &held);
  }
  ASSERT_NE(window_, nullptr);
  EXPECT_TRUE(window_->isVisible());
}

TEST_F(DownloadWindowTest, OkShowsBarStatusAndCaption) {
  Open();
  Click("cmdDownGo");
  EXPECT_EQ(window_->windowTitle(), QStringLiteral("System Download Progress (683 Total Bytes)"));
  EXPECT_EQ(Child<QProgressBar>("pbDownloadProg")->maximum(), 68);
  EXPECT_EQ(Child<QProgressBar>("pbDownloadProg")->value(), 0);
  EXPECT_TRUE(Child<QProgressBar>("pbDownloadProg")->isVisible());
  EXPECT_EQ(Child<QLabel>("lblDownloadStatus")->text(), QStringLiteral("Download Status"));
  EXPECT_TRUE(Child<QLabel>("lblDownloadStatus")->isVisible());
  EXPECT_FALSE(Child<QLabel>("lblDownloadText")->isVisible());
  EXPECT_FALSE(Child<QPushButton>("cmdDownGo")->isVisible());
  EXPECT_TRUE(Child<QPushButton>("cmdDownCancel")->isVisible());
  EXPECT_TRUE(Child<QPushButton>("cmdDownCancel")->isEnabled());
}

TEST_F(DownloadWindowTest, SendsEverythingAndCloses) {
  Open();
  Click("cmdDownGo");
  ASSERT_TRUE(WaitForTheEnd());
  const std::vector<std::string> codes = Codes();
  ASSERT_EQ(codes.size(), 1U + 4U + 16U + 16U + 2U);
  EXPECT_THAT(std::vector(codes.begin(), codes.begin() + 6),
              ElementsAre("E1", "F7", "F9", "F7", "F9", "F5"));
  EXPECT_EQ(codes[20], "F5");
  EXPECT_EQ(codes[21], "F4");
  EXPECT_EQ(codes[38], "FB");
  EXPECT_THAT(polling_, ElementsAre(false, true));
  EXPECT_TRUE(notSent_.isEmpty());
  EXPECT_THAT(reporter_.reports, IsEmpty());
}

// The operator clicks between two messages: the event loop turns there.
TEST_F(DownloadWindowTest, CancelIsHeardBetweenTwoMessages) {
  Open();
  QLabel* const status = Child<QLabel>("lblDownloadStatus");
  Click("cmdDownGo");
  ASSERT_TRUE(QTest::qWaitFor(
      [&] { return status->text() == QStringLiteral("Download Status (Inhibits)"); }, 5000));
  Click("cmdDownCancel");
  EXPECT_FALSE(Child<QPushButton>("cmdDownCancel")->isEnabled());
  EXPECT_TRUE(window_->isVisible());
  ASSERT_TRUE(WaitForTheEnd());
  EXPECT_EQ(Codes().size(), 1U + 4U + 16U);
  EXPECT_EQ(notSent_, QStringList(QStringLiteral("Relays, Button Programming Sta 1 to 2")));
  EXPECT_THAT(polling_, ElementsAre(false, true));
}

TEST_F(DownloadWindowTest, ClosingTheWindowIsCancelling) {
  Open();
  Click("cmdDownGo");
  window_->close();
  EXPECT_TRUE(window_->isVisible());
  EXPECT_FALSE(Child<QPushButton>("cmdDownCancel")->isEnabled());
  ASSERT_TRUE(WaitForTheEnd());
  EXPECT_EQ(port_.TakeWritten(), "");
}

TEST_F(DownloadWindowTest, TheBarIsPaintedWhileAMessageIsWritten) {
  model_.StationCount = 64;
  Open();
  auto* const bar = Child<QProgressBar>("pbDownloadProg");
  int paints = 0;
  class Counter : public QObject {
   public:
    explicit Counter(int& count) : count_(count) {}
    bool eventFilter(QObject* /*watched*/, QEvent* event) override {
      if (event->type() == QEvent::Paint) ++count_;
      return false;
    }

   private:
    int& count_;
  } counter(paints);
  Click("cmdDownGo");
  bar->installEventFilter(&counter);
  QLabel* const status = Child<QLabel>("lblDownloadStatus");
  ASSERT_TRUE(QTest::qWaitFor(
      [&] { return status->text() == QStringLiteral("Download Status (Optos)"); }, 5000));
  // The optos are one message of 704 values, and have just gone out in one turn.
  EXPECT_EQ(bar->value(), 64);
  EXPECT_GT(paints, 1);
}

TEST_F(DownloadWindowTest, AClosedPortIsReportedAndTheWindowCloses) {
  port_.Close();
  Open();
  Click("cmdDownGo");
  ASSERT_TRUE(WaitForTheEnd());
  EXPECT_EQ(reporter_.reports.size(), 7U);
  EXPECT_THAT(polling_, ElementsAre(false, true));
}

TEST_F(DownloadWindowTest, AProgramThatEndsLeavesNoTimerBehind) {
  Open();
  Click("cmdDownGo");
  QLabel* const status = Child<QLabel>("lblDownloadStatus");
  ASSERT_TRUE(QTest::qWaitFor(
      [&] { return status->text() == QStringLiteral("Download Status (Relays)"); }, 5000));
  window_->CancelNow();
  EXPECT_FALSE(window_->isVisible());
  for (const QTimer* const timer : window_->findChildren<QTimer*>()) {
    EXPECT_FALSE(timer->isActive()) << timer->objectName().toStdString();
  }
  EXPECT_EQ(Codes().size(), 1U + 4U + 16U + 16U);
  EXPECT_EQ(notSent_, QStringList(QStringLiteral("Button Programming Sta 1 to 2")));
}

}  // namespace
}  // namespace views
