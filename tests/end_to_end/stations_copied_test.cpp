// SPDX-License-Identifier: MIT
//
// Programming copied to other stations, labels from a file, and what points at a station: the real
// console, the file that it saves, and the line on which nothing goes out.

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "tests/end_to_end/console_process.h"
#include "tests/end_to_end/system_database.h"
#include "tests/support/simulator_process.h"

namespace test {
namespace {

namespace fs = std::filesystem;
using testing::Contains;
using testing::HasSubstr;

constexpr int kStations = 16;

class StationsCopiedTest : public testing::Test {
 protected:
  void SetUp() override {
    folder_.WriteSettings(line_);
    CreateSystem(Database(), kStations, 1);
    SetField(Database(), 1, "B1 Type", 1);
    SetField(Database(), 1, "B1 First", 3);
    SetField(Database(), 1, "B1 Prog", "001" + std::string(61, '0'));
    before_ = ReadStations(Database());
    simulator_ = std::make_unique<SimulatorProcess>(std::vector<std::string>{
        "--database", Database().string(), "--log", "--baud", "0", "--link", line_});
  }

  fs::path Database() const { return folder_ / "Tesk.mdb"; }

  static bool WaitForShown(ConsoleProcess& console, const char* object, bool shown = true) {
    return ConsoleProcess::WaitFor([&] { return console.IsShown(object) == shown; });
  }
  static bool WaitForUnsent(ConsoleProcess& console) {
    return ConsoleProcess::WaitFor(
        [&] { return console.IsShown("aidUnsent") || console.IsShown("aidUnsentSign"); });
  }

  // Whether the switcher hears nothing but polls for a while.
  bool IsLineQuiet() {
    for (int polls = 0; polls < 10; ++polls) {
      const auto line = simulator_->WaitForLine("rx ");
      if (!line || !HasPoll(*line)) return false;
    }
    return true;
  }
  static bool HasPoll(const std::string& line) { return line.find("rx poll") != line.npos; }

  int argc_ = 0;
  QCoreApplication application_{argc_, nullptr};
  ConsoleFolder folder_;
  std::string line_ = folder_ / "line";
  std::unique_ptr<SimulatorProcess> simulator_;
  StoredTables before_;
};

TEST_F(StationsCopiedTest, AButtonCopiedToAllIsSavedUnsentAndNotOnTheLine) {
  ConsoleProcess console(folder_);
  ASSERT_TRUE(console.IsUp());
  ASSERT_TRUE(simulator_->WaitForLine("rx poll keep-alive"));
  console.Trigger("ID_ButtonProgramming");
  ASSERT_TRUE(WaitForShown(console, "frmButtons"));
  console.Trigger("aidCopyToStations", "frmButtons");
  ASSERT_TRUE(WaitForShown(console, "frmCopyTo"));
  console.Click("optCopyButton");
  console.Click("aidTickAll");
  console.Click("cmdOkCopy");
  ASSERT_TRUE(WaitForShown(console, "frmCopyTo", false));
  EXPECT_TRUE(WaitForUnsent(console));
  EXPECT_TRUE(IsLineQuiet());
  EXPECT_EQ(console.Terminate(), 0);

  StoredTables expected = before_;
  for (int station = 2; station <= kStations; ++station) {
    const std::string record = std::to_string(station);
    for (const char* const field : {" B1 Type", " B1 First", " B1 Prog"}) {
      expected[record + field] = before_[std::string("1") + field];
    }
  }
  EXPECT_EQ(ReadStations(Database()), expected);
}

TEST_F(StationsCopiedTest, AnExportedAndEditedFileComesBack) {
  ConsoleProcess console(folder_);
  ASSERT_TRUE(console.IsUp());
  ASSERT_TRUE(simulator_->WaitForLine("rx poll keep-alive"));
  const fs::path file = folder_.Home() / "labels.csv";
  const auto choose = [&](const char* dialog) {
    ASSERT_TRUE(WaitForShown(console, dialog));
    console.Set("fileNameEdit", "text", QString::fromStdString(file.string()));
    console.Keys("fileNameEdit", "Return");
    ASSERT_TRUE(WaitForShown(console, dialog, false));
  };
  console.Trigger("aidExportLabelsCsv");
  choose("aidExportDialog");
  std::string text = ReadFile(file);
  const std::string row = "\r\n3," + before_["3 Label"] + ",";
  ASSERT_THAT(text, HasSubstr(row));
  text.replace(text.find(row), row.size(), "\r\n3,CAM 3,");
  WriteFile(file, text);
  console.Trigger("aidImportProgramming");
  choose("aidImportDialog");
  ASSERT_TRUE(WaitForShown(console, "frmImport"));
  console.Click("cmdOkImport");
  ASSERT_TRUE(WaitForShown(console, "frmImport", false));
  EXPECT_TRUE(WaitForUnsent(console));
  EXPECT_TRUE(IsLineQuiet());
  EXPECT_EQ(console.Terminate(), 0);

  StoredTables expected = before_;
  expected["3 Label"] = "CAM 3";
  EXPECT_EQ(ReadStations(Database()), expected);
}

TEST_F(StationsCopiedTest, WhereUsedLeadsToTheButtonBehindTheMap) {
  ConsoleProcess console(folder_);
  ASSERT_TRUE(console.IsUp());
  console.Trigger("ID_ButtonProgramming");
  ASSERT_TRUE(WaitForShown(console, "frmButtons"));
  console.Trigger("aidWhereUsed", "frmButtons");
  ASSERT_TRUE(WaitForShown(console, "frmWhereUsed"));
  ASSERT_THAT(console.Rows("lstWhereUsed"), Contains(HasSubstr("|Button ")));
  console.Trigger("ID_XpointMap");
  console.Click("aidGoToUse");
  EXPECT_TRUE(ConsoleProcess::WaitFor(
      [&] { return console.Property("SSActiveTabs1", "currentIndex").toInt(-1) == 4; }));
  EXPECT_TRUE(console.IsShown("frmWhereUsed"));
  EXPECT_EQ(console.Terminate(), 0);
  EXPECT_EQ(ReadStations(Database()), before_);
}

}  // namespace
}  // namespace test
