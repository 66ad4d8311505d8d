// SPDX-License-Identifier: MIT
//
// The commands of the main window, on the real console.

#include <gtest/gtest.h>

#include "tests/end_to_end/console_process.h"
#include "tests/support/simulator_process.h"

namespace test {
namespace {

namespace fs = std::filesystem;

class CommandsTest : public testing::Test {
 protected:
  void SetUp() override { folder_.WriteSettings(line_); }

  static bool IsVisible(ConsoleProcess& console, const char* object) {
    return console
        .Ask({{QStringLiteral("do"), QStringLiteral("find")},
              {QStringLiteral("object"), QLatin1String(object)}})
        .value(QLatin1String("value"))
        .toObject()
        .value(QLatin1String("visible"))
        .toBool();
  }

  static bool WaitForVisible(ConsoleProcess& console, const char* object, bool visible) {
    return ConsoleProcess::WaitFor([&] { return IsVisible(console, object) == visible; });
  }

  static std::string Text(ConsoleProcess& console, const char* object) {
    return console.Property(object, "text").toString().toStdString();
  }

  int argc_ = 0;
  QCoreApplication application_{argc_, nullptr};
  ConsoleFolder folder_;
  std::string line_ = folder_ / "line";
  SimulatorProcess simulator_{{"--log", "--link", line_}};
};

TEST_F(CommandsTest, AboutSaysHowTheConsoleIsSetUp) {
  ConsoleProcess console(folder_);
  ASSERT_TRUE(console.IsUp());
  ASSERT_TRUE(simulator_.WaitForLine("rx poll tally"));
  console.Trigger("ID_About");
  ASSERT_TRUE(WaitForVisible(console, "frmTeskAbout", true));
  EXPECT_EQ(Text(console, "lblAppPath"), folder_.Program().string() + "\\");
  EXPECT_EQ(Text(console, "lblComPort"), "COM 1");
  EXPECT_EQ(Text(console, "lblConnected"), "Yes");
  EXPECT_EQ(Text(console, "lblStations"), "64 Stations");
  EXPECT_EQ(Text(console, "lblChannels"), "64 Channels");
  EXPECT_EQ(Text(console, "lblTitle"), "Orvo Intercom/IFB Control\rVersion 2.12 - 04/17/2002");
  // The system may end the console under an open dialog.
  EXPECT_EQ(console.Terminate(), 0);
}

TEST_F(CommandsTest, ContentsStartsTheHelpViewer) {
  const fs::path viewer = folder_.Home() / "WINHLP32.EXE";
  const fs::path seen = folder_.Home() / "seen";
  WriteFile(viewer, "#!/bin/sh\necho \"$# $1\" >" + seen.string() + "\n");
  fs::permissions(viewer, fs::perms::all);
  const QByteArray path = qgetenv("PATH");
  qputenv("PATH", QByteArray::fromStdString(folder_.Home().string()) + ':' + path);
  ConsoleProcess console(folder_);
  qputenv("PATH", path);
  ASSERT_TRUE(console.IsUp());
  console.Trigger("ID_Contents");
  EXPECT_TRUE(ConsoleProcess::WaitFor([&] { return ReadFile(seen) == "1 Teskctl.hlp\n"; }))
      << ReadFile(seen);
  EXPECT_FALSE(IsVisible(console, "frmHelp"));
}

TEST_F(CommandsTest, WithoutAViewerContentsShowsTheManual) {
  ConsoleProcess console(folder_);
  ASSERT_TRUE(console.IsUp());
  for (int times = 0; times < 2; ++times) {
    console.Trigger("ID_Contents");
    ASSERT_TRUE(WaitForVisible(console, "frmHelp", true));
    EXPECT_TRUE(console.Property("aidHelpPages", "plainText")
                    .toString()
                    .contains(QStringLiteral("Make a crosspoint")));
    if (times == 0) {
      console.CloseWindow("frmHelp");
      ASSERT_TRUE(WaitForVisible(console, "frmHelp", false));
    }
  }
  EXPECT_TRUE(console.Boxes().empty());
  console.Trigger("ID_Exit");
  EXPECT_EQ(console.WaitForEnd(), 0);
}

TEST_F(CommandsTest, TheThreeViewsHaveTheirNamesCaptionsAndFirstPlaces) {
  ConsoleProcess console(folder_);
  ASSERT_TRUE(console.IsUp());
  const auto size = [&](const char* view) {
    const QJsonArray frame = console.Property(view, "frameSize").toArray();
    return std::vector<int>{frame[0].toInt(), frame[1].toInt()};
  };
  EXPECT_EQ(console.Property("frmXmap", "windowTitle"),
            QJsonValue(QStringLiteral("Crosspoint Map")));
  EXPECT_EQ(console.Property("frmAlphas", "windowTitle"),
            QJsonValue(QStringLiteral("Station Labels")));
  EXPECT_EQ(console.Property("frmButtons", "windowTitle"),
            QJsonValue(QStringLiteral("Station Button Programming")));
  // All are narrower than their sub-windows by the same frame.
  const std::vector<int> map = size("frmXmap");
  const std::vector<int> buttons = size("frmButtons");
  EXPECT_EQ(size("frmAlphas"), map);
  EXPECT_EQ(map[0] - buttons[0], 667 - 593);
  EXPECT_EQ(map[1] - buttons[1], 600 - 407);
}

TEST_F(CommandsTest, EveryWindowCanBeAskedFor) {
  ConsoleProcess console(folder_);
  ASSERT_TRUE(console.IsUp());
  for (const char* const id :
       {"ID_SourceLevelControl", "ID_ViewSourcelevelControl", "ID_QDVStatus", "ID_ViewQDVStatus",
        "ID_XpointMap", "ID_StationAlphas", "ID_ButtonProgramming", "ID_SendData",
        "ID_RetreiveData", "aidImportProgramming", "aidKeySheets", "aidCopyToStations",
        "aidWhereUsed"}) {
    EXPECT_EQ(console.Property(id, "enabled"), QJsonValue(true)) << id;
  }
}

TEST_F(CommandsTest, ArrangingReachesTheViews) {
  ConsoleProcess console(folder_);
  ASSERT_TRUE(console.IsUp());
  console.SetSize("frmMain", 800, 700);
  const auto width = [&](const char* view) { return console.Property(view, "width").toInt(); };
  const int area = console.Property("mdiArea", "width").toInt();
  console.Trigger("ID_TileHorizontal");
  EXPECT_TRUE(ConsoleProcess::WaitFor([&] { return width("frmXmap") > area * 9 / 10; }));
  EXPECT_EQ(width("frmButtons"), width("frmXmap"));
  console.Trigger("ID_TileVertical");
  EXPECT_TRUE(ConsoleProcess::WaitFor([&] { return width("frmButtons") < area / 2; }));
}

}  // namespace
}  // namespace test
