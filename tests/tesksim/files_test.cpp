// SPDX-License-Identifier: MIT
//
// What the simulator starts from: its state file and a console's database.

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <filesystem>
#include <functional>
#include <memory>
#include <string>
#include <vector>

#include "db/jet/database.h"
#include "db/schema.h"
#include "tests/support/temporary_folder.h"
#include "tests/tesksim/small_system.h"
#include "tools/tesksim/database_tables.h"
#include "tools/tesksim/initial_state.h"
#include "tools/tesksim/kept_state.h"
#include "tools/tesksim/state_text.h"

namespace tesksim {
namespace {

namespace fs = std::filesystem;
using testing::HasSubstr;
using testing::StartsWith;

class FilesTest : public testing::Test {
 protected:
  // What is wrong with starting with these arguments; "" when nothing is.
  std::string Start(const std::vector<std::string>& arguments) {
    std::vector<const char*> words;
    for (const std::string& argument : arguments) words.push_back(argument.c_str());
    Options options;
    EXPECT_EQ(ParseOptions(words, &options), "");
    StateFile file(options.stateFile);
    state_.reset();
    const model::Status status = MakeInitialState(options, file, &state_);
    return status.ok() ? "" : status.Description();
  }

  // A console's fresh database in which `change` has been made.
  void MakeDatabase(
      const std::function<void(jet::RecordSet& info, jet::RecordSet& stations)>& change) {
    ASSERT_TRUE(db::CreateDatabase(database_).ok());
    std::unique_ptr<jet::Database> database;
    ASSERT_TRUE(jet::Database::Open(database_, jet::Access::ReadWrite, &database).ok());
    std::unique_ptr<jet::RecordSet> info;
    std::unique_ptr<jet::RecordSet> stations;
    ASSERT_TRUE(database->OpenTable("DbInfo", &info).ok());
    ASSERT_TRUE(database->OpenTable("Stations", &stations).ok());
    ASSERT_TRUE(stations->SetIndex("StationNum").ok());
    change(*info, *stations);
  }

  static void Change(jet::RecordSet& records, const char* field, const jet::Value& value) {
    ASSERT_TRUE(records.Edit().ok());
    ASSERT_TRUE(records.Set(field, value).ok()) << field;
    ASSERT_TRUE(records.Update().ok());
  }

  test::TemporaryFolder folder_;
  fs::path kept_ = folder_ / "kept";
  fs::path database_ = folder_ / "Tesk.mdb";
  std::optional<SwitcherState> state_;
};

TEST_F(FilesTest, TheStateFileIsWrittenAndRead) {
  StateFile file(kept_);
  std::optional<SwitcherState> read;
  EXPECT_TRUE(file.Read(&read).ok());
  EXPECT_FALSE(read.has_value());  // there is none yet

  SwitcherState state(kSmall);
  state.relays[3].set(4);
  ASSERT_TRUE(file.Write(state).ok());
  EXPECT_EQ(test::ReadFile(kept_), WriteState(state));
  EXPECT_FALSE(fs::exists(folder_ / "kept.new"));
  ASSERT_TRUE(StateFile(kept_).Read(&read).ok());
  EXPECT_EQ(WriteState(*read), WriteState(state));
}

TEST_F(FilesTest, AnUnchangedStateIsNotWrittenAgain) {
  SwitcherState state(kSmall);
  StateFile file(kept_);
  ASSERT_TRUE(file.Write(state).ok());
  fs::remove(kept_);
  ASSERT_TRUE(file.Write(state).ok());
  EXPECT_FALSE(fs::exists(kept_));
  state.gains[0] = 1;
  ASSERT_TRUE(file.Write(state).ok());
  EXPECT_TRUE(fs::exists(kept_));
}

TEST_F(FilesTest, WhereNothingCanBeWrittenItSaysSo) {
  const fs::path nowhere = folder_ / "nowhere" / "kept";
  const model::Status status = StateFile(nowhere).Write(SwitcherState(kSmall));
  EXPECT_EQ(status.Description(),
            "cannot write " + nowhere.string() + ".new: No such file or directory");
  // A folder of that name stays.
  fs::create_directory(kept_);
  EXPECT_FALSE(StateFile(kept_).Write(SwitcherState(kSmall)).ok());
  EXPECT_TRUE(fs::is_directory(kept_));
  EXPECT_FALSE(fs::exists(folder_ / "kept.new"));
}

TEST_F(FilesTest, WithoutAFileNothingIsKept) {
  StateFile none("");
  EXPECT_FALSE(none.IsUsed());
  EXPECT_TRUE(none.Write(SwitcherState(kSmall)).ok());
}

TEST_F(FilesTest, JunkInTheStateFileIsAnErrorAndStays) {
  const std::string state = WriteState(SwitcherState(kSmall));
  for (const std::string& junk :
       {std::string(), std::string("junk\n"), state.substr(0, state.size() / 2), state + "x"}) {
    test::WriteFile(kept_, junk);
    EXPECT_THAT(Start({"--state", kept_}), StartsWith(kept_.string() + " is no state file: line "));
    EXPECT_FALSE(state_.has_value());
    EXPECT_EQ(test::ReadFile(kept_), junk);
  }
}

TEST_F(FilesTest, TheStateFileGoesBeforeTheDatabase) {
  SwitcherState state(kSmall);
  state.outLabels[1] = "KEPT    ";
  ASSERT_TRUE(StateFile(kept_).Write(state).ok());
  EXPECT_EQ(Start({"--state", kept_, "--database", "/nowhere"}), "");
  EXPECT_EQ(state_->outLabels[1], "KEPT    ");
}

TEST_F(FilesTest, ADemoAddsNothingToWhatWasKept) {
  ASSERT_TRUE(StateFile(kept_).Write(SwitcherState(kSmall)).ok());
  EXPECT_EQ(Start({"--demo", "--state", kept_}), "");
  EXPECT_EQ(WriteState(*state_), WriteState(SwitcherState(kSmall)));
  EXPECT_EQ(Start({"--demo", "--channels", "8"}), "");
  EXPECT_NE(state_->tally, SwitcherState(kSmall).tally);
}

TEST_F(FilesTest, SizesAreThoseOfTheFileOrTheOptions) {
  EXPECT_EQ(Start({"--channels", "8", "--stations", "1", "--labels", "2"}), "");
  EXPECT_EQ(WriteState(*state_), WriteState(SwitcherState(kSmall)));
  EXPECT_EQ(Start({}), "");
  EXPECT_EQ(state_->Sizes(), (SystemSizes{.channels = 64, .stations = 64, .labels = 128}));

  ASSERT_TRUE(StateFile(kept_).Write(SwitcherState(kSmall)).ok());
  EXPECT_EQ(Start({"--channels", "8", "--state", kept_}), "");
  EXPECT_EQ(Start({"--channels", "16", "--state", kept_}), "--channels says 16, the file 8");
  EXPECT_EQ(Start({"--stations", "2", "--state", kept_}), "--stations says 2, the file 1");
  EXPECT_EQ(Start({"--labels", "1", "--state", kept_}), "--labels says 1, the file 2");
}

TEST_F(FilesTest, AFreshDatabaseHoldsTheDefaults) {
  ASSERT_TRUE(db::CreateDatabase(database_).ok());
  const std::string before = test::ReadFile(database_);
  EXPECT_EQ(Start({"--database", database_}), "");
  EXPECT_EQ(WriteState(*state_), WriteState(SwitcherState(SystemSizes{})));
  EXPECT_EQ(test::ReadFile(database_), before);
  EXPECT_EQ(Start({"--labels", "64", "--database", database_}), "--labels says 64, the file 128");
}

TEST_F(FilesTest, ALongCharacterIsOneMember) {
  MakeDatabase([](jet::RecordSet&, jet::RecordSet& stations) {
    Change(stations, "Inhibits", "10é01");
    Change(stations, "Relays", "0€1");
    Change(stations, "OptoStations", "é1");
    Change(stations, "B1 Prog", "1é01");
  });
  ASSERT_EQ(Start({"--database", database_}), "");
  EXPECT_EQ(DescribeInhibits(*state_, 1), "output 1 inhibits 1 5");
  EXPECT_EQ(DescribeRelays(*state_, 1), "output 1 relays 3");
  EXPECT_TRUE(state_->optos[1].members.test(1));
  EXPECT_EQ(state_->optos[1].members.count(), 1u);
  EXPECT_TRUE(state_->buttons[1][1].members.test(0));
  EXPECT_TRUE(state_->buttons[1][1].members.test(3));
  EXPECT_EQ(state_->buttons[1][1].members.count(), 2u);
}

TEST_F(FilesTest, TheTablesOfADatabase) {
  MakeDatabase([](jet::RecordSet& info, jet::RecordSet& stations) {
    Change(info, "ChannelCount", 16);
    Change(info, "StationCount", 16);
    Change(info, "LabelCount", 20);
    Change(stations, "Label", "MIC");
    Change(stations, "Hidden", 1);
    Change(stations, "InLabel", "Grün €é");
    Change(stations, "Inhibits", "1001");
    Change(stations, "Relays", std::string(63, '0') + "1");
    Change(stations, "OptoType", 3);
    Change(stations, "OptoChannel", 257);
    Change(stations, "OptoStations", std::string(64, '1') + "1");
    Change(stations, "B1 Type", 255);
    Change(stations, "B1 First", -1);
    Change(stations, "B1 Prog", "x1" + std::string(253, '0') + "1");
    ASSERT_TRUE(stations.MoveNext().ok());
    Change(stations, "Label", "");
    Change(stations, "Hidden", 1);
    Change(stations, "InLabel", jet::Value());
    ASSERT_TRUE(stations.MoveNext().ok());
    Change(stations, "Label", "{x");
    Change(stations, "Hidden", 2);
  });
  ASSERT_EQ(Start({"--database", database_}), "");
  EXPECT_EQ(state_->Sizes(), (SystemSizes{.channels = 16, .stations = 16, .labels = 20}));
  EXPECT_EQ(state_->outLabels[1], "{IC     ");
  EXPECT_EQ(state_->inLabels[1], "{r\xFCn \x80\xE9 ");
  EXPECT_EQ(state_->outLabels[2], "{       ");
  EXPECT_EQ(state_->inLabels[2], "{       ");
  EXPECT_EQ(state_->outLabels[3], "{x      ");
  EXPECT_EQ(state_->inLabels[3], "Inpt 003");
  EXPECT_EQ(state_->outLabels[20], "Sta. 020");
  EXPECT_EQ(DescribeInhibits(*state_, 1), "output 1 inhibits 1 4");
  EXPECT_EQ(DescribeRelays(*state_, 1), "output 1 relays 64");
  EXPECT_EQ(DescribeButton(*state_, 1, 1), "station 1 button 1 type 255 first 255 members 2 256");
  EXPECT_EQ(state_->optos[1].members.count(), 64u);
  EXPECT_EQ(state_->optos[1].channel, 1);
  EXPECT_EQ(DescribeOpto(*state_, 64), "opto 64 type 254 channel 64 first 64 members 64");
}

TEST_F(FilesTest, AStationWithoutARecordIsEmpty) {
  MakeDatabase([](jet::RecordSet&, jet::RecordSet& stations) {
    ASSERT_TRUE(stations.Seek(2).ok());
    ASSERT_TRUE(stations.Delete().ok());
  });
  ASSERT_EQ(Start({"--database", database_}), "");
  EXPECT_EQ(state_->outLabels[2], "        ");
  EXPECT_EQ(DescribeInhibits(*state_, 2), "output 2 inhibits none");
  EXPECT_EQ(DescribeButton(*state_, 2, 32), "station 2 button 32 type 0 first 0 members none");
  // The second record is that of station 3; its opto is the second.
  EXPECT_EQ(DescribeOpto(*state_, 2), "opto 2 type 254 channel 3 first 3 members 3");
}

TEST_F(FilesTest, ADatabaseThatWillNotDoIsAnError) {
  const std::string start = "cannot start from " + database_.string() + ": ";
  EXPECT_THAT(Start({"--database", database_}), StartsWith(start));
  test::WriteFile(database_, "junk");
  EXPECT_THAT(Start({"--database", database_}), StartsWith(start));
  EXPECT_EQ(test::ReadFile(database_), "junk");

  struct {
    const char* field;
    int value;
  } const cases[] = {{"ChannelCount", 12}, {"ChannelCount", 264}, {"ChannelCount", 0},
                     {"StationCount", 0},  {"StationCount", 257}, {"LabelCount", 257},
                     {"LabelCount", -1}};
  for (const auto& wrong : cases) {
    MakeDatabase(
        [&](jet::RecordSet& info, jet::RecordSet&) { Change(info, wrong.field, wrong.value); });
    EXPECT_THAT(Start({"--database", database_}),
                HasSubstr(" labels are no system that can be simulated"));
  }

  std::unique_ptr<jet::Database> empty;
  ASSERT_TRUE(jet::Database::Create(database_, &empty).ok());
  empty.reset();
  EXPECT_THAT(Start({"--database", database_}), StartsWith(start));
}

}  // namespace
}  // namespace tesksim
