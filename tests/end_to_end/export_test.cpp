// SPDX-License-Identifier: MIT
//
// What an operator types is in what he exports, on the real console.

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "tests/end_to_end/console_process.h"
#include "tests/support/simulator_process.h"

namespace test {
namespace {

namespace fs = std::filesystem;
using testing::Contains;
using testing::EndsWith;
using testing::HasSubstr;

class ExportTest : public testing::Test {
 protected:
  void SetUp() override { folder_.WriteSettings(line_); }

  int argc_ = 0;
  QCoreApplication application_{argc_, nullptr};
  ConsoleFolder folder_;
  std::string line_ = folder_ / "line";
  SimulatorProcess simulator_{{"--log", "--link", line_}};
};

TEST_F(ExportTest, ALabelThatIsBeingTypedIsInTheFileAndTheLogSaysSo) {
  ConsoleProcess console(folder_);
  ASSERT_TRUE(console.IsUp());
  console.Type("jgAlphas", "B");
  ASSERT_TRUE(ConsoleProcess::WaitFor([&] { return console.IsShown("edtLabel"); }));
  console.Type("edtLabel", "ooth 7");

  console.Trigger("aidExportLabelsCsv");
  ASSERT_TRUE(ConsoleProcess::WaitFor([&] { return console.IsShown("aidExportDialog"); }));
  const fs::path file = folder_.Home() / "labels of today.csv";
  console.Set("fileNameEdit", "text", QString::fromStdString(file.string()));
  console.Keys("fileNameEdit", "Return");
  ASSERT_TRUE(ConsoleProcess::WaitFor([&] { return fs::exists(file); }));
  EXPECT_THAT(ReadFile(file), HasSubstr("\r\n1,Booth 7,Inpt 001,No,"));

  console.Trigger("aidEventLog");
  ASSERT_TRUE(ConsoleProcess::WaitFor([&] { return console.IsShown("aidLogLines"); }));
  EXPECT_THAT(console.Rows("aidLogLines"), Contains(EndsWith("|Written: " + file.string())));
  EXPECT_EQ(console.Terminate(), 0);
}

}  // namespace
}  // namespace test
