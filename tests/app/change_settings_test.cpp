// SPDX-License-Identifier: MIT

#include "app/change_settings.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <QComboBox>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QSignalSpy>
#include <QTcpServer>
#include <QTest>
#include <string>
#include <vector>

#include "tests/support/fake_serial_port.h"
#include "tests/support/recording_reporter.h"
#include "tests/support/recording_switcher_events.h"
#include "tests/support/silent_link_display.h"
#include "tests/support/temporary_folder.h"
#include "tests/views/gui_support.h"

namespace app {
namespace {

using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::SizeIs;
using testing::StartsWith;

constexpr char kFile[] =
    "; of the installer\r\n[CONFIGURATION]\r\nCOM Port = 1\r\nOther=7\r\n\r\n"
    "[SERIAL DEVICES]\r\n; the adapter\r\nCOM1=/dev/ttyUSB0\r\n";

// A port that is free just now.
int FreeTcpPort() {
  QTcpServer server;
  EXPECT_TRUE(server.listen(QHostAddress::AnyIPv4));
  return server.serverPort();
}

class ChangeSettingsTest : public testing::Test {
 protected:
  void SetUp() override {
    test::WriteFile(folder_ / "Orvotesk.ini", kFile);
    model_.SoftpanelSupport = false;
    model_.ComPort = 1;
    model_.IpPort = 1250;
    model_.DownloadInterval = 50;
    model_.AppPath = "/srv\\";
    ASSERT_TRUE(link_.OpenPort().ok());
    window_.show();
  }

  // What is in force.
  views::WantedSettings Present() const {
    return {.comPort = model_.ComPort,
            .panels = model_.SoftpanelSupport,
            .ipPort = model_.IpPort,
            .demo = model_.DemoMode == 1,
            .devices = {}};
  }

  std::string File() const { return test::ReadFile(folder_ / "Orvotesk.ini"); }

  std::vector<std::string> Notes() const {
    std::vector<std::string> notes;
    for (const auto& note : notes_) notes.push_back(note[0].toString().toStdString());
    return notes;
  }

  test::TemporaryFolder folder_;
  AppFolder place_{
      .path = QString::fromStdString(folder_.Path().string()), .program = {}, .lacks = {}};
  SettingsFile file_{place_};
  QWidget window_;
  model::SystemModel model_;
  test::FakeSerialPort port_;
  test::RecordingReporter reporter_;
  test::RecordingSwitcherEvents events_;
  test::SilentLinkDisplay display_;
  stations::Changes stream_;
  switcher::Decoder decoder_{{.model = model_,
                              .database = [] { return nullptr; },
                              .reporter = reporter_,
                              .changes = stream_,
                              .observers = {events_}}};
  switcher::Link link_{{.model = model_, .port = port_, .decoder = decoder_, .display = display_}};
  gateway::Listener listener_;
  model::Locks locks_;
  bool isComparing_ = false;
  ChangeSettings settings_{{.model = model_,
                            .window = window_,
                            .file = file_,
                            .link = link_,
                            .port = port_,
                            .listener = listener_,
                            .reporter = reporter_,
                            .locks = locks_,
                            .isComparing = [this] { return isComparing_; }}};
  QSignalSpy notes_{&settings_, &ChangeSettings::NoteRequested};
};

TEST_F(ChangeSettingsTest, WhatIsAsItWasIsNotTouched) {
  EXPECT_TRUE(settings_.Apply(Present()));
  EXPECT_EQ(File(), kFile);
  EXPECT_EQ(port_.openCount, 1);
  EXPECT_THAT(Notes(), IsEmpty());
}

TEST_F(ChangeSettingsTest, AnotherSerialPortIsOpenedAndStoredAtOnce) {
  views::WantedSettings wanted = Present();
  wanted.comPort = 3;
  wanted.devices[3] = QStringLiteral("/dev/ttyUSB3");
  EXPECT_TRUE(settings_.Apply(wanted));
  EXPECT_EQ(port_.Number(), 3);
  EXPECT_TRUE(port_.IsOpen());
  EXPECT_EQ(model_.ComPort, 3);
  EXPECT_EQ(File(),
            "; of the installer\r\n[CONFIGURATION]\r\nCOM Port = 3\r\nOther=7\r\n"
            "App Path=/srv\\\r\nDownload Interval=50\r\nDemo Mode=0\r\nIP Port=1250\r\n"
            "Softpanel Support=No\r\n\r\n"
            "[SERIAL DEVICES]\r\n; the adapter\r\nCOM1=/dev/ttyUSB0\r\nCOM3=/dev/ttyUSB3\r\n");
  EXPECT_THAT(Notes(), ElementsAre("Settings: serial port COM 3, COM 3 is /dev/ttyUSB3"));
}

TEST_F(ChangeSettingsTest, ADeviceOfAnotherPortLeavesTheLinkAlone) {
  views::WantedSettings wanted = Present();
  wanted.devices[2] = QStringLiteral("/dev/ttyUSB2");
  EXPECT_TRUE(settings_.Apply(wanted));
  EXPECT_EQ(port_.openCount, 1);
  EXPECT_THAT(File(), HasSubstr("\r\nCOM2=/dev/ttyUSB2\r\n"));
  wanted = Present();
  wanted.devices[1] = QString();
  EXPECT_TRUE(settings_.Apply(wanted));
  EXPECT_EQ(port_.openCount, 2) << "the one in use";
  EXPECT_THAT(File(), HasSubstr("\r\nCOM1=\r\n"));
  EXPECT_EQ(Notes().back(), "Settings: COM 1 is the computer's own port");
}

TEST_F(ChangeSettingsTest, APortThatCannotBeOpenedIsTriedAgainByThePoll) {
  port_.unavailable = true;
  views::WantedSettings wanted = Present();
  wanted.comPort = 2;
  EXPECT_TRUE(settings_.Apply(wanted));
  EXPECT_EQ(model_.ComPort, 2);
  ASSERT_THAT(Notes(), SizeIs(2));
  EXPECT_THAT(Notes()[1], StartsWith("COM 2 cannot be opened: "));
  EXPECT_THAT(Notes()[1], testing::EndsWith(". It is tried again every second."));
  port_.unavailable = false;
  link_.PollTick();
  EXPECT_TRUE(port_.IsOpen());
}

TEST_F(ChangeSettingsTest, TheLineIsNotChangedUnderAComparison) {
  isComparing_ = true;
  views::WantedSettings wanted = Present();
  wanted.comPort = 2;
  wanted.demo = true;
  EXPECT_FALSE(settings_.Apply(wanted));
  EXPECT_EQ(File(), kFile);
  EXPECT_EQ(model_.DemoMode, 0);
  EXPECT_EQ(port_.openCount, 1);
}

TEST_F(ChangeSettingsTest, NothingIsChangedWhileTheConsoleIsLocked) {
  locks_.LockConsole(true);
  views::WantedSettings wanted = Present();
  EXPECT_TRUE(settings_.Apply(wanted)) << "nothing to change";
  wanted.demo = true;
  EXPECT_FALSE(settings_.Apply(wanted));
  EXPECT_EQ(model_.DemoMode, 0);
  EXPECT_EQ(File(), kFile);
}

TEST_F(ChangeSettingsTest, PanelsAreServedAtOnceOnTheirPort) {
  QSignalSpy panels(&settings_, &ChangeSettings::PanelsChanged);
  views::WantedSettings wanted = Present();
  wanted.panels = true;
  wanted.ipPort = FreeTcpPort();
  EXPECT_TRUE(settings_.Apply(wanted));
  EXPECT_TRUE(listener_.IsListening());
  EXPECT_EQ(panels.count(), 1);
  EXPECT_THAT(File(), HasSubstr("Softpanel Support=Yes\r\n"));
  const std::string port = std::to_string(wanted.ipPort);
  EXPECT_THAT(File(), HasSubstr("IP Port=" + port + "\r\n"));
  EXPECT_THAT(Notes(), ElementsAre("Settings: panels on TCP port " + port));
  wanted.panels = false;
  EXPECT_TRUE(settings_.Apply(wanted));
  EXPECT_FALSE(listener_.IsListening());
  EXPECT_THAT(File(), HasSubstr("Softpanel Support=No\r\n"));
}

TEST_F(ChangeSettingsTest, ATakenTcpPortChangesNothing) {
  views::WantedSettings wanted = Present();
  wanted.panels = true;
  wanted.ipPort = FreeTcpPort();
  ASSERT_TRUE(settings_.Apply(wanted));
  const std::string before = File();
  QTcpServer other;
  ASSERT_TRUE(other.listen(QHostAddress::AnyIPv4));
  wanted.ipPort = other.serverPort();
  wanted.demo = true;
  EXPECT_FALSE(settings_.Apply(wanted));
  EXPECT_TRUE(listener_.IsListening()) << "as before";
  EXPECT_EQ(File(), before);
  EXPECT_EQ(model_.DemoMode, 0);
}

TEST_F(ChangeSettingsTest, AFileThatCannotBeWrittenIsReportedAndTheRestIsInForce) {
  std::filesystem::remove(folder_ / "Orvotesk.ini");
  std::filesystem::create_directory(folder_ / "Orvotesk.ini");
  views::WantedSettings wanted = Present();
  wanted.demo = true;
  EXPECT_TRUE(settings_.Apply(wanted));
  EXPECT_EQ(model_.DemoMode, 1);
  ASSERT_THAT(reporter_.reports, SizeIs(1));
  EXPECT_THAT(reporter_.reports[0], HasSubstr("Writing Configuration File"));
}

TEST_F(ChangeSettingsTest, TheDialogClosesWhenItIsDone) {
  settings_.Ask();
  settings_.Ask();
  QList<QDialog*> dialogs = test::ShownDialogs(window_, "frmSettings");
  ASSERT_EQ(dialogs.size(), 1);
  EXPECT_EQ(test::Find<QLineEdit>(*dialogs[0], "txtDevice_1").text(),
            QStringLiteral("/dev/ttyUSB0"));
  test::Find<QPushButton>(*dialogs[0], "aidTryDevices").click();
  EXPECT_EQ(test::Find<QLabel>(*dialogs[0], "aidDeviceState_1").text(),
            QStringLiteral("In use by this console"));
  EXPECT_EQ(port_.openCount, 1);
  isComparing_ = true;
  test::Find<QComboBox>(*dialogs[0], "cmbComPort").setCurrentIndex(1);
  test::Find<QPushButton>(*dialogs[0], "cmdOkSettings").click();
  EXPECT_TRUE(dialogs[0]->isVisible());
  EXPECT_EQ(test::Find<QLabel>(*dialogs[0], "aidSettingsSaid").text(),
            QStringLiteral("Not while the switcher sends what a comparison asked for"));
  isComparing_ = false;
  test::Find<QPushButton>(*dialogs[0], "cmdOkSettings").click();
  EXPECT_THAT(test::ShownDialogs(window_, "frmSettings"), IsEmpty());
  EXPECT_EQ(port_.Number(), 2);
}

}  // namespace
}  // namespace app
