// SPDX-License-Identifier: MIT
//
// Presets and locks with the real programs: what is stored comes back over the line, what is locked
// stays as it is.

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <filesystem>

#include "tests/end_to_end/console_process.h"
#include "tests/support/simulator_process.h"

namespace test {
namespace {

using testing::StartsWith;

class PresetsTest : public testing::Test {
 protected:
  void SetUp() override {
    folder_.WriteSettings(line_);
    EXPECT_THAT(simulator_.Command("make 5 9"), StartsWith("ok"));
    EXPECT_THAT(simulator_.Command("make 6 8"), StartsWith("ok"));
    Start();
  }

  void Start() {
    console_ = std::make_unique<ConsoleProcess>(folder_);
    ASSERT_TRUE(console_->IsUp());
    ASSERT_TRUE(simulator_.WaitForLine("rx poll tally"));
    ExpectMark(6, 8, kCrosspoint);
  }

  void ExpectMark(int output, int input, int mark) {
    EXPECT_TRUE(ConsoleProcess::WaitFor([&] { return console_->Mark(output, input) == mark; }))
        << "output " << output << " input " << input << " shows " << console_->Mark(output, input);
  }

  void ExpectShown(const char* window, bool isShown = true) {
    EXPECT_TRUE(ConsoleProcess::WaitFor([&] { return console_->IsShown(window) == isShown; }))
        << window;
  }

  int argc_ = 0;
  QCoreApplication application_{argc_, nullptr};
  ConsoleFolder folder_;
  std::string line_ = folder_ / "line";
  SimulatorProcess simulator_{{"--log", "--link", line_}};
  std::unique_ptr<ConsoleProcess> console_;
};

TEST_F(PresetsTest, TheMapComesBackAsItWasStored) {
  console_->Trigger("aidPresets");
  ExpectShown("frmPresets");
  console_->Type("txtPresetName", "Morning");
  console_->Click("cmdStorePreset");
  EXPECT_TRUE(ConsoleProcess::WaitFor([&] { return console_->Rows("lstPresets").size() == 1; }));
  EXPECT_TRUE(std::filesystem::exists(folder_ / "Presets/Morning.json"));

  // Somebody else changes the map meanwhile.
  EXPECT_THAT(simulator_.Command("break 6 8"), StartsWith("ok"));
  EXPECT_THAT(simulator_.Command("make 6 3"), StartsWith("ok"));
  EXPECT_THAT(simulator_.Command("break 5 9"), StartsWith("ok"));
  EXPECT_THAT(simulator_.Command("send-row 5"), StartsWith("ok"));
  EXPECT_THAT(simulator_.Command("send-row 6"), StartsWith("ok"));
  ExpectMark(6, 3, kCrosspoint);
  ExpectMark(5, 9, 0);

  console_->Click("cmdRecallPreset");
  ExpectShown("frmRecall");
  EXPECT_EQ(console_->Rows("lstRecall").size(), 2U);
  console_->Click("cmdOkRecall");
  ExpectShown("frmRecall", false);
  EXPECT_TRUE(simulator_.WaitForLine("rx take output 5 source 9 action 2"));
  EXPECT_TRUE(simulator_.WaitForLine("rx take output 6 source 8 action 2"));
  EXPECT_TRUE(simulator_.WaitForLine("rx take output 6 source 3 action 0"));
  ExpectMark(5, 9, kCrosspoint);
  ExpectMark(6, 8, kCrosspoint);
  ExpectMark(6, 3, 0);
  EXPECT_EQ(console_->Rows("lstPresets").size(), 2U) << "what the map was is kept";
  console_->Click("cmdRecallPreset");
  ExpectShown("frmRecall");
  EXPECT_TRUE(console_->Rows("lstRecall").empty()) << "nothing differs";
  console_->Click("cmdCancelRecall");
  EXPECT_TRUE(console_->Boxes().empty());
}

TEST_F(PresetsTest, LocksHoldAndSurviveTheRun) {
  console_->Use("aidLockOutput", 6, 8);
  console_->Use("ID_Take", 6, 2);
  EXPECT_TRUE(ConsoleProcess::WaitFor([&] { return console_->Boxes().size() == 1; }));
  EXPECT_EQ(console_->Boxes().front().text, "Action Not Allowed On Locked Output");
  console_->CloseBox();
  console_->Trigger("aidLockConsole");
  EXPECT_TRUE(console_->IsShown("aidLocked"));
  console_->CloseWindow("frmMain");
  ASSERT_EQ(console_->WaitForEnd(), 0);
  Start();
  EXPECT_TRUE(console_->IsShown("aidLocked"));
  console_->Use("ID_Take", 7, 2);
  EXPECT_TRUE(ConsoleProcess::WaitFor([&] { return console_->Boxes().size() == 1; }));
  EXPECT_EQ(console_->Boxes().front().text, "Action Not Allowed While Console Is Locked");
  console_->CloseBox();
  console_->Trigger("aidLockConsole");
  ExpectShown("aidUnlockQuestion");
  console_->Click("aidUnlock");
  EXPECT_TRUE(ConsoleProcess::WaitFor([&] { return !console_->IsShown("aidLocked"); }));
  console_->Use("ID_Take", 6, 2);
  EXPECT_TRUE(ConsoleProcess::WaitFor([&] { return console_->Boxes().size() == 1; }));
  console_->CloseBox();
  console_->Use("ID_Take", 7, 2);
  EXPECT_TRUE(simulator_.WaitForLine("rx take output 7 source 2 action 3"));
  ExpectMark(6, 8, kCrosspoint);
}

}  // namespace
}  // namespace test
