// SPDX-License-Identifier: MIT
//
// Start, end and start again: what the console keeps.

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <sys/resource.h>
#include <sys/stat.h>
#include <unistd.h>

#include <csignal>

#include "db/database_files.h"
#include "tests/end_to_end/console_process.h"
#include "tests/end_to_end/system_database.h"
#include "tests/support/simulator_process.h"

namespace test {
namespace {

namespace fs = std::filesystem;
using testing::HasSubstr;
using testing::StartsWith;

// Of a console that is told when its disk is full, instead of being killed.
std::vector<std::string> Told() { return {"env", "--ignore-signal=XFSZ"}; }

// The disk of a running console is full: while the object lives none of its files can grow.
class FullDiskOf {
 public:
  explicit FullDiskOf(const ConsoleProcess& console) : process_(static_cast<pid_t>(console.Id())) {
    constexpr rlimit kSmall{.rlim_cur = 100000, .rlim_max = RLIM_INFINITY};
    EXPECT_EQ(prlimit(process_, RLIMIT_FSIZE, &kSmall, &before_), 0);
  }
  ~FullDiskOf() { EXPECT_EQ(prlimit(process_, RLIMIT_FSIZE, &before_, nullptr), 0); }
  FullDiskOf(const FullDiskOf&) = delete;
  FullDiskOf& operator=(const FullDiskOf&) = delete;

 private:
  const pid_t process_;
  rlimit before_{};
};

// The superuser may write everywhere and becomes somebody else for this.
std::vector<std::string> AsNobody() {
  if (geteuid() != 0) return {};
  return {"setpriv", "--reuid=65534", "--regid=65534", "--clear-groups"};
}

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

  // As the folder of a program that was installed for all users.
  void LockProgramFolder() {
    fs::permissions(folder_.Program(), fs::perms::owner_read | fs::perms::owner_exec |
                                           fs::perms::others_read | fs::perms::others_exec);
    fs::permissions(folder_ / "Orvotesk.ini", fs::perms::all);
  }

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
  ConsoleProcess console(folder_, Told());
  ASSERT_TRUE(console.IsUp());
  console.Use("ID_ToggleInhibit", 6, 8);
  ASSERT_TRUE(ConsoleProcess::WaitFor([&] { return console.Mark(6, 8) == 2; }));
  {
    const FullDiskOf full(console);
    console.LogOut();
    ASSERT_TRUE(ConsoleProcess::WaitFor([&] { return !console.Boxes().empty(); }));
  }
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
  ConsoleProcess console(folder_, Told());
  ASSERT_TRUE(console.IsUp());
  console.Use("ID_ToggleInhibit", 6, 8);
  ASSERT_TRUE(ConsoleProcess::WaitFor([&] { return console.Mark(6, 8) == 2; }));
  {
    const FullDiskOf full(console);
    console.Trigger("ID_Exit");
    ASSERT_TRUE(ConsoleProcess::WaitFor([&] { return !console.Boxes().empty(); }));
  }
  EXPECT_EQ(console.Boxes()[0].title, "Database Error");
  EXPECT_THAT(console.Boxes()[0].text, HasSubstr("Error Saving Database File\r\rError # 3026 - "));
  console.CloseBox();
  EXPECT_EQ(console.Mark(6, 8), 2);
  EXPECT_EQ(StoredInhibits(6).substr(0, 10), "0000010000");

  console.Trigger("ID_Exit");
  EXPECT_EQ(console.WaitForEnd(), 0);
  EXPECT_EQ(StoredInhibits(6).substr(0, 10), "0000010100");
}

// The house has protected its tables: that is said before anybody works in vain, and again when it
// would be lost.
TEST_F(LifeCycleTest, AWriteProtectedDatabaseIsSaidAndNotReplaced) {
  const auto protect = [this](bool on) {
    fs::permissions(folder_ / "Tesk.mdb", fs::perms::owner_write,
                    on ? fs::perm_options::remove : fs::perm_options::add);
  };
  ASSERT_EQ(ConsoleProcess(folder_).Terminate(), 0);
  protect(true);
  const std::string before = ReadFile(folder_ / "Tesk.mdb");
  ConsoleProcess console(folder_);
  ASSERT_TRUE(console.IsUp());
  ASSERT_EQ(console.Boxes().size(), 1U);
  EXPECT_EQ(console.Boxes()[0],
            (Box{"exclamation", "Orvo Intercom Control",
                 "Tesk.mdb Is Write-Protected\r\rWhat is edited cannot be saved, unless the "
                 "protection is taken off before the console is closed.",
                 ""}));
  console.CloseBox();
  console.Use("ID_ToggleInhibit", 6, 8);
  ASSERT_TRUE(ConsoleProcess::WaitFor([&] { return console.Mark(6, 8) == 2; }));
  console.Trigger("ID_Exit");
  ASSERT_TRUE(ConsoleProcess::WaitFor([&] { return !console.Boxes().empty(); }));
  EXPECT_EQ(console.Boxes()[0],
            (Box{"critical", "Database Error",
                 "Error Saving Database File\r\rError # 3027 - Cannot replace Tesk.mdb: It is "
                 "write-protected",
                 ""}));
  console.CloseBox();
  EXPECT_EQ(ReadFile(folder_ / "Tesk.mdb"), before);
  protect(false);
  console.Trigger("ID_Exit");
  EXPECT_EQ(console.WaitForEnd(), 0);
  EXPECT_EQ(StoredInhibits(6).substr(0, 10), "0000010100");
}

// Nobody can do anything about it: what was edited is put beside the database, which stays as it
// is, and the console ends.
class NeverSavedTest : public LifeCycleTest {
 protected:
  void SetUp() override {
    LifeCycleTest::SetUp();
    ASSERT_EQ(ConsoleProcess(folder_, Told()).Terminate(), 0);
    before_ = ReadFile(folder_ / "Tesk.mdb");
  }

  static void Edit(ConsoleProcess& console) {
    ASSERT_TRUE(console.IsUp());
    while (!console.Boxes().empty()) console.CloseBox();
    console.Use("ID_ToggleInhibit", 6, 8);
    ASSERT_TRUE(ConsoleProcess::WaitFor([&] { return console.Mark(6, 8) == 2; }));
  }

  void CloseWithoutSaving(ConsoleProcess& console) {
    console.Trigger("ID_Exit");
    ASSERT_TRUE(ConsoleProcess::WaitFor([&] { return console.IsShown("aidCloseWithoutSaving"); }));
    EXPECT_THAT(console.Boxes()[0].text, HasSubstr("Error Saving Database File\r\rError # "));
    console.Click("aidCloseWithoutSaving");
    ASSERT_TRUE(ConsoleProcess::WaitFor([&] {
      return !console.Boxes().empty() && console.Boxes()[0].title == "Orvo Intercom Control";
    }));
    const std::string begin = "Closed Without Saving\r\rWhat was edited is in this file: ";
    const std::string text = console.Boxes()[0].text;
    ASSERT_TRUE(text.starts_with(begin)) << text;
    const fs::path kept = text.substr(begin.size());
    EXPECT_TRUE(kept.filename().string().starts_with("Tesk-unsaved-20")) << kept;
    console.CloseBox();
    EXPECT_EQ(console.WaitForEnd(), 0);
    EXPECT_TRUE(ReadFile(folder_ / "Tesk.mdb") == before_);
    EXPECT_FALSE(fs::exists(folder_ / "WorkingDb.md$"));
    fs::remove(folder_ / "Tesk.mdb");
    fs::rename(kept, folder_ / "Tesk.mdb");
    EXPECT_EQ(StoredInhibits(6).substr(0, 10), "0000010100");
  }

  std::string before_;
};

TEST_F(NeverSavedTest, AWriteProtectedDatabaseLetsTheConsoleGo) {
  fs::permissions(folder_ / "Tesk.mdb", fs::perms::owner_write, fs::perm_options::remove);
  ConsoleProcess console(folder_, Told());
  Edit(console);
  CloseWithoutSaving(console);
}

TEST_F(NeverSavedTest, AFullDiskLetsTheConsoleGo) {
  ConsoleProcess console(folder_, Told());
  Edit(console);
  rlimit before{};
  constexpr rlimit kSmall{.rlim_cur = 100000, .rlim_max = RLIM_INFINITY};
  ASSERT_EQ(prlimit(static_cast<pid_t>(console.Id()), RLIMIT_FSIZE, &kSmall, &before), 0);
  CloseWithoutSaving(console);
}

// Nothing is waited for, nothing is read without end, nothing of it is replaced.
TEST_F(LifeCycleTest, WhatIsNoFileIsSaidAtOnceAndLeftAlone) {
  const fs::path places = folder_.Home() / "Orvo";
  fs::create_directory(places);
  const fs::path window = places / "Orvo Intercom Control.conf";
  fs::remove(folder_ / "Orvotesk.ini");
  for (const fs::path& pipe : {folder_ / "Orvotesk.ini", folder_ / "Tesk.mdb", window}) {
    ASSERT_EQ(mkfifo(pipe.c_str(), 0666), 0);
  }
  ConsoleProcess console(folder_);
  ASSERT_TRUE(console.IsUp());
  for (const char* const text :
       {"Error in Reading Window Settings\rError # 75 - Cannot read Orvo Intercom Control.conf: It "
        "is no ordinary file",
        "Error in Reading Configuration File\rError # 75 - Cannot read Orvotesk.ini: It is no "
        "ordinary file",
        "Error Opening Database File\r\rError #  3051 - Cannot copy Tesk.mdb: It is no ordinary "
        "file"}) {
    ASSERT_TRUE(ConsoleProcess::WaitFor([&] { return !console.Boxes().empty(); }));
    EXPECT_EQ(console.Boxes()[0].text, text);
    console.CloseBox();
  }
  EXPECT_EQ(console.Terminate(), 0);
  for (const fs::path& pipe : {folder_ / "Orvotesk.ini", folder_ / "Tesk.mdb", window}) {
    EXPECT_TRUE(fs::is_fifo(pipe)) << pipe;
  }
}

// A console that was installed for all users: its folder cannot be written.
TEST_F(LifeCycleTest, WithoutTheRightToWriteItsFolderItUsesTheUsers) {
  LockProgramFolder();
  const std::string settings = ReadFile(folder_ / "Orvotesk.ini");
  ConsoleProcess console(folder_, AsNobody());
  ASSERT_TRUE(console.IsUp());
  const fs::path user = folder_.Home() / "Orvo" / "Orvo Intercom Control";
  EXPECT_TRUE(console.IsShown("aidFolder"));
  EXPECT_EQ(console.Property("aidFolder", "text"),
            QJsonValue(QString::fromStdString("Folder " + user.string())));
  EXPECT_EQ(console.Terminate(), 0);
  EXPECT_FALSE(fs::exists(folder_ / "Tesk.mdb"));
  EXPECT_EQ(ReadFile(folder_ / "Orvotesk.ini"), settings);
  EXPECT_TRUE(fs::exists(user / "Tesk.mdb"));
  EXPECT_THAT(ReadFile(user / "Orvotesk.ini"), HasSubstr("App Path=" + user.string() + "\\\r\n"));
  EXPECT_THAT(ReadFile(user / "Orvotesk.ini"), HasSubstr("COM1=" + line_));
}

TEST_F(LifeCycleTest, InTheProgramsFolderNoFolderIsNamed) {
  ConsoleProcess console(folder_);
  ASSERT_TRUE(console.IsUp());
  EXPECT_FALSE(console.IsShown("aidFolder"));
}

// An old copy of the user's must not be taken for the house's tables.
TEST_F(LifeCycleTest, TwoDatabasesThatDifferAreSaid) {
  ASSERT_EQ(ConsoleProcess(folder_).Terminate(), 0);
  const fs::path user = folder_.Home() / "Orvo" / "Orvo Intercom Control";
  fs::create_directories(user);
  fs::copy_file(folder_ / "Tesk.mdb", user / "Tesk.mdb");
  SetField(folder_ / "Tesk.mdb", 1, "Label", "HOUSE");
  fs::permissions(folder_.Home() / "Orvo", fs::perms::all);
  fs::permissions(user, fs::perms::all);
  for (const auto& file : {folder_ / "Tesk.mdb", user / "Tesk.mdb", folder_ / "WorkingDb.lock"}) {
    fs::permissions(file, fs::perms::all);
  }
  LockProgramFolder();
  ConsoleProcess console(folder_, AsNobody());
  ASSERT_TRUE(console.IsUp());
  ASSERT_TRUE(ConsoleProcess::WaitFor([&] { return !console.Boxes().empty(); }));
  EXPECT_EQ(console.Boxes()[0].icon, "exclamation");
  EXPECT_EQ(console.Boxes()[0].title, "Orvo Intercom Control");
  const std::string text = console.Boxes()[0].text;
  EXPECT_THAT(text,
              StartsWith("There Are Two Databases\r\rThe program's folder cannot be written, so "
                         "this console works on\r" +
                         (user / "Tesk.mdb").string() + " (20"));
  EXPECT_THAT(text, HasSubstr("\rand not on\r" + (folder_ / "Tesk.mdb").string() + " (20"));
}

// The house's tables cannot be read: no others are made in their place.
TEST_F(LifeCycleTest, ADatabaseThatTheUserMayNotReadIsSaidAndNoOtherMade) {
  WriteFile(folder_ / "Tesk.mdb", "of the house");
  fs::permissions(folder_ / "Tesk.mdb", fs::perms::none);
  LockProgramFolder();
  const fs::path user = folder_.Home() / "Orvo" / "Orvo Intercom Control";
  for (int start = 0; start < 2; ++start) {
    ConsoleProcess console(folder_, AsNobody());
    ASSERT_TRUE(console.IsUp());
    ASSERT_TRUE(ConsoleProcess::WaitFor([&] { return !console.Boxes().empty(); }));
    EXPECT_EQ(console.Boxes()[0].title, "Error Processing");
    EXPECT_EQ(
        console.Boxes()[0].text,
        "Error in Preparing User Folder\rError # 75 - Cannot read Tesk.mdb: Permission denied");
    console.CloseBox();
    ASSERT_TRUE(ConsoleProcess::WaitFor([&] { return !console.Boxes().empty(); }));
    EXPECT_THAT(console.Boxes()[0].text,
                StartsWith("Error Opening Database File\r\rError #  3024 - "));
    EXPECT_EQ(console.Terminate(), 0);
    EXPECT_FALSE(fs::exists(user / "Tesk.mdb"));
    EXPECT_FALSE(fs::exists(user / "WorkingDb.md$"));
  }
  EXPECT_TRUE(fs::exists(user / "Orvotesk.ini"));
}

// Nobody can tell whether another console works there.
TEST_F(LifeCycleTest, WithoutALockNoConsoleStarts) {
  fs::create_symlink("victim", folder_ / "WorkingDb.lock");
  ConsoleProcess console(folder_);
  ASSERT_TRUE(console.IsUp());
  ASSERT_TRUE(ConsoleProcess::WaitFor([&] { return !console.Boxes().empty(); }));
  EXPECT_EQ(console.Boxes()[0],
            (Box{"critical", "Error Processing",
                 "Error in Starting In This Folder\rError # 75 - Cannot lock WorkingDb.lock: It is "
                 "no ordinary file",
                 ""}));
  console.CloseBox();
  EXPECT_EQ(console.WaitForEnd(), 1);
  EXPECT_FALSE(fs::exists(folder_ / "victim"));
  EXPECT_FALSE(fs::exists(folder_ / "Tesk.mdb"));
}

}  // namespace
}  // namespace test
