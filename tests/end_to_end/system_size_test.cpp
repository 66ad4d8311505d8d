// SPDX-License-Identifier: MIT
//
// The live map in systems of every size, on databases made for them.

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "db/database_files.h"
#include "db/schema.h"
#include "tests/end_to_end/console_process.h"
#include "tests/support/simulator_process.h"

namespace test {
namespace {

using testing::HasSubstr;

class SystemSizeTest : public testing::TestWithParam<int> {
 protected:
  void SetUp() override {
    folder_.WriteSettings(line_);
    CreateSystem(GetParam());
  }

  // A database of so many channels, each with a record, labels that fill their fields and an
  // inhibit of itself.
  void CreateSystem(int channels) {
    db::DatabaseFiles files(folder_ / "Tesk.mdb", folder_ / "WorkingDb.md$");
    ASSERT_TRUE(files.Open().ok());
    jet::RecordSet& info = *files.DbInfo();
    ASSERT_TRUE(info.Edit().ok());
    ASSERT_TRUE(info.Set("ChannelCount", channels).ok());
    ASSERT_TRUE(info.Set("StationCount", channels).ok());
    ASSERT_TRUE(info.Set("LabelCount", channels).ok());
    ASSERT_TRUE(info.Update().ok());
    jet::RecordSet& stations = *files.Stations();
    for (int stationNum = 1; stationNum <= channels; ++stationNum) {
      ASSERT_TRUE(stations.Seek(stationNum).ok());
      ASSERT_TRUE((stations.NoMatch() ? stations.AddNew() : stations.Edit()).ok());
      std::string inhibits(static_cast<std::size_t>(channels), '0');
      inhibits[static_cast<std::size_t>(stationNum) - 1] = '1';
      const std::string number = std::to_string(stationNum);
      ASSERT_TRUE(stations.Set("StationNum", stationNum).ok());
      ASSERT_TRUE(stations.Set("Label", "Out " + number).ok());
      ASSERT_TRUE(stations.Set("InLabel", "In " + number).ok());
      ASSERT_TRUE(stations.Set("Inhibits", inhibits).ok());
      ASSERT_TRUE(stations.Update().ok());
    }
    ASSERT_TRUE(files.SaveAndClose().ok());
  }

  int argc_ = 0;
  QCoreApplication application_{argc_, nullptr};
  ConsoleFolder folder_;
  std::string line_ = folder_ / "line";
};

TEST_P(SystemSizeTest, MapTakesAndInhibits) {
  const int last = GetParam();
  const std::string text = std::to_string(last);
  SimulatorProcess simulator({"--log", "--link", line_, "--channels", text});
  simulator.Command("make " + text + " 1");
  simulator.Command("make 1 " + text + " priority");
  ConsoleProcess console(folder_);
  ASSERT_TRUE(console.IsUp());
  ASSERT_TRUE(simulator.WaitForLine("rx poll tally"));
  const auto becomes = [&](int output, int input, int mark) {
    return ConsoleProcess::WaitFor([&] { return console.Mark(output, input) == mark; });
  };
  EXPECT_TRUE(becomes(last, 1, 1));
  EXPECT_TRUE(becomes(1, last, 3));
  EXPECT_EQ(console.Mark(last, last), 2);
  EXPECT_EQ(console.CellText(last + 1, 0), "Out " + text);
  EXPECT_EQ(console.CellText(last + 1, 1), last > 99 ? text : (last < 10 ? "0" : "") + text);

  console.Use("ID_Take", last, last - 1);
  EXPECT_TRUE(simulator.WaitForLine("rx take output " + text + " source " +
                                    std::to_string(last - 1) + " action 3"));
  EXPECT_TRUE(becomes(last, last - 1, 1));
  EXPECT_TRUE(becomes(last, 1, 0));

  console.Use("ID_ToggleInhibit", last, 2);
  EXPECT_TRUE(becomes(last, 2, 2));
  console.Trigger("ID_SendInhibits", "frmXmap");
  EXPECT_TRUE(simulator.WaitForLine("rx inhibits output " + text));
  EXPECT_THAT(simulator.Command("inhibits " + text), HasSubstr(" 2 " + text));
  EXPECT_TRUE(console.Boxes().empty());
}

INSTANTIATE_TEST_SUITE_P(Channels, SystemSizeTest, testing::Values(8, 16, 96, 104, 128, 256));

}  // namespace
}  // namespace test
