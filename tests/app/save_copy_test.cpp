// SPDX-License-Identifier: MIT

#include "app/backups/save_copy.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <QDialog>
#include <QSignalSpy>
#include <QTest>
#include <filesystem>
#include <string>

#include "tests/app/patience.h"
#include "tests/app/slow_disk.h"
#include "tests/support/full_disk.h"
#include "tests/support/recording_reporter.h"
#include "tests/support/temporary_folder.h"
#include "tests/views/gui_support.h"

namespace app {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

class SaveCopyTest : public testing::Test {
 protected:
  void SetUp() override { ASSERT_TRUE(files_.Open().ok()); }

  QString Path(const char* name) const {
    return QString::fromStdU16String((folder_ / name).u16string());
  }

  bool ToldOf(const QSignalSpy& notes) {
    return QTest::qWaitFor([&] { return !notes.isEmpty() || !reporter_.reports.empty(); },
                           kPatience);
  }

  test::TemporaryFolder folder_;
  db::DatabaseFiles files_{folder_ / db::kMainFile, folder_ / db::kWorkingCopy};
  BackgroundWriter writer_;
  test::RecordingReporter reporter_;
  QWidget window_;
  bool isStored_ = true;
  SaveCopy saveCopy_{{.window = window_,
                      .files = files_,
                      .writer = writer_,
                      .reporter = reporter_,
                      .storeEdits = [this] { return isStored_; }}};
  QSignalSpy notes_{&saveCopy_, &SaveCopy::NoteRequested};
};

TEST_F(SaveCopyTest, TheCopyHoldsWhatWasEdited) {
  ASSERT_TRUE(files_.Stations()->Edit().ok());
  ASSERT_TRUE(files_.Stations()->Set("Label", "CAM 4").ok());
  ASSERT_TRUE(files_.Stations()->Update().ok());
  test::WriteFile(folder_ / "copy.mdb", "an older copy");
  saveCopy_.Write(Path("copy.mdb"));
  ASSERT_TRUE(ToldOf(notes_));
  EXPECT_EQ(notes_[0][0].toString(), QStringLiteral("Copy saved: ") + Path("copy.mdb"));
  EXPECT_TRUE(test::ReadFile(folder_ / "copy.mdb") == test::ReadFile(folder_ / db::kWorkingCopy));
  EXPECT_TRUE(files_.IsOpen());
}

TEST_F(SaveCopyTest, TheConsolesOwnFilesAreRefused) {
  const std::string before = test::ReadFile(folder_ / db::kMainFile);
  std::filesystem::create_symlink(folder_ / db::kWorkingCopy, folder_ / "link.mdb");
  for (const char* const own : {"Tesk.mdb", "WorkingDb.md$", "link.mdb"}) {
    reporter_.reports.clear();
    saveCopy_.Write(Path(own));
    EXPECT_THAT(reporter_.reports,
                ElementsAre("exclamation|Control Error|A copy cannot take the place of the "
                            "console's own database. Choose another name."))
        << own;
  }
  test::WriteFile(folder_ / "Tesk.journal", "the journal");
  reporter_.reports.clear();
  saveCopy_.Write(Path("Tesk.journal"));
  EXPECT_THAT(reporter_.reports, ElementsAre("exclamation|Control Error|The name of a copy must "
                                             "end in .mdb. Choose another name."));
  writer_.Finish();
  EXPECT_EQ(test::ReadFile(folder_ / "Tesk.journal"), "the journal");
  EXPECT_TRUE(test::ReadFile(folder_ / db::kMainFile) == before);
}

TEST_F(SaveCopyTest, AFullDiskLeavesWhatWasThere) {
  test::WriteFile(folder_ / "copy.mdb", "an older copy");
  const test::FullDisk full(100'000);
  saveCopy_.Write(Path("copy.mdb"));
  ASSERT_TRUE(ToldOf(notes_));
  EXPECT_THAT(reporter_.reports,
              ElementsAre("exclamation|Control Error|" + Path("copy.mdb").toStdString() +
                          " could not be written: Cannot write copy.mdb.new: File too large"));
  EXPECT_EQ(test::ReadFile(folder_ / "copy.mdb"), "an older copy");
  EXPECT_THAT(notes_, IsEmpty());
}

TEST_F(SaveCopyTest, OneThatFailsWhileTheProgramEndsIsReported) {
  {
    const test::FullDisk full(100'000);
    saveCopy_.Write(Path("copy.mdb"));
    writer_.Finish();
  }
  EXPECT_THAT(reporter_.reports,
              ElementsAre("exclamation|Control Error|" + Path("copy.mdb").toStdString() +
                          " could not be written: Cannot write copy.mdb.new: File too large"));
}

TEST_F(SaveCopyTest, AStickThatDoesNotAnswerIsReportedWhenTheProgramEnds) {
  const SlowDisk stick(writer_);
  saveCopy_.Write(Path("copy.mdb"));
  writer_.Finish(QDeadlineTimer(1));
  EXPECT_THAT(reporter_.reports,
              ElementsAre("exclamation|Control Error|" + Path("copy.mdb").toStdString() +
                          " could not be written: The disk does not answer"));
}

TEST_F(SaveCopyTest, WithoutADatabaseThereIsNoCopy) {
  ASSERT_TRUE(files_.SaveAndClose().ok());
  saveCopy_.Write(Path("copy.mdb"));
  EXPECT_THAT(reporter_.reports,
              ElementsAre("exclamation|Control Error|" + Path("copy.mdb").toStdString() +
                          " could not be written: The configuration database is not open"));
  EXPECT_FALSE(std::filesystem::exists(folder_ / "copy.mdb"));
}

TEST_F(SaveCopyTest, WhatIsTypedIsStoredFirst) {
  window_.show();
  isStored_ = false;
  saveCopy_.Ask();
  EXPECT_THAT(test::ShownDialogs(window_, "aidSaveCopyDialog"), IsEmpty());
  isStored_ = true;
  saveCopy_.Ask();
  const QList<QDialog*> dialogs = test::ShownDialogs(window_, "aidSaveCopyDialog");
  ASSERT_EQ(dialogs.size(), 1);
  EXPECT_EQ(dialogs[0]->windowTitle(), QStringLiteral("Save A Copy As"));
  dialogs[0]->close();
}

}  // namespace
}  // namespace app
