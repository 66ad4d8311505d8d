// SPDX-License-Identifier: MIT
//
// Input levels and tally, on the real console with the real simulated switcher: keys to gains
// and reports to sliders and lamps.

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <sstream>

#include "tests/end_to_end/console_process.h"
#include "tests/support/pty.h"
#include "tests/support/simulator_process.h"

namespace test {
namespace {

using testing::HasSubstr;
using testing::StartsWith;

constexpr char kGreen[] = "#00ff00";
constexpr char kDarkRed[] = "#c00000";

// Types to whatever has the focus.
void Type(ConsoleProcess& console, const char* sequence) {
  const QJsonObject answer = console.Ask({{QStringLiteral("do"), QStringLiteral("keys")},
                                          {QStringLiteral("sequence"), QLatin1String(sequence)}});
  EXPECT_TRUE(answer.value(QLatin1String("ok")).toBool()) << sequence;
}

bool WaitForShown(ConsoleProcess& console, const char* window, bool shown) {
  return ConsoleProcess::WaitFor([&] { return console.IsShown(window) == shown; });
}

class LevelsAndTallyTest : public testing::Test {
 protected:
  void SetUp() override {
    folder_.WriteSettings(line_);
    console_ = std::make_unique<ConsoleProcess>(folder_);
    ASSERT_TRUE(console_->IsUp());
    // From here on the map, and the gains that follow it, are there.
    ASSERT_TRUE(simulator_.WaitForLine("rx poll tally"));
  }

  void Open(const char* command, const char* dialog) {
    console_->Trigger(command);
    ASSERT_TRUE(WaitForShown(*console_, dialog, true)) << command;
  }

  std::string Caption(const char* window) {
    return console_->Property(window, "windowTitle").toString().toStdString();
  }
  int Slider(int index) {
    return console_->Property(("Slider1_" + std::to_string(index)).c_str(), "value").toInt(-1);
  }
  bool WaitForSlider(int index, int value) {
    return ConsoleProcess::WaitFor([&] { return Slider(index) == value; });
  }
  std::string Lamp(int point) {
    const std::string name = "shpQdvResponding_" + std::to_string(point);
    return console_->Property(name.c_str(), "color").toString().toStdString();
  }
  bool WaitForLamp(int point, const char* colour) {
    return ConsoleProcess::WaitFor([&] { return Lamp(point) == colour; });
  }

  int argc_ = 0;
  QCoreApplication application_{argc_, nullptr};
  ConsoleFolder folder_;
  std::string line_ = folder_ / "line";
  SimulatorProcess simulator_{{"--log", "--link", line_}};
  std::unique_ptr<ConsoleProcess> console_;
};

TEST_F(LevelsAndTallyTest, EitherCommandOpensTheLevelsAndEscapeClosesThem) {
  for (const char* const command : {"ID_SourceLevelControl", "ID_ViewSourcelevelControl"}) {
    Open(command, "frmInptLevel");
    EXPECT_EQ(Caption("frmInptLevel"), "Input Level Controls");
    console_->Keys("frmInptLevel", "Esc");
    ASSERT_TRUE(WaitForShown(*console_, "frmInptLevel", false));
  }
  // Nothing of that reached the switcher: the first gain is that of the key.
  Open("ID_SourceLevelControl", "frmInptLevel");
  console_->Keys("Slider1_63", "Up");
  const auto gain = simulator_.WaitForLine("rx gain");
  ASSERT_TRUE(gain);
  EXPECT_THAT(*gain, HasSubstr("input 64 step 65"));
}

TEST_F(LevelsAndTallyTest, AKeyOnAChosenSliderSetsTheGainInTheSwitcher) {
  Open("ID_ViewSourcelevelControl", "frmInptLevel");
  for (int tab = 0; tab < 12; ++tab) Type(*console_, "Tab");
  Type(*console_, "Up");
  EXPECT_TRUE(simulator_.WaitForLine("rx gain input 12 step 65"));
  Type(*console_, "PgUp");
  EXPECT_TRUE(simulator_.WaitForLine("rx gain input 12 step 68"));
  Type(*console_, "Down");
  EXPECT_TRUE(simulator_.WaitForLine("rx gain input 12 step 67"));
  EXPECT_EQ(simulator_.Command("gain 12"), "ok input 12 step 67");
  EXPECT_EQ(simulator_.Command("gain 11"), "ok input 11 step 64");
  EXPECT_EQ(console_->Property("Slider1_11", "toolTip"), QJsonValue(QStringLiteral("-33db ")));
  EXPECT_EQ(Caption("frmInptLevel"), "Input Level Controls");
  // What was set is there when the dialog is opened again.
  console_->Keys("frmInptLevel", "Esc");
  ASSERT_TRUE(WaitForShown(*console_, "frmInptLevel", false));
  Open("ID_SourceLevelControl", "frmInptLevel");
  EXPECT_EQ(Slider(11), 60);
}

TEST_F(LevelsAndTallyTest, TheSlidersFollowTheSwitcherAndSendNothing) {
  Open("ID_SourceLevelControl", "frmInptLevel");
  EXPECT_EQ(Slider(0), 63);
  for (const char* const command : {"gain 1 100", "gain 2 127", "gain 63 0", "send-gains"}) {
    EXPECT_THAT(simulator_.Command(command), StartsWith("ok"));
  }
  EXPECT_TRUE(WaitForSlider(0, 27));
  EXPECT_TRUE(WaitForSlider(1, 0));
  EXPECT_TRUE(WaitForSlider(62, 127));
  EXPECT_EQ(console_->Property("Slider1_0", "toolTip"), QJsonValue(QStringLiteral("0db ")));
  EXPECT_EQ(Caption("frmInptLevel"), "Input Level Controls");
  console_->Keys("Slider1_30", "Up");
  const auto gain = simulator_.WaitForLine("rx gain");
  ASSERT_TRUE(gain);
  EXPECT_THAT(*gain, HasSubstr("input 31 step 65"));
  EXPECT_EQ(simulator_.Command("gain 1"), "ok input 1 step 100");
}

TEST_F(LevelsAndTallyTest, AGainThatCannotBeSentIsReportedAndKept) {
  Open("ID_SourceLevelControl", "frmInptLevel");
  simulator_.Command("unplug");
  ASSERT_TRUE(
      ConsoleProcess::WaitFor([&] { return console_->LinkText() == "Not Connected - COM 1"; }));
  console_->Keys("Slider1_0", "Up");
  ASSERT_TRUE(ConsoleProcess::WaitFor([&] { return console_->Boxes().size() == 1; }));
  const Box box = console_->Boxes()[0];
  EXPECT_EQ(box.icon, "critical");
  EXPECT_EQ(box.title, "Serial Communications Error");
  EXPECT_THAT(box.text, StartsWith("Error Sending Gain Command\r\rError # "));
  console_->CloseBox();
  EXPECT_TRUE(console_->IsShown("frmInptLevel"));
  EXPECT_EQ(Slider(0), 62);
  EXPECT_EQ(console_->Terminate(), 0);
}

TEST_F(LevelsAndTallyTest, EitherCommandAndTheViewsOwnToolOpenTheTally) {
  for (const char* const command : {"ID_QDVStatus", "ID_ViewQDVStatus"}) {
    Open(command, "frmQdvTally");
    console_->Keys("frmQdvTally", "Esc");
    ASSERT_TRUE(WaitForShown(*console_, "frmQdvTally", false));
  }
  console_->Trigger("ID_QDVStatus", "frmXmap");
  ASSERT_TRUE(WaitForShown(*console_, "frmQdvTally", true));
  console_->Click("cmdClose");
  EXPECT_TRUE(WaitForShown(*console_, "frmQdvTally", false));
}

TEST_F(LevelsAndTallyTest, LampsFollowTheSwitcher) {
  Open("ID_ViewQDVStatus", "frmQdvTally");
  EXPECT_TRUE(ConsoleProcess::WaitFor([&] {
    return console_->Property("aidLastReport", "text")
        .toString()
        .startsWith(QStringLiteral("Last report "));
  }));
  for (int point = 1; point <= 64; ++point) EXPECT_EQ(Lamp(point), kDarkRed) << point;
  for (const char* const command : {"tally 12 1", "tally 64 255", "send-tally"}) {
    EXPECT_THAT(simulator_.Command(command), StartsWith("ok"));
  }
  EXPECT_TRUE(WaitForLamp(12, kGreen));
  EXPECT_TRUE(WaitForLamp(64, kGreen));
  EXPECT_EQ(Lamp(13), kDarkRed);
  EXPECT_EQ(console_->Property("shpQdvResponding_12", "accessibleName"),
            QJsonValue(QStringLiteral("QDV 12 responding")));
  simulator_.Command("tally 12 0");
  simulator_.Command("send-tally");
  EXPECT_TRUE(WaitForLamp(12, kDarkRed));
  EXPECT_EQ(Lamp(64), kGreen);

  // Reported while the view was closed, there when it opens.
  console_->Keys("frmQdvTally", "Esc");
  ASSERT_TRUE(WaitForShown(*console_, "frmQdvTally", false));
  simulator_.Command("tally 1 1");
  simulator_.Command("send-tally");
  simulator_.Command("make 1 2");
  simulator_.Command("send-row 1");
  ASSERT_TRUE(ConsoleProcess::WaitFor([&] { return console_->Mark(1, 2) == 1; }));
  Open("ID_QDVStatus", "frmQdvTally");
  EXPECT_EQ(Lamp(1), kGreen);
  EXPECT_EQ(console_->Terminate(), 0);
}

// Byte for byte, on a line with nothing but a recorder at its other end.
TEST(LevelsOnTheLine, EachStepIsOneGainMessage) {
  int argc = 0;
  const QCoreApplication application(argc, nullptr);
  const Pty line;
  const ConsoleFolder folder;
  folder.WriteSettings(line.Device());
  ConsoleProcess console(folder);
  ASSERT_TRUE(console.IsUp());
  console.Trigger("ID_SourceLevelControl");
  ASSERT_TRUE(WaitForShown(console, "frmInptLevel", true));
  console.Keys("Slider1_0", "Up");
  console.Keys("Slider1_5", "Down");
  console.Keys("Slider1_63", "PgUp");
  // Besides these there are polls for the map only.
  std::string seen;
  EXPECT_TRUE(ConsoleProcess::WaitFor([&] {
    std::istringstream bytes(line.Receive());
    for (std::string byte; bytes >> byte;) {
      if (byte != "E5") seen += byte + " ";
    }
    return std::ranges::count(seen, ' ') >= 15;
  }));
  EXPECT_EQ(seen, "E3 00 41 41 FF E3 05 3F 44 FF E3 3F 43 02 FF ");
}

}  // namespace
}  // namespace test
