// SPDX-License-Identifier: MIT

#include "views/backups/backup_window.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <QAbstractItemView>
#include <QFileDialog>
#include <QLabel>
#include <QPushButton>
#include <QSignalSpy>
#include <QTest>
#include <QTreeWidget>
#include <functional>
#include <string>
#include <utility>
#include <vector>

#include "db/database_files.h"
#include "tests/support/damaged_file.h"
#include "tests/support/temporary_folder.h"
#include "tests/views/gui_support.h"

namespace views {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;
using testing::StartsWith;

constexpr int kPatience = 30'000;  // milliseconds

class BackupWindowTest : public testing::Test {
 protected:
  void SetUp() override {
    ASSERT_TRUE(files_.Open().ok());
    // The older copy is as the database was made, the newer one has a label and a button.
    Keep("Tesk-2026-11-20-073000-daily.mdb");
    Set(17, "Label", "CAM 4");
    Set(12, "B3 Type", 1);
    Keep("Tesk-2026-11-21-180512-before-retrieval.mdb");
  }

  void Set(int station, const char* field, const jet::Value& value) {
    ASSERT_TRUE(files_.Stations()->Seek(station).ok());
    ASSERT_TRUE(files_.Stations()->Edit().ok());
    ASSERT_TRUE(files_.Stations()->Set(field, value).ok());
    ASSERT_TRUE(files_.Stations()->Update().ok());
  }

  void Keep(const char* name) {
    std::string bytes;
    ASSERT_TRUE(files_.ReadWorkingCopy(&bytes).ok());
    ASSERT_TRUE(backups_.Keep(folder_ / "Backups" / name, bytes).ok());
  }

  void Show() {
    window_ = std::make_unique<BackupWindow>(
        BackupWindow::Services{.copies = backups_,
                               .database = [this] { return isOpen_ ? files_.Database() : nullptr; },
                               .changes = changes_,
                               .elsewhere =
                                   [this](std::function<model::Status()> work,
                                          std::function<void(const model::Status&)> done) {
                                     reading_.push_back([work = std::move(work),
                                                         done = std::move(done)] { done(work()); });
                                     if (!isSlow_) Read();
                                   }});
    window_->show();
  }

  // The disk of another file gives it.
  void Read() {
    for (const auto& read : std::exchange(reading_, {})) read();
  }

  QString MainFile() const {
    return QString::fromStdU16String((folder_ / db::kMainFile).u16string());
  }

  template <typename Part = QWidget>
  Part& Find(const char* name) const {
    return test::Find<Part>(*window_, name);
  }

  static std::vector<std::string> Rows(const QAbstractItemView& list, int from) {
    std::vector<std::string> rows;
    const QAbstractItemModel& model = *list.model();
    for (int row = 0; row < model.rowCount(); ++row) {
      QStringList cells;
      for (int column = from; column < model.columnCount(); ++column) {
        cells.append(model.index(row, column).data().toString());
      }
      rows.push_back(cells.join(u'|').toStdString());
    }
    return rows;
  }
  std::vector<std::string> Copies() { return Rows(Find<QAbstractItemView>("lstBackups"), 0); }
  std::vector<std::string> Differences() {
    return Rows(Find<QAbstractItemView>("lstBackupDiff"), 1);
  }
  std::string Summary() { return Find<QLabel>("aidBackupSummary").text().toStdString(); }
  bool CanRestore() { return Find<QPushButton>("cmdOkBackup").isEnabled(); }

  void ChooseRow(int row) {
    auto& list = Find<QTreeWidget>("lstBackups");
    list.setCurrentItem(list.topLevelItem(row));
  }

  test::TemporaryFolder folder_;
  db::DatabaseFiles files_{folder_ / db::kMainFile, folder_ / db::kWorkingCopy};
  db::Backups backups_{folder_ / "Backups"};
  stations::Changes changes_;
  bool isOpen_ = true;
  bool isSlow_ = false;
  std::vector<std::function<void()>> reading_;
  std::unique_ptr<BackupWindow> window_;
};

TEST_F(BackupWindowTest, TheCopiesAreListedTheNewestFirst) {
  Show();
  EXPECT_THAT(Copies(), ElementsAre("2026-11-21 18:05:12|Before a retrieval",
                                    "2026-11-20 07:30:00|Once a day"));
  EXPECT_EQ(Find<QTreeWidget>("lstBackups").currentIndex().row(), 0);
  EXPECT_EQ(Summary(), "This copy holds the same as the database.");
  EXPECT_FALSE(CanRestore());
}

TEST_F(BackupWindowTest, TheChosenCopysDifferencesAreListedWithATickEach) {
  Show();
  ChooseRow(1);
  EXPECT_THAT(Differences(), ElementsAre("Station 12|Button 3|LISTEN 3|TALK 3",
                                         "Station 17|Label|CAM 4|Sta. 017"));
  EXPECT_EQ(Summary(),
            "What is ticked becomes as it is in the copy. Nothing is sent; the database as it is "
            "now is kept as a copy first.");
  EXPECT_TRUE(CanRestore());
  ChooseRow(0);
  EXPECT_THAT(Differences(), IsEmpty());
  EXPECT_EQ(Summary(), "This copy holds the same as the database.");
  EXPECT_FALSE(CanRestore());
}

TEST_F(BackupWindowTest, OnlyWhatIsTickedIsAskedFor) {
  Show();
  QSignalSpy asked(window_.get(), &BackupWindow::RestoreRequested);
  ChooseRow(1);
  auto& list = Find<QAbstractItemView>("lstBackupDiff");
  list.setCurrentIndex(list.model()->index(0, 0));
  QTest::keyClick(&list, Qt::Key_Space);
  QTest::mouseClick(&Find("cmdOkBackup"), Qt::LeftButton);
  ASSERT_EQ(asked.size(), 1);
  const auto changes = asked[0][0].value<std::vector<stations::Change>>();
  ASSERT_EQ(changes.size(), 1u);
  EXPECT_EQ(changes[0].station, 17);
  EXPECT_EQ(changes[0].origin, stations::Origin::Backup);
  ASSERT_EQ(changes[0].fields.size(), 1u);
  EXPECT_EQ(changes[0].fields[0].field, "Label");
  EXPECT_EQ(changes[0].fields[0].after.Text(), "Sta. 017");
  EXPECT_EQ(asked[0][1].toString(), QStringLiteral("Tesk-2026-11-20-073000-daily.mdb"));
  EXPECT_TRUE(window_->isVisible()) << "whoever stores it closes the window";
}

TEST_F(BackupWindowTest, WithoutATickThereIsNothingToRestore) {
  Show();
  ChooseRow(1);
  auto& list = Find<QAbstractItemView>("lstBackupDiff");
  list.selectAll();
  QTest::keyClick(&list, Qt::Key_Space);
  EXPECT_FALSE(CanRestore());
}

TEST_F(BackupWindowTest, AnotherFileIsListedAndChosen) {
  Show();
  window_->Choose(MainFile());
  const std::vector<std::string> copies = Copies();
  ASSERT_EQ(copies.size(), 3u);
  EXPECT_THAT(copies[0], testing::EndsWith("|Other file: Tesk.mdb"));
  EXPECT_EQ(Differences().size(), 2u);
}

TEST_F(BackupWindowTest, NobodyWaitsForASlowDisk) {
  Show();
  ChooseRow(1);
  isSlow_ = true;
  window_->Choose(MainFile());
  EXPECT_EQ(Summary(), "The file is being read…");
  EXPECT_TRUE(Differences().empty());
  EXPECT_FALSE(CanRestore());
  Read();
  EXPECT_EQ(Differences().size(), 2u);
  EXPECT_TRUE(CanRestore());
}

// From the switcher, while the window is open.
TEST_F(BackupWindowTest, WhatIsStoredMeanwhileIsComparedAnewAndKeepsItsTicks) {
  Show();
  ChooseRow(1);
  auto& list = Find<QAbstractItemView>("lstBackupDiff");
  list.setCurrentIndex(list.model()->index(0, 0));
  QTest::keyClick(&list, Qt::Key_Space);
  Set(12, "B3 Prog", std::string(4, '0') + '1');
  Set(17, "Label", "Sta. 017");
  Set(20, "Label", "VT");
  changes_.Announce({.origin = stations::Origin::Switcher,
                     .station = 12,
                     .fields = {{.field = "Label", .before = "CAM 4", .after = "VT"}}});
  EXPECT_TRUE(QTest::qWaitFor(
      [this] {
        return Differences() == std::vector<std::string>{"Station 12|Button 3|LISTEN 5|TALK 3",
                                                         "Station 20|Label|VT|Sta. 020"};
      },
      kPatience));
  EXPECT_EQ(Find<QLabel>("aidDifferenceCount").text(), QStringLiteral("1 of 2 ticked"));
  ChooseRow(0);
  ChooseRow(1);
  EXPECT_EQ(Find<QLabel>("aidDifferenceCount").text(), QStringLiteral("2 of 2 ticked"));
}

TEST_F(BackupWindowTest, AClosedWindowReadsTheDatabaseNoMore) {
  Show();
  ChooseRow(1);
  ASSERT_FALSE(Differences().empty());
  window_->reject();
  EXPECT_TRUE(Differences().empty());
  isSlow_ = true;
  Show();
  window_->Choose(MainFile());
  window_->reject();
  Read();
  EXPECT_TRUE(Differences().empty());
}

// Another copy was chosen, or the window closed, before the file was there.
TEST_F(BackupWindowTest, AFileThatComesTooLateIsNotShown) {
  Show();
  isSlow_ = true;
  window_->Choose(MainFile());
  ChooseRow(1);
  const std::string newest = Summary();
  Read();
  EXPECT_EQ(Summary(), newest);
  EXPECT_TRUE(Differences().empty());
  ChooseRow(0);
  window_.reset();
  Read();
}

TEST_F(BackupWindowTest, AFileThatIsListedIsChosenWhereItStands) {
  Show();
  const std::filesystem::path older = folder_ / "Backups" / "Tesk-2026-11-20-073000-daily.mdb";
  window_->Choose(QString::fromStdU16String(older.u16string()));
  EXPECT_EQ(Copies().size(), 2u);
  EXPECT_EQ(Find<QTreeWidget>("lstBackups").currentIndex().row(), 1);
  EXPECT_EQ(Differences().size(), 2u);
  const std::filesystem::path other = folder_ / "other.mdb";
  std::filesystem::copy_file(older, other);
  window_->Choose(QString::fromStdU16String(other.u16string()));
  std::filesystem::copy_file(folder_ / "Backups" / "Tesk-2026-11-21-180512-before-retrieval.mdb",
                             other, std::filesystem::copy_options::overwrite_existing);
  const std::filesystem::path again = folder_ / "Backups" / ".." / "other.mdb";
  window_->Choose(QString::fromStdU16String(again.u16string()));
  EXPECT_EQ(Copies().size(), 3u);
  EXPECT_EQ(Find<QTreeWidget>("lstBackups").currentIndex().row(), 0);
  EXPECT_EQ(Summary(), "This copy holds the same as the database.") << "as the file is now";
}

TEST_F(BackupWindowTest, AFileThatIsTooLargeForADatabaseIsRefused) {
  Show();
  const std::filesystem::path large = folder_ / "film.mdb";
  test::WriteFile(large, "");
  std::filesystem::resize_file(large, (std::uintmax_t{64} << 20) + 1);
  window_->Choose(QString::fromStdU16String(large.u16string()));
  EXPECT_EQ(Summary(), "This copy cannot be restored. Cannot read film.mdb: It is too large");
}

TEST_F(BackupWindowTest, TheFileIsAskedForInADialogOfItsOwn) {
  Show();
  QTest::mouseClick(&Find("aidOtherFile"), Qt::LeftButton);
  const QList<QDialog*> dialogs = test::ShownDialogs(*window_, "aidOtherFileDialog");
  ASSERT_EQ(dialogs.size(), 1);
  EXPECT_EQ(dialogs[0]->windowTitle(), QStringLiteral("Other File"));
  dialogs[0]->close();
}

TEST_F(BackupWindowTest, ACopyThatCannotBeReadIsRefusedWithTheReasonAndNotTouched) {
  const auto damaged = folder_ / "Backups" / "Tesk-2026-11-20-073000-daily.mdb";
  test::ZeroPageOf(damaged, "Sta. 012");
  const std::string before = test::ReadFile(damaged);
  Show();
  ChooseRow(1);
  EXPECT_THAT(Summary(), StartsWith("This copy cannot be restored. The file is damaged: "));
  EXPECT_THAT(Differences(), IsEmpty());
  EXPECT_FALSE(CanRestore());
  EXPECT_TRUE(test::ReadFile(damaged) == before);
  std::filesystem::remove(damaged);
  ChooseRow(0);
  ChooseRow(1);
  EXPECT_THAT(Summary(), StartsWith("This copy cannot be restored. "));
}

TEST_F(BackupWindowTest, ACopyOfAnotherSystemIsRefusedWithTheReason) {
  ASSERT_TRUE(files_.DbInfo()->Edit().ok());
  ASSERT_TRUE(files_.DbInfo()->Set("ChannelCount", 32).ok());
  ASSERT_TRUE(files_.DbInfo()->Update().ok());
  Show();
  ChooseRow(1);
  EXPECT_EQ(Summary(),
            "This copy cannot be restored. It is of another system: ChannelCount is 64 there and "
            "32 here");
  EXPECT_FALSE(CanRestore());
}

TEST_F(BackupWindowTest, WithoutCopiesItSaysSo) {
  std::filesystem::remove_all(folder_ / "Backups");
  Show();
  EXPECT_THAT(Copies(), IsEmpty());
  EXPECT_EQ(Summary(), "No copies yet. Other File… takes one that is kept somewhere else.");
  test::WriteFile(folder_ / "Backups", "in the way");
  Show();
  EXPECT_THAT(Summary(), StartsWith("The copies cannot be listed. Cannot read Backups: "));
}

TEST_F(BackupWindowTest, WithoutADatabaseNothingCanBeRestored) {
  Show();
  isOpen_ = false;
  ChooseRow(1);
  EXPECT_EQ(Summary(), "This copy cannot be restored. The configuration database is not open");
  EXPECT_FALSE(CanRestore());
}

TEST_F(BackupWindowTest, EnterRestoresNothingAndLosesNoTicksAndEscapeCloses) {
  Show();
  QSignalSpy asked(window_.get(), &BackupWindow::RestoreRequested);
  ChooseRow(1);
  Find<QPushButton>("aidTickNone").click();
  auto& list = Find<QAbstractItemView>("lstBackupDiff");
  list.setCurrentIndex(list.model()->index(0, 0));
  QTest::keyClick(&list, Qt::Key_Space);
  ASSERT_TRUE(CanRestore());
  for (const char* const name : {"lstBackups", "aidFilterBackup", "lstBackupDiff"}) {
    for (const Qt::Key key : {Qt::Key_Return, Qt::Key_Enter}) {
      Find(name).setFocus();
      QTest::keyClick(&Find(name), key);
      EXPECT_TRUE(window_->isVisible()) << name;
    }
  }
  EXPECT_EQ(Find<QTreeWidget>("lstBackups").currentIndex().row(), 1);
  EXPECT_EQ(Find<QLabel>("aidDifferenceCount").text(), QStringLiteral("1 of 2 ticked"));
  QTest::keyClick(window_.get(), Qt::Key_Escape);
  EXPECT_FALSE(window_->isVisible());
  EXPECT_EQ(asked.size(), 0);
}

}  // namespace
}  // namespace views
