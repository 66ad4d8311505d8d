// SPDX-License-Identifier: MIT
//
// Copies of the database: when they are made, and how one is brought back.

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <filesystem>
#include <memory>
#include <string>
#include <vector>

#include "db/open_copy.h"
#include "stations/difference.h"
#include "tests/end_to_end/console_process.h"
#include "tests/support/simulator_process.h"

namespace test {
namespace {

namespace fs = std::filesystem;
using testing::ElementsAre;
using testing::EndsWith;
using testing::IsEmpty;

class BackupsTest : public testing::Test {
 protected:
  void SetUp() override { folder_.WriteSettings(line_); }

  // The names of the copies.
  std::vector<std::string> Copies() const {
    std::vector<std::string> names;
    std::error_code none;
    for (const auto& entry : fs::directory_iterator(folder_ / "Backups", none)) {
      if (entry.path().extension() == ".mdb") names.push_back(entry.path().filename().string());
    }
    return names;
  }

  // The one that was made for this reason.
  fs::path Copy(const char* cause) const {
    for (const std::string& name : Copies()) {
      if (name.find(cause) != std::string::npos) return folder_ / "Backups" / name;
    }
    return {};
  }

  // How many fields of the stations differ in two databases.
  static std::size_t Differences(const fs::path& one, const fs::path& other) {
    std::unique_ptr<jet::Database> first;
    std::unique_ptr<jet::Database> second;
    EXPECT_TRUE(db::OpenCopy(one, &first).ok());
    EXPECT_TRUE(db::OpenCopy(other, &second).ok());
    std::vector<stations::Change> changes;
    EXPECT_TRUE(stations::Difference(*first, *second, &changes).ok());
    std::size_t fields = 0;
    for (const stations::Change& change : changes) fields += change.fields.size();
    return fields;
  }

  static void ToggleInhibit(ConsoleProcess& console, int output, int input) {
    const int before = console.Mark(output, input);
    console.Use("ID_ToggleInhibit", output, input);
    EXPECT_TRUE(ConsoleProcess::WaitFor([&] { return console.Mark(output, input) != before; }));
  }

  int argc_ = 0;
  QCoreApplication application_{argc_, nullptr};
  ConsoleFolder folder_;
  std::string line_ = folder_ / "line";
  SimulatorProcess simulator_{{"--log", "--link", line_}};
};

TEST_F(BackupsTest, WhatWasSavedIsTakenBackWithTheCopyOfTheExit) {
  const fs::path first = folder_ / "first.mdb";
  {
    ConsoleProcess console(folder_);
    ASSERT_TRUE(console.IsUp());
    fs::copy_file(folder_ / "Tesk.mdb", first);
    ToggleInhibit(console, 6, 8);
    ToggleInhibit(console, 7, 3);
    EXPECT_EQ(console.Terminate(), 0);
  }
  EXPECT_EQ(Differences(first, folder_ / "Tesk.mdb"), 2u);
  EXPECT_THAT(Copies(), ElementsAre(EndsWith("-daily.mdb"))) << "which holds what was replaced";
  EXPECT_TRUE(ReadFile(Copy("daily")) == ReadFile(first));
  {
    ConsoleProcess console(folder_);
    ASSERT_TRUE(console.IsUp());
    EXPECT_EQ(console.Mark(6, 8), 2);
    console.Trigger("aidRestoreBackup");
    ASSERT_TRUE(ConsoleProcess::WaitFor([&] { return console.IsShown("frmBackup"); }));
    EXPECT_EQ(console.Rows("lstBackupDiff").size(), 2u);
    console.Click("cmdOkBackup");
    ASSERT_TRUE(ConsoleProcess::WaitFor([&] { return !console.IsShown("frmBackup"); }));
    EXPECT_TRUE(ConsoleProcess::WaitFor([&] { return console.Mark(6, 8) == 0; }))
        << "the map shows it";
    EXPECT_EQ(console.Terminate(), 0);
  }
  EXPECT_EQ(Differences(first, folder_ / "Tesk.mdb"), 0u);
  EXPECT_THAT(Copies(), testing::Contains(EndsWith("-before-restoring.mdb")));
}

TEST_F(BackupsTest, ARunThatChangesNothingKeepsTheDaysCopyAlone) {
  for (int run = 0; run < 2; ++run) {
    ConsoleProcess console(folder_);
    ASSERT_TRUE(console.IsUp());
    EXPECT_EQ(console.Terminate(), 0);
  }
  EXPECT_THAT(Copies(), ElementsAre(EndsWith("-daily.mdb")));
}

TEST_F(BackupsTest, ARetrievalKeepsWhatItIsAboutToReplace) {
  ConsoleProcess console(folder_);
  ASSERT_TRUE(console.IsUp());
  ASSERT_TRUE(ConsoleProcess::WaitFor([&] { return console.LinkText() == kConnected; }));
  ToggleInhibit(console, 6, 8);
  console.Trigger("ID_RetreiveData");
  ASSERT_TRUE(ConsoleProcess::WaitFor([&] { return console.IsShown("cmdOkSysInf"); }));
  EXPECT_THAT(Copies(), ElementsAre(EndsWith("-daily.mdb"))) << "nothing is confirmed yet";
  console.Click("cmdOkSysInf");
  ASSERT_TRUE(ConsoleProcess::WaitFor([&] { return Copies().size() == 2; }));
  const fs::path copy = Copy("before-retrieval");
  EXPECT_EQ(Differences(folder_ / "Tesk.mdb", copy), 1u) << "the inhibit";
}

TEST_F(BackupsTest, ACopyIsSavedAnywhereWithWhatWasEdited) {
  ConsoleProcess console(folder_);
  ASSERT_TRUE(console.IsUp());
  ToggleInhibit(console, 6, 8);
  console.Trigger("aidSaveCopy");
  ASSERT_TRUE(ConsoleProcess::WaitFor([&] { return console.IsShown("fileNameEdit"); }));
  const fs::path copy = folder_.Home() / "copy.mdb";
  console.Set("fileNameEdit", "text", QString::fromStdString(copy.string()));
  console.Keys("fileNameEdit", "Return");
  ASSERT_TRUE(ConsoleProcess::WaitFor([&] { return fs::exists(copy); }));
  EXPECT_EQ(Differences(folder_ / "Tesk.mdb", copy), 1u);
  EXPECT_EQ(Differences(folder_ / "WorkingDb.md$", copy), 0u);
}

TEST_F(BackupsTest, WhereNoneCanBeKeptTheWorkIsSavedAllTheSame) {
  WriteFile(folder_ / "Backups", "in the way");
  {
    ConsoleProcess console(folder_);
    ASSERT_TRUE(console.IsUp());
    EXPECT_TRUE(ConsoleProcess::WaitFor([&] { return console.IsShown("aidHintStrip"); }));
    ToggleInhibit(console, 6, 8);
    EXPECT_EQ(console.Terminate(), 0);
  }
  ConsoleProcess again(folder_);
  ASSERT_TRUE(again.IsUp());
  EXPECT_EQ(again.Mark(6, 8), 2);
  EXPECT_THAT(again.Boxes(), IsEmpty());
}

}  // namespace
}  // namespace test
