// SPDX-License-Identifier: MIT
//
// Start, end and start again: what the console keeps.

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <unistd.h>

#include <csignal>

#include "db/database_files.h"
#include "tests/end_to_end/console_process.h"
#include "tests/support/simulator_process.h"

namespace test {
namespace {

namespace fs = std::filesystem;
using testing::HasSubstr;

class LifeCycleTest : public testing::Test {
 protected:
  void SetUp() override { folder_.WriteSettings(line_); }

  // A stored field of a station, read from the file that a run left.
  std::string Stored(int stationNum, std::string_view field) {
    const TemporaryFolder copy;
    db::DatabaseFiles files(folder_ / "Tesk.mdb", copy / "WorkingDb.md$");
    EXPECT_TRUE(files.Open().ok());
    EXPECT_TRUE(files.Stations()->Seek(stationNum).ok());
    jet::Value value;
    EXPECT_TRUE(files.Stations()->Get(field, &value).ok());
    return value.Text();
  }
  std::string StoredInhibits(int stationNum) { return Stored(stationNum, "Inhibits"); }

  int argc_ = 0;
  QCoreApplication application_{argc_, nullptr};
  ConsoleFolder folder_;
  std::string line_ = folder_ / "line";
  SimulatorProcess simulator_{{"--log", "--link", line_}};
};

TEST_F(LifeCycleTest, FirstStartCreatesEverythingAndTheEndTidiesUp) {
  ConsoleProcess console(folder_);
  ASSERT_TRUE(console.IsUp());
  EXPECT_TRUE(fs::exists(folder_ / "Tesk.mdb"));
  EXPECT_TRUE(fs::exists(folder_ / "WorkingDb.md$"));
  console.Trigger("ID_Exit");
  EXPECT_EQ(console.WaitForEnd(), 0);
  EXPECT_FALSE(fs::exists(folder_ / "WorkingDb.md$"));
  EXPECT_EQ(ReadFile(folder_ / "Orvotesk.ini"),
            "[CONFIGURATION]\r\nCOM Port=1\r\nApp Path=" + folder_.Program().string() +
                "\\\r\nDownload Interval=50\r\nDemo Mode=0\r\nIP Port=1250\r\n"
                "Softpanel Support=No\r\n\r\n[SERIAL DEVICES]\r\nCOM1=" +
                line_ + "\r\n");
}

TEST_F(LifeCycleTest, AnEditIsKeptWhenTheConsoleIsClosed) {
  {
    ConsoleProcess console(folder_);
    ASSERT_TRUE(console.IsUp());
    console.Use("ID_ToggleInhibit", 6, 8);
    ASSERT_TRUE(ConsoleProcess::WaitFor([&] { return console.Mark(6, 8) == 2; }));
    EXPECT_EQ(console.Terminate(), 0);
  }
  EXPECT_EQ(StoredInhibits(6).substr(0, 10), "0000010100");
  ConsoleProcess again(folder_);
  ASSERT_TRUE(again.IsUp());
  EXPECT_EQ(again.Mark(6, 8), 2);
}

TEST_F(LifeCycleTest, ALabelThatIsBeingTypedIsKept) {
  const auto end = [](ConsoleProcess& console, bool byOperator) {
    if (!byOperator) return console.Terminate();
    console.Trigger("ID_Exit");
    return console.WaitForEnd();
  };
  for (const bool byOperator : {true, false}) {
    ConsoleProcess console(folder_);
    ASSERT_TRUE(console.IsUp());
    console.Keys("jgAlphas", byOperator ? "M" : "D");
    ASSERT_TRUE(ConsoleProcess::WaitFor([&] { return console.IsShown("edtLabel"); }));
    console.Keys("edtLabel", "X");
    EXPECT_EQ(end(console, byOperator), 0);
    EXPECT_EQ(Stored(1, "Label"), byOperator ? "mx" : "dx");
  }
}

TEST_F(LifeCycleTest, WhateverTheSystemEndsItWithTheWorkIsKept) {
  int input = 10;
  for (const int signal : {SIGTERM, SIGINT, SIGHUP}) {
    ConsoleProcess console(folder_);
    ASSERT_TRUE(console.IsUp());
    console.Use("ID_ToggleInhibit", 6, input);
    ASSERT_TRUE(ConsoleProcess::WaitFor([&] { return console.Mark(6, input) == 2; }));
    ASSERT_EQ(kill(static_cast<pid_t>(console.Id()), signal), 0);
    EXPECT_EQ(console.WaitForEnd(), 0) << signal;
    EXPECT_EQ(StoredInhibits(6)[static_cast<std::size_t>(input) - 1], '1') << signal;
    EXPECT_FALSE(fs::exists(folder_ / "WorkingDb.md$"));
    ++input;
  }
}

// The toolkit's own signal for it is raised; there is no desktop that would say it.
TEST_F(LifeCycleTest, LoggingOutKeepsTheWorkAndEndsTheConsole) {
  ConsoleProcess console(folder_);
  ASSERT_TRUE(console.IsUp());
  console.Use("ID_ToggleInhibit", 6, 8);
  ASSERT_TRUE(ConsoleProcess::WaitFor([&] { return console.Mark(6, 8) == 2; }));
  console.Keys("jgAlphas", "M");
  ASSERT_TRUE(ConsoleProcess::WaitFor([&] { return console.IsShown("edtLabel"); }));
  console.LogOut();
  EXPECT_EQ(console.WaitForEnd(), 0);
  EXPECT_EQ(StoredInhibits(6).substr(0, 10), "0000010100");
  EXPECT_EQ(Stored(1, "Label"), "m");
  EXPECT_FALSE(fs::exists(folder_ / "WorkingDb.md$"));
  EXPECT_THAT(ReadFile(folder_ / "Orvotesk.ini"), HasSubstr("Download Interval=50\r\n"));
}

TEST_F(LifeCycleTest, LoggingOutOnAFullDiskKeepsTheConsoleAndTheWork) {
  ConsoleProcess console(folder_);
  ASSERT_TRUE(console.IsUp());
  console.Use("ID_ToggleInhibit", 6, 8);
  ASSERT_TRUE(ConsoleProcess::WaitFor([&] { return console.Mark(6, 8) == 2; }));
  fs::create_symlink("/dev/full", folder_ / "Tesk.mdb.new");
  console.LogOut();
  ASSERT_TRUE(ConsoleProcess::WaitFor([&] { return !console.Boxes().empty(); }));
  EXPECT_THAT(console.Boxes()[0].text, HasSubstr("Error Saving Database File\r\rError # 3026 - "));
  console.CloseBox();
  EXPECT_EQ(console.Mark(6, 8), 2);
  EXPECT_TRUE(console.Lives());
  console.LogOut();
  EXPECT_EQ(console.WaitForEnd(), 0);
  EXPECT_EQ(StoredInhibits(6).substr(0, 10), "0000010100");
}

TEST_F(LifeCycleTest, AKilledConsoleLeavesTheDatabaseAsItWas) {
  {
    ConsoleProcess console(folder_);
    ASSERT_TRUE(console.IsUp());
    EXPECT_EQ(console.Terminate(), 0);
  }
  const std::string before = ReadFile(folder_ / "Tesk.mdb");
  {
    ConsoleProcess console(folder_);
    ASSERT_TRUE(console.IsUp());
    console.Use("ID_ToggleInhibit", 6, 8);
    ASSERT_TRUE(ConsoleProcess::WaitFor([&] { return console.Mark(6, 8) == 2; }));
    console.Kill();
  }
  EXPECT_EQ(ReadFile(folder_ / "Tesk.mdb"), before);
  EXPECT_TRUE(fs::exists(folder_ / "WorkingDb.md$"));
  ConsoleProcess again(folder_);
  ASSERT_TRUE(again.IsUp());
  EXPECT_EQ(again.Mark(6, 8), 0);
}

TEST_F(LifeCycleTest, WindowsComeBackWhereTheyWere) {
  const auto geometry = [](ConsoleProcess& console, const char* object) {
    return console.Property(object, "geometry");
  };
  QJsonValue main;
  {
    ConsoleProcess console(folder_);
    ASSERT_TRUE(console.IsUp());
    EXPECT_EQ(console.Property("frmMain", "size"), QJsonValue(QJsonArray{433, 433}));
    EXPECT_EQ(console.Property("frmMain", "pos"), QJsonValue(QJsonArray{67, 67}));
    console.SetSize("frmMain", 800, 600);
    main = geometry(console, "frmMain");
    EXPECT_EQ(console.Terminate(), 0);
  }
  const std::string stored = ReadFile(folder_.Home() / "Orvo" / "Orvo Intercom Control.conf");
  EXPECT_THAT(stored, HasSubstr("[Settings]"));
  EXPECT_THAT(stored, HasSubstr("MainLeft=1000\n"));
  EXPECT_THAT(stored, HasSubstr("MainWidth=12000\n"));
  EXPECT_THAT(stored, HasSubstr("MainHeight=9000\n"));
  EXPECT_THAT(stored, HasSubstr("XmapLeft=500\n"));
  EXPECT_THAT(stored, HasSubstr("XmapWidth=10000\n"));
  EXPECT_THAT(stored, HasSubstr("ButnsHeight=6100\n"));
  EXPECT_THAT(stored, HasSubstr("AlphasTop=300\n"));
  ConsoleProcess again(folder_);
  ASSERT_TRUE(again.IsUp());
  EXPECT_EQ(geometry(again, "frmMain"), main);
}

// The place of the main window as it is stored: "left top width height".
std::string StoredMainPlace(const ConsoleFolder& folder) {
  const std::string stored = ReadFile(folder.Home() / "Orvo" / "Orvo Intercom Control.conf");
  std::string place;
  for (const std::string key : {"MainLeft=", "MainTop=", "MainWidth=", "MainHeight="}) {
    const auto start = stored.find(key);
    if (start == std::string::npos) return stored;
    if (!place.empty()) place += ' ';
    place += stored.substr(start + key.size(), stored.find('\n', start) - start - key.size());
  }
  return place;
}

TEST_F(LifeCycleTest, AMinimisedMainWindowKeepsTheStoredPlace) {
  for (const bool minimised : {false, true}) {
    ConsoleProcess console(folder_);
    ASSERT_TRUE(console.IsUp());
    console.SetSize("frmMain", minimised ? 700 : 600, 500);
    if (minimised) {
      console.Ask({{QStringLiteral("do"), QStringLiteral("invoke")},
                   {QStringLiteral("object"), QStringLiteral("frmMain")},
                   {QStringLiteral("method"), QStringLiteral("showMinimized")}});
      EXPECT_TRUE(console.Property("frmMain", "minimized").toBool());
    }
    console.Trigger("ID_Exit");
    EXPECT_EQ(console.WaitForEnd(), 0);
    EXPECT_EQ(StoredMainPlace(folder_), "1000 1000 9000 7500") << minimised;
  }
}

TEST_F(LifeCycleTest, TheFullScreenIsNotStoredAsAPlace) {
  for (int run = 0; run < 2; ++run) {
    ConsoleProcess console(folder_);
    ASSERT_TRUE(console.IsUp());
    console.Trigger("aidFullScreen");
    ASSERT_TRUE(ConsoleProcess::WaitFor(
        [&] { return console.Property("frmMain", "fullScreen").toBool(); }));
    EXPECT_EQ(console.Terminate(), 0);
    EXPECT_EQ(StoredMainPlace(folder_), "1000 1000 6500 6500") << run;
  }
}

TEST_F(LifeCycleTest, AViewThatWasClosedOpensAgain) {
  ConsoleProcess console(folder_);
  ASSERT_TRUE(console.IsUp());
  const auto visible = [&](const char* object) {
    return console
        .Ask({{QStringLiteral("do"), QStringLiteral("find")},
              {QStringLiteral("object"), QLatin1String(object)}})
        .value(QLatin1String("value"))
        .toObject()
        .value(QLatin1String("visible"))
        .toBool();
  };
  for (const auto& [command, name] :
       {std::pair{"ID_XpointMap", "frmXmap"}, std::pair{"ID_StationAlphas", "frmAlphas"},
        std::pair{"ID_ButtonProgramming", "frmButtons"}}) {
    const char* const view = name;
    EXPECT_TRUE(visible(view)) << view;
    console.CloseWindow(view);
    EXPECT_TRUE(ConsoleProcess::WaitFor([&] { return !visible(view); })) << view;
    console.Trigger(command);
    EXPECT_TRUE(ConsoleProcess::WaitFor([&] { return visible(view); })) << view;
  }
  // A map opened anew shows what is known.
  EXPECT_EQ(console.Mark(1, 1), 2);
}

TEST_F(LifeCycleTest, ASecondConsoleInTheSameFolderSaysSoAndEnds) {
  ConsoleProcess first(folder_);
  ASSERT_TRUE(first.IsUp());
  const std::string copy = ReadFile(folder_ / "WorkingDb.md$");
  {
    ConsoleProcess second(folder_);
    ASSERT_TRUE(second.IsUp());
    ASSERT_TRUE(ConsoleProcess::WaitFor([&] { return !second.Boxes().empty(); }));
    EXPECT_EQ(second.Boxes()[0],
              (Box{"exclamation", "Orvo Intercom Control",
                   "Orvo Intercom Control is already running in this folder.", ""}));
    second.CloseBox();
    EXPECT_EQ(second.WaitForEnd(), 1);
  }
  EXPECT_EQ(ReadFile(folder_ / "WorkingDb.md$"), copy);
}

TEST_F(LifeCycleTest, AFailedCopyBackKeepsTheProgramAndTheWork) {
  ConsoleProcess console(folder_);
  ASSERT_TRUE(console.IsUp());
  console.Use("ID_ToggleInhibit", 6, 8);
  ASSERT_TRUE(ConsoleProcess::WaitFor([&] { return console.Mark(6, 8) == 2; }));
  // The disk is full where the copy is written.
  fs::create_symlink("/dev/full", folder_ / "Tesk.mdb.new");
  console.Trigger("ID_Exit");
  ASSERT_TRUE(ConsoleProcess::WaitFor([&] { return !console.Boxes().empty(); }));
  EXPECT_EQ(console.Boxes()[0].title, "Database Error");
  EXPECT_THAT(console.Boxes()[0].text, HasSubstr("Error Saving Database File\r\rError # 3026 - "));
  console.CloseBox();
  EXPECT_EQ(console.Mark(6, 8), 2);
  EXPECT_EQ(StoredInhibits(6).substr(0, 10), "0000010000");

  console.Trigger("ID_Exit");
  EXPECT_EQ(console.WaitForEnd(), 0);
  EXPECT_EQ(StoredInhibits(6).substr(0, 10), "0000010100");
}

// A console that was installed for all users: its folder cannot be written.
TEST_F(LifeCycleTest, WithoutTheRightToWriteItsFolderItUsesTheUsers) {
  // The superuser may write everywhere and becomes somebody else for this.
  std::vector<std::string> asNobody;
  if (geteuid() == 0) asNobody = {"setpriv", "--reuid=65534", "--regid=65534", "--clear-groups"};
  fs::permissions(folder_.Program(), fs::perms::owner_read | fs::perms::owner_exec |
                                         fs::perms::others_read | fs::perms::others_exec);
  fs::permissions(folder_ / "Orvotesk.ini", fs::perms::all);
  const std::string settings = ReadFile(folder_ / "Orvotesk.ini");
  ConsoleProcess console(folder_, asNobody);
  ASSERT_TRUE(console.IsUp());
  EXPECT_EQ(console.Terminate(), 0);
  EXPECT_FALSE(fs::exists(folder_ / "Tesk.mdb"));
  EXPECT_EQ(ReadFile(folder_ / "Orvotesk.ini"), settings);
  const fs::path user = folder_.Home() / "Orvo" / "Orvo Intercom Control";
  EXPECT_TRUE(fs::exists(user / "Tesk.mdb"));
  EXPECT_THAT(ReadFile(user / "Orvotesk.ini"), HasSubstr("App Path=" + user.string() + "\\\r\n"));
  EXPECT_THAT(ReadFile(user / "Orvotesk.ini"), HasSubstr("COM1=" + line_));
}

TEST_F(LifeCycleTest, ADatabaseThatTheUserMayNotReadIsSaid) {
  std::vector<std::string> asNobody;
  if (geteuid() == 0) asNobody = {"setpriv", "--reuid=65534", "--regid=65534", "--clear-groups"};
  WriteFile(folder_ / "Tesk.mdb", "of the house");
  fs::permissions(folder_ / "Tesk.mdb", fs::perms::none);
  fs::permissions(folder_.Program(), fs::perms::owner_read | fs::perms::owner_exec |
                                         fs::perms::others_read | fs::perms::others_exec);
  fs::permissions(folder_ / "Orvotesk.ini", fs::perms::all);
  ConsoleProcess console(folder_, asNobody);
  ASSERT_TRUE(console.IsUp());
  const auto boxes = console.Boxes();
  ASSERT_EQ(boxes.size(), 1U);
  EXPECT_EQ(boxes[0].title, "Error Processing");
  EXPECT_THAT(boxes[0].text,
              HasSubstr("Error in Preparing User Folder\rError # 75 - Cannot copy "));
  EXPECT_EQ(console.Terminate(), 0);
}

}  // namespace
}  // namespace test
