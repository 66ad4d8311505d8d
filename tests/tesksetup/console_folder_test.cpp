// SPDX-License-Identifier: MIT

#include "tools/tesksetup/console_folder.h"

#include <gtest/gtest.h>

#include <QFile>
#include <QFileInfo>

#include "app/run/instance_lock.h"
#include "tests/support/temporary_folder.h"

namespace tesksetup {
namespace {

using test::ReadFile;
using test::WriteFile;

class ConsoleFolderTest : public testing::Test {
 protected:
  ConsoleFolderTest() { Install("the program"); }

  void Install(const char* contents) {
    WriteFile(root_ / "teskctl", contents);
    QFile::setPermissions(installed_, QFile::ReadOwner | QFile::ExeOwner | QFile::ReadOther);
  }

  ConsolePlan Plan() const {
    return {.name = QStringLiteral("Studio A"),
            .folder = folder_,
            .device = QStringLiteral("/dev/ttyUSB0"),
            .servesPanels = true,
            .ipPort = 1251};
  }

  test::TemporaryFolder root_;
  QString installed_ = QString::fromStdString(root_ / "teskctl");
  QString folder_ = QString::fromStdString(root_ / "Consoles/Studio A");
  std::filesystem::path console_ = root_ / "Consoles/Studio A";
};

TEST_F(ConsoleFolderTest, ANewFolderGetsTheProgramAndItsSettings) {
  EXPECT_FALSE(HoldsConsole(folder_));
  const model::Status status = MakeConsoleFolder(Plan(), installed_, Places::Own);
  ASSERT_TRUE(status.ok()) << status.Description();
  EXPECT_EQ(ReadFile(console_ / "teskctl"), "the program");
  EXPECT_TRUE(QFileInfo(ProgramIn(folder_)).isExecutable());
  EXPECT_EQ(ReadFile(console_ / "Orvotesk.ini"),
            "[CONFIGURATION]\r\nCOM Port=1\r\nIP Port=1251\r\nSoftpanel Support=Yes\r\n"
            "[SERIAL DEVICES]\r\nCOM1=/dev/ttyUSB0\r\n"
            "[WINDOW PLACES]\r\nSection=Console Studio A\r\n");
  EXPECT_TRUE(HoldsConsole(folder_));
}

TEST_F(ConsoleFolderTest, WithoutADeviceTheMachinesOwnPortIsLeftToTheConsole) {
  ConsolePlan plan = Plan();
  plan.device.clear();
  plan.servesPanels = false;
  ASSERT_TRUE(MakeConsoleFolder(plan, installed_, Places::Own).ok());
  EXPECT_EQ(ReadFile(console_ / "Orvotesk.ini"),
            "[CONFIGURATION]\r\nCOM Port=1\r\nIP Port=1251\r\nSoftpanel Support=No\r\n"
            "[WINDOW PLACES]\r\nSection=Console Studio A\r\n");
}

TEST_F(ConsoleFolderTest, DatabaseAndOtherSettingsOfAConsoleThatIsThereStay) {
  std::filesystem::create_directories(console_);
  WriteFile(console_ / "Tesk.mdb", "database");
  WriteFile(console_ / "Orvotesk.ini",
            "; ours\n[CONFIGURATION]\nCOM Port=3\nDemo Mode=1\nIP Port=1250\n\n"
            "[SERIAL DEVICES]\nCOM1=/dev/ttyS9\nCOM3=/dev/ttyS3\n");
  ASSERT_TRUE(MakeConsoleFolder(Plan(), installed_, Places::AsTheyAre).ok());
  EXPECT_EQ(ReadFile(console_ / "Tesk.mdb"), "database");
  EXPECT_EQ(ReadFile(console_ / "Orvotesk.ini"),
            "; ours\n[CONFIGURATION]\nCOM Port=3\nDemo Mode=1\nIP Port=1251\n"
            "Softpanel Support=Yes\n\n[SERIAL DEVICES]\nCOM1=/dev/ttyS9\nCOM3=/dev/ttyUSB0\n");
}

TEST_F(ConsoleFolderTest, ADatabaseAloneGetsSettingsWithASectionOfTheirOwn) {
  std::filesystem::create_directories(console_);
  WriteFile(console_ / "Tesk.mdb", "database");
  ASSERT_TRUE(MakeConsoleFolder(Plan(), installed_, Places::Own).ok());
  EXPECT_EQ(ReadFile(console_ / "Tesk.mdb"), "database");
  EXPECT_EQ(ReadFile(console_ / "Orvotesk.ini"),
            "[CONFIGURATION]\r\nCOM Port=1\r\nIP Port=1251\r\nSoftpanel Support=Yes\r\n"
            "[SERIAL DEVICES]\r\nCOM1=/dev/ttyUSB0\r\n"
            "[WINDOW PLACES]\r\nSection=Console Studio A\r\n");
}

TEST_F(ConsoleFolderTest, AConsoleFromAnotherMachineGetsASectionOfItsOwn) {
  std::filesystem::create_directories(console_);
  WriteFile(console_ / "Orvotesk.ini",
            "[CONFIGURATION]\nCOM Port=1\nIP Port=1251\nSoftpanel Support=Yes\n"
            "[SERIAL DEVICES]\nCOM1=/dev/ttyUSB0\n");
  ASSERT_TRUE(MakeConsoleFolder(Plan(), installed_, Places::Own).ok());
  EXPECT_EQ(ReadFile(console_ / "Orvotesk.ini"),
            "[CONFIGURATION]\nCOM Port=1\nIP Port=1251\nSoftpanel Support=Yes\n"
            "[SERIAL DEVICES]\nCOM1=/dev/ttyUSB0\n"
            "[WINDOW PLACES]\nSection=Console Studio A\n");
}

TEST_F(ConsoleFolderTest, ASectionThatTheSettingsNameStays) {
  ASSERT_TRUE(MakeConsoleFolder(Plan(), installed_, Places::Own).ok());
  const std::string settings = ReadFile(console_ / "Orvotesk.ini");
  ConsolePlan renamed = Plan();
  renamed.name = QStringLiteral("Studio Z");
  ASSERT_TRUE(MakeConsoleFolder(renamed, installed_, Places::Own).ok());
  EXPECT_EQ(ReadFile(console_ / "Orvotesk.ini"), settings);
}

TEST_F(ConsoleFolderTest, SettingsAreReadAsTheConsoleReadsThem) {
  std::filesystem::create_directories(console_);
  WriteFile(console_ / "Orvotesk.ini",
            "[CONFIGURATION]\nCOM Port=2\nIP Port=0\nSoftpanel Support=Yes\n"
            "[SERIAL DEVICES]\nCOM1=/dev/ttyS9\nCOM2=/dev/ttyUSB7\n");
  ConsolePlan plan;
  ASSERT_TRUE(ReadSettings(folder_, &plan).ok());
  EXPECT_EQ(plan.device, QStringLiteral("/dev/ttyUSB7"));
  EXPECT_TRUE(plan.servesPanels);
  EXPECT_EQ(plan.ipPort, 1250);
}

TEST_F(ConsoleFolderTest, AFolderWhoseConsoleRunsIsLeftAlone) {
  std::filesystem::create_directories(console_);
  app::InstanceLock running;
  ASSERT_EQ(running.Take(folder_), app::InstanceLock::Result::Taken);
  const model::Status status = MakeConsoleFolder(Plan(), installed_, Places::Own);
  EXPECT_EQ(status.Description(), "The console of this folder is running");
  EXPECT_EQ(ReadFile(console_ / "teskctl"), "(none)");
  EXPECT_EQ(ReadFile(console_ / "Orvotesk.ini"), "(none)");
}

TEST_F(ConsoleFolderTest, AFolderThatCannotBeMadeIsNamed) {
  WriteFile(root_ / "Consoles", "a file");
  const model::Status status = MakeConsoleFolder(Plan(), installed_, Places::Own);
  EXPECT_EQ(status.Description(), "Cannot make the folder " + folder_.toStdString());
}

TEST_F(ConsoleFolderTest, AnUpgradeReachesTheCopyAndNothingElse) {
  ASSERT_TRUE(MakeConsoleFolder(Plan(), installed_, Places::Own).ok());
  const auto made = std::filesystem::last_write_time(console_ / "teskctl");
  ASSERT_TRUE(UpdateProgram(installed_, folder_).ok());
  EXPECT_EQ(std::filesystem::last_write_time(console_ / "teskctl"), made) << "the same already";

  std::filesystem::remove(root_ / "teskctl");
  Install("the other v");  // as long as the one before
  ASSERT_TRUE(UpdateProgram(installed_, folder_).ok());
  EXPECT_EQ(ReadFile(console_ / "teskctl"), "the other v");
  EXPECT_EQ(ReadFile(console_ / "teskctl.new"), "(none)");
}

TEST_F(ConsoleFolderTest, ACopyThatMayNotRunIsReplaced) {
  ASSERT_TRUE(MakeConsoleFolder(Plan(), installed_, Places::Own).ok());
  QFile::setPermissions(ProgramIn(folder_), QFile::ReadOwner);
  ASSERT_TRUE(UpdateProgram(installed_, folder_).ok());
  EXPECT_TRUE(QFileInfo(ProgramIn(folder_)).isExecutable());
}

TEST_F(ConsoleFolderTest, WithoutTheInstalledProgramTheCopyStays) {
  ASSERT_TRUE(MakeConsoleFolder(Plan(), installed_, Places::Own).ok());
  std::filesystem::remove(root_ / "teskctl");
  const model::Status status = UpdateProgram(installed_, folder_);
  EXPECT_TRUE(status.Description().starts_with("Cannot copy " + installed_.toStdString() + ": "))
      << status.Description();
  EXPECT_EQ(ReadFile(console_ / "teskctl"), "the program");
}

}  // namespace
}  // namespace tesksetup
