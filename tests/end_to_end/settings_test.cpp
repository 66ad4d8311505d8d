// SPDX-License-Identifier: MIT
//
// The settings, on the real console: in force and in the file at once.

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "tests/end_to_end/console_process.h"
#include "tests/support/simulator_process.h"

namespace test {
namespace {

using testing::HasSubstr;

class SettingsTest : public testing::Test {
 protected:
  std::string File() const { return ReadFile(folder_ / "Orvotesk.ini"); }

  // What the file is to hold in the end: `port` and the devices are as the test wants them.
  std::string Expected(const std::string& port, const std::string& rest) const {
    return "; ours\r\n[CONFIGURATION]\r\nCOM Port=" + port +
           "\r\nApp Path=" + folder_.Program().string() +
           "\\\r\nDownload Interval=50\r\nDemo Mode=0\r\n" +
           "IP Port=1250\r\nSoftpanel Support=No\r\n\r\n[SERIAL DEVICES]\r\n" + rest;
  }

  int argc_ = 0;
  QCoreApplication application_{argc_, nullptr};
  ConsoleFolder folder_;
  std::string first_ = folder_ / "first";
  std::string second_ = folder_ / "second";
  SimulatorProcess here_{{"--log", "--link", first_}};
  SimulatorProcess there_{{"--log", "--link", second_}};
};

TEST_F(SettingsTest, TheSerialPortIsAnotherOneAtOnceAndAfterTheNextStart) {
  WriteFile(folder_ / "Orvotesk.ini",
            "; ours\r\n[CONFIGURATION]\r\nCOM Port=1\r\n\r\n[SERIAL DEVICES]\r\nCOM1=" + first_ +
                "\r\n; the other studio\r\nCOM2=" + second_ + "\r\n");
  const std::string devices =
      "COM1=" + first_ + "\r\n; the other studio\r\nCOM2=" + second_ + "\r\n";
  {
    ConsoleProcess console(folder_);
    ASSERT_TRUE(console.IsUp());
    ASSERT_TRUE(ConsoleProcess::WaitFor([&] { return console.LinkText() == kConnected; }));
    console.Trigger("aidSettings");
    ASSERT_TRUE(ConsoleProcess::WaitFor([&] { return console.IsShown("frmSettings"); }));
    console.Click("aidTryDevices");
    EXPECT_EQ(console.Property("aidDeviceState_1", "text"),
              QJsonValue(QStringLiteral("In use by this console")));
    EXPECT_EQ(console.Property("aidDeviceState_2", "text"),
              QJsonValue(QStringLiteral("Can be opened")));
    EXPECT_EQ(console.LinkText(), kConnected) << "the link goes on";
    console.Set("cmbComPort", "currentIndex", 1);
    console.Click("cmdOkSettings");
    ASSERT_TRUE(ConsoleProcess::WaitFor([&] { return !console.IsShown("frmSettings"); }));
    EXPECT_EQ(File(), Expected("2", devices)) << "at once";
    EXPECT_TRUE(ConsoleProcess::WaitFor(
        [&] { return console.LinkText() == "Connected - COM 2  (57600, 8, N, 1)"; }));
    EXPECT_TRUE(there_.WaitForLine("rx poll tally")) << "the map of the other one is complete";
    EXPECT_TRUE(console.Boxes().empty());
    EXPECT_EQ(console.Terminate(), 0);
  }
  EXPECT_EQ(File(), Expected("2", devices)) << "at exit";
  EXPECT_THAT(ReadFile(folder_ / "Teskctl.log"), HasSubstr("Settings: serial port COM 2"));
  ConsoleProcess console(folder_);
  ASSERT_TRUE(console.IsUp());
  EXPECT_TRUE(ConsoleProcess::WaitFor(
      [&] { return console.LinkText() == "Connected - COM 2  (57600, 8, N, 1)"; }));
}

TEST_F(SettingsTest, AnotherDeviceIsOpenedAtOnce) {
  WriteFile(
      folder_ / "Orvotesk.ini",
      "; ours\r\n[CONFIGURATION]\r\nCOM Port=1\r\n\r\n[SERIAL DEVICES]\r\nCOM1=" + first_ + "\r\n");
  ConsoleProcess console(folder_);
  ASSERT_TRUE(console.IsUp());
  ASSERT_TRUE(here_.WaitForLine("rx poll tally"));
  console.Trigger("aidSettings");
  ASSERT_TRUE(ConsoleProcess::WaitFor([&] { return console.IsShown("frmSettings"); }));
  console.Click("aidChangeDevices");
  console.Set("txtDevice_1", "text", QString::fromStdString(second_));
  console.Click("cmdOkSettings");
  EXPECT_TRUE(there_.WaitForLine("rx poll tally"));
  EXPECT_EQ(File(), Expected("1", "COM1=" + second_ + "\r\n"));
}

TEST_F(SettingsTest, CancelChangesNothing) {
  folder_.WriteSettings(first_);
  const std::string before = File();
  ConsoleProcess console(folder_);
  ASSERT_TRUE(console.IsUp());
  console.Trigger("aidSettings");
  ASSERT_TRUE(ConsoleProcess::WaitFor([&] { return console.IsShown("frmSettings"); }));
  console.Set("cmbComPort", "currentIndex", 3);
  console.Set("ckDemoMode", "checked", true);
  console.Click("cmdCancelSettings");
  ASSERT_TRUE(ConsoleProcess::WaitFor([&] { return !console.IsShown("frmSettings"); }));
  EXPECT_EQ(File(), before);
}

}  // namespace
}  // namespace test
