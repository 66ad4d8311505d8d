// SPDX-License-Identifier: MIT

#include "app/paper/key_sheets_command.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <sys/stat.h>

#include <QAction>
#include <QFileDialog>
#include <QSignalSpy>
#include <QTest>
#include <filesystem>

#include "app/paper/export_menu.h"
#include "tests/support/temporary_folder.h"
#include "tests/views/gui_support.h"
#include "tests/views/mnemonics.h"
#include "tests/views/view_console.h"

namespace app {
namespace {

namespace fs = std::filesystem;
using testing::IsEmpty;
using testing::SizeIs;
using testing::StartsWith;

class KeySheetsCommandTest : public testing::Test {
 protected:
  auto Windows() const { return test::ShownDialogs(*console_.window, "frmKeySheets"); }
  QString Path(const char* name) const {
    return QString::fromStdU16String((folder_ / name).u16string());
  }
  bool WriteAll(const QString& path) {
    keySheets_.WriteAll(path);
    return QTest::qWaitFor([this] { return Windows().isEmpty(); }, 60'000);
  }

  test::ViewConsole console_{8};
  test::TemporaryFolder folder_;
  bool isStored_ = true;
  QMenu menu_;
  ExportMenu others_{
      {.menu = menu_, .window = *console_.window, .data = console_.Services(), .storeEdits = [] {
         return true;
       }}};
  KeySheetsCommand keySheets_{{.window = *console_.window,
                               .exports = menu_,
                               .data = console_.Services(),
                               .storeEdits = [this] { return isStored_; }}};
  QSignalSpy notes_{&keySheets_, &KeySheetsCommand::NoteRequested};
};

TEST_F(KeySheetsCommandTest, WhatIsTypedIsStoredFirst) {
  isStored_ = false;
  keySheets_.Ask();
  EXPECT_THAT(Windows(), IsEmpty());
  isStored_ = true;
  keySheets_.Ask();
  EXPECT_THAT(Windows(), SizeIs(1));
  keySheets_.Ask();
  EXPECT_THAT(Windows(), SizeIs(1));
}

TEST_F(KeySheetsCommandTest, AllAreWrittenAndNoted) {
  ASSERT_TRUE(WriteAll(Path("keys.pdf")));
  const std::string pdf = test::ReadFile(folder_ / "keys.pdf");
  EXPECT_THAT(pdf, StartsWith("%PDF-"));
  EXPECT_EQ(QByteArray::fromStdString(pdf).count("/Type /Page\n"), 64);
  ASSERT_THAT(notes_, SizeIs(1));
  EXPECT_EQ(notes_[0][0].toString(), QStringLiteral("Written: ") + Path("keys.pdf"));
}

TEST_F(KeySheetsCommandTest, TheMenuOfExportsHasAll) {
  EXPECT_EQ(menu_.actions().size(), 6);
  test::ExpectMnemonics(menu_);
  QAction& all = test::Find<QAction>(menu_, "aidExportKeySheetsPdf");
  const auto dialog = [this] { return console_.window->findChild<QFileDialog*>(); };
  isStored_ = false;
  all.trigger();
  EXPECT_EQ(dialog(), nullptr) << "what is typed could not be stored";
  isStored_ = true;
  all.trigger();
  ASSERT_NE(dialog(), nullptr);
  EXPECT_EQ(dialog()->objectName(), QStringLiteral("aidExportDialog"));
  EXPECT_EQ(dialog()->windowTitle(), QStringLiteral("Key Sheets As PDF"));
  Q_EMIT dialog()->fileSelected(Path("keys.pdf"));
  EXPECT_THAT(Windows(), SizeIs(1));
  ASSERT_TRUE(QTest::qWaitFor([this] { return Windows().isEmpty(); }, 60'000));
  EXPECT_THAT(test::ReadFile(folder_ / "keys.pdf"), StartsWith("%PDF-"));
}

TEST_F(KeySheetsCommandTest, WhatCannotBeReadLeavesTheFileAsItWas) {
  test::WriteFile(folder_ / "keys.pdf", "yesterday's");
  console_.databaseIsOpen = false;
  ASSERT_TRUE(WriteAll(Path("keys.pdf")));
  EXPECT_EQ(test::ReadFile(folder_ / "keys.pdf"), "yesterday's");
  EXPECT_THAT(console_.reporter.reports,
              testing::ElementsAre(
                  StartsWith("critical|Control Error|Error Reading What Is To Be Exported")));
  EXPECT_THAT(notes_, IsEmpty());
}

TEST_F(KeySheetsCommandTest, WhileTheWindowIsOpenItSaysThatNothingIsWritten) {
  keySheets_.Ask();
  keySheets_.WriteAll(Path("keys.pdf"));
  EXPECT_THAT(console_.reporter.reports,
              testing::ElementsAre("exclamation|Control Error|" + Path("keys.pdf").toStdString() +
                                   " was not written: the window Key Sheets is open. Close it and "
                                   "export again."));
  EXPECT_FALSE(fs::exists(folder_ / "keys.pdf"));
  EXPECT_THAT(Windows(), SizeIs(1));
}

TEST_F(KeySheetsCommandTest, AFileThatCannotBeWrittenIsReportedAndStaysAsItWas) {
  ASSERT_EQ(mkfifo((folder_ / "keys.pdf").c_str(), 0666), 0);
  ASSERT_TRUE(WriteAll(Path("keys.pdf")));
  ASSERT_THAT(console_.reporter.reports, SizeIs(1));
  EXPECT_THAT(console_.reporter.reports[0],
              testing::EndsWith("could not be written: Cannot replace keys.pdf: It is no ordinary "
                                "file"));
  EXPECT_TRUE(fs::is_fifo(folder_ / "keys.pdf"));
  EXPECT_THAT(notes_, IsEmpty());
}

}  // namespace
}  // namespace app
