// SPDX-License-Identifier: MIT
//
// The real program, beside a console that only says where it was started.

#include <gtest/gtest.h>

#include <QFileInfo>
#include <QJsonArray>
#include <QJsonObject>
#include <QProcess>
#include <QProcessEnvironment>
#include <QThread>
#include <chrono>
#include <filesystem>

#include "tests/support/programs.h"
#include "tests/support/temporary_folder.h"
#include "tools/pilot/pilot_client.h"

namespace tesksetup {
namespace {

namespace fs = std::filesystem;

struct Outcome {
  int code = -1;
  std::string output;
  std::string errors;
};

Outcome RunProgram(const fs::path& program, const std::vector<std::string>& arguments) {
  QStringList words;
  for (const std::string& argument : arguments) words.append(QString::fromStdString(argument));
  QProcess process;
  process.start(QString::fromStdString(program), words);
  EXPECT_TRUE(process.waitForFinished());
  return {.code = process.exitStatus() == QProcess::NormalExit ? process.exitCode() : -1,
          .output = process.readAllStandardOutput().toStdString(),
          .errors = process.readAllStandardError().toStdString()};
}

class SetUpProcessTest : public testing::Test {
 protected:
  SetUpProcessTest() {
    fs::create_directories(root_ / "bin");
    fs::create_directories(root_ / "Studio A");
    fs::copy_file(test::ProgramPath("tesksetup"), root_ / "bin/tesksetup");
    Install("first");
  }

  void Install(const std::string& version) {
    const fs::path program = root_ / "bin/teskctl";
    fs::remove(program);
    test::WriteFile(program, "#!/bin/sh\necho \"$0\" >\"$(dirname \"$0\")/started\"\necho " +
                                 version + " $# \"$0\"\nexit 7\n");
    fs::permissions(program, fs::perms::owner_all);
  }

  // Starts it as a user would, to be driven through socket_.
  void StartWithPilot(QProcess& process, const QStringList& arguments) const {
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    for (const char* const name : {"HOME", "XDG_DATA_HOME", "XDG_RUNTIME_DIR"}) {
      environment.insert(QLatin1String(name), home_);
    }
    environment.insert(QStringLiteral("QT_PLUGIN_PATH"),
                       QString::fromStdString(test::ProgramFolder()));
    environment.insert(QStringLiteral("QT_QPA_GENERIC_PLUGINS"),
                       QStringLiteral("teskpilot:") + socket_);
    process.setProcessEnvironment(environment);
    process.setProcessChannelMode(QProcess::ForwardedChannels);
    process.start(home_ + QStringLiteral("/bin/tesksetup"), arguments);
  }

  Outcome Start() { return RunProgram(root_ / "bin/tesksetup", {"--start", root_ / "Studio A"}); }

  test::TemporaryFolder root_;
  QString home_ = QString::fromStdString(root_.Path());
  QString socket_ = home_ + QStringLiteral("/pilot");
  std::string console_ = root_ / "Studio A/teskctl";
};

TEST_F(SetUpProcessTest, TheConsoleOfTheFolderTakesItsPlace) {
  const Outcome outcome = Start();
  EXPECT_EQ(outcome.code, 7);
  EXPECT_EQ(outcome.output, "first 0 " + console_ + "\n");
  EXPECT_EQ(outcome.errors, "");
}

TEST_F(SetUpProcessTest, AfterAnUpgradeTheNewProgramIsStarted) {
  Start();
  Install("second");
  EXPECT_EQ(Start().output, "second 0 " + console_ + "\n");
}

TEST_F(SetUpProcessTest, AnOldConsoleIsBetterThanNone) {
  Start();
  fs::remove(root_ / "bin/teskctl");
  const Outcome outcome = Start();
  EXPECT_EQ(outcome.output, "first 0 " + console_ + "\n");
  EXPECT_TRUE(outcome.errors.starts_with("tesksetup: Cannot copy ")) << outcome.errors;
}

// Waits until a file holds something, and returns it.
std::string Await(const fs::path& file) {
  const auto deadline = std::chrono::steady_clock::now() + std::chrono::seconds(20);
  while (!fs::exists(file) || fs::file_size(file) == 0) {
    if (std::chrono::steady_clock::now() > deadline) return "(nothing came)";
    QThread::msleep(10);
  }
  return test::ReadFile(file);
}

TEST_F(SetUpProcessTest, FromTheFormToTheRunningConsole) {
  QProcess process;
  StartWithPilot(process, {});
  pilot::Client installer;
  ASSERT_TRUE(installer.Connect(socket_, 30000));
  installer.Ask({{QStringLiteral("do"), QStringLiteral("keys")},
                 {QStringLiteral("object"), QStringLiteral("txtName")},
                 {QStringLiteral("text"), QStringLiteral("Studio B")}});
  installer.Ask({{QStringLiteral("do"), QStringLiteral("click")},
                 {QStringLiteral("object"), QStringLiteral("cmdSetUp")}});
  // Enter in the last box starts the console.
  installer.Ask({{QStringLiteral("do"), QStringLiteral("closeBox")}});

  const fs::path folder = root_ / "Intercom/Studio B";
  EXPECT_EQ(Await(folder / "started"), (folder / "teskctl").string() + "\n");
  EXPECT_TRUE(process.waitForFinished());
  EXPECT_EQ(process.exitCode(), 0);
  EXPECT_EQ(test::ReadFile(folder / "Orvotesk.ini"),
            "[CONFIGURATION]\r\nCOM Port=1\r\nIP Port=1250\r\nSoftpanel Support=No\r\n"
            "[WINDOW PLACES]\r\nSection=Console Studio B\r\n");
  ASSERT_TRUE(fs::is_directory(root_ / "applications"));
  const fs::path entry = fs::directory_iterator(root_ / "applications")->path();
  EXPECT_NE(test::ReadFile(entry).find("\nExec=\"" + (root_ / "bin/tesksetup").string() +
                                       "\" --start \"" + folder.string() + "\"\n"),
            std::string::npos)
      << test::ReadFile(entry);
}

TEST_F(SetUpProcessTest, AConsoleThatIsGoneIsSaidToBe) {
  QProcess process;
  StartWithPilot(process, {QStringLiteral("--start"), home_ + QStringLiteral("/gone")});
  pilot::Client user;
  ASSERT_TRUE(user.Connect(socket_, 30000));
  const QJsonObject box = user.Ask({{QStringLiteral("do"), QStringLiteral("boxes")}})
                              .value(QLatin1String("value"))
                              .toArray()
                              .at(0)
                              .toObject();
  EXPECT_EQ(box.value(QLatin1String("title")).toString(),
            QStringLiteral("The Console Does Not Start"));
  EXPECT_EQ(box.value(QLatin1String("text")).toString(),
            home_ + QStringLiteral("/gone/teskctl: No such file or directory"));
  user.Ask({{QStringLiteral("do"), QStringLiteral("closeBox")}});
  EXPECT_TRUE(process.waitForFinished());
  EXPECT_EQ(process.exitCode(), 1);
}

TEST_F(SetUpProcessTest, AWrongCommandLineIsRefused) {
  for (const std::vector<std::string>& wrong :
       {std::vector<std::string>{"--start"}, {"--start", ""}, {"folder"}, {"--bogus"}}) {
    const Outcome outcome = RunProgram(test::ProgramPath("tesksetup"), wrong);
    EXPECT_EQ(outcome.code, 2);
    EXPECT_TRUE(outcome.errors.starts_with("tesksetup: ")) << outcome.errors;
  }
}

}  // namespace
}  // namespace tesksetup
