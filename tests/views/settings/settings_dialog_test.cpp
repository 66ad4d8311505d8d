// SPDX-License-Identifier: MIT

#include "views/settings/settings_dialog.h"

#include <gmock/gmock.h>

#include <QCheckBox>
#include <QComboBox>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QScreen>
#include <QTest>

#include "switcher/serial_port.h"
#include "tests/views/gui_support.h"

namespace views {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;
using testing::Pair;

class SettingsDialogTest : public testing::Test {
 protected:
  SettingsDialogTest() {
    model_.ComPort = 2;
    model_.IpPort = 1250;
    model_.DownloadInterval = 50;
    model_.AppPath = "/srv/intercom\\";
    Open();
  }

  void Open() {
    dialog_ = std::make_unique<SettingsDialog>(SettingsDialog::Services{
        .model = model_,
        .device = [](int port) { return QStringLiteral("/dev/ttyS%1").arg(port - 1); },
        .isInUse = [](const QString& device) { return device == QLatin1String("/dev/ttyS1"); },
        .tryDevice =
            [this](const QString& device) {
              tried_.push_back(device.toStdString());
              return device == QLatin1String("/dev/ttyS3")
                         ? model::Status(switcher::kPortUnavailable, refusal_)
                         : model::Status();
            }});
    QObject::connect(dialog_.get(), &SettingsDialog::Wanted,
                     [this](const WantedSettings& wanted) { wanted_.push_back(wanted); });
    dialog_->show();
  }

  template <typename Widget>
  Widget& Part(const char* name) {
    return test::Find<Widget>(*dialog_, name);
  }
  std::string Said() { return Part<QLabel>("aidSettingsSaid").text().toStdString(); }
  std::string State(int port) {
    return Part<QLabel>(("aidDeviceState_" + std::to_string(port)).c_str()).text().toStdString();
  }
  void PressOk() { QTest::mouseClick(&Part<QPushButton>("cmdOkSettings"), Qt::LeftButton); }

  model::SystemModel model_;
  std::unique_ptr<SettingsDialog> dialog_;
  std::string refusal_ = "Permission denied";
  std::vector<std::string> tried_;
  std::vector<WantedSettings> wanted_;
};

TEST_F(SettingsDialogTest, WhatTheSystemSaysOfADeviceIsSeenWhole) {
  refusal_ = "Permission error while locking the device";
  Part<QPushButton>("aidTryDevices").click();
  QCoreApplication::sendPostedEvents();
  const auto& state = Part<QLabel>("aidDeviceState_4");
  ASSERT_EQ(State(4), "Cannot be opened: Permission error while locking the device");
  EXPECT_GE(state.contentsRect().width(), state.fontMetrics().horizontalAdvance(state.text()));
  EXPECT_LE(dialog_->width(), dialog_->screen()->availableSize().width());
}

TEST_F(SettingsDialogTest, ShowsWhatIsInForce) {
  EXPECT_EQ(Part<QComboBox>("cmbComPort").currentText(), QStringLiteral("COM 2"));
  EXPECT_EQ(Part<QLineEdit>("txtIpPort").text(), QStringLiteral("1250"));
  EXPECT_EQ(Part<QCheckBox>("ckSoftpanel").isChecked(), model_.SoftpanelSupport);
  EXPECT_FALSE(Part<QCheckBox>("ckDemoMode").isChecked());
  EXPECT_EQ(Part<QLineEdit>("txtDevice_4").text(), QStringLiteral("/dev/ttyS3"));
  EXPECT_EQ(Part<QLineEdit>("txtDownloadInterval").text(), QStringLiteral("50 ms"));
  EXPECT_EQ(Part<QLineEdit>("txtAppPath").text(), QStringLiteral("/srv/intercom\\"));
  for (const char* const name : {"txtDownloadInterval", "txtAppPath", "txtDevice_1"}) {
    EXPECT_TRUE(Part<QLineEdit>(name).isReadOnly()) << name;
  }
  EXPECT_THAT(tried_, IsEmpty()) << "no device is touched unasked";
  model_.SoftpanelSupport = !model_.SoftpanelSupport;
  model_.DemoMode = 1;
  Open();
  EXPECT_EQ(Part<QCheckBox>("ckSoftpanel").isChecked(), model_.SoftpanelSupport);
  EXPECT_TRUE(Part<QCheckBox>("ckDemoMode").isChecked());
}

TEST_F(SettingsDialogTest, OkTellsWhatIsWantedAndStaysOpen) {
  Part<QComboBox>("cmbComPort").setCurrentIndex(3);
  Part<QLineEdit>("txtIpPort").setText(QStringLiteral("1300"));
  Part<QCheckBox>("ckSoftpanel").setChecked(true);
  Part<QCheckBox>("ckDemoMode").setChecked(true);
  QTest::keyClick(dialog_.get(), Qt::Key_Return);
  ASSERT_EQ(wanted_.size(), 1u);
  EXPECT_EQ(wanted_[0].comPort, 4);
  EXPECT_EQ(wanted_[0].ipPort, 1300);
  EXPECT_TRUE(wanted_[0].panels);
  EXPECT_TRUE(wanted_[0].demo);
  EXPECT_THAT(wanted_[0].devices, IsEmpty());
  EXPECT_TRUE(dialog_->isVisible());
  dialog_->Say(QStringLiteral("Why not"));
  EXPECT_EQ(Said(), "Why not");
}

TEST_F(SettingsDialogTest, CancelWantsNothing) {
  Part<QComboBox>("cmbComPort").setCurrentIndex(3);
  QTest::mouseClick(&Part<QPushButton>("cmdCancelSettings"), Qt::LeftButton);
  EXPECT_FALSE(dialog_->isVisible());
  EXPECT_THAT(wanted_, IsEmpty());
}

TEST_F(SettingsDialogTest, ATcpPortIsANumberOfOne) {
  for (const char* const bad : {"", "0", "65536"}) {
    Part<QLineEdit>("txtIpPort").setText(QLatin1String(bad));
    EXPECT_FALSE(Part<QPushButton>("cmdOkSettings").isEnabled()) << bad;
    EXPECT_EQ(Said(), "The TCP port is a number from 1 to 65535.");
  }
  Part<QLineEdit>("txtIpPort").setText(QStringLiteral("65535"));
  EXPECT_TRUE(Part<QPushButton>("cmdOkSettings").isEnabled());
  EXPECT_EQ(Said(), "");
}

// The file may hold what nobody can type.
TEST_F(SettingsDialogTest, TheTcpPortThatIsInForceStands) {
  model_.IpPort = 100'000;
  Open();
  EXPECT_TRUE(Part<QPushButton>("cmdOkSettings").isEnabled());
  PressOk();
  EXPECT_EQ(wanted_.at(0).ipPort, 100'000);
}

TEST_F(SettingsDialogTest, DevicesAreTriedButForTheOneInUse) {
  QTest::mouseClick(&Part<QPushButton>("aidTryDevices"), Qt::LeftButton);
  EXPECT_THAT(tried_, ElementsAre("/dev/ttyS0", "/dev/ttyS2", "/dev/ttyS3"));
  EXPECT_EQ(State(1), "Can be opened");
  EXPECT_EQ(State(2), "In use by this console");
  EXPECT_EQ(State(4), "Cannot be opened: Permission denied");
}

TEST_F(SettingsDialogTest, DevicesAreEditedWhenThatIsAskedFor) {
  auto& field = Part<QLineEdit>("txtDevice_2");
  QTest::keyClicks(&field, QStringLiteral("x"));
  EXPECT_EQ(field.text(), QStringLiteral("/dev/ttyS1"));
  QTest::mouseClick(&Part<QPushButton>("aidTryDevices"), Qt::LeftButton);
  QTest::mouseClick(&Part<QPushButton>("aidChangeDevices"), Qt::LeftButton);
  EXPECT_FALSE(field.isReadOnly());
  EXPECT_NE(Said(), "");
  field.setText(QStringLiteral(" /dev/ttyUSB0\n"));
  EXPECT_EQ(State(2), "") << "that was another device";
  Part<QLineEdit>("txtDevice_3").clear();
  QTest::mouseClick(&Part<QPushButton>("aidTryDevices"), Qt::LeftButton);
  EXPECT_EQ(State(3), "The computer's own port");
  PressOk();
  EXPECT_THAT(wanted_.at(0).devices,
              ElementsAre(Pair(2, QStringLiteral("/dev/ttyUSB0")), Pair(3, QString())));
}

TEST_F(SettingsDialogTest, EveryControlIsReachedByKeys) {
  QTest::mouseClick(&Part<QPushButton>("aidChangeDevices"), Qt::LeftButton);
  std::vector<std::string> seen;
  Part<QComboBox>("cmbComPort").setFocus();
  for (int i = 0; i < 13; ++i) {
    seen.push_back(dialog_->focusWidget()->objectName().toStdString());
    QTest::keyClick(dialog_->focusWidget(), Qt::Key_Tab);
  }
  EXPECT_THAT(
      seen, ElementsAre("cmbComPort", "txtDevice_1", "txtDevice_2", "txtDevice_3", "txtDevice_4",
                        "aidTryDevices", "ckSoftpanel", "txtIpPort", "ckDemoMode",
                        "txtDownloadInterval", "txtAppPath", "cmdOkSettings", "cmdCancelSettings"));
}

}  // namespace
}  // namespace views
