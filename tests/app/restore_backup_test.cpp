// SPDX-License-Identifier: MIT

#include "app/backups/restore_backup.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <QLabel>
#include <QMessageBox>
#include <QPushButton>
#include <QSignalSpy>
#include <QTest>
#include <QTreeWidget>
#include <string>
#include <vector>

#include "tests/app/patience.h"
#include "tests/app/slow_disk.h"
#include "tests/support/full_disk.h"
#include "tests/support/recording_changes.h"
#include "tests/support/recording_reporter.h"
#include "tests/support/temporary_folder.h"
#include "tests/views/gui_support.h"

namespace app {
namespace {

using testing::ElementsAre;
using testing::EndsWith;
using testing::IsEmpty;
using testing::StartsWith;

constexpr char kCopy[] = "Tesk-2026-11-20-073000-daily.mdb";

class RestoreBackupTest : public testing::Test {
 protected:
  void SetUp() override {
    ASSERT_TRUE(files_.Open().ok());
    std::string bytes;
    ASSERT_TRUE(files_.ReadWorkingCopy(&bytes).ok());
    ASSERT_TRUE(keeper_.Copies().Keep(Folder() / kCopy, bytes).ok());
    SetLabel(4, "CAM 4");
    SetLabel(17, "CAM 17");
    window_.show();
  }

  std::filesystem::path Folder() const { return folder_ / kBackupsFolder; }

  void SetLabel(int station, const std::string& label) {
    ASSERT_TRUE(files_.Stations()->Seek(station).ok());
    ASSERT_TRUE(files_.Stations()->Edit().ok());
    ASSERT_TRUE(files_.Stations()->Set("Label", label).ok());
    ASSERT_TRUE(files_.Stations()->Update().ok());
  }

  std::string Label(int station) {
    jet::Value label;
    EXPECT_TRUE(files_.Stations()->Seek(station).ok());
    EXPECT_TRUE(files_.Stations()->Get("Label", &label).ok());
    return label.Text();
  }

  QList<QDialog*> Windows() const { return test::ShownDialogs(window_, "frmBackup"); }

  // Opens the window, chooses the copy and says Restore.
  void RestoreAll() {
    restore_.Ask();
    ASSERT_EQ(Windows().size(), 1);
    auto& list = test::Find<QTreeWidget>(window_, "lstBackups");
    list.setCurrentItem(list.topLevelItem(0));
    PressRestore();
  }

  // The copy of what there is goes to the disk first.
  void PressRestore() {
    QTest::mouseClick(&test::Find<QPushButton>(window_, "cmdOkBackup"), Qt::LeftButton);
    writer_.Finish();
  }

  // The same on a full disk, whatever is asked.
  void RestoreAllWithoutACopy() {
    const test::FullDisk full(0);
    RestoreAll();
    ASSERT_EQ(Questions().size(), 1);
    QTest::mouseClick(&test::Find<QPushButton>(*Questions()[0], "aidRestoreUnkept"),
                      Qt::LeftButton);
    ASSERT_TRUE(QTest::qWaitFor([&] { return !reporter_.reports.empty(); }, kPatience));
  }

  QList<QDialog*> Questions() const { return test::ShownDialogs(window_, "aidAskUnkept"); }

  test::TemporaryFolder folder_;
  db::DatabaseFiles files_{folder_ / db::kMainFile, folder_ / db::kWorkingCopy};
  BackgroundWriter writer_;
  BackgroundWriter reader_;
  BackupKeeper keeper_{{.files = files_, .writer = writer_, .folder = Folder(), .clock = [] {
                          return QDateTime(QDate(2026, 11, 21), QTime(18, 5, 12));
                        }}};
  model::Locks locks_;
  stations::Changes changes_{locks_};
  test::RecordingChanges heard_{changes_};
  test::RecordingReporter reporter_;
  QWidget window_;
  bool isStored_ = true;
  RestoreBackup restore_{{.window = window_,
                          .files = files_,
                          .backups = keeper_,
                          .changes = changes_,
                          .reader = reader_,
                          .reporter = reporter_,
                          .storeEdits = [this] { return isStored_; }}};
  QSignalSpy notes_{&restore_, &RestoreBackup::NoteRequested};
};

TEST_F(RestoreBackupTest, WhatIsTickedIsStoredAsOneAct) {
  RestoreAll();
  EXPECT_EQ(Label(4), "Sta. 004");
  EXPECT_EQ(Label(17), "Sta. 017");
  EXPECT_EQ(heard_.times, 1);
  EXPECT_THAT(heard_.Take(), ElementsAre(EndsWith(" 4: Label CAM 4 > Sta. 004"),
                                         EndsWith(" 17: Label CAM 17 > Sta. 017")));
  EXPECT_THAT(Windows(), IsEmpty()) << "it has done its work";
  ASSERT_EQ(notes_.size(), 1);
  EXPECT_EQ(notes_[0][0].toString().toStdString(),
            std::string("From a copy: Label of 2 stations (") + kCopy + ")");
  EXPECT_THAT(reporter_.reports, IsEmpty());
}

TEST_F(RestoreBackupTest, AFileFromElsewhereIsReadBesideTheEventLoop) {
  std::filesystem::copy_file(Folder() / kCopy, folder_ / "other.mdb");
  restore_.Ask();
  auto& window = test::Find<views::BackupWindow>(window_, "frmBackup");
  const auto& list = test::Find<QAbstractItemView>(window, "lstBackupDiff");
  {
    const SlowDisk disk(reader_);
    window.Choose(QString::fromStdString((folder_ / "other.mdb").string()));
    QTest::qWait(50);
    EXPECT_EQ(list.model()->rowCount(), 0) << "and the console goes on";
  }
  EXPECT_TRUE(QTest::qWaitFor([&] { return list.model()->rowCount() == 2; }, kPatience));
}

TEST_F(RestoreBackupTest, WhatThereWasIsKeptAsACopyFirst) {
  RestoreAll();
  writer_.Finish();
  const std::filesystem::path kept = Folder() / "Tesk-2026-11-21-180512-before-restoring.mdb";
  const test::TemporaryFolder other;
  db::DatabaseFiles copy(kept, other / db::kWorkingCopy, db::WhenMissing::Fail);
  ASSERT_TRUE(copy.Open().ok());
  ASSERT_TRUE(copy.Stations()->Seek(17).ok());
  jet::Value label;
  ASSERT_TRUE(copy.Stations()->Get("Label", &label).ok());
  EXPECT_EQ(label.Text(), "CAM 17");
}

// How often this process has the file open, deleted or not.
int TimesOpen(const std::filesystem::path& file) {
  int times = 0;
  for (const auto& handle : std::filesystem::directory_iterator("/proc/self/fd")) {
    std::error_code closed;
    const std::string target = std::filesystem::read_symlink(handle.path(), closed).string();
    if (target.starts_with(file.string())) ++times;
  }
  return times;
}

TEST_F(RestoreBackupTest, AtTheEndOfTheProgramTheWindowLetsGoOfTheDatabase) {
  restore_.Ask();
  auto& list = test::Find<QTreeWidget>(window_, "lstBackups");
  list.setCurrentItem(list.topLevelItem(0));
  ASSERT_EQ(TimesOpen(folder_ / db::kWorkingCopy), 1);
  restore_.CancelNow();
  EXPECT_THAT(Windows(), IsEmpty());
  ASSERT_TRUE(files_.SaveAndClose().ok());
  EXPECT_EQ(TimesOpen(folder_ / db::kWorkingCopy), 0);
}

TEST_F(RestoreBackupTest, ALockedConsoleAsksAndKeepsNothing) {
  locks_.LockConsole(true);
  restore_.Ask();
  EXPECT_THAT(Windows(), IsEmpty());
  EXPECT_THAT(reporter_.reports,
              ElementsAre("exclamation|Control Error|Action Not Allowed While Console Is Locked"));
  locks_.LockConsole(false);
  restore_.Ask();
  locks_.LockConsole(true);
  auto& list = test::Find<QTreeWidget>(window_, "lstBackups");
  list.setCurrentItem(list.topLevelItem(0));
  PressRestore();
  EXPECT_EQ(reporter_.reports.size(), 2U);
  EXPECT_FALSE(std::filesystem::exists(Folder() / "Tesk-2026-11-21-180512-before-restoring.mdb"));
  EXPECT_EQ(Label(17), "CAM 17");
}

TEST_F(RestoreBackupTest, NothingIsRestoredBeforeTheCopyIsOnTheDisk) {
  SlowDisk disk(writer_);
  restore_.Ask();
  auto& list = test::Find<QTreeWidget>(window_, "lstBackups");
  list.setCurrentItem(list.topLevelItem(0));
  auto& ok = test::Find<QPushButton>(window_, "cmdOkBackup");
  QTest::mouseClick(&ok, Qt::LeftButton);
  QTest::mouseClick(&ok, Qt::LeftButton);
  EXPECT_EQ(Label(17), "CAM 17");
  disk.Answer();
  writer_.Finish();
  EXPECT_EQ(Label(17), "Sta. 017");
  EXPECT_EQ(heard_.times, 1) << "once";
}

TEST_F(RestoreBackupTest, WhileTheCopyIsKeptTheWindowSaysSoAndNothingCanBeChosen) {
  SlowDisk disk(writer_);
  restore_.Ask();
  auto& list = test::Find<QTreeWidget>(window_, "lstBackups");
  list.setCurrentItem(list.topLevelItem(0));
  auto& ok = test::Find<QPushButton>(window_, "cmdOkBackup");
  auto& summary = test::Find<QLabel>(window_, "aidBackupSummary");
  QTest::mouseClick(&ok, Qt::LeftButton);
  EXPECT_EQ(summary.text(), QStringLiteral("Keeping a copy first…"));
  for (const char* const name : {"cmdOkBackup", "lstBackups", "lstBackupDiff", "aidOtherFile"}) {
    EXPECT_FALSE(test::Find<QWidget>(window_, name).isEnabled()) << name;
  }
  EXPECT_EQ(Windows()[0]->focusWidget(), &test::Find<QWidget>(window_, "cmdCancelBackup"));
  // What the copy holds otherwise is compared anew, but not yet.
  changes_.Announce({stations::Origin::Switcher, 4, {{"Label", jet::Value(), jet::Value()}}});
  QTest::qWait(400);
  EXPECT_FALSE(ok.isEnabled());
  EXPECT_EQ(summary.text(), QStringLiteral("Keeping a copy first…"));
}

TEST_F(RestoreBackupTest, WhenTheDiskDoesNotAnswerTheOperatorIsAskedAllTheSame) {
  SlowDisk disk(writer_);
  restore_.Ask();
  auto& list = test::Find<QTreeWidget>(window_, "lstBackups");
  list.setCurrentItem(list.topLevelItem(0));
  auto& ok = test::Find<QPushButton>(window_, "cmdOkBackup");
  QTest::mouseClick(&ok, Qt::LeftButton);
  ASSERT_TRUE(QTest::qWaitFor([&] { return Questions().size() == 1; }, kPatience));
  EXPECT_EQ(test::Find<QMessageBox>(window_, "aidAskUnkept").text(),
            QStringLiteral("Restore Without A Copy?\r\rThe database as it is now cannot be kept as "
                           "a copy first: The disk does not answer"));
  EXPECT_TRUE(ok.isEnabled());
  EXPECT_TRUE(test::Find<QWidget>(window_, "lstBackupDiff").isEnabled());
  EXPECT_EQ(heard_.times, 0);
  QTest::mouseClick(&test::Find<QPushButton>(*Questions()[0], "aidRestoreUnkept"), Qt::LeftButton);
  ASSERT_TRUE(QTest::qWaitFor([&] { return heard_.times == 1; }, kPatience));
  EXPECT_EQ(Label(17), "Sta. 017");
  EXPECT_THAT(Windows(), IsEmpty());
  disk.Answer();
  writer_.Finish();
  EXPECT_EQ(heard_.times, 1) << "not once more when it answers";
}

TEST_F(RestoreBackupTest, ADiskThatAnswersTooLateRestoresNothing) {
  SlowDisk disk(writer_);
  restore_.Ask();
  auto& list = test::Find<QTreeWidget>(window_, "lstBackups");
  list.setCurrentItem(list.topLevelItem(0));
  QTest::mouseClick(&test::Find<QPushButton>(window_, "cmdOkBackup"), Qt::LeftButton);
  ASSERT_TRUE(QTest::qWaitFor([&] { return Questions().size() == 1; }, kPatience));
  Questions()[0]->reject();
  disk.Answer();
  writer_.Finish();
  EXPECT_EQ(heard_.times, 0);
  ASSERT_EQ(Windows().size(), 1) << "it can be tried again";
  PressRestore();
  EXPECT_EQ(Label(17), "Sta. 017");
}

TEST_F(RestoreBackupTest, WhoCancelsBeforeTheCopyIsOnTheDiskRestoresNothing) {
  SlowDisk disk(writer_);
  restore_.Ask();
  auto& list = test::Find<QTreeWidget>(window_, "lstBackups");
  list.setCurrentItem(list.topLevelItem(0));
  QTest::mouseClick(&test::Find<QPushButton>(window_, "cmdOkBackup"), Qt::LeftButton);
  QTest::mouseClick(&test::Find<QPushButton>(window_, "cmdCancelBackup"), Qt::LeftButton);
  disk.Answer();
  writer_.Finish();
  EXPECT_EQ(Label(17), "CAM 17");
  EXPECT_EQ(heard_.times, 0);
}

TEST_F(RestoreBackupTest, WhereNoCopyCanBeKeptTheOperatorIsAsked) {
  {
    const test::FullDisk full(100'000);
    RestoreAll();
  }
  EXPECT_EQ(Label(17), "CAM 17");
  ASSERT_EQ(Questions().size(), 1);
  EXPECT_EQ(test::Find<QMessageBox>(window_, "aidAskUnkept").text(),
            QStringLiteral("Restore Without A Copy?\r\rThe database as it is now cannot be kept as "
                           "a copy first: Cannot write "
                           "Tesk-2026-11-21-180512-before-restoring.mdb.new: File too large"));
  Questions()[0]->reject();
  EXPECT_EQ(heard_.times, 0);
  ASSERT_EQ(Windows().size(), 1);
  {
    const test::FullDisk full(100'000);
    PressRestore();
  }
  ASSERT_EQ(Questions().size(), 1);
  QTest::mouseClick(&test::Find<QPushButton>(*Questions()[0], "aidRestoreUnkept"), Qt::LeftButton);
  ASSERT_TRUE(QTest::qWaitFor([&] { return heard_.times == 1; }, kPatience));
  EXPECT_EQ(Label(17), "Sta. 017");
  EXPECT_THAT(Windows(), IsEmpty());
}

TEST_F(RestoreBackupTest, WhatCannotBeStoredIsReportedAndChangesNothing) {
  RestoreAllWithoutACopy();
  ASSERT_EQ(reporter_.reports.size(), 1u);
  EXPECT_THAT(reporter_.reports[0],
              StartsWith("critical|Control Error|Error Restoring Backup\r\rError # "));
  EXPECT_EQ(Label(4), "CAM 4");
  EXPECT_EQ(Label(17), "CAM 17");
  EXPECT_EQ(heard_.times, 0);
  EXPECT_EQ(notes_.size(), 0);
  ASSERT_EQ(Windows().size(), 1) << "it can be tried again";
  PressRestore();
  EXPECT_EQ(Label(17), "Sta. 017");
  EXPECT_THAT(Windows(), IsEmpty());
}

TEST_F(RestoreBackupTest, WhatIsTypedIsStoredFirst) {
  isStored_ = false;
  restore_.Ask();
  EXPECT_THAT(Windows(), IsEmpty());
  isStored_ = true;
  restore_.Ask();
  restore_.Ask();
  EXPECT_EQ(Windows().size(), 1) << "once is enough";
}

}  // namespace
}  // namespace app
