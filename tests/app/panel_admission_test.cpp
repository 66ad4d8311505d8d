// SPDX-License-Identifier: MIT
//
// Who is let in as a network panel, with real sockets of this computer.

#include "app/network/panel_admission.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <QTcpServer>
#include <QTcpSocket>
#include <QTest>
#include <memory>
#include <string>
#include <vector>

#include "tests/app/patience.h"
#include "tests/views/gui_support.h"

namespace app {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

class PanelAdmissionTest : public testing::Test {
 protected:
  PanelAdmissionTest() {
    EXPECT_TRUE(other_.listen(QHostAddress::LocalHost, 0));
    model_.IpPort = other_.serverPort();
    model_.SoftpanelSupport = true;
  }

  // A console starts whose installer has written these lines.
  void Start(const std::string& lines) {
    Make(ReadPanelAccess(config::IniFile("[PANEL ACCESS]\n" + lines)));
    (void)admission_->Listener().Start(model_.IpPort);
    admission_->Update();
  }
  void Make(PanelAccess access) {
    admission_ = std::make_unique<PanelAdmission>(PanelAdmission::Services{
        .access = std::move(access),
        .model = model_,
        .hints = hints_,
        .flood = flood_,
        .admit = [this](std::unique_ptr<gateway::ClientSocket>) { ++admitted_; }});
    const auto note = [this](const QString& text) { lines_.push_back(text.toStdString()); };
    QObject::connect(admission_.get(), &PanelAdmission::Happened, note);
    QObject::connect(admission_.get(), &PanelAdmission::HappenedAgain, note);
    QObject::connect(admission_.get(), &PanelAdmission::Listening, [this] { ++listening_; });
  }

  // The port is free again, and it is waited until the console listens on it.
  bool FreeThePort() {
    other_.close();
    return QTest::qWaitFor([this] { return listening_ > 0; }, kPatience);
  }

  bool IsSaidToBeTriedAgain() const { return hints_.Has(Hint::PanelsNotYet); }
  std::string NotYet() const {
    return "No network panel can connect yet: 127.0.0.1 is no address of this computer, or its "
           "port " +
           std::to_string(model_.IpPort) + " is taken. It is tried again.";
  }

  QTcpServer other_;  // has the port
  model::SystemModel model_;
  HintStrip hints_;
  ConnectionFlood flood_{hints_};
  int admitted_ = 0;
  int listening_ = 0;
  std::vector<std::string> lines_;
  std::unique_ptr<PanelAdmission> admission_;
};

TEST_F(PanelAdmissionTest, ThePortIsTriedUntilItIsFree) {
  Start("Listen=127.0.0.1\n");
  EXPECT_TRUE(IsSaidToBeTriedAgain());
  EXPECT_EQ(test::Find<QLabel>(hints_, "aidHintText").toolTip().toStdString(), NotYet());
  EXPECT_EQ(listening_, 0);
  ASSERT_TRUE(FreeThePort());
  EXPECT_FALSE(IsSaidToBeTriedAgain());
  EXPECT_THAT(lines_, ElementsAre(NotYet(), "Network panels can connect to port " +
                                                std::to_string(model_.IpPort) + " now"));
  QTcpSocket panel;
  panel.connectToHost(QHostAddress(QHostAddress::LocalHost), static_cast<quint16>(model_.IpPort));
  EXPECT_TRUE(QTest::qWaitFor([this] { return admitted_ == 1; }, kPatience));
}

// Without an address of its own, whoever has tried it reports the failure.
TEST_F(PanelAdmissionTest, WithoutAnAddressItIsNotTriedAgain) {
  Start("Allow=127.0.0.1\n");
  EXPECT_FALSE(IsSaidToBeTriedAgain());
  EXPECT_THAT(lines_, IsEmpty());
}

TEST_F(PanelAdmissionTest, AnotherPortThatIsListenedOnEndsTheHint) {
  Start("Listen=127.0.0.1\n");
  ASSERT_TRUE(IsSaidToBeTriedAgain());
  QTcpServer free;
  ASSERT_TRUE(free.listen(QHostAddress::LocalHost, 0));
  model_.IpPort = free.serverPort();
  free.close();
  ASSERT_TRUE(admission_->Listener().Start(model_.IpPort).ok());
  admission_->Update();
  EXPECT_FALSE(IsSaidToBeTriedAgain());
  EXPECT_EQ(listening_, 1);
}

TEST_F(PanelAdmissionTest, WhoSwitchesPanelsOffIsNotToldThatTheyAreTriedAgain) {
  Start("Listen=127.0.0.1\n");
  ASSERT_TRUE(IsSaidToBeTriedAgain());
  model_.SoftpanelSupport = false;
  admission_->Listener().Stop();
  admission_->Update();
  EXPECT_FALSE(IsSaidToBeTriedAgain());
}

// That it listens at last lets nobody in whom the settings keep out.
TEST_F(PanelAdmissionTest, NobodyIsAdmittedWhenItListensAtLast) {
  Start("Listen=127.0.0.1\nAllow=10.1\n");
  EXPECT_TRUE(hints_.Has(Hint::PanelsClosed));
  EXPECT_TRUE(IsSaidToBeTriedAgain());
  const std::string closed =
      "No network panel is admitted: PANEL ACCESS in Orvotesk.ini is not understood (Allow=10.1).";
  EXPECT_EQ(test::Find<QLabel>(hints_, "aidHintText").toolTip().toStdString(), closed);
  ASSERT_TRUE(FreeThePort());
  EXPECT_TRUE(hints_.Has(Hint::PanelsClosed));
  EXPECT_FALSE(IsSaidToBeTriedAgain());
  EXPECT_THAT(lines_, ElementsAre(NotYet(), closed));
  lines_.clear();
  QTcpSocket panel;
  panel.connectToHost(QHostAddress(QHostAddress::LocalHost), static_cast<quint16>(model_.IpPort));
  ASSERT_TRUE(QTest::qWaitFor([this] { return !lines_.empty(); }, kPatience));
  EXPECT_THAT(lines_, ElementsAre("Panel 127.0.0.1 was not admitted"));
  EXPECT_EQ(admitted_, 0);
}

// The interface may be named by its number, which looks like a place of the text.
TEST_F(PanelAdmissionTest, AnAddressStandsInTheHintAsItIs) {
  model_.IpPort = 1250;
  Make({.listen = QHostAddress(QStringLiteral("fe80::1%2")), .hasListen = true});
  admission_->Update();
  ASSERT_EQ(lines_.size(), 1U);
  EXPECT_EQ(lines_[0],
            "No network panel can connect yet: fe80::1%2 is no address of this computer, or its "
            "port 1250 is taken. It is tried again.");
}

}  // namespace
}  // namespace app
