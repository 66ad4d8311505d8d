// SPDX-License-Identifier: MIT
//
// Edits taken back on the real console: what is saved is what was on screen, and the log on disk
// has it.

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "tests/end_to_end/console_process.h"
#include "tests/end_to_end/system_database.h"
#include "tests/support/simulator_process.h"

namespace test {
namespace {

using testing::ContainsRegex;
using testing::StartsWith;

class UndoTest : public testing::Test {
 protected:
  void SetUp() override {
    folder_.WriteSettings(line_);
    CreateSystem(folder_ / "Tesk.mdb", 16, 0);
    before_ = ReadStations(folder_ / "Tesk.mdb");
  }

  // A label of the first row, typed and stored.
  static void EditFirstLabel(ConsoleProcess& console, const std::string& label) {
    console.Trigger("ID_StationAlphas");
    console.Keys("jgAlphas", "Ctrl+Home");
    console.Keys("jgAlphas", "Home");
    console.Keys("jgAlphas", "Right");
    console.Type("jgAlphas", label.substr(0, 1));
    ASSERT_TRUE(ConsoleProcess::WaitFor([&] { return console.IsShown("edtLabel"); }));
    console.Type("edtLabel", label.substr(1));
    console.Keys("edtLabel", "Return");
    ASSERT_TRUE(ConsoleProcess::WaitFor(
        [&] { return console.Rows("jgAlphas").front().starts_with("1|" + label + "|"); }));
  }

  int argc_ = 0;
  QCoreApplication application_{argc_, nullptr};
  ConsoleFolder folder_;
  std::string line_ = folder_ / "line";
  SimulatorProcess simulator_{{"--log", "--link", line_}};
  StoredTables before_;
};

TEST_F(UndoTest, WhatIsTakenBackIsSavedAsItWasAndTheLogOnDiskHasIt) {
  ConsoleProcess console(folder_);
  ASSERT_TRUE(console.IsUp());
  const std::string label = before_["1 Label"];
  EditFirstLabel(console, "DESK A");
  EditFirstLabel(console, "DESK B");
  EXPECT_EQ(console.Property("aidUndo", "text").toString().toStdString(),
            "&Undo Label Of Station 1");
  console.Keys("jgAlphas", "Ctrl+Z");
  EXPECT_THAT(console.Rows("jgAlphas").front(), StartsWith("1|DESK A|"));
  console.Keys("jgAlphas", "Ctrl+Z");
  EXPECT_THAT(console.Rows("jgAlphas").front(), StartsWith("1|" + label + "|"));
  console.Keys("jgAlphas", "Ctrl+Shift+Z");
  EXPECT_THAT(console.Rows("jgAlphas").front(), StartsWith("1|DESK A|"));
  EXPECT_EQ(console.Terminate(), 0);

  StoredTables expected = before_;
  expected["1 Label"] = "DESK A";
  EXPECT_EQ(ReadStations(folder_ / "Tesk.mdb"), expected);
  const std::string log = ReadFile(folder_ / "Teskctl.log");
  EXPECT_THAT(log, ContainsRegex("\n20[0-9-]+ [0-9:.]+\tNote\tUndone: Label of station 1\n"));
  EXPECT_THAT(log, ContainsRegex("\n20[0-9-]+ [0-9:.]+\tNote\tRedone: Label of station 1\n"));
  EXPECT_THAT(log, ContainsRegex("\n20[0-9-]+ [0-9:.]+\tNote\tDatabase saved\n"));
}

}  // namespace
}  // namespace test
