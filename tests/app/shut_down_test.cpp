// SPDX-License-Identifier: MIT

#include "app/run/shut_down.h"

#include <gmock/gmock.h>

#include <QCoreApplication>
#include <QPushButton>
#include <QSignalSpy>
#include <QTableView>
#include <filesystem>

#include "app/network/panel_reports.h"
#include "config/configuration.h"
#include "switcher/line_share.h"
#include "tests/app/views_fixture.h"
#include "tests/support/fake_client_socket.h"
#include "tests/support/fake_pause_timer.h"
#include "tests/support/full_disk.h"
#include "tests/views/gui_support.h"

namespace app {
namespace {

using testing::HasSubstr;

class ShutDownTest : public TransfersFixture {
 protected:
  ShutDownTest() {
    model_.ApplyFixedValues();
    database_.AddStation(1, {{"Hidden", 0}, {"Label", "out"}, {"InLabel", "in"}});
    EXPECT_TRUE(line_.Open(1).ok());
    window_.show();
    window_.move(200, 150);
    window_.PollTimer().start();
    window_.DecodeTimer().start();
    views_.ShowAlphas();
    gateway_.Accept(std::make_unique<Socket>(*this));
    line_.atClose = [this] { atPortClose_ = Ended(); };
  }

  // A program under test must not be told to quit.
  ~ShutDownTest() override { QCoreApplication::removePostedEvents(qApp, QEvent::MetaCall); }

  class Line : public test::FakeSerialPort {
   public:
    void Close() override {
      if (atClose) atClose();
      FakeSerialPort::Close();
    }
    std::function<void()> atClose;
  };

  class Socket : public test::FakeClientSocket {
   public:
    explicit Socket(ShutDownTest& test)
        : FakeClientSocket(std::make_shared<test::FakePeer>()), test_(test) {}
    void Close() override {
      test_.atPanelClose_ = test_.Ended();
      FakeClientSocket::Close();
    }

   private:
    ShutDownTest& test_;
  };

  // What of the run has ended.
  std::string Ended() {
    std::string ended;
    if (settings_.Text(QStringLiteral("MainLeft")) == QStringLiteral("3000")) ended += "place ";
    if (!database_.Files().IsOpen()) ended += "database ";
    if (!line_.IsOpen()) ended += "port ";
    if (!window_.PollTimer().isActive() && !window_.DecodeTimer().isActive()) ended += "timers ";
    if (std::filesystem::exists(folder_ / config::kConfigurationFile)) ended += "settings ";
    if (!views_.IsOpen(QStringLiteral("frmAlphas"))) ended += "views";
    return ended;
  }

  // Types a label that cannot be stored.
  void TypeWhatCannotBeStored() {
    auto& labels = *test::Find<QTableView>(*views_.Alphas(), "jgAlphas").model();
    ASSERT_TRUE(labels.setData(labels.index(0, 1), QStringLiteral("Studio")));
    database_.Delete(1);
  }

  bool mayClose_ = true;
  std::string atPortClose_ = "(the port was not closed)";
  std::string atPanelClose_ = "(no panel was closed)";
  test::TemporaryFolder folder_;
  SettingsFile settingsFile_{
      {.path = QString::fromStdString(folder_.Path().string()), .program = {}, .lacks = {}}};
  Line line_;
  switcher::LineShare share_{line_, [] { return std::chrono::milliseconds(500); }};
  test::FakePauseTimer pause_;
  PanelReports panelReports_{labels_, inhibits_};
  gateway::PanelGateway gateway_{{.model = model_,
                                  .locks = locks_,
                                  .files = database_.Files(),
                                  .commands = live_,
                                  .line = share_,
                                  .timer = pause_,
                                  .decodeTimer = window_,
                                  .events = panelReports_,
                                  .reporter = reporter_}};
  gateway::Listener listener_;
  MessageBoxes boxes_;
  MainWindowPlace place_{window_, settings_};
  ShutDown shutDown_{{.model = model_,
                      .boxes = boxes_,
                      .window = window_,
                      .place = place_,
                      .transfers = transfers_,
                      .views = views_,
                      .files = database_.Files(),
                      .workingCopy = {},
                      .port = line_,
                      .settings = settingsFile_,
                      .listener = listener_,
                      .panels = gateway_,
                      .mayClose = [this] { return mayClose_; }}};
};

TEST_F(ShutDownTest, EverythingEndsInItsOrder) {
  const QSignalSpy saved(&shutDown_, &ShutDown::DatabaseSaved);
  std::string atEnding = "(not told)";
  QObject::connect(&shutDown_, &ShutDown::Ending, &shutDown_, [&] { atEnding = Ended(); });
  std::string atEnd;
  QObject::connect(&shutDown_, &ShutDown::AllClosed, &shutDown_, [&] {
    atEnd = Ended();
    boxes_.Show(model::ErrorReporter::Icon::Exclamation, "Control Error", "a copy that failed");
  });
  EXPECT_EQ(Ended(), "");
  EXPECT_TRUE(shutDown_.Run());
  EXPECT_EQ(atEnding, "") << "a recall is ended while all is there";
  EXPECT_EQ(atPortClose_, "place database ");
  EXPECT_EQ(atPanelClose_, "place database port timers settings ");
  EXPECT_EQ(Ended(), "place database port timers settings views");
  EXPECT_EQ(saved.size(), 1);
  EXPECT_EQ(atEnd, Ended()) << "disks are waited for behind all that";
  EXPECT_FALSE(boxes_.IsEmpty()) << "it is read before the program is gone";
  EXPECT_TRUE(shutDown_.Run()) << "the window may close once more";
}

TEST_F(ShutDownTest, ARecallEndsBeforeThePortIsClosedAlsoWithoutSaving) {
  boxes_.ShowOver(&window_);
  std::string told;
  QObject::connect(&shutDown_, &ShutDown::Ending, &shutDown_, [&] {
    told += line_.IsOpen() && database_.Files().IsOpen() ? "open " : "late";
  });
  {
    const test::FullDisk full(0);
    EXPECT_FALSE(shutDown_.Run());
  }
  EXPECT_EQ(told, "open ");
  QCoreApplication::sendPostedEvents();
  test::Find<QPushButton>(window_, "aidCloseWithoutSaving").click();
  QCoreApplication::sendPostedEvents();
  EXPECT_FALSE(line_.IsOpen());
  EXPECT_EQ(told, "open open ");
}

TEST_F(ShutDownTest, WhatCannotBeStoredKeepsTheProgram) {
  TypeWhatCannotBeStored();
  EXPECT_FALSE(shutDown_.Run());
  EXPECT_FALSE(shutDown_.EndSession());
  EXPECT_EQ(Ended(), "");
  EXPECT_THAT(reporter_.reports.back(), HasSubstr("Error Storing Station Labels"));
}

TEST_F(ShutDownTest, ASystemThatEndsTheProgramIsNotHeldUpByIt) {
  window_.SetCloseHandler([this] { return shutDown_.Run(); });
  TypeWhatCannotBeStored();
  shutDown_.Terminate();
  EXPECT_EQ(Ended(), "place database port timers settings ") << "all but the view itself";
  EXPECT_FALSE(window_.isVisible());
}

TEST_F(ShutDownTest, WhatIsLeftToBeDecidedComesBeforeAnythingEnds) {
  const QSignalSpy ending(&shutDown_, &ShutDown::Ending);
  mayClose_ = false;
  EXPECT_FALSE(shutDown_.Run());
  EXPECT_EQ(Ended(), "");
  EXPECT_EQ(ending.size(), 0);
  mayClose_ = true;
  EXPECT_TRUE(shutDown_.Run());
  EXPECT_EQ(Ended(), "place database port timers settings views");
}

TEST_F(ShutDownTest, ASystemThatEndsTheProgramDoesNotWaitForDecisions) {
  window_.SetCloseHandler([this] { return shutDown_.Run(); });
  mayClose_ = false;
  shutDown_.Terminate();
  EXPECT_EQ(Ended(), "place database port timers settings views");
}

TEST_F(ShutDownTest, AMinimisedWindowKeepsItsPlace) {
  window_.showMinimized();
  EXPECT_TRUE(shutDown_.Run());
  EXPECT_EQ(Ended(), "database port timers settings views");
}

}  // namespace
}  // namespace app
