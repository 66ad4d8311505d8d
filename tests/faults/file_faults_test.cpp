// SPDX-License-Identifier: MIT
//
// The disk fails in every single call in which the files of a run are made, copied, edited and
// saved: each failure is reported, Tesk.mdb and Orvotesk.ini are whole, and when the disk works
// again everything is saved.

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <cerrno>

#include "config/ini_file.h"
#include "db/database_files.h"
#include "tests/faults/fault_plan.h"
#include "tests/support/database_check.h"

namespace faults {
namespace {

namespace fs = std::filesystem;
using test::ReadFile;
using test::WhatIsWrong;
using test::WriteFile;
using testing::AnyOf;
using testing::Contains;
using testing::ElementsAre;
using testing::StartsWith;

constexpr int kForGood = 1 << 30;

// Full, broken, turned read-only by the system after an error.
constexpr int kErrors[] = {ENOSPC, EIO, EROFS};

// Where there are many calls that are alike.  A build for finding mistakes is slow.
#ifdef NDEBUG
constexpr int kStepOfMany = 1;
#else
constexpr int kStepOfMany = 10;
#endif

class FileFaultsTest : public testing::Test {
 protected:
  void SetUp() override { TeskWatch(plan_.Shared()); }
  void TearDown() override { TeskWatch(nullptr); }

  // Runs `work` again and again, each time failing `step` calls later: that call alone, then that
  // one and all that follow.  `prepare` comes before each, `check` after it; both undisturbed.
  // Ends when nothing is left that could fail; how many calls there were.
  template <typename Prepare, typename Work, typename Check>
  int Sweep(const Prepare& prepare, const Work& work, const Check& check, int step = 1) {
    for (int call = 1;; call += step) {
      const int error = kErrors[call % 3];
      for (const bool forGood : {false, true}) {
        forGood_ = forGood;
        const int last = forGood ? kForGood : call;
        SCOPED_TRACE(testing::Message()
                     << "call " << call << (last == call ? "" : " and on") << ", errno " << error);
        plan_.Restart();
        prepare();
        plan_.Restart();
        plan_.Fail(call, last, error);
        const model::Status status = work();
        const int count = plan_.Count();
        const std::string met =
            count < call ? "" : plan_.Calls()[static_cast<std::size_t>(call) - 1];
        plan_.Lift();
        if (count < call) {
          EXPECT_TRUE(status.ok()) << status.Description();
          return count;
        }
        SCOPED_TRACE(met);
        check(status, met);
        if (HasFailure()) return count;
      }
    }
  }

  static std::string Label(db::DatabaseFiles& files, int stationNum) {
    EXPECT_TRUE(files.Stations()->Seek(stationNum).ok());
    jet::Value label;
    EXPECT_TRUE(files.Stations()->Get("Label", &label).ok());
    return label.Text();
  }

  // As a view stores what was typed.  What could not be stored is given up.
  static model::Status SetFields(db::DatabaseFiles& files, int stationNum, const std::string& label,
                                 const std::string& inhibits) {
    jet::RecordSet& stations = *files.Stations();
    if (model::Status status = stations.Seek(stationNum); !status.ok()) return status;
    if (model::Status status = stations.Edit(); !status.ok()) return status;
    EXPECT_TRUE(stations.Set("Label", label).ok());
    EXPECT_TRUE(stations.Set("Inhibits", inhibits).ok());
    model::Status status = stations.Update();
    if (!status.ok()) stations.CancelUpdate();
    return status;
  }

  // A database whose file is there.
  void MakeMain() {
    db::DatabaseFiles files(main_, copy_);
    ASSERT_TRUE(files.Open().ok());
    ASSERT_TRUE(files.SaveAndClose().ok());
  }

  const test::TemporaryFolder folder_;
  const fs::path main_ = folder_ / db::kMainFile;
  const fs::path copy_ = folder_ / db::kWorkingCopy;
  FaultPlan plan_{folder_.Path()};
  bool forGood_ = false;  // the fault of the moment
};

// If the calls came another way, nothing here would prove anything.
TEST_F(FileFaultsTest, EveryCallIsSeen) {
  db::DatabaseFiles files(main_, copy_);
  ASSERT_TRUE(files.Open().ok());
  std::vector<std::string> calls = plan_.Calls();
  ASSERT_GE(calls.size(), 20U);
  // Several of its pages go in one write.
  EXPECT_GE(std::count(calls.begin(), calls.end(), "write Tesk.mdb.new"), 10);
  EXPECT_EQ(calls[0], "open Tesk.mdb.new");
  EXPECT_EQ(std::count(calls.begin(), calls.end(), "sync Tesk.mdb.new"), 1);
  const auto renamed = std::find(calls.begin(), calls.end(), "rename Tesk.mdb");
  ASSERT_NE(renamed, calls.end());
  calls.erase(calls.begin(), renamed + 1);
  EXPECT_EQ(static_cast<std::uintmax_t>(std::erase(calls, "write WorkingDb.md$")),
            (fs::file_size(main_) + 65535) / 65536);
  EXPECT_THAT(calls,
              ElementsAre("open WorkingDb.md$", "chmod WorkingDb.md$", "open WorkingDb.md$"));

  plan_.Restart();
  ASSERT_TRUE(SetFields(files, 1, "Studio 1", std::string(900, '1')).ok());
  EXPECT_THAT(plan_.Calls(), testing::SizeIs(testing::Ge(3)));
  EXPECT_THAT(plan_.Calls(), testing::Each("write WorkingDb.md$"));

  plan_.Restart();
  ASSERT_TRUE(files.SaveAndClose().ok());
  calls = plan_.Calls();
  EXPECT_EQ(calls[0], "open Tesk.mdb.new");
  EXPECT_EQ(
      static_cast<std::uintmax_t>(std::count(calls.begin(), calls.end(), "write Tesk.mdb.new")),
      (fs::file_size(main_) + 65535) / 65536);
  calls.erase(calls.begin(), std::find(calls.begin(), calls.end(), "chmod Tesk.mdb.new"));
  EXPECT_THAT(calls, ElementsAre("chmod Tesk.mdb.new", "sync Tesk.mdb.new", "rename Tesk.mdb",
                                 "remove WorkingDb.md$"));

  plan_.Restart();
  ASSERT_TRUE(config::IniFile("[C]\r\na=1\r\n").Save(folder_ / "Orvotesk.ini").ok());
  calls = plan_.Calls();
  EXPECT_THAT(calls, ElementsAre("open Orvotesk.ini.new", "write Orvotesk.ini.new",
                                 "sync Orvotesk.ini.new", "rename Orvotesk.ini"));
}

TEST_F(FileFaultsTest, WhileTheDatabaseIsCreatedNothingHalfMadeTakesItsName) {
  const int calls = Sweep(
      [&] {
        fs::remove(main_);
        fs::remove(copy_);
      },
      [&] {
        db::DatabaseFiles files(main_, copy_);
        const model::Status status = files.Open();
        if (!status.ok()) {
          EXPECT_TRUE(files.SaveAndClose().ok());
        }
        return status;
      },
      [&](const model::Status& status, const std::string& /*met*/) {
        EXPECT_FALSE(status.ok());
        if (fs::exists(main_)) {
          EXPECT_EQ(WhatIsWrong(main_), "");
        }
        // A disk that fails for good does not let it be deleted either.
        EXPECT_TRUE(forGood_ || !fs::exists(folder_ / "Tesk.mdb.new"));
        // The next start is as if nothing had been.
        db::DatabaseFiles files(main_, copy_);
        const model::Status again = files.Open();
        ASSERT_TRUE(again.ok()) << again.Description();
        EXPECT_EQ(Label(files, 128), "Ext. 064");
        EXPECT_TRUE(files.SaveAndClose().ok());
        EXPECT_EQ(WhatIsWrong(main_), "");
      },
      kStepOfMany);
  EXPECT_GE(calls, 20);
}

TEST_F(FileFaultsTest, WhileTheWorkingCopyIsMadeTheMainFileStays) {
  MakeMain();
  const std::string before = ReadFile(main_);
  std::unique_ptr<db::DatabaseFiles> files;
  const int calls = Sweep(
      [&] {
        WriteFile(copy_, "left by a crash");
        files = std::make_unique<db::DatabaseFiles>(main_, copy_);
      },
      [&] { return files->Open(); },
      [&](const model::Status& status, const std::string& /*met*/) {
        EXPECT_FALSE(status.ok());
        EXPECT_FALSE(files->IsOpen());
        EXPECT_EQ(ReadFile(main_), before);
        EXPECT_TRUE(files->SaveAndClose().ok());
        EXPECT_EQ(ReadFile(main_), before);
        EXPECT_TRUE(files->Open().ok());
      });
  EXPECT_GE(calls, 6);
}

// Also when not even the old pages can be written again: they are before the copy is closed.
TEST_F(FileFaultsTest, WhileARecordIsStoredNothingOfItIsKeptAndTheRestIsSaved) {
  MakeMain();
  const std::string before = ReadFile(main_);
  std::unique_ptr<db::DatabaseFiles> files;
  const int calls = Sweep(
      [&] {
        files.reset();
        WriteFile(main_, before);
        files = std::make_unique<db::DatabaseFiles>(main_, copy_);
        ASSERT_TRUE(files->Open().ok());
        ASSERT_TRUE(SetFields(*files, 2, "kept", std::string(64, '1')).ok());
      },
      [&] { return SetFields(*files, 1, "dropped", std::string(3000, '1')); },
      [&](const model::Status& status, const std::string& /*met*/) {
        ASSERT_FALSE(status.ok());
        EXPECT_EQ(Label(*files, 1), "Sta. 001");
        EXPECT_EQ(ReadFile(main_), before);
        ASSERT_TRUE(files->SaveAndClose().ok());
        EXPECT_EQ(WhatIsWrong(main_), "");
        db::DatabaseFiles again(main_, copy_);
        ASSERT_TRUE(again.Open().ok());
        EXPECT_EQ(Label(again, 1), "Sta. 001");
        EXPECT_EQ(Label(again, 2), "kept");
        const model::Status stored = SetFields(again, 1, "stored", std::string(3000, '1'));
        EXPECT_TRUE(stored.ok()) << stored.Description();
      });
  EXPECT_GE(calls, 3);
}

TEST_F(FileFaultsTest, ACopyThatIsOwedPagesIsNotSavedWhileTheDiskIsBroken) {
  MakeMain();
  const std::string before = ReadFile(main_);
  db::DatabaseFiles files(main_, copy_);
  ASSERT_TRUE(files.Open().ok());
  plan_.Restart();
  plan_.Fail(2, kForGood, EIO);
  ASSERT_FALSE(SetFields(files, 1, "dropped", std::string(3000, '1')).ok());
  EXPECT_FALSE(files.SaveAndClose().ok());
  ASSERT_TRUE(files.IsOpen());
  EXPECT_EQ(Label(files, 1), "Sta. 001");
  EXPECT_EQ(ReadFile(main_), before);
  plan_.Lift();
  ASSERT_TRUE(files.SaveAndClose().ok());
  EXPECT_EQ(WhatIsWrong(main_), "");
}

TEST_F(FileFaultsTest, WhileTheCopyIsSavedTheOldFileStaysAndSavingAgainWorks) {
  MakeMain();
  const std::string before = ReadFile(main_);
  std::unique_ptr<db::DatabaseFiles> files;
  std::string edited;
  const int calls = Sweep(
      [&] {
        files.reset();
        WriteFile(main_, before);
        files = std::make_unique<db::DatabaseFiles>(main_, copy_);
        ASSERT_TRUE(files->Open().ok());
        ASSERT_TRUE(SetFields(*files, 17, "edited", std::string(64, '1')).ok());
        edited = ReadFile(copy_);
      },
      [&] { return files->SaveAndClose(); },
      [&](const model::Status& status, const std::string& met) {
        if (met == "remove WorkingDb.md$") {
          EXPECT_TRUE(status.ok()) << "saved all the same";
        } else {
          EXPECT_FALSE(status.ok());
          EXPECT_EQ(ReadFile(main_), before);
          const model::Status again = files->SaveAndClose();
          EXPECT_TRUE(again.ok()) << again.Description();
          EXPECT_FALSE(fs::exists(copy_));
        }
        EXPECT_EQ(ReadFile(main_), edited);
        EXPECT_EQ(WhatIsWrong(main_), "");
        EXPECT_FALSE(fs::exists(folder_ / "Tesk.mdb.new"));
      },
      kStepOfMany);
  EXPECT_GE(calls, 10);
}

TEST_F(FileFaultsTest, WhileTheSettingsAreWrittenTheOldOnesStay) {
  const fs::path path = folder_ / "Orvotesk.ini";
  const std::string before = "; of the house\n[CONFIGURATION]\nCOM Port=2\n";
  const std::string after = "; of the house\n[CONFIGURATION]\nCOM Port=2\nApp Path=/a\\\n";
  config::IniFile changed;
  const int calls = Sweep(
      [&] {
        WriteFile(path, before);
        ASSERT_TRUE(config::IniFile::Load(path, &changed).ok());
        changed.SetValue("CONFIGURATION", "App Path", "/a\\");
      },
      [&] { return changed.Save(path); },
      [&](const model::Status& status, const std::string& met) {
        EXPECT_EQ(status.Number(), 75) << met;
        EXPECT_NE(status.Description(), "");
        EXPECT_EQ(ReadFile(path), before);
        EXPECT_TRUE(changed.Save(path).ok());
        EXPECT_EQ(ReadFile(path), after);
        // Nothing piles up beside it, unless it could not even be removed.
        const auto files =
            std::distance(fs::directory_iterator(folder_.Path()), fs::directory_iterator());
        EXPECT_LE(files, forGood_ ? 2 : 1);
        for (const auto& entry : fs::directory_iterator(folder_.Path())) fs::remove(entry.path());
      });
  EXPECT_GE(calls, 4);
}

}  // namespace
}  // namespace faults
