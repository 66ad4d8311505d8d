// SPDX-License-Identifier: MIT

#include "app/backups/backup_keeper.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <QSignalSpy>
#include <QTest>
#include <QTimer>
#include <algorithm>
#include <filesystem>
#include <string>
#include <vector>

#include "tests/app/patience.h"
#include "tests/app/slow_disk.h"
#include "tests/support/another_user.h"
#include "tests/support/damaged_file.h"
#include "tests/support/full_disk.h"
#include "tests/support/temporary_folder.h"

namespace app {
namespace {

using Cause = db::Backups::Cause;
using testing::ElementsAre;
using testing::IsEmpty;
using testing::StartsWith;

class BackupKeeperTest : public testing::Test {
 protected:
  void SetUp() override { ASSERT_TRUE(files_.Open().ok()); }

  std::filesystem::path Folder() const { return folder_ / kBackupsFolder; }

  std::vector<std::string> Copies() const {
    std::vector<std::string> names;
    std::error_code none;
    for (const auto& entry : std::filesystem::directory_iterator(Folder(), none)) {
      names.push_back(entry.path().filename().string());
    }
    std::ranges::sort(names);
    return names;
  }

  void SetLabel(const char* label) {
    ASSERT_TRUE(files_.Stations()->Edit().ok());
    ASSERT_TRUE(files_.Stations()->Set("Label", label).ok());
    ASSERT_TRUE(files_.Stations()->Update().ok());
  }

  // The label of the first station in a copy.
  static std::string LabelIn(const std::filesystem::path& copy) {
    const test::TemporaryFolder other;
    db::DatabaseFiles files(copy, other / db::kWorkingCopy, db::WhenMissing::Fail);
    EXPECT_TRUE(files.Open().ok());
    jet::Value label;
    EXPECT_TRUE(files.Stations()->Get("Label", &label).ok());
    return label.Text();
  }

  // Waits for the next copy, and answers its name.
  static std::string Next(QSignalSpy& spy) {
    if (spy.isEmpty() && !spy.wait(kPatience)) return "(nothing came)";
    return spy.takeFirst()[0].toString().toStdString();
  }

  void AMinutePasses() {
    auto* const minute = keeper_.findChild<QTimer*>(QStringLiteral("aidBackupMinute"));
    ASSERT_TRUE(minute->isActive());
    EXPECT_EQ(minute->interval(), 60'000);
    minute->start(0);
    const QSignalSpy passed(minute, &QTimer::timeout);
    ASSERT_TRUE(QTest::qWaitFor([&] { return !passed.isEmpty(); }, kPatience));
    minute->setInterval(60'000);
  }

  test::TemporaryFolder folder_;
  db::DatabaseFiles files_{folder_ / db::kMainFile, folder_ / db::kWorkingCopy};
  QDateTime now_{QDate(2026, 11, 21), QTime(18, 5, 12)};
  BackgroundWriter writer_;
  BackupKeeper keeper_{
      {.files = files_, .writer = writer_, .folder = Folder(), .clock = [this] { return now_; }}};
  QSignalSpy kept_{&keeper_, &BackupKeeper::Kept};
  QSignalSpy failed_{&keeper_, &BackupKeeper::Failed};
};

TEST_F(BackupKeeperTest, ACopyHoldsWhatWasEditedBeforeItWasAskedFor) {
  SetLabel("before");
  keeper_.Keep(Cause::BeforeRetrieval);
  SetLabel("after");
  EXPECT_EQ(Next(kept_), "Tesk-2026-11-21-180512-before-retrieval.mdb");
  EXPECT_EQ(LabelIn(Folder() / "Tesk-2026-11-21-180512-before-retrieval.mdb"), "before");
  EXPECT_EQ(failed_.size(), 0);
}

TEST_F(BackupKeeperTest, TheFirstStartOfADayKeepsOne) {
  keeper_.BeginDays();
  EXPECT_EQ(Next(kept_), "Tesk-2026-11-21-180512-daily.mdb");
  now_ = now_.addSecs(3600);
  BackupKeeper again(
      {.files = files_, .writer = writer_, .folder = Folder(), .clock = [this] { return now_; }});
  again.BeginDays();
  writer_.Finish();
  EXPECT_THAT(Copies(), ElementsAre("Tesk-2026-11-21-180512-daily.mdb"));
}

TEST_F(BackupKeeperTest, ACopyForAnotherReasonIsNotTheOneOfTheDay) {
  keeper_.Keep(Cause::BeforeRetrieval);
  EXPECT_THAT(Next(kept_), StartsWith("Tesk-"));
  SetLabel("edited");
  keeper_.BeginDays();
  EXPECT_EQ(Next(kept_), "Tesk-2026-11-21-180512-daily.mdb");
}

TEST_F(BackupKeeperTest, EachFurtherDayOfRunningKeepsOne) {
  keeper_.BeginDays();
  EXPECT_EQ(Next(kept_), "Tesk-2026-11-21-180512-daily.mdb");
  SetLabel("edited");
  now_ = QDateTime(QDate(2026, 11, 21), QTime(23, 59, 59));
  AMinutePasses();
  now_ = QDateTime(QDate(2026, 11, 22), QTime(0, 0, 59));
  AMinutePasses();
  EXPECT_EQ(Next(kept_), "Tesk-2026-11-22-000059-daily.mdb");
  now_ = now_.addSecs(60);
  AMinutePasses();
  writer_.Finish();
  EXPECT_EQ(Copies().size(), 2u);
}

TEST_F(BackupKeeperTest, ADayOfWhichTheCopyWouldHoldTheSameHasItsCopy) {
  keeper_.BeginDays();
  EXPECT_EQ(Next(kept_), "Tesk-2026-11-21-180512-daily.mdb");
  now_ = now_.addDays(1);
  AMinutePasses();
  EXPECT_EQ(Next(kept_), "Tesk-2026-11-21-180512-daily.mdb") << "which holds it";
  now_ = now_.addSecs(60);
  AMinutePasses();
  writer_.Finish();
  EXPECT_EQ(kept_.size(), 0) << "once a day";
  EXPECT_THAT(Copies(), ElementsAre("Tesk-2026-11-21-180512-daily.mdb"));
}

TEST_F(BackupKeeperTest, TheMainFileIsKeptAsItWasBeforeItWasReplaced) {
  SetLabel("edited");
  const std::string before = test::ReadFile(folder_ / db::kMainFile);
  keeper_.NoteMainFile();
  bool saved = false;
  ASSERT_TRUE(files_.SaveAndClose(&saved).ok());
  ASSERT_TRUE(saved);
  SlowDisk disk(writer_);
  keeper_.KeepMainFile();
  EXPECT_EQ(kept_.size(), 0) << "a slow disk holds nobody up";
  disk.Answer();
  writer_.Finish();
  EXPECT_THAT(Copies(), ElementsAre("Tesk-2026-11-21-180512-before-saving.mdb"));
  EXPECT_EQ(test::ReadFile(Folder() / "Tesk-2026-11-21-180512-before-saving.mdb"), before);
  EXPECT_EQ(kept_.size(), 1);
}

TEST_F(BackupKeeperTest, WhatIsStillToBeWrittenAtTheEndIsWritten) {
  {
    BackgroundWriter writer;
    BackupKeeper keeper(
        {.files = files_, .writer = writer, .folder = Folder(), .clock = [this] { return now_; }});
    keeper.Keep(Cause::Daily);
  }
  EXPECT_THAT(Copies(), ElementsAre("Tesk-2026-11-21-180512-daily.mdb"));
}

TEST_F(BackupKeeperTest, WithoutADatabaseThereAreNoDays) {
  ASSERT_TRUE(files_.SaveAndClose().ok());
  keeper_.BeginDays();
  EXPECT_FALSE(keeper_.findChild<QTimer*>(QStringLiteral("aidBackupMinute"))->isActive());
  writer_.Finish();
  EXPECT_THAT(Copies(), IsEmpty());
  EXPECT_EQ(failed_.size(), 0);
}

TEST_F(BackupKeeperTest, ADamagedDatabasePushesOutNoCopyThatIsSound) {
  ASSERT_TRUE(files_.SaveAndClose().ok());
  test::ZeroPageOf(folder_ / db::kMainFile, "Sta. 012");
  ASSERT_TRUE(files_.Open().ok());
  keeper_.BeginDays();
  SetLabel("edited");
  keeper_.NoteMainFile();
  ASSERT_TRUE(files_.SaveAndClose().ok());
  keeper_.KeepMainFile();
  writer_.Finish();
  EXPECT_THAT(Copies(), IsEmpty());
}

TEST_F(BackupKeeperTest, OfADamagedDatabaseNoneIsKeptForAnyReasonAndThatIsSaid) {
  ASSERT_TRUE(files_.SaveAndClose().ok());
  test::ZeroPageOf(folder_ / db::kMainFile, "Sta. 012");
  ASSERT_TRUE(files_.Open().ok());
  std::vector<int> numbers;
  for (const Cause cause : {Cause::BeforeRetrieval, Cause::BeforeRestoring}) {
    keeper_.Keep(cause, [&](const model::Status& status) { numbers.push_back(status.Number()); });
    EXPECT_EQ(Next(failed_), "It is damaged");
  }
  writer_.Finish();
  EXPECT_THAT(numbers, ElementsAre(3049, 3049));
  EXPECT_THAT(Copies(), IsEmpty());
}

TEST_F(BackupKeeperTest, AFullDiskIsSaidAndLeavesNothing) {
  const test::FullDisk full(100'000);
  keeper_.Keep(Cause::BeforeRetrieval);
  EXPECT_EQ(Next(failed_),
            "Cannot write Tesk-2026-11-21-180512-before-retrieval.mdb.new: File too large");
  EXPECT_THAT(Copies(), IsEmpty());
  EXPECT_EQ(kept_.size(), 0);
}

TEST_F(BackupKeeperTest, AFolderThatMayNotBeWrittenIsSaid) {
  std::filesystem::create_directory(Folder());
  std::filesystem::permissions(folder_.Path(), std::filesystem::perms::all);
  using std::filesystem::perms;
  std::filesystem::permissions(
      Folder(), perms::group_read | perms::group_exec | perms::others_read | perms::others_exec);
  const test::AnotherUser nobody;
  keeper_.Keep(Cause::Daily);
  EXPECT_EQ(Next(failed_), "Cannot write Tesk-2026-11-21-180512-daily.mdb.new: Permission denied");
}

TEST_F(BackupKeeperTest, ASavedRunWhoseCopyFailsIsSavedAllTheSame) {
  test::WriteFile(Folder(), "in the way");
  SetLabel("edited");
  keeper_.NoteMainFile();
  bool saved = false;
  EXPECT_TRUE(files_.SaveAndClose(&saved).ok());
  EXPECT_TRUE(saved);
  keeper_.KeepMainFile();
  writer_.Finish();
  EXPECT_EQ(failed_.size(), 1);
  EXPECT_EQ(LabelIn(folder_ / db::kMainFile), "edited");
}

}  // namespace
}  // namespace app
