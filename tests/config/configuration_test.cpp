// SPDX-License-Identifier: MIT

#include "config/configuration.h"

#include <gtest/gtest.h>

#include "config/serial_devices.h"

namespace config {
namespace {

model::SystemModel Read(std::string_view lines) {
  model::SystemModel model;
  ReadConfiguration(IniFile("[CONFIGURATION]\n" + std::string(lines)), model);
  return model;
}

TEST(Configuration, AFreshInstallationHasNoPanels) {
  model::SystemModel model;
  model.ComPort = 3;
  model.DemoMode = 1;
  ReadConfiguration(IniFile(), model);
  EXPECT_EQ(model.ComPort, 1);
  EXPECT_EQ(model.DownloadInterval, 0);
  EXPECT_EQ(model.DemoMode, 0);
  EXPECT_EQ(model.IpPort, 1250);
  EXPECT_FALSE(model.SoftpanelSupport);
}

TEST(Configuration, ComPortIsOneToFour) {
  EXPECT_EQ(Read("COM Port=4\n").ComPort, 4);
  EXPECT_EQ(Read("COM Port=7\n").ComPort, 1);
  EXPECT_EQ(Read("COM Port=0\n").ComPort, 1);
  EXPECT_EQ(Read("COM Port=-2\n").ComPort, 1);
  EXPECT_EQ(Read("COM Port=2.5\n").ComPort, 2);
  EXPECT_EQ(Read("COM Port=99999\n").ComPort, 1);
}

TEST(Configuration, IpPortBelowOneIs1250) {
  EXPECT_EQ(Read("IP Port=0\n").IpPort, 1250);
  EXPECT_EQ(Read("IP Port=-5\n").IpPort, 1250);
  EXPECT_EQ(Read("IP Port=junk\n").IpPort, 1250);
  EXPECT_EQ(Read("IP Port=70000\n").IpPort, 70000);
  EXPECT_EQ(Read("IP Port=9999999999\n").IpPort, 2147483647);
}

TEST(Configuration, NegativeIntervalIsZero) {
  EXPECT_EQ(Read("Download Interval=-1\n").DownloadInterval, 0);
  EXPECT_EQ(Read("Download Interval=250\n").DownloadInterval, 250);
  EXPECT_EQ(Read("Download Interval=40000\n").DownloadInterval, 32767);
}

TEST(Configuration, PanelsOnlyForExactlyYes) {
  EXPECT_TRUE(Read("Softpanel Support=Yes\n").SoftpanelSupport);
  EXPECT_FALSE(Read("Softpanel Support=yes\n").SoftpanelSupport);
  EXPECT_FALSE(Read("Softpanel Support=\n").SoftpanelSupport);
  EXPECT_FALSE(Read("Softpanel Support=1\n").SoftpanelSupport);
}

TEST(Configuration, DemoModeIsANumber) {
  EXPECT_EQ(Read("Demo Mode=1\n").DemoMode, 1);
  EXPECT_EQ(Read("Demo Mode=2\n").DemoMode, 2);
  EXPECT_EQ(Read("Demo Mode=Yes\n").DemoMode, 0);
}

TEST(Configuration, WritesTheSixValuesInTheirOrder) {
  model::SystemModel model;
  model.AppPath = "/srv/console\\";
  model.DownloadInterval = 50;
  model.DemoMode = 1;
  model.IpPort = 1250;
  model.SoftpanelSupport = false;
  IniFile file;
  WriteConfiguration(model, 2, file);
  EXPECT_EQ(file.Text(),
            "[CONFIGURATION]\r\n"
            "COM Port=2\r\n"
            "App Path=/srv/console\\\r\n"
            "Download Interval=50\r\n"
            "Demo Mode=1\r\n"
            "IP Port=1250\r\n"
            "Softpanel Support=No\r\n");
}

// A folder may be called so; what follows must not become a line, or a section, of its own.
TEST(Configuration, ALineBreakInTheFoldersNameStaysOnItsLine) {
  model::SystemModel model;
  model.AppPath = "/srv/a\n[SERIAL DEVICES]\r\nCOM1=/dev/null\\";
  IniFile file;
  WriteConfiguration(model, 1, file);
  EXPECT_TRUE(
      file.Text().starts_with("[CONFIGURATION]\r\n"
                              "COM Port=1\r\n"
                              "App Path=/srv/a [SERIAL DEVICES]  COM1=/dev/null\\\r\n"
                              "Download Interval="));
  EXPECT_EQ(SerialDevice(IniFile(file.Text()), 1), "/dev/ttyS0");
}

TEST(Configuration, WritingKeepsTheInstallersDevices) {
  model::SystemModel model;
  model.SoftpanelSupport = true;
  IniFile file("[SERIAL DEVICES]\nCOM1=/dev/ttyUSB0\n\n[CONFIGURATION]\nCom port=1\n");
  WriteConfiguration(model, 1, file);
  EXPECT_EQ(SerialDevice(file, 1), "/dev/ttyUSB0");
  EXPECT_TRUE(file.Text().starts_with(
      "[SERIAL DEVICES]\nCOM1=/dev/ttyUSB0\n\n[CONFIGURATION]\nCom port=1\nApp Path=\n"));
}

TEST(SerialDevice, DefaultsToThePlatformsPort) {
  EXPECT_EQ(SerialDevice(IniFile(), 1), "/dev/ttyS0");
  EXPECT_EQ(SerialDevice(IniFile(), 4), "/dev/ttyS3");
  EXPECT_EQ(SerialDevice(IniFile("[serial devices]\ncom2= /dev/x \n"), 2), "/dev/x");
  EXPECT_EQ(SerialDevice(IniFile("[serial devices]\ncom2= /dev/x \n"), 1), "/dev/ttyS0");
}

TEST(SerialDevice, IsNamedWithoutTouchingTheRest) {
  IniFile file("; x\n[serial devices]\ncom2 = /dev/x\n\n[Other]\na=b\n");
  SetSerialDevice(2, "/dev/ttyUSB0", file);
  SetSerialDevice(4, "/dev/y", file);
  EXPECT_EQ(file.Text(),
            "; x\n[serial devices]\ncom2 = /dev/ttyUSB0\nCOM4=/dev/y\n\n[Other]\na=b\n");
  SetSerialDevice(2, "", file);
  EXPECT_EQ(SerialDevice(file, 2), "/dev/ttyS1");
  IniFile none;
  SetSerialDevice(1, "/dev/z", none);
  EXPECT_EQ(none.Text(), "[SERIAL DEVICES]\r\nCOM1=/dev/z\r\n");
}

}  // namespace
}  // namespace config
